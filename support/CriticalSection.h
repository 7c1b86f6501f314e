/// @file
/// The one lock of the tool.
#pragma once

#include <pthread.h>

/// A recursive lock: its owner may take it again and gives it back as often as it took it.
class CCriticalSection {
public:
    CCriticalSection();
    ~CCriticalSection();
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    /// Waits for ever. True when the lock is held.
    bool Lock();
    /// False, with nothing changed, for a thread that does not hold the lock.
    bool Unlock();

private:
    pthread_mutex_t mMutex;
};
