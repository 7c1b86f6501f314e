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

constexpr VX_UINT32 callersMistake = 0x200000FF;
constexpr VX_UINT32 refused = 0x200000FE;
constexpr VX_UINT32 stateNotKept = 0x200000FD;
constexpr VX_UINT32 noAnswer = 0x200000FB;
constexpr VX_UINT32 noSuchTarget = 0x200000FA;

/// A test with a folder of its own, which also holds state and journal, and no host but the one it describes.
class Simulated : public testing::Test {
protected:
    Simulated();
    ~Simulated() override;

    /// A path inside the test's folder.
    std::string path(const std::string& name) const { return folder_ + "/" + name; }
    /// Writes a file into the folder and gives its path.
    std::string file(const std::string& name, const std::string& content) const;
    /// Makes a description the host of the sessions to come.
    void describe(const Json& description) const { describeText(description.dump()); }
    void describeText(const std::string& text) const;

    /// Starts the library. Its output goes to `output`.
    VX_UINT32 start(VX_UINT32 debugLevel = 0);
    /// Ends it.
    static void end() { VEXAPI_Uninitialize(); }
    /// Starts over, as another process would find the host.
    void restart();

    /// Port number N in the order of the tree.
    static _vexapi_protocol_t* port(unsigned index = 0);
    static VX_PORT_HANDLE* handle(unsigned index = 0) { return &port(index)->PortHandle; }
    static VX_UINT32 word(unsigned index = 0);

    /// The journal's lines so far.
    std::vector<Json> journal() const;
    /// The journal's last line.
    Json lastCall() const;
    /// Deletes the journal.
    void forget() const;

    /// Runs `act` and gives what the library printed on standard output meanwhile.
    static std::string outputOf(const std::function<void()>& act);
    /// Runs `act` in a process of its own; its result is the process's exit status.
    static int inProcess(const std::function<int()>& act);

    std::string output; ///< of the last `start`

private:
    std::string folder_;
};

/// Text of a file.
std::string textOf(const std::string& path);

/// A host of one adapter with two ports; the first sees a disk array and an NVMe array.
Json smallHost();
/// The object of port N of `smallHost`.
Json& portOf(Json& host, unsigned index = 0);

/// A zeroed record.
template <class Record> Record zero() {
    return Record{};
}
