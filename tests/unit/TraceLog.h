/// @file
/// The traces of a test.
#pragma once

#include "TavuDebug.h"

#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <string>
#include <sys/file.h>
#include <unistd.h>
#include <vector>

/// Enables traces during its lifetime. All runs of the test program share one log, so a tracing test locks out the
/// others, and removes the file at its end.
class TraceLog {
public:
    explicit TraceLog(const char* mask) : mLock(open("/var/tmp", O_RDONLY | O_DIRECTORY | O_CLOEXEC)) {
        flock(mLock, LOCK_EX);
        unlink(Path());
        SetMask(mask);
    }
    ~TraceLog() {
        unsetenv("ORFC_DEBUG_LEVEL");
        TavuDebug::Initialize();
        unlink(Path());
        close(mLock);
    }
    TraceLog(const TraceLog&) = delete;
    TraceLog& operator=(const TraceLog&) = delete;

    static void SetMask(const char* mask) {
        setenv("ORFC_DEBUG_LEVEL", mask, 1);
        TavuDebug::Initialize();
    }

    static const char* Path() { return TavuDebug::GetInstallationPath().c_str(); }
    static bool Exists() { return access(Path(), F_OK) == 0; }

    /// The whole file.
    static std::string Content() {
        std::ifstream file(Path(), std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    /// The traces so far as "LEVEL: TEXT", without time, process and line end; LEVEL without its padding.
    static std::vector<std::string> Lines() {
        const std::string content = Content();
        const std::string start = "CIM Provider ";
        const std::string process = std::to_string(getpid()) + ": ";
        std::vector<std::string> lines;
        for (std::size_t at = content.find(start); at != std::string::npos; at = content.find(start, at)) {
            at += start.size();
            const std::size_t text = content.find(process, at) + process.size();
            const std::size_t end = content.find("\r\n", text);
            std::string level = content.substr(at, content.find_first_of(" ", at) - at);
            lines.push_back(level + ": " + content.substr(text, end - text));
        }
        return lines;
    }

    /// Same without the lines of documents that report a failure: only the steps that led to them.
    static std::vector<std::string> Steps() {
        std::vector<std::string> lines = Lines();
        std::erase_if(lines, [](const std::string& line) {
            return line.ends_with(")") && line.find(": Failed, ") != std::string::npos &&
                   line.find(" (result ") != std::string::npos;
        });
        return lines;
    }

private:
    int mLock;
};
