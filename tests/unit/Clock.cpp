#include "Clock.h"

#include <ctime>
#include <optional>

namespace {

std::optional<timeval> s_stoppedAt;

} // namespace

StoppedClock::StoppedClock(timeval now) {
    Set(now);
}

StoppedClock::~StoppedClock() {
    s_stoppedAt.reset();
}

void StoppedClock::Set(timeval now) {
    s_stoppedAt = now;
}

/// Replaces the C library's function in the whole test program.
extern "C" int gettimeofday(timeval* now, void*) noexcept {
    if (s_stoppedAt.has_value()) {
        *now = *s_stoppedAt;
        return 0;
    }
    timespec precise{};
    clock_gettime(CLOCK_REALTIME, &precise);
    *now = {precise.tv_sec, precise.tv_nsec / 1000};
    return 0;
}
