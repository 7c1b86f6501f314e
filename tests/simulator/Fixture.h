/// @file
/// Fixture of the tests of the simulated library.
#pragma once

#include "extensions.h"

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

/// A test with a temporary folder, which also holds the state and the journal.
class Simulated : public testing::Test {
protected:
    Simulated();
    ~Simulated() override;

    /// A path in the test's folder.
    std::string Path(const std::string& name) const { return mFolder + "/" + name; }
    /// Writes a file to the folder and returns its path.
    std::string File(const std::string& name, const std::string& content) const;
    /// Sets the description for the following sessions.
    void Describe(const Json& description) const { DescribeText(description.dump()); }
    void DescribeText(const std::string& text) const;

    /// Starts the library and stores what it prints in `output`.
    VX_UINT32 Start(VX_UINT32 debugLevel = 0);
    /// Ends it.
    static void End() { VEXAPI_Uninitialize(); }
    /// Ends and starts the library.
    void Restart();

    /// A port by its index in the tree.
    static _vexapi_protocol_t* Port(unsigned index = 0);
    static VX_PORT_HANDLE* Handle(unsigned index = 0) { return &Port(index)->PortHandle; }
    static VX_UINT32 Word(unsigned index = 0);

    /// All lines of the journal.
    std::vector<Json> Journal() const;
    /// The last line of the journal.
    Json LastCall() const;
    /// Deletes the journal.
    void Forget() const;

    /// Runs `act` and returns what the library prints on standard output.
    static std::string OutputOf(const std::function<void()>& act);
    /// Runs `act` in a child process and returns its result, which must fit an exit status.
    static int InProcess(const std::function<int()>& act);

    std::string output; ///< of the last `Start`

private:
    std::string mFolder;
};

/// Content of a file.
std::string TextOf(const std::string& path);

/// A host of one adapter with two ports; the first sees a disk array and an NVMe array.
Json SmallHost();
/// A port of `SmallHost`, by index.
Json& PortOf(Json& host, unsigned index = 0);

/// A zeroed record of the optional functions, with its size.
template <class Record> Record Sized(std::size_t size = sizeof(Record)) {
    Record record{};
    record.Size = static_cast<VX_UINT32>(size);
    return record;
}
