#include "Console.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sys/stat.h>
#include <unistd.h>

std::atomic<VX_UINT32> g_uFlags{0};
int g_hLogFile = -1;

void Output(unsigned short level, const char* format, ...) {
    if (level != OUTPUT_LOG_ONLY) {
        va_list arguments;
        va_start(arguments, format);
        std::vprintf(format, arguments);
        va_end(arguments);
    }
    if (g_hLogFile != -1) {
        char text[4096];
        va_list arguments;
        va_start(arguments, format);
        std::vsnprintf(text, sizeof text, format, arguments);
        va_end(arguments);
        LogToFile(text);
    }
}

void LogToFile(const char* text) {
    if (g_hLogFile == -1) {
        return;
    }
    std::size_t left = std::strlen(text);
    while (left > 0) {
        const ssize_t written = write(g_hLogFile, text, left);
        if (written <= 0) {
            return;
        }
        text += written;
        left -= static_cast<std::size_t>(written);
    }
}

bool FileExists(const char* path) {
    struct stat information {};
    return stat(path, &information) == 0;
}

void Panic(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    std::vfprintf(stderr, format, arguments);
    va_end(arguments);
    std::exit(-1);
}

void FailAssertion(const char* what) {
    std::fprintf(stderr, "Assertion failed: %s\n", what);
    std::abort();
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
    // At most one word begins at every second character, and a word is never longer than its source.
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
