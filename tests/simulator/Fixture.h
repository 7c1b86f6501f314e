/// @file
/// What the tests of the simulated library share: a folder of their own, hosts, journals, processes.
#pragma once

#include "vexapi.h"

#include <functional>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

using Json = nlohmann::ordered_json;

constexpr VX_UINT32 CALLERS_MISTAKE = 0x200000FF;
constexpr VX_UINT32 REFUSED = 0x200000FE;
constexpr VX_UINT32 STATE_NOT_KEPT = 0x200000FD;
constexpr VX_UINT32 NO_ANSWER = 0x200000FB;
constexpr VX_UINT32 NO_SUCH_TARGET = 0x200000FA;

/// A test with a folder of its own, which also holds state and journal, and no host but the one it describes.
class Simulated : public testing::Test {
protected:
    Simulated();
    ~Simulated() override;

    /// A path inside the test's folder.
    std::string Path(const std::string& name) const { return mFolder + "/" + name; }
    /// Writes a file into the folder and gives its path.
    std::string File(const std::string& name, const std::string& content) const;
    /// Makes a description the host of the sessions to come.
    void Describe(const Json& description) const { DescribeText(description.dump()); }
    void DescribeText(const std::string& text) const;

    /// Starts the library. Its output goes to `mOutput`.
    VX_UINT32 Start(VX_UINT32 debugLevel = 0);
    /// Ends it.
    static void End() { VEXAPI_Uninitialize(); }
    /// Starts over, as another process would find the host.
    void Restart();

    /// Port number N in the order of the tree.
    static _vexapi_protocol_t* Port(unsigned index = 0);
    static VX_PORT_HANDLE* Handle(unsigned index = 0) { return &Port(index)->PortHandle; }
    static VX_UINT32 Word(unsigned index = 0);

    /// The journal's lines so far.
    std::vector<Json> Journal() const;
    /// The journal's last line.
    Json LastCall() const;
    /// Deletes the journal.
    void Forget() const;

    /// Runs `act` and gives what the library printed on standard output meanwhile.
    static std::string OutputOf(const std::function<void()>& act);
    /// Runs `act` in a process of its own; its result is the process's exit status.
    static int InProcess(const std::function<int()>& act);

    std::string mOutput; ///< of the last `Start`

private:
    std::string mFolder;
};

/// Text of a file.
std::string TextOf(const std::string& path);

/// A host of one adapter with two ports; the first sees a disk array and an NVMe array.
Json SmallHost();
/// The object of port N of `SmallHost`.
Json& PortOf(Json& host, unsigned index = 0);

/// A zeroed record.
template <class Record> Record Zero() {
    return Record{};
}
