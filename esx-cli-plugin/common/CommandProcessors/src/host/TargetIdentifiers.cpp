#include "TargetIdentifiers.h"

#include "ResultCodes.h"
#include "TracedFunction.h"
#include "Words.h"

#include <charconv>
#include <cstdio>
#include <string_view>

namespace {

constexpr std::string_view PORT_PART = "FC_";
constexpr std::string_view TARGET_PART = "_Target_";
constexpr std::string_view LUN_PART = "_LUN_";
constexpr std::string_view NAMESPACE_PART = "_NSID_";

char* Write(char* text, std::string_view part) {
    return std::copy(part.begin(), part.end(), text);
}

char* WriteWwn(char* text, const VX_UINT8 (&name)[8]) {
    FormatWwn(text, name);
    return text + WWN_LENGTH;
}

/// Returns the end of the written text, which is its terminator.
char* WriteTarget(char* text, const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target) {
    text = WriteWwn(Write(text, PORT_PART), protocol.WWPN);
    return WriteWwn(Write(text, TARGET_PART), target.PortName);
}

/// These parse what the functions above write, and return the position after it, or null. A null `text` yields
/// null.
const char* Read(const char* text, std::string_view part) {
    const bool isThere = text != nullptr && std::strncmp(text, part.data(), part.size()) == 0;
    return isThere ? text + part.size() : nullptr;
}

const char* ReadTarget(const char* text, TargetName& name) {
    text = Read(text, PORT_PART);
    text = Read(text != nullptr ? ReadWwn(text, name.portWwpn) : nullptr, TARGET_PART);
    return text != nullptr ? ReadWwn(text, name.targetWwpn) : nullptr;
}

/// The words of an identifier; empty from the first malformed part on.
struct IdentifierWords {
    explicit IdentifierWords(const char* identifier) {
        std::sscanf(identifier,
                    "%15[^'_']_%*x:%*x:%*x:%*x:%*x:%*x:%*x:%*x_%15[^'_']_%*x:%*x:%*x:%*x:%*x:%*x:%*x:%*x_%8[^'_']",
                    port, target, lun);
    }
    char port[16] = "";
    char target[16] = "";
    char lun[9] = "";
};

/// The malformed part of an identifier, or null.
const char* WrongPartOf(const char* identifier, IdentifierKind kind) {
    const IdentifierWords words(identifier);
    if (CompareNoCase(words.port, "FC") != 0) {
        return "Port";
    }
    if (CompareNoCase(words.target, "Target") != 0) {
        return "Tgt";
    }
    const bool isLun = CompareNoCase(words.lun, "LUN") == 0 || CompareNoCase(words.lun, "NSID") == 0;
    return kind == IdentifierKind::LUN && !isLun ? "LUN/NSID" : nullptr;
}

} // namespace

TargetIdentifier::TargetIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target) {
    WriteTarget(text, protocol, target);
}

LunIdentifier::LunIdentifier(const _vexapi_protocol_t& protocol, const _tagVEXAPI_SDMTarget& target)
    : mNumber(Write(WriteTarget(mText, protocol, target), IsNvmeTarget(target) ? NAMESPACE_PART : LUN_PART)) {}

const char* LunIdentifier::WithNumber(VX_UINT16 number) {
    *std::to_chars(mNumber, std::end(mText), number).ptr = '\0';
    return mText;
}

bool ParseTargetIdentifier(const char* text, TargetName& name) {
    const char* const end = ReadTarget(text, name);
    return end != nullptr && *end == '\0';
}

bool ParseLunIdentifier(const char* text, LunName& name) {
    const char* const end = ReadTarget(text, name.target);
    const char* number = Read(end, NAMESPACE_PART);
    name.isNamespace = number != nullptr;
    if (!name.isNamespace) {
        number = Read(end, LUN_PART);
    }
    if (number == nullptr || (number[0] == '0' && number[1] != '\0')) {
        return false; // a number is written without leading zeros
    }
    const char* const numberEnd = number + std::strlen(number);
    const auto [last, error] = std::from_chars(number, numberEnd, name.number);
    return error == std::errc{} && last == numberEnd;
}

ResultCode AdmitIdentifier(IdentifierKind kind, const TavuStringArray& args, const VX_ADAPTER_LIST*& host) {
    const char* identifier = ArgText(args, 0);
    if (IsInvokingHelp(identifier)) {
        TraceStep(TRACE_DEBUG, "Invoking Help");
        return RC_HELP_REQUESTED;
    }
    if (const char* part = WrongPartOf(identifier, kind)) {
        TraceStep(TRACE_DEBUG, "Invalid %s identifier %s", part, identifier);
        return RC_INVALID_PARAMETER;
    }
    host = VEXAPI_GetAdapterList();
    if (host == nullptr) {
        TraceStep(TRACE_DEBUG, "Adapter List is NULL");
        return RC_HOST_NOT_FOUND;
    }
    return RC_SUCCESS;
}
