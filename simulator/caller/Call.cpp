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

/// The higher of the two debug levels: every call prints its journal line too.
constexpr VX_UINT32 CHATTY_LEVEL = 31;

std::recursive_mutex& CallMutex() {
    static std::recursive_mutex mutex;
    return mutex;
}

// A plain pointer, never destroyed at exit: callers may still read the tree in their own destructors.
Session* s_session = nullptr;

VEXAPI_EXT_HANDLER s_handler = nullptr; ///< the caller's, for messages
void* s_handlerContext = nullptr;

/// Why the last start was refused, or empty. Calls after it fail without being the caller's mistake.
std::string& StartRefusal() {
    static auto* text = new std::string();
    return *text;
}

/// The active fault list. It is parsed again, and its calls are counted anew, when the variable changes.
struct FaultList {
    std::string text;
    Faults faults;
    std::string refusal;
};

FaultList& CurrentFaultList() {
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

std::string HexText(Status status) {
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

Call::Call(const char* function) : mNotes(std::make_unique<Notes>()), mFunction(FunctionIndex(function)) {}

Call::~Call() = default;

Session& Call::GetSession() {
    if (const std::string& refusal = CurrentFaultList().refusal; !refusal.empty()) {
        throw Failure{STATUS_REFUSED, refusal};
    }
    if (sim::s_session == nullptr && !StartRefusal().empty()) {
        throw Failure{STATUS_REFUSED, StartRefusal()};
    }
    if (sim::s_session == nullptr) {
        throw Mistake{"the library isn't initialized"};
    }
    return *sim::s_session;
}

Port& Call::GetPort(const VX_PORT_HANDLE* handle) {
    CheckPointer(handle, "handle");
    mPort = GetSession().GetHost().Find(*handle);
    if (mPort == nullptr) {
        throw Mistake{"the handle is none of the library's"};
    }
    return *mPort;
}

Port& Call::GetPort(VX_UINT32 word) {
    NoteArgument("word", word);
    mPort = GetSession().GetHost().Find(word);
    if (mPort == nullptr) {
        throw Mistake{"the word is of no handle of the library's"};
    }
    return *mPort;
}

void Call::CheckPointer(const void* pointer, const char* name) {
    if (pointer == nullptr) {
        throw Mistake{std::string(name) + " is null"};
    }
}

void Call::CheckCleared(const void* memory, std::size_t size, const char* name) {
    CheckPointer(memory, name);
    const auto* bytes = static_cast<const unsigned char*>(memory);
    if (std::any_of(bytes, bytes + size, [](unsigned char byte) { return byte != 0; })) {
        throw Mistake{std::string(name) + " isn't cleared"};
    }
}

void Call::CheckFixed(const char* name, std::uint64_t value, std::initializer_list<std::uint64_t> allowed) {
    NoteArgument(name, value);
    if (std::find(allowed.begin(), allowed.end(), value) == allowed.end()) {
        throw Mistake{std::string(name) + " may not be " + std::to_string(value)};
    }
}

void Call::NoteArgument(const char* name, std::uint64_t value) {
    mNotes->arguments[name] = value;
}

void Call::NoteArgument(const char* name, std::string_view text) {
    mNotes->arguments[name] = text;
}

void Call::Note(const char* name, Table table, const void* record) {
    mNotes->records[name] = WriteRecord(table, record);
}

Asked Call::Begin() {
    if (sim::s_session != nullptr) {
        sim::s_session->Refresh();
    }
    const std::optional<Fault> fault = CurrentFaultList().faults.Next(mFunction);
    if (fault && fault->kind == Fault::Kind::VALUE) {
        throw *fault;
    }
    if (!fault && mPort != nullptr) {
        for (const auto& [function, status] : mPort->statuses) {
            if (function == mFunction) {
                throw Fault{Fault::Kind::VALUE, status};
            }
        }
    }
    if (!fault) {
        return Asked::ANSWER;
    }
    Remark("a null pointer is asked for");
    return fault->kind == Fault::Kind::NULL_POINTER ? Asked::NULL_POINTER : Asked::NULL_HEAD;
}

void Call::ChangeHost(const std::function<void(Change&)>& make) {
    try {
        GetSession().ChangeHost(make);
    } catch (const StateNotKept& error) {
        throw Failure{STATUS_STATE_NOT_KEPT, std::string("the state can't be kept: ") + error.what()};
    }
}

void Call::Remark(const std::string& text) {
    mNotes->remarks.push_back(text);
}

Outcome Call::Caught() {
    try {
        throw;
    } catch (const Fault& fault) {
        mNotes->kind = "demanded";
        mNotes->reason = "the status is asked for";
        return {fault.status, true};
    } catch (const Failure& failure) {
        mNotes->kind = "failure";
        mNotes->reason = failure.reason;
        return {failure.status, false};
    } catch (const Mistake& mistake) {
        mNotes->kind = "mistake";
        mNotes->reason = mistake.reason;
        return {STATUS_CALLER_MISTAKE, false};
    } catch (const std::exception& error) {
        mNotes->kind = "failure";
        mNotes->reason = error.what();
        return {STATUS_INTERNAL, false};
    }
}

void Call::Close(const Outcome& outcome) {
    const std::string name(FunctionNames()[mFunction]);
    Json line = {{"function", name}};
    if (mPort != nullptr) {
        line["port"] = NameOf(*mPort);
    }
    if (!mNotes->arguments.empty()) {
        line["arguments"] = mNotes->arguments;
    }
    if (!mNotes->records.empty()) {
        line["records"] = mNotes->records;
    }
    line["status"] = outcome.status;
    if (mNotes->kind != nullptr) {
        line[mNotes->kind] = mNotes->reason;
    }
    if (!mNotes->remarks.empty()) {
        line["remarks"] = mNotes->remarks;
    }
    WriteJournal(line);

    if (IsSilent(mFunction)) {
        return;
    }
    const std::vector<std::string> notes =
        sim::s_session == nullptr ? std::vector<std::string>() : sim::s_session->TakeNotes();
    for (const std::string& note : notes) {
        Announce(note);
    }
    const std::string reason =
        mNotes->kind == nullptr ? "" : std::string(" (") + mNotes->kind + ": " + mNotes->reason + ")";
    std::printf("%s: status %s%s\n", name.c_str(), HexText(outcome.status).c_str(), reason.c_str());
    if (sim::s_session != nullptr && sim::s_session->debugLevel == CHATTY_LEVEL) {
        std::printf("%s: %s\n", name.c_str(), line.dump(-1, ' ', false, Json::error_handler_t::replace).c_str());
    }
}

Session* CurrentSession() {
    return s_session;
}

void StartSession() {
    if (const std::string& refusal = CurrentFaultList().refusal; !refusal.empty()) {
        Announce(refusal);
        throw Failure{STATUS_REFUSED, refusal};
    }
    try {
        StartRefusal().clear();
        s_session = new Session();
    } catch (const std::runtime_error& error) {
        StartRefusal() = error.what();
        Announce(std::string("the description is refused: ") + error.what());
        throw Failure{STATUS_REFUSED, error.what()};
    }
}

void EndSession() {
    delete s_session;
    s_session = nullptr;
    StartRefusal().clear();
}

void SetMessageHandler(VEXAPI_EXT_HANDLER handler, void* context) {
    s_handler = handler;
    s_handlerContext = context;
}

void Announce(const std::string& text) {
    if (s_handler != nullptr) {
        s_handler(s_handlerContext, text.c_str());
        return;
    }
    std::printf("vexapi simulator: %s\n", text.c_str());
    std::fprintf(stderr, "vexapi simulator: %s\n", text.c_str());
}

CallLock::CallLock() {
    CallMutex().lock();
}

CallLock::~CallLock() {
    CallMutex().unlock();
}

} // namespace sim
