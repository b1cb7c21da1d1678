#pragma once
// A shared map the player downloaded becomes a map of the player's tour "Downloads": the tour is
// made (through the world's tour operations) when missing, the map is written into its folder
// unlocked, and a later download of the same map (the same uid) replaces the earlier copy while
// the player's best times on it stay. Other maps of the tour are never overwritten.
#include <string>

class QmCoreEnvironmentManager;

class QmDownloadsTour {
public:
    static constexpr const char* kTourName = "Downloads";

    // Copies the map file at cachePath (a full path; its score file beside it comes along when the
    // tour has none for it yet). Returns the map's index in the tour, which becomes the world's
    // current tour, or -1 when the file cannot be read or written.
    static int Save(QmCoreEnvironmentManager& world, const std::string& cachePath);
    // The index of the tour "Downloads", or -1.
    static int Find(const QmCoreEnvironmentManager& world);
};
