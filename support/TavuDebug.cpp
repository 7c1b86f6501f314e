#include "TavuDebug.h"

#include "CriticalSection.h"
#include "OwnFile.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ctime>
#include <dlfcn.h>
#include <unistd.h>

unsigned TavuDebug::dwDbgLevel = 0;

namespace {

constexpr unsigned long SLOW_SCOPE_MILLISECONDS = 300;

struct LevelWord {
    unsigned level;
    const char* word; ///< eleven characters wide
};
constexpr LevelWord LEVEL_WORDS[] = {
    {TRACE_INFORMATION, "INFORMATION"},
    {TRACE_WARNING, "WARNING    "},
    {TRACE_DEBUG, "DEBUG      "},
    {TRACE_DIAG_ERROR, "DIAG_ERROR "},
};

/// Name of the first bit of `level` that has one.
const char* WordOf(unsigned level) {
    for (const LevelWord& row : LEVEL_WORDS) {
        if ((level & row.level) != 0) {
            return row.word;
        }
    }
    return "";
}

/// Created at the first trace, so that runs without traces don't pay for it. Never destroyed: the destructors of
/// the command tree trace until the very end.
CCriticalSection& TraceLock() {
    static auto* const lock = new CCriticalSection;
    return *lock;
}

TavuString TimeStamp() {
    timeval now{};
    gettimeofday(&now, nullptr);
    tm local{};
    localtime_r(&now.tv_sec, &local);
    TavuString text;
    text.Format("%d/%d/%d %02d:%02d:%02d.%03d", local.tm_mon + 1, local.tm_mday, local.tm_year + 1900, local.tm_hour,
                local.tm_min, local.tm_sec, static_cast<int>(now.tv_usec / 1000));
    return text;
}

} // namespace

void TavuDebug::Initialize() {
    const char* value = std::getenv("ORFC_DEBUG_LEVEL");
    dwDbgLevel = value == nullptr ? 0 : static_cast<unsigned>(std::strtol(value, nullptr, 10));
}

void TavuDebug::Print(const char* format, ...) {
    if (dwDbgLevel == 0) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    PrintV(nullptr, "", format, arguments);
    va_end(arguments);
}

void TavuDebug::Print(unsigned level, const char* format, ...) {
    if (!IsEnabled(level)) {
        return;
    }
    va_list arguments;
    va_start(arguments, format);
    PrintV(&level, "", format, arguments);
    va_end(arguments);
}

void TavuDebug::PrintV(const unsigned* level, const char* prefix, const char* format, va_list arguments) {
    const bool isWanted = level != nullptr ? IsEnabled(*level) : dwDbgLevel != 0;
    if (!isWanted || format == nullptr || *format == '\0') {
        return;
    }
    TraceLock().Lock();
    TavuString text;
    text.FormatV(format, arguments);
    const auto process = static_cast<unsigned long>(getpid());
    TavuString line;
    if (level != nullptr) {
        line.Format("CIM Provider %s %lu%s: %s\r\n", WordOf(*level), process, prefix, text.c_str());
    } else {
        line.Format("CIM Provider %lu%s: %s\r\n", process, prefix, text.c_str());
    }
    OutputDebugStringA(line.c_str());
    TraceLock().Unlock();
}

void TavuDebug::OutputDebugStringA(const char* text) {
    const TavuString stamp = TimeStamp();
    FILE* log = AppendToOwnFile(GetInstallationPath().c_str());
    if (log == nullptr) {
        return;
    }
    std::fprintf(log, "%s %s", stamp.c_str(), text);
    std::fclose(log);
}

const TavuString& TavuDebug::GetInstallationPath() {
    static const auto* const path = [] {
        Dl_info info{};
        const int found = dladdr(reinterpret_cast<const void*>(&TavuDebug::GetInstallationPath), &info);
        return new TavuString(DebugLogPath(found != 0 && info.dli_fname != nullptr ? info.dli_fname : ""));
    }();
    return *path;
}

TavuString DebugLogPath(const char* file) {
    const char* base = std::strrchr(file, '/');
    TavuString name = base != nullptr ? base : "/viplugin";
    if (const std::size_t suffix = name.find(".so"); suffix != TavuString::npos) {
        name.resize(suffix);
    }
    TavuString path;
    path.Format("/var/tmp%s.log", name.c_str());
    return path;
}

ScopedTrace::ScopedTrace(Kind kind, const char* className) : mKind(kind), mClassName(className) {
    if (TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        mTimer.Start();
        TavuDebug::Print(TRACE_INFORMATION, "STARTING %s", GetName().c_str());
    }
}

ScopedTrace::~ScopedTrace() {
    if (!TavuDebug::IsEnabled(TRACE_INFORMATION)) {
        return;
    }
    mTimer.Stop();
    if (mTimer.ElapsedTimeInMillisec() >= SLOW_SCOPE_MILLISECONDS) {
        TavuDebug::Print(TRACE_INFORMATION, "RETURNING %s ... elapsed %s", GetName().c_str(),
                         mTimer.ElapsedTime().c_str());
    } else {
        TavuDebug::Print(TRACE_INFORMATION, "RETURNING %s", GetName().c_str());
    }
}

TavuString ScopedTrace::GetName() const {
    TavuString name;
    name.Format(mKind == CONSTRUCTOR ? "%s::%s(MultipleCmdsProcessor*, const char*, const char*, const char*, "
                                       "VX_UINT32, VX_UINT32)"
                                     : "virtual %s::~%s()",
                mClassName, mClassName);
    return name;
}
