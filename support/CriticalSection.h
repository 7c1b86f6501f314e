/// @file
/// The tool's lock.
#pragma once

#include <pthread.h>

/// A recursive mutex: its owner may lock it repeatedly and must unlock it as often.
class CCriticalSection {
public:
    CCriticalSection();
    ~CCriticalSection();
    CCriticalSection(const CCriticalSection&) = delete;
    CCriticalSection& operator=(const CCriticalSection&) = delete;

    /// Waits indefinitely. Returns true once the lock is held.
    bool Lock();
    /// Returns false, with no effect, if the calling thread does not hold the lock.
    bool Unlock();

private:
    pthread_mutex_t mMutex;
};
