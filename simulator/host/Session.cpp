#include "host/Session.h"

#include "description/Description.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

namespace sim {
namespace {

std::string EnvironmentText(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Calls `read(object, path, element)` for each object in a section, whose keys are indexes of elements.
template <class Element, class Read>
void ApplySection(const Json& state, const char* section, Element element, Read read) {
    if (!state.contains(section)) {
        return;
    }
    const std::string path = std::string("/") + section;
    RequireObject(state[section], path);
    for (auto item = state[section].begin(); item != state[section].end(); ++item) {
        auto* found = element(item.key());
        if (found == nullptr) {
            throw Refusal(path + "/" + item.key(), "there is no such element");
        }
        read(item.value(), path + "/" + item.key(), *found);
    }
}

/// The element with this decimal index, or null.
template <class Elements> auto* ElementAt(Elements& elements, const std::string& index) {
    using Element = std::remove_reference_t<decltype(elements[0])>;
    std::size_t position = elements.size();
    if (!index.empty() && index.size() < 9 && index.find_first_not_of("0123456789") == std::string::npos) {
        position = std::stoul(index);
    }
    return position < elements.size() ? &elements[position] : static_cast<Element*>(nullptr);
}

} // namespace

void Change::Touch(Host& host, const char* key) {
    mTouched.push_back({"Host", "", key, WriteChangedHost(key, host).dump(),
                        [&host, key] { return WriteChangedHost(key, host).dump(); },
                        [&host](const std::string& old) { ReadChangedHost(Json::parse(old), "", host); }});
}

void Change::Touch(Adapter& adapter, const char* key) {
    mTouched.push_back({"Adapters", std::to_string(adapter.index), key, WriteChangedAdapter(key, adapter).dump(),
                        [&adapter, key] { return WriteChangedAdapter(key, adapter).dump(); },
                        [&adapter](const std::string& old) { ReadChangedAdapter(Json::parse(old), "", adapter); }});
}

void Change::Touch(Port& port, const char* key) {
    mTouched.push_back({"Ports", std::to_string(port.index), key, WriteChangedPort(key, port).dump(),
                        [&port, key] { return WriteChangedPort(key, port).dump(); },
                        [&port](const std::string& old) { ReadChangedPort(Json::parse(old), "", port); }});
}

void Change::Pending(Port& port, bool always) {
    if (always || port.answers.RebootAfterChange != 0) {
        Touch(port, "RebootPending");
        port.answers.RebootPending = 1;
        mNeedsReboot = true;
    }
}

Session::Session()
    : mPath(EnvironmentText("VEXAPI_SIM_HOST")), mHost(ReadHost(mPath)), mState(StatePath(mPath), mHost->digest),
      mKept(Load()) {
    try {
        Apply(mKept, *mHost);
    } catch (const Refusal& refusal) {
        NoteRefused(refusal.what());
        mHost = ReadHost(mPath); // undo what was applied before the error
        mKept = Json::object();
    }
    if (EnvironmentText("VEXAPI_SIM_REBOOT") == "1") {
        Reboot();
    }
}

void Session::NoteRefused(const std::string& reason) {
    mNotes.push_back("the state file " + mState.Path() + " is refused, it holds nothing: " + reason);
}

Json Session::Load() {
    try {
        if (auto loaded = mState.Load()) {
            return std::move(*loaded);
        }
        if (mState.BelongsToOther()) {
            mNotes.push_back("the state file " + mState.Path() +
                             " belongs to another description; it is not applied, the next change replaces it");
        }
    } catch (const std::runtime_error& error) {
        NoteRefused(error.what());
    }
    return Json::object();
}

void Session::TakeOver() {
    Json fresh = Load();
    if (fresh == mKept) {
        return;
    }
    try {
        // First try it on a scratch host: callers hold pointers to the records of the real one.
        Apply(fresh, *ReadHost(mPath));
        Apply(fresh, *mHost);
        mKept = std::move(fresh);
    } catch (const Refusal& refusal) {
        NoteRefused(refusal.what());
        mKept = Json::object();
    }
}

void Session::Apply(const Json& state, Host& host) {
    ObjectReader top(state, "");
    top.Take("Host");
    top.Take("Adapters");
    top.Take("Ports");
    top.Finish();
    if (state.contains("Host")) {
        ReadChangedHost(state["Host"], "/Host", host);
    }
    std::vector<Adapter> none;
    std::vector<Adapter>& adapters = host.adapters ? *host.adapters : none;
    const auto adapterAt = [&](const std::string& index) { return ElementAt(adapters, index); };
    const auto portAt = [&](const std::string& index) {
        Port** port = ElementAt(host.ports, index);
        return port == nullptr ? nullptr : *port;
    };
    ApplySection(state, "Adapters", adapterAt, ReadChangedAdapter);
    ApplySection(state, "Ports", portAt, ReadChangedPort);
}

void Session::Refresh() {
    if (mState.Changed()) {
        TakeOver();
    }
}

void Session::ChangeHost(const std::function<void(Change&)>& make) {
    Change change;
    const auto takeBack = [&] {
        for (auto touched = change.mTouched.rbegin(); touched != change.mTouched.rend(); ++touched) {
            // The readers take an object, so wrap the old value in one.
            touched->restore("{\"" + touched->key + "\":" + touched->old + "}");
        }
    };
    try {
        const StateFile::Lock lock(mState);
        if (!mState.Path().empty()) {
            TakeOver();
        }
        make(change);
        Json state = mKept;
        for (const Change::Touched& touched : change.mTouched) {
            Json& section = state[touched.section];
            (touched.index.empty() ? section : section[touched.index])[touched.key] = Json::parse(touched.now());
        }
        mState.Save(state);
        mKept = std::move(state);
    } catch (const std::runtime_error& error) {
        takeBack();
        throw StateNotKept(error.what());
    } catch (...) {
        takeBack();
        throw;
    }
    mLastChange = change.mNeedsReboot ? 1 : 0;
}

void Session::Reboot() {
    ChangeHost([&](Change& change) {
        for (Port* port : mHost->ports) {
            PortAnswers& answers = port->answers;
            if (answers.RebootPending == 0) {
                continue;
            }
            change.Touch(*port, "RebootPending");
            change.Touch(*port, "FlashPending");
            change.Touch(*port, "CreditRecovery");
            answers.RebootPending = 0;
            CreditInfo& credit = answers.CreditRecovery;
            credit.State = credit.Status != 0 && port->record.PortState == 1 ? 1 : 0;
            credit.Negotiated = credit.State != 0 ? credit.Configured : VX_UINT8{0};
            if (answers.FlashPending == 0) {
                continue;
            }
            answers.FlashPending = 0;
            change.Touch(*port, "RunningFwVersion");
            change.Touch(*port, "RunningMpiFwVersion");
            change.Touch(*port, "RunningPepFwVersion");
            const VX_UINT8(&firmware)[3] = port->record.FlashFwVersion;
            const VX_FLASH_COMPONENT& mpi = answers.FlashComponents.MpiFirmware;
            const VX_FLASH_COMPONENT& pep = answers.FlashComponents.PepFirmware;
            char text[sizeof port->record.RunningFwVersion] = {};
            std::snprintf(text, sizeof text, "%u.%02u.%02u", firmware[0], firmware[1], firmware[2]);
            std::memcpy(port->record.RunningFwVersion, text, sizeof text);
            const VX_UINT8 mpiVersion[3] = {mpi.Major, mpi.Minor, mpi.Sub};
            const VX_UINT8 pepVersion[3] = {pep.Major, pep.Minor, pep.Sub};
            std::memcpy(port->record.RunningMpiFwVersion, mpiVersion, 3);
            std::memcpy(port->record.RunningPepFwVersion, pepVersion, 3);
        }
    });
    mLastChange = -1;
}

bool Session::NeedsReboot() const {
    if (mLastChange >= 0) {
        return mLastChange == 1;
    }
    for (const Port* port : mHost->ports) {
        if (port->answers.RebootPending != 0) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> Session::TakeNotes() {
    return std::exchange(mNotes, {});
}

} // namespace sim
