/// @file
/// The log that takes what the library prints.
#pragma once

#include <fstream>
#include <string>

/// What was appended to the log since this was made. The log is shared with all other runs of the tool on
/// the machine, so texts of a test must be told apart by the test.
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
