#include "Threads/VtThread.h"

#include "engine/Threads/Eventually.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {
// Runs until released; counts its runs.
class GateThread : public VtThread {
public:
    ~GateThread() override {
        open = true;
        WaitForEnd();
    }
    void Run() override {
        runs++;
        while (!open.load()) {
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }
    std::atomic<bool> open{false};
    std::atomic<int> runs{0};
};
} // namespace

TEST(VtThreadTest, StartingARunningThreadCreatesNothing) {
    GateThread thread;
    EXPECT_FALSE(thread.Join()); // never started: returns at once
    EXPECT_TRUE(thread.Start());
    EXPECT_FALSE(thread.Start());
    EXPECT_TRUE(Eventually([&] { return thread.runs.load() == 1; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(thread.runs.load(), 1);

    thread.open = true;
    EXPECT_TRUE(thread.Join());
    EXPECT_FALSE(thread.Join());

    // An ended thread may be started again.
    thread.open = false;
    EXPECT_TRUE(thread.Start());
    EXPECT_TRUE(Eventually([&] { return thread.runs.load() == 2; }));
    thread.open = true;
    EXPECT_TRUE(thread.Join());
    EXPECT_EQ(thread.runs.load(), 2);
}

TEST(VtThreadTest, DestructionWaitsForTheBody) {
    std::atomic<bool> finished{false};
    class Slow : public VtThread {
    public:
        explicit Slow(std::atomic<bool>& finished) : finished(finished) {}
        ~Slow() override { WaitForEnd(); }
        void Run() override {
            std::this_thread::sleep_for(std::chrono::milliseconds(30));
            finished = true;
        }
        std::atomic<bool>& finished;
    };
    {
        Slow thread(finished);
        thread.Start();
    }
    EXPECT_TRUE(finished.load());
}
