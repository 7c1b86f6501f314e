/// @file
/// One call of a library function, from its first check to its journal line.
#pragma once

#include "caller/Status.h"
#include "description/Records.h"
#include "host/Session.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace sim {

/// Ends a call with a status that is no fault of the caller's.
struct Failure {
    Status status;
    std::string reason;
};

/// Ends a call of a caller who broke the rules.
struct Mistake {
    std::string reason;
};

/// What a fault asks of a function that hands out a pointer.
enum class Asked { ANSWER, NULL_POINTER, NULL_HEAD };

/// How a call ended.
struct Outcome {
    Status status;
    bool demanded; ///< the status was demanded by VEXAPI_SIM_FAULTS or by the port's "Statuses"
};

/// The state of one call. Its checks throw `Mistake`; write all checks first, then `Begin`, then the answer.
class Call {
public:
    /// `function` is the function's own name.
    explicit Call(const char* function);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

    /// The session, which must have begun.
    Session& GetSession();
    /// The port that a handle or the word in it stands for.
    Port& GetPort(const VX_PORT_HANDLE* handle);
    Port& GetPort(VX_UINT32 word);

    /// Checks that a pointer isn't null.
    void CheckPointer(const void* pointer, const char* name);
    /// Checks that a record or buffer of the caller is there and holds zeros.
    void CheckCleared(const void* memory, std::size_t size, const char* name);
    template <class Record> void CheckCleared(const Record* record, const char* name) {
        CheckCleared(record, sizeof *record, name);
    }
    /// Notes an argument and checks that it has one of the allowed values.
    void CheckFixed(const char* name, std::uint64_t value, std::initializer_list<std::uint64_t> allowed);
    /// Notes an argument for the journal.
    void NoteArgument(const char* name, std::uint64_t value);
    void NoteArgument(const char* name, std::string_view text);
    /// Notes a record that the caller hands in.
    template <class Record> void NoteRecord(const char* name, const Record* record) {
        CheckPointer(record, name);
        Note(name, FieldsOf<Record>(), record);
    }

    /// Ends the checks: throws when a fault or a status of the port's own is due, and takes over what other
    /// processes have changed.
    Asked Begin();

    /// Changes the host and keeps the change. A state that can't be written ends the call.
    void ChangeHost(const std::function<void(Change&)>& make);
    /// Adds a line for people to the journal line.
    void Remark(const std::string& text);

    /* The frame of every function. */

    /// Turns the exception in flight into the call's end.
    Outcome Caught();
    /// Writes chatter and journal.
    void Close(const Outcome& outcome);

private:
    void Note(const char* name, Table table, const void* record);

    struct Notes; ///< keeps the JSON out of the functions' sources
    std::unique_ptr<Notes> mNotes;
    std::size_t mFunction;
    Port* mPort = nullptr;
};

/// The running session, or null. `StartSession` and `EndSession` belong to the session functions.
Session* CurrentSession();
void StartSession();
void EndSession();
/// Prints a line that a person must see: on standard output, where the library's caller collects it, and
/// on standard error.
void Announce(const std::string& text);

/// Serialises all calls of the process.
class CallLock {
public:
    CallLock();
    ~CallLock();
    CallLock(const CallLock&) = delete;
    CallLock& operator=(const CallLock&) = delete;
};

/// Runs a function's body, `Status body(Call&)`, within its frame. Nothing is thrown out of it.
template <class Body> Outcome Run(const char* function, Body body) noexcept {
    try {
        const CallLock lock;
        Call call(function);
        Outcome outcome{STATUS_OK, false};
        try {
            outcome.status = body(call);
        } catch (...) {
            outcome = call.Caught();
        }
        call.Close(outcome);
        return outcome;
    } catch (...) {
        return {STATUS_INTERNAL, false};
    }
}

/// The same for a function whose result is a status.
template <class Body> Status Answer(const char* function, Body body) noexcept {
    return Run(function, body).status;
}

/// The same for a function whose result is the value that `value` holds after the body: a demanded status
/// is the result itself, any other failure gives 0.
template <class Value, class Body> Value AnswerValue(const char* function, const Value& value, Body body) noexcept {
    const Outcome outcome = Run(function, body);
    return outcome.demanded ? static_cast<Value>(outcome.status) : outcome.status == STATUS_OK ? value : Value{0};
}

} // namespace sim
