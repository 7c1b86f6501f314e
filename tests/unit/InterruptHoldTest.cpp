#include "InterruptHold.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace {

int s_taken = 0;

class InterruptHoldTest : public testing::Test {
protected:
    void SetUp() override {
        s_taken = 0;
        mBefore = std::signal(SIGINT, [](int) { ++s_taken; });
    }
    void TearDown() override { std::signal(SIGINT, mBefore); }

private:
    void (*mBefore)(int) = SIG_DFL;
};

TEST_F(InterruptHoldTest, TheFirstInterruptWaitsForTheEnd) {
    {
        const InterruptHold hold;
        EXPECT_FALSE(hold.HasCome());
        std::raise(SIGINT);
        EXPECT_TRUE(hold.HasCome());
        EXPECT_EQ(s_taken, 0);
    }
    EXPECT_EQ(s_taken, 1);
    const InterruptHold another;
    EXPECT_FALSE(another.HasCome());
}

TEST_F(InterruptHoldTest, WithoutAnInterruptNothingHappens) {
    { const InterruptHold hold; }
    EXPECT_EQ(s_taken, 0);
    std::raise(SIGINT);
    EXPECT_EQ(s_taken, 1);
}

TEST_F(InterruptHoldTest, TheSecondInterruptDoesNotWait) {
    const InterruptHold hold;
    std::raise(SIGINT);
    std::raise(SIGINT);
    EXPECT_EQ(s_taken, 1);
}

TEST(InterruptHoldDeathTest, StandardOutputIsWrittenFirst) {
    EXPECT_EXIT(
        {
            std::signal(SIGINT, SIG_DFL);
            std::freopen("/dev/stderr", "w", stdout);
            static char buffer[4096];
            std::setvbuf(stdout, buffer, _IOFBF, sizeof buffer);
            const auto* const hold = new InterruptHold;
            std::printf("a document");
            std::raise(SIGINT);
            delete hold;
        },
        testing::KilledBySignal(SIGINT), "^a document$");
}

} // namespace
