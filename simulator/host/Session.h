/// @file
/// One session, from `VEXAPI_Initialize` to `VEXAPI_Uninitialize`: the host, its kept changes and the lists
/// that callers still hold.
#pragma once

#include "description/Fields.h"
#include "host/Host.h"
#include "host/State.h"

#include <functional>
#include <map>
#include <memory>
#include <nlohmann/json.hpp>
#include <string>
#include <vector>

namespace sim {

/// The state file can't be written. Nothing was changed.
struct StateNotKept : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Notes what a change touches. Say it before the value is changed, so that a change that can't be kept can
/// be taken back.
class Change {
public:
    void Touch(Host& host, const char* key);
    void Touch(Adapter& adapter, const char* key);
    void Touch(Port& port, const char* key);
    /// Touches the port's pending flag and sets it when the port's changes need a reboot. `always`: this
    /// change needs one on every port.
    void Pending(Port& port, bool always = false);

private:
    friend class Session;
    struct Touched {
        std::string section; ///< of the state: "Host", "Adapters" or "Ports"
        std::string index;   ///< empty for the host
        std::string key;
        std::string old; ///< the value before, as JSON text
        std::function<std::string()> now;
        std::function<void(const std::string&)> restore;
    };
    std::vector<Touched> mTouched;
    bool mNeedsReboot = false;
};

class Session {
public:
    /// Reads the description and the state. Throws `std::runtime_error` when the description is refused;
    /// a refused state only leaves notes.
    Session();

    Host& GetHost() { return *mHost; }
    /// Changes the host and keeps the change: reads the present state, applies `make`, writes the state, all
    /// under the state's lock. Throws `StateNotKept`.
    void ChangeHost(const std::function<void(Change&)>& make);
    /// Takes over what other processes have changed.
    void Refresh();
    /// Carries out what waits for a reboot.
    void Reboot();
    /// Whether the change that this session made last needs a reboot; without a change of its own whether
    /// any change waits for one.
    bool NeedsReboot() const;
    /// Lines for people, each once: refused state files and the like.
    std::vector<std::string> TakeNotes();

    /// Lists that callers hold, by head; the nodes are freed with them.
    std::map<const void*, std::vector<_VEXAPI_SANCONGTMGMTV2>> congestionLists;
    std::map<const void*, std::vector<_VEXAPI_ReadWriteBufferTestResult>> bufferLists;

    /// What the tool told about itself.
    VX_UINT32 toolId = 0;
    VX_UINT32 toolVersion[4] = {0, 0, 0, 0};
    VX_UINT32 debugLevel = 0;

private:
    /// The changes on disk. A file that is damaged or not ours is noted and gives none.
    Json Load();
    /// Brings the host to what is on disk.
    void TakeOver();
    static void Apply(const Json& state, Host& host);
    void NoteRefused(const std::string& reason);

    std::string mPath;
    std::unique_ptr<Host> mHost;
    StateFile mState;
    std::vector<std::string> mNotes;
    Json mKept;           ///< the changes that the host holds
    int mLastChange = -1; ///< -1 none yet, else whether it needs a reboot
};

} // namespace sim
