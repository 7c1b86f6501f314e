/// @file
/// One session, from `VEXAPI_Initialize` to `VEXAPI_Uninitialize`: the host, its saved changes and the lists that
/// callers haven't released.
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

/// The state file can't be written; nothing was changed.
struct StateNotKept : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// Records what a change touches. Call `Touch` before changing the value, so that the change can be rolled back if it
/// can't be saved.
class Change {
public:
    void Touch(Host& host, const char* key);
    void Touch(Adapter& adapter, const char* key);
    void Touch(Port& port, const char* key);
    /// Marks a reboot as pending if the port's changes need one. `always`: this change needs one on every port.
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
    /// Reads the description and the state. Throws `std::runtime_error` if the description is refused; a refused
    /// state only adds a note.
    Session();

    Host& GetHost() { return *mHost; }
    /// Changes the host: reads the current state, calls `make` and writes the state, all under the state's lock.
    /// Throws `StateNotKept`.
    void ChangeHost(const std::function<void(Change&)>& make);
    /// Picks up the changes of other processes.
    void Refresh();
    /// Applies all changes that are pending a reboot.
    void Reboot();
    /// Whether this session's last change needs a reboot; if it made none, whether any change is pending one.
    bool NeedsReboot() const;
    /// Returns messages for the user, such as refused state files, and clears them.
    std::vector<std::string> TakeNotes();

    /// Lists that callers hold, by head.
    std::map<const void*, std::vector<_VEXAPI_SANCONGTMGMTV2>> congestionLists;
    std::map<const void*, std::vector<_VEXAPI_ReadWriteBufferTestResult>> bufferLists;

    /// What the tool said about itself.
    VX_UINT32 toolId = 0;
    VX_UINT32 toolVersion[4] = {0, 0, 0, 0};
    VX_UINT32 debugLevel = 0;

private:
    /// The changes on disk. If the file is damaged or belongs to another description, adds a note and returns none.
    Json Load();
    /// Applies the state on disk to the host.
    void TakeOver();
    static void Apply(const Json& state, Host& host);
    void NoteRefused(const std::string& reason);

    std::string mPath;
    std::unique_ptr<Host> mHost;
    StateFile mState;
    std::vector<std::string> mNotes;
    Json mKept;           ///< the changes that were applied to the host
    int mLastChange = -1; ///< -1: none yet; otherwise whether it needs a reboot
};

} // namespace sim
