#pragma once
// The files of one player's shared maps fetched into the cache in the background: a job on a
// worker pool of its own (one thread), so that the frames never wait for the transfers.
//
// Contract: Start stops a running batch first (its files may be partly there, never half
// written: each file is written beside its place and renamed). Poll hands over each finished
// batch once, every item marked with whether it arrived. Destroying stops and waits.
#include <atomic>
#include <cstdint>
#include <memory>
#include <string>
#include <vector>

class VtWorkerPool;

class QmMapDownloads {
public:
    struct Item {
        std::string url;
        std::string path;
        int64_t maxBytes = 0;
        bool arrived = false;
    };

    QmMapDownloads();
    ~QmMapDownloads();
    QmMapDownloads(const QmMapDownloads&) = delete;
    QmMapDownloads& operator=(const QmMapDownloads&) = delete;

    void Start(std::vector<Item> items);
    // True from Start until Poll handed the batch over (or Stop).
    bool Running() const;
    bool Poll(std::vector<Item>& items);
    void Stop();

private:
    class Job;

    std::unique_ptr<VtWorkerPool> pool;
    std::unique_ptr<Job> job;
    bool queued = false;
};
