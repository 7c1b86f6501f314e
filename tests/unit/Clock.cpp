#include "Clock.h"

#include <ctime>
#include <optional>

namespace {

std::optional<timeval> stoppedAt;

} // namespace

StoppedClock::StoppedClock(timeval now) {
    Set(now);
}

StoppedClock::~StoppedClock() {
    stoppedAt.reset();
}

void StoppedClock::Set(timeval now) {
    stoppedAt = now;
}

/// Replaces the C library's function in the whole test program.
extern "C" int gettimeofday(timeval* now, void*) noexcept {
    if (stoppedAt.has_value()) {
        *now = *stoppedAt;
        return 0;
    }
    timespec precise{};
    clock_gettime(CLOCK_REALTIME, &precise);
    *now = {precise.tv_sec, precise.tv_nsec / 1000};
    return 0;
}
