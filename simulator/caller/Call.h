/// @file
/// One call of a library function, from the first check to the journal line.
#pragma once

#include "caller/Status.h"
#include "description/Records.h"
#include "host/Session.h"

#include <initializer_list>
#include <memory>
#include <string>
#include <string_view>

namespace sim {

/// Ends a call with a failure that isn't the caller's mistake.
struct Failure {
    Status status;
    std::string reason;
};

/// Ends a call whose caller broke the rules.
struct Mistake {
    std::string reason;
};

/// What a fault makes a function that returns a pointer do.
enum class Asked { ANSWER, NULL_POINTER, NULL_HEAD };

/// How a call ended.
struct Outcome {
    Status status;
    bool demanded; ///< by VEXAPI_SIM_FAULTS or by the port's "Statuses"
};

/// The state of one call. Functions run their checks, which throw `Mistake`, then `Begin`, then compute the answer.
class Call {
public:
    /// `function` is the name of the library function.
    explicit Call(const char* function);
    Call(const Call&) = delete;
    Call& operator=(const Call&) = delete;
    ~Call();

    /// The session. Without one, throws `Mistake`, or `Failure` if the start was refused.
    Session& GetSession();
    /// The port of a handle, or of the word in a handle.
    Port& GetPort(const VX_PORT_HANDLE* handle);
    Port& GetPort(VX_UINT32 word);

    /// Checks that a pointer isn't null.
    void CheckPointer(const void* pointer, const char* name);
    /// Checks that the caller's record or buffer exists and is zeroed.
    void CheckCleared(const void* memory, std::size_t size, const char* name);
    template <class Record> void CheckCleared(const Record* record, const char* name) {
        CheckCleared(record, sizeof *record, name);
    }
    /// Logs an argument and checks that it has one of the allowed values.
    void CheckFixed(const char* name, std::uint64_t value, std::initializer_list<std::uint64_t> allowed);
    /// Logs an argument to the journal line.
    void NoteArgument(const char* name, std::uint64_t value);
    void NoteArgument(const char* name, std::string_view text);
    /// Logs a record of the caller's to the journal line.
    template <class Record> void NoteRecord(const char* name, const Record* record) {
        CheckPointer(record, name);
        Note(name, FieldsOf<Record>(), record);
    }

    /// Ends the checks: picks up the changes of other processes, and throws if a fault or one of the port's
    /// "Statuses" applies.
    Asked Begin();

    /// Changes the host and saves the change. Throws `Failure` if the state can't be written.
    void ChangeHost(const std::function<void(Change&)>& make);
    /// Adds a remark to the journal line.
    void Remark(const std::string& text);

    /* For `Run`. */

    /// Turns the exception in flight into an outcome.
    Outcome Caught();
    /// Writes chatter and journal.
    void Close(const Outcome& outcome);

private:
    void Note(const char* name, Table table, const void* record);

    struct Notes; ///< keeps the JSON library out of this header
    std::unique_ptr<Notes> mNotes;
    std::size_t mFunction;
    Port* mPort = nullptr;
};

/// The running session, or null. Only the session functions call `StartSession` and `EndSession`.
Session* CurrentSession();
void StartSession();
void EndSession();
/// Hands a line that users must see to the caller's handler. Without one, prints it on standard output, which callers
/// redirect to the library's log, and on standard error.
void Announce(const std::string& text);
/// Sets the handler; null removes it.
void SetMessageHandler(VEXAPI_EXT_HANDLER handler, void* context);

/// Serializes all calls in the process.
class CallLock {
public:
    CallLock();
    ~CallLock();
    CallLock(const CallLock&) = delete;
    CallLock& operator=(const CallLock&) = delete;
};

/// Runs the body of a library function, `Status body(Call&)`. Throws nothing.
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

/// The same for a function that returns a status.
template <class Body> Status Answer(const char* function, Body body) noexcept {
    return Run(function, body).status;
}

/// The same for a function that returns a value, which the body stores in `value`. A status demanded by a fault is
/// returned as it is; any other failure returns 0.
template <class Value, class Body> Value AnswerValue(const char* function, const Value& value, Body body) noexcept {
    const Outcome outcome = Run(function, body);
    return outcome.demanded ? static_cast<Value>(outcome.status) : outcome.status == STATUS_OK ? value : Value{0};
}

} // namespace sim
