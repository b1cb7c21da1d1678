#pragma once
// The files of one player's shared maps fetched into the cache in the background, on a worker of
// their own, so that the frames never wait for the transfers.
//
// Contract: Start stops a running batch first (its files may be partly there, never half
// written: each file is written beside its place and renamed). Poll hands over each finished
// batch once, every item marked with whether it arrived. Destroying stops and waits.
#include "Threads/VtJobHolder.h"

#include <cstdint>
#include <string>
#include <vector>

class QmMapDownloads {
public:
    struct Item {
        std::string url;
        std::string path;
        int64_t maxBytes = 0;
        bool arrived = false;
    };

    void Start(std::vector<Item> batch);
    // True from Start until Poll handed the batch over (or Stop).
    bool Running() const { return holder.Held(); }
    bool Poll(std::vector<Item>& batch);
    void Stop() { holder.Stop(); }

private:
    std::vector<Item> items;
    VtJobHolder holder; // last: stops before the batch it fills goes
};
