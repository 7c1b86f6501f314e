#include "caller/Call.h"

#include "caller/Faults.h"
#include "caller/Functions.h"
#include "caller/Journal.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <mutex>
#include <nlohmann/json.hpp>

namespace sim {
namespace {

/// A caller may ask for the highest of the two debug levels; then each call tells its arguments.
constexpr VX_UINT32 chattyLevel = 31;

std::recursive_mutex& callMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

// Held by plain pointers and never destroyed at the end of the process: callers may still look at the tree
// in their own last steps.
Session* session = nullptr;

/// Why the last start was refused. Its calls fail, but not by a mistake of the caller's.
std::string& startRefusal() {
    static auto* text = new std::string();
    return *text;
}

/// The fault list in force. It begins anew when the variable's text changes.
struct FaultList {
    std::string text;
    Faults faults;
    std::string refusal;
};

FaultList& faultList() {
    static auto* list = new FaultList();
    const char* value = std::getenv("VEXAPI_SIM_FAULTS");
    const std::string text = value == nullptr ? "" : value;
    if (text != list->text) {
        list->text = text;
        list->faults = Faults();
        list->refusal.clear();
        try {
            list->faults = Faults(text);
        } catch (const std::runtime_error& error) {
            list->refusal = error.what();
        }
    }
    return *list;
}

std::string hexText(Status status) {
    char text[16];
    std::snprintf(text, sizeof text, status < 1000 ? "%u" : "0x%08X", status);
    return text;
}

} // namespace

struct Call::Notes {
    Json arguments = Json::object();
    Json records = Json::object();
    std::vector<std::string> remarks;
    std::string reason;
    const char* kind = nullptr; ///< the journal's key for `reason`
};

Call::Call(const char* function) : notes_(std::make_unique<Notes>()), function_(functionIndex(function)) {}

Call::~Call() = default;

Session& Call::session() {
    if (const std::string& refusal = faultList().refusal; !refusal.empty()) {
        throw Failure{statusRefused, refusal};
    }
    if (sim::session == nullptr && !startRefusal().empty()) {
        throw Failure{statusRefused, startRefusal()};
    }
    if (sim::session == nullptr) {
        throw Mistake{"the library isn't initialized"};
    }
    return *sim::session;
}

Port& Call::port(const VX_PORT_HANDLE* handle) {
    pointer(handle, "handle");
    port_ = session().host().find(*handle);
    if (port_ == nullptr) {
        throw Mistake{"the handle is none of the library's"};
    }
    return *port_;
}

Port& Call::port(VX_UINT32 word) {
    argument("word", word);
    port_ = session().host().find(word);
    if (port_ == nullptr) {
        throw Mistake{"the word is of no handle of the library's"};
    }
    return *port_;
}

void Call::pointer(const void* pointer, const char* name) {
    if (pointer == nullptr) {
        throw Mistake{std::string(name) + " is null"};
    }
}

void Call::cleared(const void* memory, std::size_t size, const char* name) {
    pointer(memory, name);
    const auto* bytes = static_cast<const unsigned char*>(memory);
    if (std::any_of(bytes, bytes + size, [](unsigned char byte) { return byte != 0; })) {
        throw Mistake{std::string(name) + " isn't cleared"};
    }
}

void Call::fixed(const char* name, std::uint64_t value, std::initializer_list<std::uint64_t> allowed) {
    argument(name, value);
    if (std::find(allowed.begin(), allowed.end(), value) == allowed.end()) {
        throw Mistake{std::string(name) + " may not be " + std::to_string(value)};
    }
}

void Call::argument(const char* name, std::uint64_t value) {
    notes_->arguments[name] = value;
}

void Call::argument(const char* name, std::string_view text) {
    notes_->arguments[name] = text;
}

void Call::note(const char* name, Table table, const void* record) {
    notes_->records[name] = writeRecord(table, record);
}

Asked Call::begin() {
    if (sim::session != nullptr) {
        sim::session->refresh();
    }
    const std::optional<Fault> fault = faultList().faults.next(function_);
    if (fault && fault->kind == Fault::Kind::Value) {
        throw *fault;
    }
    if (!fault && port_ != nullptr) {
        for (const auto& [function, status] : port_->statuses) {
            if (function == function_) {
                throw Fault{Fault::Kind::Value, status};
            }
        }
    }
    if (!fault) {
        return Asked::Answer;
    }
    remark("a null pointer is asked for");
    return fault->kind == Fault::Kind::Null ? Asked::Null : Asked::NullHead;
}

void Call::change(const std::function<void(Change&)>& make) {
    try {
        session().change(make);
    } catch (const StateNotKept& error) {
        throw Failure{statusStateNotKept, std::string("the state can't be kept: ") + error.what()};
    }
}

void Call::remark(const std::string& text) {
    notes_->remarks.push_back(text);
}

Outcome Call::caught() {
    try {
        throw;
    } catch (const Fault& fault) {
        notes_->kind = "demanded";
        notes_->reason = "the status is asked for";
        return {fault.status, true};
    } catch (const Failure& failure) {
        notes_->kind = "failure";
        notes_->reason = failure.reason;
        return {failure.status, false};
    } catch (const Mistake& mistake) {
        notes_->kind = "mistake";
        notes_->reason = mistake.reason;
        return {statusCallerMistake, false};
    } catch (const std::exception& error) {
        notes_->kind = "failure";
        notes_->reason = error.what();
        return {statusInternal, false};
    }
}

void Call::close(const Outcome& outcome) {
    const std::string name(functionNames()[function_]);
    Json line = {{"function", name}};
    if (port_ != nullptr) {
        line["port"] = nameOf(*port_);
    }
    if (!notes_->arguments.empty()) {
        line["arguments"] = notes_->arguments;
    }
    if (!notes_->records.empty()) {
        line["records"] = notes_->records;
    }
    line["status"] = outcome.status;
    if (notes_->kind != nullptr) {
        line[notes_->kind] = notes_->reason;
    }
    if (!notes_->remarks.empty()) {
        line["remarks"] = notes_->remarks;
    }
    writeJournal(line);

    if (isSilent(function_)) {
        return;
    }
    const std::vector<std::string> notes =
        sim::session == nullptr ? std::vector<std::string>() : sim::session->takeNotes();
    for (const std::string& note : notes) {
        announce(note);
    }
    const std::string reason =
        notes_->kind == nullptr ? "" : std::string(" (") + notes_->kind + ": " + notes_->reason + ")";
    std::printf("%s: status %s%s\n", name.c_str(), hexText(outcome.status).c_str(), reason.c_str());
    if (sim::session != nullptr && sim::session->debugLevel == chattyLevel) {
        std::printf("%s: %s\n", name.c_str(), line.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    }
}

Session* currentSession() {
    return session;
}

void startSession() {
    if (const std::string& refusal = faultList().refusal; !refusal.empty()) {
        announce(refusal);
        throw Failure{statusRefused, refusal};
    }
    try {
        startRefusal().clear();
        session = new Session();
    } catch (const std::runtime_error& error) {
        startRefusal() = error.what();
        announce(std::string("the description is refused: ") + error.what());
        throw Failure{statusRefused, error.what()};
    }
}

void endSession() {
    delete session;
    session = nullptr;
    startRefusal().clear();
}

void announce(const std::string& text) {
    std::printf("vexapi simulator: %s\n", text.c_str());
    std::fprintf(stderr, "vexapi simulator: %s\n", text.c_str());
}

CallLock::CallLock() {
    callMutex().lock();
}

CallLock::~CallLock() {
    callMutex().unlock();
}

} // namespace sim
