#pragma once
// Start-up work the first frame does not need (the world's shaders and textures, the race's
// sounds, the music), done after that frame one step a frame so the window shows the game at
// once. Whoever needs a part of it runs the rest first (RunAll), so nothing is ever missing.
//
// Besides the steps of the main thread there are reads for a worker thread (the big music files),
// each with what is to be done with its result on the main thread. They run one after another in
// the order they were added, the first at once, while the steps go on; a finished read is handed
// over by the next RunNext, and once the steps are done the next RunNext waits for the rest, so
// the work ends a known number of RunNext calls after it began. Destroying the work waits for the
// read under way and drops the rest.
#include "Threads/VtJobHolder.h"

#include <deque>
#include <functional>
#include <vector>

class QmStartupWork {
public:
    void Add(std::function<void()> step);
    // read runs on the worker thread and must touch nothing the main thread uses meanwhile; finish
    // runs on the main thread once read has returned.
    void AddBackground(std::function<void()> read, std::function<void()> finish);
    // Hands over the read that has finished, if any, then runs the oldest waiting step. When no
    // step is left, waits for the reads instead and hands them over (RunAll).
    void RunNext();
    // Runs every waiting step in order, then waits for the reads and hands each over.
    void RunAll();
    bool Pending() const { return next < steps.size() || !reads.empty(); }

private:
    struct Read {
        std::function<void()> read;
        std::function<void()> finish;
    };

    // Starts the oldest read when the worker is free.
    void StartRead();
    // Hands over the read under way once it has returned (waiting for it when wait is set).
    void FinishRead(bool wait);

    std::vector<std::function<void()>> steps;
    size_t next = 0;
    std::deque<Read> reads; // the front one is under way while the holder holds it
    VtJobHolder worker;     // last: stops before the reads it runs go
};
