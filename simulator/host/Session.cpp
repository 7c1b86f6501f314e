#include "host/Session.h"

#include "description/Description.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <nlohmann/json.hpp>

namespace sim {
namespace {

std::string environmentText(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// Calls `read(object, path, element)` for each object of a section; the keys are the elements' indexes.
template <class Element, class Read>
void applySection(const Json& state, const char* section, Element element, Read read) {
    if (!state.contains(section)) {
        return;
    }
    const std::string path = std::string("/") + section;
    requireObject(state[section], path);
    for (auto item = state[section].begin(); item != state[section].end(); ++item) {
        auto* found = element(item.key());
        if (found == nullptr) {
            throw Refusal(path + "/" + item.key(), "there is no such element");
        }
        read(item.value(), path + "/" + item.key(), *found);
    }
}

/// The element of a list that an index in decimal names, or null.
template <class Elements> auto* elementAt(Elements& elements, const std::string& index) {
    using Element = std::remove_reference_t<decltype(elements[0])>;
    std::size_t position = elements.size();
    if (!index.empty() && index.size() < 9 && index.find_first_not_of("0123456789") == std::string::npos) {
        position = std::stoul(index);
    }
    return position < elements.size() ? &elements[position] : static_cast<Element*>(nullptr);
}

} // namespace

void Change::touch(Host& host, const char* key) {
    touched_.push_back({"Host", "", key, writeChangedHost(key, host).dump(),
                        [&host, key] { return writeChangedHost(key, host).dump(); },
                        [&host](const std::string& old) { readChangedHost(Json::parse(old), "", host); }});
}

void Change::touch(Adapter& adapter, const char* key) {
    touched_.push_back({"Adapters", std::to_string(adapter.index), key, writeChangedAdapter(key, adapter).dump(),
                        [&adapter, key] { return writeChangedAdapter(key, adapter).dump(); },
                        [&adapter](const std::string& old) { readChangedAdapter(Json::parse(old), "", adapter); }});
}

void Change::touch(Port& port, const char* key) {
    touched_.push_back({"Ports", std::to_string(port.index), key, writeChangedPort(key, port).dump(),
                        [&port, key] { return writeChangedPort(key, port).dump(); },
                        [&port](const std::string& old) { readChangedPort(Json::parse(old), "", port); }});
}

void Change::pending(Port& port, bool always) {
    if (always || port.answers.RebootAfterChange != 0) {
        touch(port, "RebootPending");
        port.answers.RebootPending = 1;
        needsReboot_ = true;
    }
}

Session::Session()
    : path_(environmentText("VEXAPI_SIM_HOST")), host_(readHost(path_)), state_(statePath(path_), host_->digest),
      kept_(load()) {
    try {
        apply(kept_, *host_);
    } catch (const Refusal& refusal) {
        noteRefused(refusal.what());
        host_ = readHost(path_); // a state with a defect at its end must leave no trace
        kept_ = Json::object();
    }
    if (environmentText("VEXAPI_SIM_REBOOT") == "1") {
        reboot();
    }
}

void Session::noteRefused(const std::string& reason) {
    notes_.push_back("the state file " + state_.path() + " is refused, it holds nothing: " + reason);
}

Json Session::load() {
    try {
        if (auto loaded = state_.load()) {
            return std::move(*loaded);
        }
        if (state_.belongsToOther()) {
            notes_.push_back("the state file " + state_.path() +
                             " belongs to another description; it is not applied, the next change replaces it");
        }
    } catch (const std::runtime_error& error) {
        noteRefused(error.what());
    }
    return Json::object();
}

void Session::takeOver() {
    Json fresh = load();
    if (fresh == kept_) {
        return;
    }
    try {
        // First over a host that nobody sees: callers already hold the records of the other one.
        apply(fresh, *readHost(path_));
        apply(fresh, *host_);
        kept_ = std::move(fresh);
    } catch (const Refusal& refusal) {
        noteRefused(refusal.what());
        kept_ = Json::object();
    }
}

void Session::apply(const Json& state, Host& host) {
    ObjectReader top(state, "");
    top.take("Host");
    top.take("Adapters");
    top.take("Ports");
    top.finish();
    if (state.contains("Host")) {
        readChangedHost(state["Host"], "/Host", host);
    }
    std::vector<Adapter> none;
    std::vector<Adapter>& adapters = host.adapters ? *host.adapters : none;
    const auto adapterAt = [&](const std::string& index) { return elementAt(adapters, index); };
    const auto portAt = [&](const std::string& index) {
        Port** port = elementAt(host.ports, index);
        return port == nullptr ? nullptr : *port;
    };
    applySection(state, "Adapters", adapterAt, readChangedAdapter);
    applySection(state, "Ports", portAt, readChangedPort);
}

void Session::refresh() {
    if (state_.changed()) {
        takeOver();
    }
}

void Session::change(const std::function<void(Change&)>& make) {
    Change change;
    const auto takeBack = [&] {
        for (auto touched = change.touched_.rbegin(); touched != change.touched_.rend(); ++touched) {
            // The old value as the one member of an object: what the readers take.
            touched->restore("{\"" + touched->key + "\":" + touched->old + "}");
        }
    };
    try {
        const StateFile::Lock lock(state_);
        if (!state_.path().empty()) {
            takeOver();
        }
        make(change);
        Json state = kept_;
        for (const Change::Touched& touched : change.touched_) {
            Json& section = state[touched.section];
            (touched.index.empty() ? section : section[touched.index])[touched.key] = Json::parse(touched.now());
        }
        state_.save(state);
        kept_ = std::move(state);
    } catch (const std::runtime_error& error) {
        takeBack();
        throw StateNotKept(error.what());
    } catch (...) {
        takeBack();
        throw;
    }
    lastChange_ = change.needsReboot_ ? 1 : 0;
}

void Session::reboot() {
    change([&](Change& change) {
        for (Port* port : host_->ports) {
            PortAnswers& answers = port->answers;
            if (answers.RebootPending == 0) {
                continue;
            }
            change.touch(*port, "RebootPending");
            change.touch(*port, "FlashPending");
            change.touch(*port, "CreditRecovery");
            answers.RebootPending = 0;
            CreditInfo& credit = answers.CreditRecovery;
            credit.State = credit.Status != 0 && port->record.PortState == 1 ? 1 : 0;
            credit.Negotiated = credit.State != 0 ? credit.Configured : VX_UINT8{0};
            if (answers.FlashPending == 0) {
                continue;
            }
            answers.FlashPending = 0;
            change.touch(*port, "RunningFwVersion");
            change.touch(*port, "RunningMpiFwVersion");
            change.touch(*port, "RunningPepFwVersion");
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
    lastChange_ = -1;
}

bool Session::needsReboot() const {
    if (lastChange_ >= 0) {
        return lastChange_ == 1;
    }
    for (const Port* port : host_->ports) {
        if (port->answers.RebootPending != 0) {
            return true;
        }
    }
    return false;
}

std::vector<std::string> Session::takeNotes() {
    return std::exchange(notes_, {});
}

} // namespace sim
