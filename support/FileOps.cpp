#include "FileOps.h"

#include "OwnFile.h"
#include "TavuDebug.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr char WHITE_SPACE[] = " \t\n\v\f\r";

/// Truncates a text at the first of `characters`.
void Cut(char* text, const char* characters) {
    text[std::strcspn(text, characters)] = '\0';
}

/// Removes the next line from `content`, including its newline, or `longest` bytes of a longer line.
std::string_view TakeLine(std::string_view& content, std::size_t longest) {
    const std::size_t newline = content.substr(0, longest).find('\n');
    const std::size_t length = newline == std::string_view::npos ? std::min(longest, content.size()) : newline + 1;
    const std::string_view line = content.substr(0, length);
    content.remove_prefix(length);
    return line;
}

/// Returns `content` with every line that contains `key` replaced by `setting`, or with `setting` appended. A NUL
/// ends a line, as it does for the reader.
TavuString WithSetting(std::string_view content, const TavuString& key, const TavuString& setting) {
    constexpr std::size_t LONGEST_LINE = 511;
    TavuString result;
    bool isReplaced = false;
    while (!content.empty()) {
        const std::string_view line = TakeLine(content, LONGEST_LINE);
        const std::string_view text = line.substr(0, line.find('\0'));
        if (text.find(key) != std::string_view::npos) {
            result += setting;
            isReplaced = true;
        } else if (!text.empty()) {
            result += text;
            result += text.size() < line.size() && line.back() == '\n' ? "\n" : "";
        }
    }
    if (!isReplaced) {
        // A hand-edited file may lack the final newline; appending to that line would lose both settings.
        result += result.empty() || result.back() == '\n' ? "" : "\n";
        result += setting;
    }
    return result;
}

unsigned Fail(const char* what) {
    TavuDebug::Print(TRACE_DEBUG, "FileOps::UpdateKeyValueInFile: %s", what);
    return FileOps::FILE_ERROR;
}

} // namespace

int FileOps::read_key_value(const char* path, const char* key, char* value, unsigned long valueSize, char delimiter) {
    if (path == nullptr || key == nullptr || value == nullptr) {
        return READ_INVALID;
    }
    TavuString content;
    return ReadOwnFile(path, content) ? FindKeyValue(content, key, value, valueSize, delimiter) : READ_NO_FILE;
}

int FileOps::FindKeyValue(const TavuString& content, const char* key, char* value, unsigned long valueSize,
                          char delimiter) {
    char buffer[1024] = {};
    for (std::string_view rest = content; !rest.empty();) {
        const std::string_view piece = TakeLine(rest, sizeof buffer - 1);
        buffer[piece.copy(buffer, sizeof buffer - 1)] = '\0';
        char* const line = buffer + std::strspn(buffer, WHITE_SPACE);
        char* const end = *line == '#' ? nullptr : std::strchr(line, delimiter);
        if (end == nullptr) {
            continue;
        }
        *end = '\0';
        Cut(line, WHITE_SPACE);
        if (CompareNoCase(line, key) != 0) {
            continue;
        }
        char* const text = end + 1 + std::strspn(end + 1, WHITE_SPACE);
        Cut(text, " \t\n\v\f\r#");
        std::strncpy(value, text, valueSize); // not terminated if it fills the value, as documented
        return KEY_FOUND;
    }
    return KEY_NOT_FOUND;
}

unsigned FileOps::UpdateKeyValueInFile(const TavuString& path, const TavuString& key, const TavuString& value) {
    const TavuString temporary = path + "_tmp";
    const TavuString setting = key + "=" + value + "\n";

    TavuString content;
    if (!ReadOwnFile(path.c_str(), content)) {
        // Only a missing file is created anew: settings staged in an unreadable one must not be lost.
        if (errno != ENOENT) {
            return Fail("File open failed in read mode");
        }
        TavuDebug::Print(TRACE_DEBUG, "FileOps::UpdateKeyValueInFile: File open failed in read mode, creating it");
        return CreateOwnFile(path.c_str(), setting) ? 0 : Fail("File open failed in write mode");
    }
    unlink(temporary.c_str()); // left by an interrupted run, or another user's
    if (!CreateOwnFile(temporary.c_str(), WithSetting(content, key, setting))) {
        return Fail("temp file open failed");
    }
    // One step: whenever it is interrupted, the settings have their name.
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        return Fail("rename file failed");
    }
    return 0;
}

int FileOps::IsFilePresent(const TavuString& path) {
    TavuDebug::Print(TRACE_INFORMATION, "FileOps::IsFilePresent: Entered for file=%s", path.c_str());
    struct stat information {};
    if (lstat(path.c_str(), &information) != 0 && errno != ENOENT) {
        TavuDebug::Print(TRACE_DEBUG, "FileOps::IsFilePresent: %s can't be examined", path.c_str());
        return -1;
    }
    if (!S_ISREG(information.st_mode)) {
        TavuDebug::Print(TRACE_DEBUG, "FileOps::IsFilePresent: File not present");
        return 0;
    }
    // Required: a success traced at the level of failures. Support staff look for it there.
    TavuDebug::Print(TRACE_DEBUG, "FileOps::IsFilePresent: %s file present", path.c_str());
    return 1;
}

unsigned FileOps::DeleteFile(const TavuString& path) {
    return std::remove(path.c_str()) == 0 ? 0 : Fail("remove file failed");
}
