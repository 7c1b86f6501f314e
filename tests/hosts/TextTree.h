/// @file
/// A sysfs tree from a text, in the form of `tests/hosts/tree`, for the library's functions.
#pragma once

#include "Api.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <sstream>
#include <string>

namespace linux_host_test {

namespace fs = std::filesystem;

/// An empty tree that the library uses; each test begins with it.
class TreeTest : public testing::Test {
protected:
    TreeTest() {
        std::string name = fs::temp_directory_path() / "tree-XXXXXX";
        root = mkdtemp(name.data());
        fs::create_directories(root / "sys/class");
        setenv("VEXAPI_SYSFS_ROOT", root.c_str(), 1);
    }
    ~TreeTest() override {
        VEXAPI_Uninitialize();
        VEXAPI_ExtSetScope(nullptr);
        VEXAPI_ExtSetMessageHandler(nullptr, nullptr);
        fs::remove_all(root);
    }

    /// Makes the entries of a text below "sys/", one in a line: `path -> target` a link, `path/` a folder, `path text`
    /// a file with this line. What is there already is replaced.
    void Add(const std::string& text) const {
        std::istringstream lines(text);
        for (std::string line; std::getline(lines, line);) {
            const std::size_t blank = line.find(' ');
            const fs::path path = root / "sys" / line.substr(0, blank);
            if (line.empty()) {
                continue;
            }
            if (line.ends_with('/')) {
                fs::create_directories(path);
                continue;
            }
            fs::create_directories(path.parent_path());
            fs::remove_all(path);
            const std::string content = line.substr(std::min(blank, line.size() - 1) + 1);
            if (content.starts_with("-> ")) {
                fs::create_symlink(content.substr(3), path);
            } else {
                std::ofstream(path) << content << '\n';
            }
        }
    }

    void Start(VX_UINT32 parts = VEXAPI_EXT_EVERYTHING) {
        VEXAPI_ExtSetMessageHandler(
            [](void* context, const char* line) { *static_cast<std::string*>(context) += std::string(line) + '\n'; },
            &told);
        VEXAPI_EXT_SCOPE scope{};
        scope.Size = sizeof scope;
        scope.Parts = parts;
        EXPECT_EQ(VEXAPI_ExtSetScope(&scope), 0u);
        ASSERT_EQ(VEXAPI_Initialize(0, 0), 0u);
    }

    /// The ports, targets and LUNs in the order of the lists.
    static _vexapi_protocol_t& Port(int index = 0) {
        for (auto* adapter = VEXAPI_GetAdapterList()->pHead; adapter != nullptr; adapter = adapter->pNext) {
            for (auto* port = adapter->pPhyPortList->pHead; port != nullptr; port = port->pNext) {
                for (auto* protocol = port->pProtocolList->pHead; protocol != nullptr; protocol = protocol->pNext) {
                    if (index-- == 0) {
                        return *protocol;
                    }
                }
            }
        }
        throw std::out_of_range("no such port");
    }
    static _tagVEXAPI_SDMTarget& Target(int index = 0, int port = 0) { return At(Port(port).pTargetList, index); }
    static _tagVEXAPI_SDMLun& Lun(int index = 0, int target = 0) { return At(Target(target).pLunList, index); }

    fs::path root;
    std::string told; ///< the library's messages

private:
    template <class Record> static Record& At(Record* record, int index) {
        while (record != nullptr && index-- > 0) {
            record = record->pNext;
        }
        return record != nullptr ? *record : throw std::out_of_range("no such record");
    }
};

} // namespace linux_host_test
