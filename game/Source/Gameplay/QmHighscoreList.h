#pragma once
// A map's top ten: entries of name and time text, ascending by time. The time text is the run's
// milliseconds written with six decimals ("61234.000000"); readers take its leading integer. A new
// time goes before the first entry whose time is greater, so equal times keep the older entry
// first. The list also gives the four badge limits shown during a race.
#include <cstdint>
#include <string>
#include <vector>

struct QmHighscoreEntry {
    std::string name;
    std::string time;
};

class QmHighscoreList {
public:
    static constexpr size_t kMaxEntries = 10;

    // The time text of a run time in milliseconds ("%f" of the number).
    static std::string TimeText(int64_t milliseconds);
    // The leading integer of a time text, as atoi reads it (0 when there is none).
    static int64_t TimeValue(const std::string& text);

    // 1-based rank the time would take, 0 when it qualifies without a place, or -1.
    static int HighscoreRank(const std::vector<QmHighscoreEntry>& list, int64_t time);
    static std::vector<QmHighscoreEntry> InsertHighscore(const std::vector<QmHighscoreEntry>& list,
                                                         int64_t time, const std::string& name);

    // Badge limits in seconds; 0 means no limit.
    struct Limits {
        float gold = 0.0f;
        float silver = 0.0f;
        float bronze = 0.0f;
        float badge = 0.0f;
    };
    static Limits BadgeLimits(const std::vector<QmHighscoreEntry>& list);
    // Which badge a race time shows: 0 gold, 1 silver, 2 bronze, 3 the plain badge, -1 none.
    static int BadgeFor(const Limits& limits, int64_t raceTimeMs);
};
