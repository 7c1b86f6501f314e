/// @file
/// Base of the tests of staged settings: a port private to the test, whose cache files have fixed names in /tmp.
#pragma once

#include "FamilyTest.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace family_test {

/// A port whose WWPN contains the process id, so that concurrent tests don't share a cache file.
class StagedTest : public FamilyTest {
protected:
    /// `group` as in the file's name, `family` as in commands.
    StagedTest(const char* group, const char* family) : mGroup(group), mFamily(family) {
        const int process = getpid();
        SetBytes(port->WWPN, {0x21, 0x00, process >> 24 & 0xFF, process >> 16 & 0xFF, process >> 8 & 0xFF,
                              process & 0xFF, 0x0E, 0x01});
        RemoveFiles();
    }
    ~StagedTest() override { RemoveFiles(); }

    std::string FilePath() const { return "/tmp/" + mGroup + "_" + Id(*port); }
    /// The cache file's content, or "no file".
    std::string Staged() const { return ReadFile(FilePath()).value_or("no file"); }
    void Stage(const std::string& content) const { std::ofstream(FilePath(), std::ios::binary) << content; }
    void RemoveFiles() const {
        std::filesystem::remove_all(FilePath());
        std::filesystem::remove_all(FilePath() + "_tmp");
    }
    /// Distinguishes files with the same name and content: an untouched file keeps its identity.
    std::pair<ino_t, time_t> FileIdentity() const {
        struct stat information {};
        stat(FilePath().c_str(), &information);
        return {information.st_ino, information.st_mtim.tv_sec * 1000000000 + information.st_mtim.tv_nsec};
    }

    /// A call for this port.
    std::string PortCall(const std::string& function, const std::string& rest = "") const {
        return "VEXAPI_" + function + "(" + WwnOf(port->WWPN) + (rest.empty() ? "" : ", " + rest) + ")";
    }
    CommandRun Run(const std::string& leaf, const std::string& rest = "") const { return RunPort(mFamily, leaf, rest); }

private:
    std::string mGroup;
    std::string mFamily;
};

/// Replaces the line of a key in a file's text; the key must be there.
inline std::string WithLine(std::string content, const std::string& key, const std::string& value) {
    const std::string start = "\n" + key + "=";
    content = "\n" + content;
    const std::size_t at = content.find(start);
    if (at == std::string::npos) {
        return "no line of " + key;
    }
    content.replace(at, content.find('\n', at + 1) - at, start + value);
    return content.substr(1);
}

/// Replaces the value of a field; the label must be there.
inline std::vector<Field> WithField(std::vector<Field> fields, const std::string& label, const std::string& value) {
    for (Field& field : fields) {
        if (field.label == label) {
            field.value = value;
            return fields;
        }
    }
    return {{"no field of this name", label}};
}

} // namespace family_test
