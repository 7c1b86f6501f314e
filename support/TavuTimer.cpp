#include "TavuTimer.h"

namespace {

bool IsSet(const timeval& time) {
    return time.tv_sec != 0 || time.tv_usec != 0;
}

timeval Now() {
    timeval now{};
    gettimeofday(&now, nullptr);
    return now;
}

} // namespace

void TavuTimer::Start() {
    mStart = Now();
    mStop = {};
}

void TavuTimer::Stop() {
    mStop = Now();
}

unsigned long TavuTimer::ElapsedTimeInMillisec() const {
    if (!IsSet(mStart)) {
        return 0;
    }
    const timeval end = IsSet(mStop) ? mStop : Now();
    const long microseconds = (end.tv_sec - mStart.tv_sec) * 1000000L + (end.tv_usec - mStart.tv_usec);
    return microseconds > 0 ? static_cast<unsigned long>(microseconds) / 1000 : 0;
}

TavuString TavuTimer::ElapsedTime() const {
    const unsigned long elapsed = ElapsedTimeInMillisec();
    const unsigned long seconds = elapsed / 1000;
    const auto days = static_cast<int>(seconds / 86400);
    const auto hours = static_cast<int>(seconds / 3600 % 24);
    const auto minutes = static_cast<int>(seconds / 60 % 60);
    TavuString text;
    if (days > 0) {
        text.Format("%d days ", days);
    }
    TavuString clock;
    clock.Format("%02d:%02d:%02d.%03d", hours, minutes, static_cast<int>(seconds % 60),
                 static_cast<int>(elapsed % 1000));
    return text + clock;
}
