#include "Output.h"

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <unistd.h>

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
