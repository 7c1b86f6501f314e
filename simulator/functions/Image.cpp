#include "functions/Image.h"

#include "description/Files.h"

#include <cerrno>
#include <charconv>
#include <fcntl.h>
#include <string_view>
#include <sys/stat.h>
#include <unistd.h>

namespace sim {
namespace {

constexpr off_t LONGEST_IMAGE = 64 << 20;

/// Reads the file. Throws `Failure` with the library's status.
std::string ContentOf(const char* path) {
    struct stat info {};
    if (stat(path, &info) != 0) {
        const bool missing = errno == ENOENT || errno == ENOTDIR;
        throw Failure{missing ? STATUS_FILE_NOT_FOUND : STATUS_FILE_NOT_OPENED, "the file can't be found"};
    }
    if (access(path, R_OK) != 0) {
        throw Failure{STATUS_FILE_NOT_OPENED, "the file can't be opened"};
    }
    if (!S_ISREG(info.st_mode)) {
        throw Failure{STATUS_FILE_NOT_READ, "the file is no regular file"};
    }
    if (info.st_size == 0 || info.st_size > LONGEST_IMAGE) {
        throw Failure{STATUS_FILE_SIZE_INVALID, "the file is empty or too large"};
    }
    try {
        return ReadFile(path);
    } catch (const std::runtime_error& error) {
        throw Failure{STATUS_FILE_NOT_READ, error.what()};
    }
}

/// Removes the text up to and including a separator, and returns it without the separator.
std::string_view TakeUntil(std::string_view& text, char separator) {
    const std::string_view taken = text.substr(0, text.find(separator));
    text.remove_prefix(std::min(text.size(), taken.size() + 1));
    return taken;
}

std::string_view TakeLine(std::string_view& text) {
    std::string_view line = TakeUntil(text, '\n');
    if (line.ends_with('\r')) {
        line.remove_suffix(1);
    }
    return line;
}

} // namespace

Image ReadImage(const char* path, const std::string& kind) {
    const std::string content = ContentOf(path);
    std::string_view text = content;
    std::string_view line = TakeLine(text);
    if (TakeUntil(line, ' ') != "ORFC-IMAGE" || TakeUntil(line, ' ') != kind || line.empty()) {
        throw Failure{STATUS_FILE_NOT_VALID, "the file is no image of the kind " + kind};
    }
    Image image{std::string(line), {}};
    while (!text.empty()) {
        line = TakeLine(text);
        if (line.empty()) {
            continue;
        }
        const std::string word(TakeUntil(line, ' '));
        if (!image.values.emplace(word, line).second) {
            throw Failure{STATUS_FILE_NOT_VALID, "the image has two lines \"" + word + "\""};
        }
    }
    return image;
}

void ParseVersion(const std::string& text, std::span<VX_UINT8> numbers) {
    std::string_view rest = text;
    bool good = true;
    for (std::size_t i = 0; i < numbers.size(); ++i) {
        const std::string_view part = i + 1 < numbers.size() ? TakeUntil(rest, '.') : rest;
        const auto parsed = std::from_chars(part.data(), part.data() + part.size(), numbers[i]);
        good = good && parsed.ec == std::errc() && parsed.ptr == part.data() + part.size();
    }
    if (!good) {
        throw Failure{STATUS_DATA_INVALID,
                      "\"" + text + "\" is no version of " + std::to_string(numbers.size()) + " numbers"};
    }
}

} // namespace sim
