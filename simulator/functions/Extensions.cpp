/// @file
/// The optional functions.
#include "caller/Call.h"

#include <algorithm>
#include <cstring>
#include <map>
#include <string>

using namespace sim;

namespace {

constexpr std::string_view DECIMAL = "0123456789";
constexpr std::string_view HEXADECIMAL = "0123456789abcdef";
constexpr std::string_view LETTERS = "abcdefghijklmnopqrstuvwxyz";

/// How the texts of a run of LUNs differ from one to the next.
struct Counted {
    std::string_view key;
    std::string_view prefix; ///< letters after it are the number, as in "sdz", "sdaa"; empty: none
    std::string_view digits; ///< of the number at the end of other texts
};
constexpr Counted COUNTED[] = {
    {"Address", "", DECIMAL},  {"Device", "sd", DECIMAL},  {"WorldwideId", "", HEXADECIMAL},
    {"Map", "mpath", DECIMAL}, {"MapDevice", "", DECIMAL}, {"MapId", "", HEXADECIMAL},
};

/// Adds to the number at the end of a text, if it has one.
std::string CountUp(std::string text, const Counted& how, std::size_t more) {
    const bool letters =
        !how.prefix.empty() && text.starts_with(how.prefix) && text.find_first_not_of(LETTERS) == std::string::npos;
    const std::string_view digits = letters ? LETTERS : how.digits;
    const std::size_t last = text.find_last_not_of(digits);
    const std::size_t begin = letters ? how.prefix.size() : last == std::string::npos ? 0 : last + 1;
    if (begin == text.size()) {
        return text;
    }
    for (std::size_t at = text.size(); at > begin && more > 0; --at) {
        more += digits.find(text[at - 1]);
        text[at - 1] = digits[more % digits.size()];
        more /= digits.size();
    }
    // There is no zero among the letters: "aa" follows "z".
    for (const std::size_t none = letters ? 1 : 0; more > 0; more = (more - none) / digits.size()) {
        text.insert(begin, 1, digits[(more - none) % digits.size()]);
    }
    return text;
}

/// Number of calls so far for the counters of a port or target. They go on in the next session, as real ones do.
VX_UINT64& CounterCalls(const Port& port, const _tagVEXAPI_SDMTarget* target) {
    static std::map<std::string, VX_UINT64> calls; // by names
    std::string names(reinterpret_cast<const char*>(port.record.WWPN), sizeof port.record.WWPN);
    if (target != nullptr) {
        names.append(reinterpret_cast<const char*>(target->PortName), sizeof target->PortName);
    }
    return calls[names];
}

/// Checks a caller's record and returns how many of its bytes are known here.
template <class Record> std::size_t CheckRecord(Call& call, const Record* record, const char* name) {
    call.CheckPointer(record, name);
    const Table fields = FieldsOf<Record>();
    const std::size_t size = std::min<std::size_t>(record->Size, sizeof(Record));
    // Shorter records are those of callers that don't know the last members.
    if (size != sizeof(Record) &&
        std::none_of(fields.begin(), fields.end(), [&](const Field& field) { return field.offset == size; })) {
        throw Mistake{"Size of " + std::string(name) + " may not be " + std::to_string(size)};
    }
    return size;
}

/// Checks a record that the library fills.
template <class Record> void CheckEmpty(Call& call, const Record* record, const char* name) {
    const std::size_t size = CheckRecord(call, record, name);
    call.CheckCleared(&record->Size + 1, size - sizeof record->Size, name);
}

/// Fills the members that the caller knows.
template <class Record> Status Fill(Record* record, const Record& known) {
    const std::size_t size = std::min<std::size_t>(record->Size, sizeof(Record));
    std::memcpy(&record->Size + 1, &known.Size + 1, size - sizeof record->Size);
    return STATUS_OK;
}

Target& OwnTarget(Call& call, Port& port, const _tagVEXAPI_SDMTarget* record) {
    call.CheckPointer(record, "target");
    const auto found = std::find_if(port.targets.begin(), port.targets.end(),
                                    [&](const Target& target) { return &target.record == record; });
    if (found == port.targets.end()) {
        throw Mistake{"the target is none of the port's"};
    }
    call.NoteArgument("target", BytesText(record->PortName));
    return *found;
}

std::size_t LunIndex(Call& call, const Target& target, const _tagVEXAPI_SDMLun* lun) {
    call.CheckPointer(lun, "lun");
    const std::size_t distance =
        reinterpret_cast<std::uintptr_t>(lun) - reinterpret_cast<std::uintptr_t>(target.luns.data());
    if (distance % sizeof *lun != 0 || distance / sizeof *lun >= target.luns.size()) {
        throw Mistake{"the LUN is none of the target's"};
    }
    call.NoteArgument("lun", lun->LunNumber);
    return distance / sizeof *lun;
}

/// What the operating system knows of a LUN, which may be within a run.
VEXAPI_EXT_LUN KernelLun(const Target& target, std::size_t index) {
    auto [first, kernel] = *std::prev(target.kernelLuns.upper_bound(index));
    for (const Counted& counted : COUNTED) {
        const Field* field = FindField(FieldsOf<VEXAPI_EXT_LUN>(), counted.key);
        char* text = reinterpret_cast<char*>(&kernel) + field->offset;
        StoreText(text, field->size, CountUp(text, counted, index - first));
    }
    return kernel;
}

} // namespace

VX_UINT32 VEXAPI_ExtSetScope(const VEXAPI_EXT_SCOPE* scope) {
    return Answer(__func__, [&](Call& call) {
        if (scope != nullptr) {
            VEXAPI_EXT_SCOPE known{};
            std::memcpy(&known, scope, CheckRecord(call, scope, "scope"));
            call.NoteRecord("scope", &known);
            if ((known.Parts & ~VX_UINT32{VEXAPI_EXT_EVERYTHING}) != 0) {
                throw Mistake{"Parts of scope may not be " + std::to_string(known.Parts)};
            }
            if (known.HasLunNumber > 1) {
                throw Mistake{"HasLunNumber of scope may not be " + std::to_string(known.HasLunNumber)};
            }
        }
        call.Begin();
        return STATUS_OK; // nothing is left out
    });
}

VX_UINT32 VEXAPI_ExtSetMessageHandler(VEXAPI_EXT_HANDLER handler, void* context) {
    return Answer(__func__, [&](Call& call) {
        call.NoteArgument("handler", handler == nullptr ? "none" : "given");
        call.Begin();
        SetMessageHandler(handler, context);
        return STATUS_OK;
    });
}

VX_UINT32 VEXAPI_ExtGetPort(VX_PORT_HANDLE* handle, VEXAPI_EXT_PORT* port) {
    return Answer(__func__, [&](Call& call) {
        const Port& known = call.GetPort(handle);
        CheckEmpty(call, port, "port");
        call.Begin();
        return Fill(port, known.answers.Kernel);
    });
}

VX_UINT32 VEXAPI_ExtGetTarget(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target, VEXAPI_EXT_TARGET* record) {
    return Answer(__func__, [&](Call& call) {
        const Target& known = OwnTarget(call, call.GetPort(handle), target);
        CheckEmpty(call, record, "record");
        call.Begin();
        return Fill(record, known.kernel);
    });
}

VX_UINT32 VEXAPI_ExtGetLun(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target, const _tagVEXAPI_SDMLun* lun,
                           VEXAPI_EXT_LUN* record) {
    return Answer(__func__, [&](Call& call) {
        const Target& known = OwnTarget(call, call.GetPort(handle), target);
        const std::size_t index = LunIndex(call, known, lun);
        CheckEmpty(call, record, "record");
        call.Begin();
        return Fill(record, KernelLun(known, index));
    });
}

VX_UINT32 VEXAPI_ExtGetCounters(VX_PORT_HANDLE* handle, const _tagVEXAPI_SDMTarget* target,
                                VEXAPI_EXT_COUNTER* counters, VX_UINT32* count) {
    return Answer(__func__, [&](Call& call) {
        Port& port = call.GetPort(handle);
        const KernelCounters& known =
            target == nullptr ? port.kernelCounters : OwnTarget(call, port, target).kernelCounters;
        call.CheckPointer(count, "count");
        call.NoteArgument("count", *count);
        if (*count != 0) {
            call.CheckCleared(counters, *count * sizeof *counters, "counters");
        }
        call.Begin();
        VX_UINT64& calls = CounterCalls(port, target);
        const std::size_t room = *count;
        *count = static_cast<VX_UINT32>(known.counters.size());
        for (std::size_t i = 0; i < std::min(room, known.counters.size()); ++i) {
            counters[i] = known.counters[i].start;
            counters[i].Value += known.counters[i].step * calls;
        }
        // A call that only asks how many there are doesn't count.
        calls += room == 0 ? 0 : 1;
        return STATUS_OK;
    });
}
