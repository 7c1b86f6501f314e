#include "Collect.h"

#include "Failure.h"
#include "PatientReader.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <cstring>
#include <deque>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <regex>
#include <set>
#include <span>
#include <sys/stat.h>
#include <unistd.h>

namespace orfc {

namespace {

// The files that the Linux library reads, and some that say more to people. All are served without side effects.
constexpr const char* SYSTEM_FILES[] = {"etc/hostname", "etc/os-release", "proc/sys/kernel/osrelease", "proc/version"};
constexpr const char* PORT_FILES[] = {"dev_loss_tmo",      "driver_version", "fabric_name",       "firmware_version",
                                      "hardware_version",  "manufacturer",   "maxframe_size",     "model",
                                      "model_description", "node_name",      "npiv_vports_inuse", "optionrom_version",
                                      "port_id",           "port_name",      "port_state",        "port_type",
                                      "serial_number",     "speed",          "supported_classes", "supported_speeds",
                                      "symbolic_name",     "tgtid_bind_type"};
constexpr const char* SCSI_HOST_FILES[] = {"proc_name", "state"};
constexpr const char* PCI_FILES[] = {
    "class",     "current_link_speed", "current_link_width", "device",           "max_link_speed", "max_link_width",
    "numa_node", "revision",           "subsystem_device",   "subsystem_vendor", "vendor",         "vpd"};
constexpr const char* MODULE_FILES[] = {"srcversion", "version"};
constexpr const char* REMOTE_PORT_FILES[] = {"dev_loss_tmo",   "fast_io_fail_tmo", "maxframe_size", "node_name",
                                             "port_id",        "port_name",        "port_state",    "roles",
                                             "scsi_target_id", "supported_classes"};
constexpr const char* SCSI_DEVICE_FILES[] = {"access_state", "inquiry", "model",    "rev", "state",
                                             "type",         "vendor",  "vpd_pg83", "wwid"};
constexpr const char* BLOCK_FILES[] = {"ana_state", "dev", "nsid", "queue/logical_block_size", "size", "wwid"};
constexpr const char* MAP_FILES[] = {"dev", "dm/name", "dm/suspended", "size"};
constexpr const char* CONTROLLER_FILES[] = {"address", "cntlid", "cntrltype", "firmware_rev", "hostid",
                                            "hostnqn", "model",  "serial",    "state",        "subsysnqn"};
constexpr char NEVER_READ[] = "reset_statistics";
constexpr std::string_view MULTIPATH = "mpath-";

std::string Inside(const std::string& folder, const std::string& name) {
    return folder + '/' + name;
}

/// Files of a tree and the links on the way to them, which become the entries of a collection.
class Tree {
public:
    Tree(const std::string& root, Collection& collection)
        : mRoot(open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC)), mReader(mRoot), mCollection(collection) {
        if (mRoot < 0) {
            throw Failure(root + ": " + std::strerror(errno));
        }
    }
    Tree(const Tree&) = delete;
    ~Tree() { close(mRoot); }

    /// The path without links, relative to the root; none if there is nothing.
    std::optional<std::string> Resolve(std::string_view path);
    /// The names in a folder, sorted.
    std::vector<std::string> Names(const std::string& path);
    void Files(const std::string& folder, std::span<const char* const> names);
    /// Takes the counters in a folder, and in the folders in it.
    void Statistics(const std::string& folder);
    /// The content of a file, which is taken; empty if it can't be read.
    std::string File(const std::string& path);
    /// Takes a file whose path has no links, as another one.
    void Take(const std::string& real, const std::string& as);

private:
    /// The target of a link; none if it is something else. Those of the same path are asked for once.
    const std::optional<std::string>& LinkAt(const std::string& path);
    int KindOf(const std::string& path) const;
    void Miss(const std::string& path, const std::string& reason, bool isUsual = false) {
        mCollection.missing.push_back({path, reason, isUsual});
    }

    int mRoot;
    PatientReader mReader;
    Collection& mCollection;
    std::map<std::string, std::optional<std::string>> mLinks;
    std::set<std::string> mTried;
};

const std::optional<std::string>& Tree::LinkAt(const std::string& path) {
    const auto [found, isNew] = mLinks.try_emplace(path);
    if (isNew) {
        char target[PATH_MAX];
        const ssize_t size = readlinkat(mRoot, path.c_str(), target, sizeof target);
        if (size >= 0) {
            found->second.emplace(target, static_cast<std::size_t>(size));
            if (StaysInside(path, *found->second)) {
                mCollection.entries.emplace(path, Entry{Entry::LINK, *found->second});
            } else {
                Miss(path, "a link to " + *found->second);
            }
        }
    }
    return found->second;
}

/// The type bits of a mode; 0 if there is nothing.
int Tree::KindOf(const std::string& path) const {
    struct stat information {};
    return fstatat(mRoot, path.c_str(), &information, AT_SYMLINK_NOFOLLOW) == 0
               ? static_cast<int>(information.st_mode & S_IFMT)
               : 0;
}

std::optional<std::string> Tree::Resolve(std::string_view path) {
    constexpr int MAX_LINKS = 40;
    std::deque<std::string> names;
    const auto queue = [&names](std::string_view text) {
        auto at = names.begin();
        while (!text.empty()) {
            const std::size_t size = std::min(text.find('/'), text.size());
            at = std::next(names.insert(at, std::string(text.substr(0, size))));
            text.remove_prefix(std::min(size + 1, text.size()));
        }
    };
    queue(path);
    std::string real;
    for (int links = 0; !names.empty() && links <= MAX_LINKS;) {
        const std::string name = std::move(names.front());
        names.pop_front();
        if (name == "..") {
            real.resize(real.find('/') == std::string::npos ? 0 : real.rfind('/'));
        } else if (!name.empty() && name != ".") {
            const std::string next = real.empty() ? name : Inside(real, name);
            const auto& target = LinkAt(next);
            if (!target) {
                real = next;
                continue;
            }
            real = target->starts_with('/') ? "" : real;
            queue(*target);
            ++links;
        }
    }
    return names.empty() && KindOf(real) != 0 ? std::optional(real) : std::nullopt;
}

std::vector<std::string> Tree::Names(const std::string& path) {
    std::vector<std::string> names;
    const std::optional<std::string> real = Resolve(path);
    if (!real || KindOf(*real) != S_IFDIR) {
        return names;
    }
    const int folder = openat(mRoot, real->c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    const std::unique_ptr<DIR, int (*)(DIR*)> listing(folder >= 0 ? fdopendir(folder) : nullptr, closedir);
    if (listing == nullptr) {
        Miss(*real, std::strerror(errno));
        return names;
    }
    mCollection.entries.emplace(*real, Entry{});
    while (const dirent* const entry = readdir(listing.get())) {
        if (entry->d_name[0] != '.') {
            names.emplace_back(entry->d_name);
        }
    }
    std::sort(names.begin(), names.end());
    return names;
}

void Tree::Take(const std::string& real, const std::string& as) {
    PatientReader::Outcome outcome = mReader.Read(real);
    if (outcome.failure.empty()) {
        mCollection.entries.emplace(as, Entry{Entry::FILE, std::move(outcome.content)});
    } else {
        Miss(as, outcome.failure, outcome.error == EINVAL || outcome.error == ENXIO || outcome.error == ENOENT);
    }
}

std::string Tree::File(const std::string& path) {
    const std::optional<std::string> real = Resolve(path);
    if (!real) {
        return {};
    }
    if (mTried.insert(*real).second) {
        Take(*real, *real);
    }
    const auto found = mCollection.entries.find(*real);
    return found != mCollection.entries.end() ? found->second.content : std::string();
}

void Tree::Files(const std::string& folder, std::span<const char* const> names) {
    for (const char* const name : names) {
        File(folder + '/' + name);
    }
}

void Tree::Statistics(const std::string& folder) {
    for (const std::string& name : Names(folder)) {
        const std::string path = Inside(folder, name);
        const std::optional<std::string> real = name == NEVER_READ ? std::nullopt : Resolve(path);
        if (real && KindOf(*real) == S_IFDIR) {
            Statistics(*real);
        } else if (real) {
            File(path);
            if (mCollection.entries.contains(*real)) {
                mCollection.statistics.push_back(*real);
            }
        }
    }
}

/// A host as the kernel lists it.
class Host {
public:
    explicit Host(Tree& tree) : mTree(tree) {}

    void Collect() {
        for (const char* const file : SYSTEM_FILES) {
            mTree.File(file);
        }
        for (const std::string& name : mTree.Names("sys/class/fc_host")) {
            AddPort(name);
        }
        for (const std::string& name : mTree.Names("sys/class/fc_remote_ports")) {
            AddRemotePort(name);
        }
        for (const std::string& name : mTree.Names("sys/bus/scsi/devices")) {
            const std::string host = "host" + name.substr(0, name.find(':'));
            if (mPorts.contains(host) && std::count(name.begin(), name.end(), ':') == 3) {
                AddLun(name);
            }
        }
        for (const std::string& name : mTree.Names("sys/class/nvme")) {
            AddController(name);
        }
        for (const std::string& name : mTree.Names("sys/class/block")) {
            name.starts_with("nvme") ? AddNamespace(name) : AddMap(name);
        }
    }

private:
    void AddPort(const std::string& name) {
        const std::string folder = "sys/class/fc_host/" + name;
        const std::optional<std::string> real = mTree.Resolve(folder);
        if (!real) {
            return;
        }
        mPorts.insert(name);
        mTree.Files(folder, PORT_FILES);
        mTree.Statistics(folder + "/statistics");
        mTree.Files("sys/class/scsi_host/" + name, SCSI_HOST_FILES);
        static const std::regex function("[0-9a-f]+:[0-9a-f]{2}:[0-9a-f]{2}\\.[0-7]", std::regex::icase);
        for (std::size_t end = real->find('/'); end != std::string::npos; end = real->find('/', end + 1)) {
            const std::string above = real->substr(0, end);
            if (std::regex_match(above.substr(above.rfind('/') + 1), function)) {
                mTree.Files(above, PCI_FILES);
                if (const auto module = mTree.Resolve(above + "/driver/module")) {
                    mTree.Names(*module);
                    mTree.Files(*module, MODULE_FILES);
                }
            }
        }
    }
    void AddRemotePort(const std::string& name) {
        const std::string folder = "sys/class/fc_remote_ports/" + name;
        mTree.Files(folder, REMOTE_PORT_FILES);
        mTree.Statistics(folder + "/statistics");
        const std::string devices = folder + "/device";
        for (const std::string& target : mTree.Names(devices)) {
            if (target.starts_with("target")) {
                mTree.Names(Inside(devices, target));
            }
        }
    }
    void AddLun(const std::string& name) {
        const std::string folder = "sys/bus/scsi/devices/" + name;
        mTree.Files(folder, SCSI_DEVICE_FILES);
        for (const std::string& device : mTree.Names(folder + "/block")) {
            AddBlockDevice(device);
        }
    }
    void AddBlockDevice(const std::string& name) {
        const std::string folder = "sys/class/block/" + name;
        mTree.Files(folder, BLOCK_FILES);
        const std::string holders = folder + "/holders";
        for (const std::string& holder : mTree.Names(holders)) {
            mTree.Resolve(Inside(holders, holder));
        }
    }
    void AddController(const std::string& name) {
        const std::string folder = "sys/class/nvme/" + name;
        if (mTree.File(folder + "/transport") == "fc\n") {
            mControllers.insert(name);
            mTree.Files(folder, CONTROLLER_FILES);
        }
    }
    /// A namespace of a controller; with "nvme0c1n2", a path of a subsystem's "nvme0n2", also that.
    void AddNamespace(const std::string& name) {
        const std::string real = mTree.Resolve("sys/class/block/" + name).value_or("");
        const std::string above = real.substr(0, real.rfind('/'));
        if (!mControllers.contains(above.substr(above.rfind('/') + 1))) {
            return;
        }
        AddBlockDevice(name);
        static const std::regex path("nvme([0-9]+)c[0-9]+n([0-9]+)");
        if (std::smatch numbers; std::regex_match(name, numbers, path)) {
            const std::string subsystem = numbers[1].str();
            const std::string head = "nvme" + subsystem + 'n' + numbers[2].str();
            mTree.File("sys/class/nvme-subsystem/nvme-subsys" + subsystem + '/' + head + "/wwid");
            AddBlockDevice(head);
        }
    }
    void AddMap(const std::string& name) {
        const std::string folder = "sys/class/block/" + name;
        if (name.starts_with("dm-") && mTree.File(folder + "/dm/uuid").starts_with(MULTIPATH)) {
            mTree.Files(folder, MAP_FILES);
            const std::string slaves = folder + "/slaves";
            for (const std::string& path : mTree.Names(slaves)) {
                mTree.Resolve(Inside(slaves, path));
            }
        }
    }

    Tree& mTree;
    std::set<std::string> mPorts;
    std::set<std::string> mControllers; ///< over Fibre Channel
};

} // namespace

Collection CollectHost(const std::string& root) {
    Collection collection;
    Tree tree(root, collection);
    if (!tree.Resolve("sys/class")) {
        throw Failure(root + ": no sys/class in it");
    }
    collection.entries.emplace("sys/class", Entry{});
    Host(tree).Collect();
    return collection;
}

void CollectLater(const std::string& root, Collection& collection) {
    Tree tree(root, collection);
    for (const std::string& file : collection.statistics) {
        tree.Take(file, LATER + file);
    }
}

} // namespace orfc
