#include "Archive.h"

#include "Failure.h"

#include <algorithm>
#include <archive.h>
#include <archive_entry.h>
#include <cerrno>
#include <climits>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <filesystem>
#include <memory>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace orfc {

namespace {

// More than the largest hosts have.
constexpr std::size_t MAX_ENTRIES = 500000;
constexpr std::size_t MAX_BYTES = std::size_t{256} << 20; ///< of names and contents
constexpr std::size_t MAX_FILE = std::size_t{64} << 20;   ///< compressed
constexpr std::string_view XZ_BEGIN("\xFD"
                                    "7zXZ\0",
                                    6);
constexpr std::string_view XZ_END = "YZ";

#define ORFC_ARCHIVE_FUNCTIONS(X)                                                                                      \
    X(archive_read_new)                                                                                                \
    X(archive_read_support_filter_xz)                                                                                  \
    X(archive_read_support_format_tar)                                                                                 \
    X(archive_read_open_memory)                                                                                        \
    X(archive_read_next_header)                                                                                        \
    X(archive_read_data)                                                                                               \
    X(archive_read_free)                                                                                               \
    X(archive_write_new)                                                                                               \
    X(archive_write_add_filter_xz)                                                                                     \
    X(archive_write_set_format_pax_restricted)                                                                         \
    X(archive_write_set_bytes_in_last_block)                                                                           \
    X(archive_write_open)                                                                                              \
    X(archive_write_header)                                                                                            \
    X(archive_write_data)                                                                                              \
    X(archive_write_close)                                                                                             \
    X(archive_write_free)                                                                                              \
    X(archive_error_string)                                                                                            \
    X(archive_entry_new)                                                                                               \
    X(archive_entry_free)                                                                                              \
    X(archive_entry_clear)                                                                                             \
    X(archive_entry_filetype)                                                                                          \
    X(archive_entry_hardlink)                                                                                          \
    X(archive_entry_pathname)                                                                                          \
    X(archive_entry_size)                                                                                              \
    X(archive_entry_symlink)                                                                                           \
    X(archive_entry_set_filetype)                                                                                      \
    X(archive_entry_set_pathname)                                                                                      \
    X(archive_entry_set_perm)                                                                                          \
    X(archive_entry_set_size)                                                                                          \
    X(archive_entry_set_symlink)

/// libarchive, loaded when it is needed: every other command starts without it and what it needs in turn.
struct Functions {
#define ORFC_MEMBER(name) decltype(&::name) name; // NOLINT(bugprone-macro-parentheses): a member's name
    ORFC_ARCHIVE_FUNCTIONS(ORFC_MEMBER)
#undef ORFC_MEMBER

    Functions() {
        constexpr char LIBRARY[] = "libarchive.so.13";
        void* const library = dlopen(LIBRARY, RTLD_NOW | RTLD_LOCAL);
// NOLINTBEGIN(bugprone-macro-parentheses): members
#define ORFC_LOOK_UP(name)                                                                                             \
    name = library != nullptr ? reinterpret_cast<decltype(name)>(dlsym(library, #name)) : nullptr;                     \
    if (name == nullptr) {                                                                                             \
        throw Failure(std::string("captures need libarchive: ") + dlerror());                                          \
    }
        ORFC_ARCHIVE_FUNCTIONS(ORFC_LOOK_UP)
#undef ORFC_LOOK_UP
        // NOLINTEND(bugprone-macro-parentheses)
    }
};

const Functions& Loaded() {
    static const Functions functions;
    return functions;
}

[[noreturn]] void Fail(const std::string& path, const std::string& reason = std::strerror(errno)) {
    throw Failure(path + ": " + reason);
}

/// The whole content of a regular file.
std::string ReadFile(const std::string& path) {
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK);
    if (file < 0) {
        Fail(path);
    }
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> stream(fdopen(file, "r"), std::fclose);
    struct stat information {};
    if (fstat(file, &information) != 0 || !S_ISREG(information.st_mode)) {
        Fail(path, "is no file");
    }
    if (static_cast<std::uintmax_t>(information.st_size) > MAX_FILE) {
        Fail(path, "is no capture: too large");
    }
    std::string content(static_cast<std::size_t>(information.st_size), '\0');
    content.resize(std::fread(content.data(), 1, content.size(), stream.get()));
    if (std::ferror(stream.get()) != 0) {
        Fail(path);
    }
    return content;
}

/// Whether a path is relative and has plain names only.
bool IsPlain(std::string_view path) {
    if (path.size() >= PATH_MAX) {
        return false;
    }
    for (bool isLast = false; !isLast;) {
        const std::size_t slash = path.find('/');
        const std::string_view name = path.substr(0, slash);
        if (name.empty() || name == "." || name == ".." || name.size() > NAME_MAX) {
            return false;
        }
        isLast = slash == std::string_view::npos;
        path.remove_prefix(isLast ? 0 : slash + 1);
    }
    return true;
}

/// What is wrong with an entry of an archive; empty if it was taken.
std::string Take(archive* source, archive_entry* header, Entries& entries, std::size_t& bytes) {
    const Functions& functions = Loaded();
    const char* const name = functions.archive_entry_pathname(header);
    std::string path = name != nullptr ? name : "";
    if (path.ends_with('/')) { // of a folder
        path.pop_back();
    }
    if (!IsPlain(path)) {
        return path + ": names no place inside";
    }
    Entry entry;
    if (functions.archive_entry_hardlink(header) != nullptr) {
        return path + ": is a hard link";
    }
    switch (functions.archive_entry_filetype(header)) {
    case AE_IFDIR:
        break;
    case AE_IFREG:
        entry.kind = Entry::FILE;
        break;
    case AE_IFLNK: {
        const char* const target = functions.archive_entry_symlink(header);
        entry = {Entry::LINK, target != nullptr ? target : ""};
        if (!StaysInside(path, entry.content)) {
            return path + ": a link that may leave the archive";
        }
        break;
    }
    default:
        return path + ": neither file, folder nor link";
    }
    char portion[std::size_t{1} << 16];
    bytes += path.size() + entry.content.size();
    for (bool isWhole = entry.kind != Entry::FILE; !isWhole && bytes <= MAX_BYTES;) {
        const la_ssize_t count = functions.archive_read_data(source, portion, sizeof portion);
        if (count < 0) {
            return path + ": damaged";
        }
        entry.content.append(portion, static_cast<std::size_t>(count));
        bytes += static_cast<std::size_t>(count);
        isWhole = count == 0;
    }
    if (bytes > MAX_BYTES || entries.size() >= MAX_ENTRIES) {
        return "larger than any host";
    }
    return entries.emplace(path, std::move(entry)).second ? "" : path + ": is in it twice";
}

/// An entry below one that is no folder, "" if there is none.
std::string Misplaced(const Entries& entries) {
    std::string checked;
    for (const auto& [path, entry] : entries) {
        const std::string above = path.substr(0, std::min(path.rfind('/'), path.size()));
        if (above == checked || above == path) {
            continue;
        }
        for (std::size_t end = above.size(); end != std::string::npos; end = above.rfind('/', end - 1)) {
            const auto found = entries.find(above.substr(0, end));
            if (found != entries.end() && found->second.kind != Entry::FOLDER) {
                return path;
            }
        }
        checked = above;
    }
    return {};
}

/// Files that are written aside and then put in their place.
class NewFile {
public:
    explicit NewFile(const std::string& path) : mPath(path), mAside(path + ".XXXXXX") {
        mFile = mkostemp(mAside.data(), O_CLOEXEC);
        if (mFile < 0) {
            Fail(path);
        }
    }
    NewFile(const NewFile&) = delete;
    ~NewFile() {
        close(mFile);
        unlink(mAside.c_str());
    }

    void Write(std::string_view bytes) const {
        while (!bytes.empty()) {
            const ssize_t count = write(mFile, bytes.data(), bytes.size());
            if (count < 0 && errno != EINTR) {
                Fail(mPath);
            }
            bytes.remove_prefix(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
        }
    }
    void Place(bool isForced) const {
        if (fsync(mFile) != 0) {
            Fail(mPath);
        }
        int error = 0;
        if (isForced) {
            error = std::rename(mAside.c_str(), mPath.c_str());
        } else {
            error = renameat2(AT_FDCWD, mAside.c_str(), AT_FDCWD, mPath.c_str(), RENAME_NOREPLACE);
            if (error != 0 && errno == EINVAL) { // not by this file system
                error = link(mAside.c_str(), mPath.c_str());
            }
        }
        if (error != 0) {
            Fail(mPath, errno == EEXIST ? "exists; --force replaces it" : std::strerror(errno));
        }
    }

private:
    std::string mPath;
    std::string mAside;
    int mFile;
};

la_ssize_t Append(archive* /*source*/, void* content, const void* bytes, std::size_t count) {
    static_cast<std::string*>(content)->append(static_cast<const char*>(bytes), count);
    return static_cast<la_ssize_t>(count);
}

std::string Packed(const Entries& entries) {
    constexpr int READABLE = 0644, SEARCHABLE = 0755;
    const Functions& functions = Loaded();
    std::string content;
    const std::unique_ptr<archive, int (*)(archive*)> packer(functions.archive_write_new(),
                                                             functions.archive_write_free);
    const std::unique_ptr<archive_entry, void (*)(archive_entry*)> header(functions.archive_entry_new(),
                                                                          functions.archive_entry_free);
    bool isGood = functions.archive_write_add_filter_xz(packer.get()) == ARCHIVE_OK &&
                  functions.archive_write_set_format_pax_restricted(packer.get()) == ARCHIVE_OK &&
                  functions.archive_write_set_bytes_in_last_block(packer.get(), 1) == ARCHIVE_OK && // no padding
                  functions.archive_write_open(packer.get(), &content, nullptr, Append, nullptr) == ARCHIVE_OK;
    for (const auto& [path, entry] : entries) {
        functions.archive_entry_clear(header.get());
        functions.archive_entry_set_pathname(header.get(), path.c_str());
        constexpr unsigned KINDS[] = {AE_IFDIR, AE_IFREG, AE_IFLNK};
        functions.archive_entry_set_filetype(header.get(), KINDS[entry.kind]);
        functions.archive_entry_set_perm(header.get(), entry.kind == Entry::FOLDER ? SEARCHABLE : READABLE);
        if (entry.kind == Entry::LINK) {
            functions.archive_entry_set_symlink(header.get(), entry.content.c_str());
        }
        const bool isFile = entry.kind == Entry::FILE;
        functions.archive_entry_set_size(header.get(), isFile ? static_cast<la_int64_t>(entry.content.size()) : 0);
        isGood = isGood && functions.archive_write_header(packer.get(), header.get()) == ARCHIVE_OK &&
                 (!isFile || functions.archive_write_data(packer.get(), entry.content.data(), entry.content.size()) ==
                                 static_cast<la_ssize_t>(entry.content.size()));
    }
    if (!isGood || functions.archive_write_close(packer.get()) != ARCHIVE_OK) {
        const char* const reason = functions.archive_error_string(packer.get());
        throw Failure(std::string("the capture can't be packed: ") + (reason != nullptr ? reason : ""));
    }
    return content;
}

} // namespace

bool StaysInside(const std::string& path, const std::string& target) {
    constexpr std::string_view UP = "../";
    std::string_view rest = target;
    for (auto room = std::count(path.begin(), path.end(), '/'); room > 0 && rest.starts_with(UP); --room) {
        rest.remove_prefix(UP.size());
    }
    return IsPlain(rest);
}

Entries ReadArchive(const std::string& file) {
    std::string content = ReadFile(file);
    if (!content.starts_with(XZ_BEGIN)) {
        Fail(file, content.empty() ? "is no capture: empty" : "is no capture");
    }
    if (!content.ends_with(XZ_END)) {
        Fail(file, "isn't whole");
    }
    const Functions& functions = Loaded();
    const std::unique_ptr<archive, int (*)(archive*)> source(functions.archive_read_new(), functions.archive_read_free);
    functions.archive_read_support_filter_xz(source.get());
    functions.archive_read_support_format_tar(source.get());
    int status = functions.archive_read_open_memory(source.get(), content.data(), content.size());
    Entries entries;
    std::size_t bytes = 0;
    archive_entry* header = nullptr;
    while (status == ARCHIVE_OK && (status = functions.archive_read_next_header(source.get(), &header)) == ARCHIVE_OK) {
        if (const std::string mistake = Take(source.get(), header, entries, bytes); !mistake.empty()) {
            Fail(file, "is refused: " + mistake);
        }
    }
    if (status != ARCHIVE_EOF) {
        Fail(file, "is no capture: damaged");
    }
    if (const std::string path = Misplaced(entries); !path.empty()) {
        Fail(file, "is refused: " + path + ": is below what is no folder");
    }
    return entries;
}

std::size_t WriteArchive(const std::string& file, const Entries& entries, bool isForced) {
    const NewFile made(file);
    const std::string content = Packed(entries);
    made.Write(content);
    made.Place(isForced);
    return content.size();
}

void Unpack(const Entries& entries, const std::string& folder) {
    std::filesystem::path made;
    for (const auto& [path, entry] : entries) {
        const std::filesystem::path place = std::filesystem::path(folder) / path;
        const std::filesystem::path above = entry.kind == Entry::FOLDER ? place : place.parent_path();
        if (above != made) {
            std::error_code error;
            std::filesystem::create_directories(above, error);
            if (error) {
                Fail(above, error.message());
            }
            made = above;
        }
        if (entry.kind == Entry::LINK && symlink(entry.content.c_str(), place.c_str()) != 0) {
            Fail(place);
        }
        if (entry.kind == Entry::FILE) {
            const int file = open(place.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, S_IRUSR | S_IWUSR);
            if (file < 0) {
                Fail(place);
            }
            const ssize_t count = write(file, entry.content.data(), entry.content.size());
            const int error = count < 0 ? errno : ENOSPC;
            close(file);
            if (count != static_cast<ssize_t>(entry.content.size())) {
                Fail(place, std::strerror(error));
            }
        }
    }
}

} // namespace orfc
