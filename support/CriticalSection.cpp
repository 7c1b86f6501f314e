#include "CriticalSection.h"

CCriticalSection::CCriticalSection() {
    pthread_mutexattr_t attributes;
    pthread_mutexattr_init(&attributes);
    pthread_mutexattr_settype(&attributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&mMutex, &attributes);
    pthread_mutexattr_destroy(&attributes);
}

CCriticalSection::~CCriticalSection() {
    pthread_mutex_destroy(&mMutex);
}

bool CCriticalSection::Lock() {
    return pthread_mutex_lock(&mMutex) == 0;
}

bool CCriticalSection::Unlock() {
    return pthread_mutex_unlock(&mMutex) == 0;
}
