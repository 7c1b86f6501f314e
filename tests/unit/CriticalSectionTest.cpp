#include "CriticalSection.h"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

namespace {

/// Result of `operation` in another thread.
template <typename Operation> bool InAnotherThread(Operation operation) {
    bool result = false;
    std::thread([&] { result = operation(); }).join();
    return result;
}

TEST(CriticalSectionTest, IsFreeAfterAsManyUnlocksAsLocks) {
    CCriticalSection section;
    EXPECT_TRUE(section.Lock());
    EXPECT_TRUE(section.Lock());
    EXPECT_TRUE(section.Unlock());
    EXPECT_TRUE(section.Unlock());
    EXPECT_TRUE(InAnotherThread([&] { return section.Lock() && section.Unlock(); }));
    EXPECT_FALSE(section.Unlock());
}

TEST(CriticalSectionTest, KeepsAnotherThreadOutUntilTheLastUnlock) {
    CCriticalSection section;
    std::atomic<bool> isInside{false};
    section.Lock();
    section.Lock();
    std::thread other([&] {
        section.Lock();
        isInside = true;
        section.Unlock();
    });
    section.Unlock();
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(isInside);
    section.Unlock();
    other.join();
    EXPECT_TRUE(isInside);
}

TEST(CriticalSectionTest, RefusesTheUnlockOfAnotherThread) {
    CCriticalSection section;
    section.Lock();
    EXPECT_FALSE(InAnotherThread([&] { return section.Unlock(); }));
    EXPECT_TRUE(section.Unlock()); // still held by this one
}

} // namespace
