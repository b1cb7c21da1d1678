#include "Threads/VtThread.h"

#include "engine/Threads/ThreadTestKit.h"

#include <gtest/gtest.h>

#include <atomic>

namespace {
// Runs until its gate opens, counting its runs; when given a flag it sets it as its last act, a
// while after the gate opened. Its destructor opens the gate and waits for the body.
class GateThread : public VtThread {
public:
    explicit GateThread(std::atomic<bool>* ended = nullptr) : ended(ended) {}
    ~GateThread() override {
        open = true;
        WaitForEnd();
    }
    void Run() override {
        runs++;
        while (!open.load()) {
            Pause(1);
        }
        if (ended != nullptr) {
            Pause(30);
            *ended = true;
        }
    }
    std::atomic<bool> open{false};
    std::atomic<int> runs{0};

private:
    std::atomic<bool>* ended;
};
} // namespace

TEST(VtThreadTest, StartingARunningThreadCreatesNothing) {
    GateThread thread;
    EXPECT_FALSE(thread.Join()); // never started: returns at once
    EXPECT_TRUE(thread.Start());
    EXPECT_FALSE(thread.Start());
    EXPECT_TRUE(Eventually([&] { return thread.runs.load() == 1; }));
    Pause(20);
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
    std::atomic<bool> ended{false};
    {
        GateThread thread(&ended);
        thread.Start();
    }
    EXPECT_TRUE(ended.load());
}
