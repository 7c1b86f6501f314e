#include "ExportedLog.h"

#include "OwnFile.h"

#include <cstdio>
#include <cstring>
#include <cwchar>

namespace {

constexpr char API_LOG[] = "/tmp/APILog.txt";

bool s_isQuiet = false;

/// Converts a wide text to ASCII, truncated to the length of a trace.
TavuString Narrow(const wchar_t* format, va_list arguments) {
    wchar_t wide[TavuString::MAX_FORMATTED + 1] = {};
    std::vswprintf(wide, std::size(wide), format, arguments);
    TavuString text;
    for (const wchar_t* at = wide; *at != L'\0' && at != std::end(wide) - 1; ++at) {
        text += *at > 0 && *at < 0x80 ? static_cast<char>(*at) : '?';
    }
    return text;
}

void PrintWide(const unsigned* level, const wchar_t* format, va_list arguments) {
    if (format == nullptr || (level != nullptr ? !TavuDebug::IsEnabled(*level) : TavuDebug::GetLevel() == 0)) {
        return;
    }
    const TavuString text = Narrow(format, arguments);
    if (level != nullptr) {
        TavuDebug::Print(*level, "%s", text.c_str());
    } else {
        TavuDebug::Print("%s", text.c_str());
    }
}

const char* TypeWord(int type) {
    switch (type) {
    case CORE_LOG_INFO:
        return "Info";
    case CORE_LOG_WARNING:
        return "Warning";
    case CORE_LOG_ERROR:
        return "Error";
    case CORE_LOG_DEBUG:
        return "Debug";
    default:
        return "Unknown";
    }
}

} // namespace

void TavuDebug::UnInitialize() {}

void TavuDebug::Print(const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    PrintWide(nullptr, format, arguments);
    va_end(arguments);
}

void TavuDebug::Print(unsigned level, const wchar_t* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    PrintWide(&level, format, arguments);
    va_end(arguments);
}

void TavuDebug::PrintForFwUpg(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    PrintV(nullptr, "", format, arguments);
    va_end(arguments);
}

LinenoLog::LinenoLog(const char* file, int line) : mFile(file), mLine(line) {
    if (const char* slash = std::strrchr(file, '/')) {
        mFile = slash + 1;
    }
}

void LinenoLog::Print(const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    TavuDebug::PrintV(nullptr, GetPrefix().c_str(), format, arguments);
    va_end(arguments);
}

void LinenoLog::Print(unsigned level, const char* format, ...) const {
    va_list arguments;
    va_start(arguments, format);
    TavuDebug::PrintV(&level, GetPrefix().c_str(), format, arguments);
    va_end(arguments);
}

TavuString LinenoLog::GetPrefix() const {
    TavuString place;
    place.Format(" %s (%d)", mFile, mLine);
    TavuString prefix;
    prefix.Format("%-25s", place.c_str());
    return prefix;
}

// NOLINTNEXTLINE(performance-unnecessary-value-param): libraries link to this signature
void ORDM_DebugPrint(TavuString source, TavuString text) {
    TavuString message;
    message.Format("ORDM_DebugPrint: %s : %s\n", source.c_str(), text.c_str());
    CoreLogMessage(CORE_LOG_DEBUG, "%s", message.c_str());
    APILog(message.c_str());
}

void OR_Print(unsigned level, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    TavuDebug::PrintV(&level, "", format, arguments);
    va_end(arguments);
}

void APILog(const char* text) {
    FILE* const log = text != nullptr ? AppendToOwnFile(API_LOG) : nullptr;
    if (log == nullptr) {
        return;
    }
    std::fprintf(log, "Debug:\"%s\" \n", text);
    std::fclose(log);
}

void CoreLogMessage(int type, const char* format, ...) {
    if (s_isQuiet || format == nullptr) {
        return;
    }
    TavuString text;
    va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    std::printf("%s: %s\r\n", TypeWord(type), text.c_str());
}

void OR_setDebugMode(int mode) {
    s_isQuiet = mode == 0;
}
