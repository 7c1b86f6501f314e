#include "Words.h"

#include "Output.h"

#include <cstdlib>
#include <cstring>
#include <sys/stat.h>

bool FileExists(const char* path) {
    struct stat information {};
    return stat(path, &information) == 0;
}

bool IsInvokingHelp(const char* word) {
    static constexpr const char* HELP_WORDS[] = {"help", "/h", "/help", "-h", "-help", "/?", "?"};
    for (const char* help : HELP_WORDS) {
        if (CompareNoCase(word, help) == 0) {
            return true;
        }
    }
    return false;
}

bool IsArgNumber(const char* word) {
    return word[std::strspn(word, "0123456789")] == '\0';
}

const char* ArgText(const TavuStringArray& args, std::size_t index) {
    return index < args.size() ? args[index].c_str() : "";
}

char** ParseCommandLineToArgv(const char* line, int& argc) {
    argc = 0;
    // Words begin at most at every second character, and a word is never longer than its source.
    const std::size_t length = std::strlen(line);
    const std::size_t pointers = length / 2 + 2;
    auto** const argv = static_cast<char**>(std::malloc(pointers * sizeof(char*) + length + 1));
    if (argv == nullptr) {
        Panic("Out of memory\n");
    }
    char* copy = reinterpret_cast<char*>(argv + pointers);

    enum { IN_SPACE, IN_TEXT, IN_QUOTES } state = IN_SPACE;
    const auto beginWord = [&] {
        if (state == IN_SPACE) {
            argv[argc++] = copy;
        }
    };
    for (; *line != '\0'; ++line) {
        if (state == IN_QUOTES) {
            if (*line == '"') {
                state = IN_TEXT;
            } else {
                *copy++ = *line;
            }
        } else if (*line == '"') {
            beginWord();
            state = IN_QUOTES;
        } else if (std::strchr(" \t\r\n", *line) != nullptr) {
            if (state == IN_TEXT) {
                *copy++ = '\0';
            }
            state = IN_SPACE;
        } else {
            beginWord();
            state = IN_TEXT;
            *copy++ = *line;
        }
    }
    *copy = '\0';
    argv[argc] = nullptr;
    if (state == IN_QUOTES) {
        std::free(argv);
        argc = 0;
        return nullptr;
    }
    return argv;
}
