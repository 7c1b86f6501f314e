#include "description/Files.h"

#include <algorithm>
#include <cctype>
#include <cerrno>
#include <charconv>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {
namespace {

constexpr off_t LONGEST_FILE = 64 << 20;

[[noreturn]] void FailRead(const char* what) {
    throw std::runtime_error(std::string(what) + ": " + std::strerror(errno));
}

struct Descriptor {
    int fd;
    ~Descriptor() {
        if (fd >= 0) {
            close(fd);
        }
    }
};

} // namespace

std::string ReadFile(const std::string& path) {
    // Non-blocking, so that a FIFO is refused below instead of blocking the caller.
    const Descriptor file{open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK)};
    struct stat info {};
    if (file.fd < 0 || fstat(file.fd, &info) != 0) {
        FailRead("can't be opened");
    }
    if (!S_ISREG(info.st_mode)) {
        throw std::runtime_error("is no regular file");
    }
    if (info.st_size > LONGEST_FILE) {
        throw std::runtime_error("is larger than 64 MB");
    }
    std::string content;
    char buffer[65536];
    for (;;) {
        const ssize_t got = read(file.fd, buffer, sizeof buffer);
        if (got < 0 && errno != EINTR) {
            FailRead("can't be read");
        }
        if (got == 0) {
            return content;
        }
        if (got > 0) {
            content.append(buffer, static_cast<std::size_t>(got));
        }
    }
}

std::uint64_t HashOf(std::string_view text, std::uint64_t start) {
    std::uint64_t hash = start;
    for (const char c : text) {
        hash = (hash ^ static_cast<std::uint8_t>(c)) * 1099511628211ULL;
    }
    return hash;
}

std::string HashText(std::uint64_t hash) {
    char text[17];
    std::snprintf(text, sizeof text, "%016llx", static_cast<unsigned long long>(hash));
    return text;
}

Bytes ParseHex(std::string_view text) {
    constexpr std::pair<std::string_view, std::size_t> POSITIONS[] = {
        {"# A0h", 0}, {"# A2h", 256}, {"# lower page", 0}, {"# upper page", 128}};
    Bytes bytes;
    std::size_t position = 0;
    std::size_t lineNumber = 0;
    while (!text.empty()) {
        std::string_view line = text.substr(0, text.find('\n'));
        text.remove_prefix(std::min(text.size(), line.size() + 1));
        ++lineNumber;
        for (const auto& [head, start] : POSITIONS) {
            if (line.starts_with(head)) {
                position = start;
            }
        }
        line = line.substr(0, line.find('#'));
        for (std::size_t i = 0; i < line.size();) {
            if (std::isspace(static_cast<unsigned char>(line[i])) != 0) {
                ++i;
                continue;
            }
            std::uint8_t byte = 0;
            const std::string_view digits = line.substr(i, 2);
            const auto parsed = std::from_chars(digits.data(), digits.data() + digits.size(), byte, 16);
            const bool ends = i + 2 >= line.size() || std::isspace(static_cast<unsigned char>(line[i + 2])) != 0;
            if (digits.size() != 2 || parsed.ec != std::errc() || parsed.ptr != digits.data() + 2 || !ends) {
                throw std::runtime_error("line " + std::to_string(lineNumber) + " holds something else than bytes");
            }
            if (position > bytes.size()) {
                bytes.resize(position);
            }
            if (position == bytes.size()) {
                bytes.push_back(byte);
            } else {
                bytes[position] = byte;
            }
            ++position;
            i += 2;
        }
    }
    return bytes;
}

Files::Files(std::string path) : mName("the built-in lab host"), mFile("lab.json"), mHash(HashOf({})) {
    if (!path.empty()) {
        const std::size_t slash = path.rfind('/');
        mDirectory = slash == std::string::npos ? "./" : path.substr(0, slash + 1);
        mFile = slash == std::string::npos ? path : path.substr(slash + 1);
        mName = std::move(path);
    }
}

std::string Files::Load(const std::string& name) {
    std::string content;
    if (!mDirectory.empty()) {
        content = ReadFile(name.starts_with('/') ? name : mDirectory + name);
    } else {
        const auto files = LabFiles();
        const auto found =
            std::find_if(files.begin(), files.end(), [&](const auto& file) { return file.name == name; });
        if (found == files.end()) {
            throw std::runtime_error("is not built in");
        }
        content = found->content;
    }
    mHash = HashOf(content, HashOf(name, mHash));
    return content;
}

const std::string& Files::Description() {
    if (mText.empty()) {
        mText = Load(mFile);
    }
    return mText;
}

const Bytes& Files::Blob(const std::string& name) {
    const auto known = mBlobs.find(name);
    if (known != mBlobs.end()) {
        return known->second;
    }
    const std::string content = Load(name);
    return mBlobs[name] = name.ends_with(".hex") ? ParseHex(content) : Bytes(content.begin(), content.end());
}

std::string Files::Digest() const {
    return HashText(mHash);
}

} // namespace sim
