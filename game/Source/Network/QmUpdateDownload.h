#pragma once
// The update package fetched from the online service on a thread of its own, so the menu keeps
// its pace while it comes: "/files/quillmaze-update.tar.gz" into the game folder, checked against
// the SHA-256 published beside it ("/files/quillmaze-update.sha256"). A package that does not
// match is removed. The running game's own files are never touched: the player unpacks the
// package and starts the new game from there. Destroying stops a download still running and waits
// for it.
#include "Threads/VtJobHolder.h"

#include <atomic>
#include <cstdint>
#include <string>

class QmUpdateDownload {
public:
    // Language lines of the outcomes.
    static constexpr int32_t kUnreachableLine = 213;
    static constexpr int32_t kDamagedLine = 214;

    // Starts fetching from the service ("http://host:port"); false while one is still running.
    bool Start(const std::string& serviceUrl);
    bool Running() const { return holder.Busy(); }
    // Once a download ended: true, with the package's path, or with an empty path and the
    // language line that says why it failed. Taken once.
    bool TakeResult(std::string& path, int32_t& failureLine);

    // The package's path in the game folder.
    static std::string PackagePath();

private:
    struct Outcome {
        std::string path;
        int32_t failureLine = 0;
    };
    static Outcome Fetch(const std::string& baseUrl, const std::string& path,
                         const std::atomic<bool>* cancel);

    Outcome outcome;
    VtJobHolder holder; // last: stops before the outcome it writes goes
};
