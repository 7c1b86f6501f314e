#include "DeviceMapper.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <fcntl.h>
#include <linux/dm-ioctl.h>
#include <sys/ioctl.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

namespace host {

namespace {

constexpr char CONTROL[] = "/dev/mapper/control";
/// The kernel's numbers of that node.
constexpr unsigned MISC_MAJOR = 10;
constexpr unsigned MAPPER_MINOR = 236;
constexpr std::size_t MAX_STATUS = 1 << 20;

/// Opens the control node, or returns -1 if there is another file in its place.
int OpenControl() {
    const int descriptor = open(CONTROL, O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NOCTTY | O_NONBLOCK);
    struct stat node {};
    if (descriptor >= 0 && (fstat(descriptor, &node) != 0 || !S_ISCHR(node.st_mode) ||
                            node.st_rdev != makedev(MISC_MAJOR, MAPPER_MINOR))) {
        close(descriptor);
        return -1;
    }
    return descriptor;
}

/// The words of a status, one after the other; empty at its end.
class Words {
public:
    explicit Words(std::string_view text) : mRest(text) {}

    std::string_view Next() {
        mRest.remove_prefix(std::min(mRest.find_first_not_of(' '), mRest.size()));
        const std::string_view word = mRest.substr(0, mRest.find(' '));
        mRest.remove_prefix(word.size());
        return word;
    }
    /// 0 if the next word is none.
    std::size_t NextNumber() {
        const std::string_view word = Next();
        std::size_t number = 0;
        std::from_chars(word.begin(), word.end(), number);
        return number;
    }
    void Skip(std::size_t count) {
        while (count-- > 0 && !Next().empty()) {
        }
    }

private:
    std::string_view mRest;
};

} // namespace

DeviceMapper::~DeviceMapper() {
    if (mControl && *mControl >= 0) {
        close(*mControl);
    }
}

std::string DeviceMapper::Status(dev_t map) {
    if (!mControl) {
        mControl = OpenControl();
    }
    if (*mControl < 0) {
        return {};
    }
    for (std::size_t size = 16 * 1024; size <= MAX_STATUS; size *= 4) {
        std::vector<char> buffer(size);
        dm_ioctl header{};
        header.version[0] = DM_VERSION_MAJOR;
        header.data_size = static_cast<__u32>(size);
        header.data_start = sizeof header;
        header.flags = DM_NOFLUSH_FLAG;
        header.dev = map;
        std::memcpy(buffer.data(), &header, sizeof header);
        if (ioctl(*mControl, DM_TABLE_STATUS, buffer.data()) != 0) {
            return {};
        }
        std::memcpy(&header, buffer.data(), sizeof header);
        if ((header.flags & DM_BUFFER_FULL_FLAG) != 0) {
            continue;
        }
        dm_target_spec target{};
        const std::size_t text = header.data_start + sizeof target;
        if (header.target_count != 1 || header.data_start > size || text >= size) {
            return {};
        }
        std::memcpy(&target, buffer.data() + header.data_start, sizeof target);
        if (std::strncmp(target.target_type, "multipath", sizeof target.target_type) != 0) {
            return {};
        }
        return {buffer.data() + text, strnlen(buffer.data() + text, size - text)};
    }
    return {};
}

/// As in the kernel's dm-mpath: counted features, counted arguments of the hardware handler, the number of groups and
/// the next one; of each group its state, counted values of the path selector, the numbers of paths and of values of
/// each; of each path its device, "A" or "F", failures and values.
std::vector<std::pair<std::string, std::string>> MultipathPaths(std::string_view status) {
    std::vector<std::pair<std::string, std::string>> paths;
    Words words(status);
    words.Skip(words.NextNumber());
    words.Skip(words.NextNumber());
    const std::size_t groups = words.NextNumber();
    words.Skip(1);
    for (std::size_t group = 0; group < groups && !words.Next().empty(); ++group) {
        words.Skip(words.NextNumber());
        const std::size_t count = words.NextNumber();
        const std::size_t values = words.NextNumber();
        for (std::size_t path = 0; path < count; ++path) {
            const std::string_view device = words.Next();
            const std::string_view state = words.Next();
            if (device.empty() || (state != "A" && state != "F")) {
                return paths;
            }
            paths.emplace_back(device, state == "A" ? "active" : "failed");
            words.Skip(1 + values);
        }
    }
    return paths;
}

} // namespace host
