/// @file
/// The log of the library's output.
#pragma once

#include <fstream>
#include <string>

/// Text appended to the log since construction. All runs of the tool on the machine share the log, so tests must
/// use distinguishable texts.
class LibraryLog {
public:
    LibraryLog() : mStart(Content().size()) {}

    std::string Added() const {
        const std::string content = Content();
        return content.size() > mStart ? content.substr(mStart) : "";
    }
    bool Has(const std::string& text) const { return Added().find(text) != std::string::npos; }

private:
    static std::string Content() {
        std::ifstream file("/var/tmp/vexapi-output.log", std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
    std::size_t mStart;
};
