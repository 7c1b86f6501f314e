#include "FileOps.h"

#include "TavuDebug.h"

#include <cstdio>
#include <cstring>
#include <memory>
#include <sys/stat.h>

namespace {

constexpr char WHITE_SPACE[] = " \t\n\v\f\r";

using File = std::unique_ptr<FILE, int (*)(FILE*)>;

File Open(const char* path, const char* mode) {
    return {std::fopen(path, mode), &std::fclose};
}

/// Closes a written file. False when not all of it has reached the file.
bool Close(File file) {
    const bool isWritten = std::ferror(file.get()) == 0;
    return std::fclose(file.release()) == 0 && isWritten;
}

/// Cuts a text at the first of `characters`.
void Cut(char* text, const char* characters) {
    text[std::strcspn(text, characters)] = '\0';
}

/// Copies `input` to `output`, with `line` in the place of every line that contains `key`, or at the end.
void CopyWithSetting(FILE* input, FILE* output, const char* key, const char* line) {
    char buffer[512];
    bool isReplaced = false;
    bool isLineEnded = true;
    while (std::fgets(buffer, sizeof buffer, input) != nullptr) {
        const bool isSetting = std::strstr(buffer, key) != nullptr;
        const char* const text = isSetting ? line : buffer;
        std::fputs(text, output);
        isReplaced = isReplaced || isSetting;
        isLineEnded = *text == '\0' || text[std::strlen(text) - 1] == '\n';
    }
    if (!isReplaced) {
        // A file that was edited by hand may end without a newline; both settings would be lost on one line.
        std::fputs(isLineEnded ? "" : "\n", output);
        std::fputs(line, output);
    }
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
    const File file = Open(path, "r");
    if (file == nullptr) {
        return READ_NO_FILE;
    }
    char buffer[1024] = {};
    while (std::fgets(buffer, sizeof buffer, file.get()) != nullptr) {
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
        std::strncpy(value, text, valueSize); // unterminated when it fills the value, as told
        return KEY_FOUND;
    }
    return KEY_NOT_FOUND;
}

unsigned FileOps::UpdateKeyValueInFile(const TavuString& path, const TavuString& key, const TavuString& value) {
    const TavuString temporary = path + "_tmp";
    const TavuString line = key + "=" + value + "\n";

    File input = Open(path.c_str(), "r");
    if (input == nullptr) {
        TavuDebug::Print(TRACE_DEBUG, "FileOps::UpdateKeyValueInFile: File open failed in read mode, creating it");
        File created = Open(path.c_str(), "w+");
        if (created == nullptr) {
            return Fail("File open failed in write mode");
        }
        std::fputs(line.c_str(), created.get());
        if (!Close(std::move(created))) {
            std::remove(path.c_str());
            return Fail("File write failed");
        }
        return 0;
    }
    File output = Open(temporary.c_str(), "w+");
    if (output == nullptr) {
        return Fail("temp file open failed");
    }
    CopyWithSetting(input.get(), output.get(), key.c_str(), line.c_str());
    const bool isRead = std::ferror(input.get()) == 0;
    input.reset();
    if (!Close(std::move(output)) || !isRead) {
        std::remove(temporary.c_str());
        return Fail("temp file write failed");
    }
    if (std::remove(path.c_str()) != 0) {
        return Fail("remove file failed");
    }
    if (std::rename(temporary.c_str(), path.c_str()) != 0) {
        return Fail("rename file failed");
    }
    return 0;
}

int FileOps::IsFilePresent(const TavuString& path) {
    TavuDebug::Print(TRACE_INFORMATION, "FileOps::IsFilePresent: Entered for file=%s", path.c_str());
    struct stat information {};
    if (stat(path.c_str(), &information) != 0 || !S_ISREG(information.st_mode)) {
        TavuDebug::Print(TRACE_DEBUG, "FileOps::IsFilePresent: File not present");
        return 0;
    }
    // A success, and still at the level of failures: support staff look for it there.
    TavuDebug::Print(TRACE_DEBUG, "FileOps::IsFilePresent: %s file present", path.c_str());
    return 1;
}

unsigned FileOps::DeleteFile(const TavuString& path) {
    return std::remove(path.c_str()) == 0 ? 0 : Fail("remove file failed");
}
