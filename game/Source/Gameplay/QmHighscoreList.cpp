#include "Gameplay/QmHighscoreList.h"

#include <cstdio>

std::string QmHighscoreList::TimeText(int64_t milliseconds) {
    char text[64];
    std::snprintf(text, sizeof(text), "%f", static_cast<double>(milliseconds));
    return text;
}

int64_t QmHighscoreList::TimeValue(const std::string& text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t' || text[i] == '\n' || text[i] == '\r')) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    int64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        value = value * 10 + (text[i] - '0');
        if (value > INT32_MAX) {
            value = INT32_MAX; // atoi's range: a larger number reads as its largest value
            break;
        }
    }
    return negative ? -value : value;
}

int QmHighscoreList::HighscoreRank(const std::vector<QmHighscoreEntry>& list, int64_t time) {
    const int64_t worst = list.empty() ? 0 : TimeValue(list.back().time);
    if (!(time < worst || worst == 0 || list.size() < kMaxEntries)) {
        return -1;
    }
    if (list.empty()) {
        return 1;
    }
    for (size_t i = 0; i < list.size(); ++i) {
        if (TimeValue(list[i].time) > time) {
            return static_cast<int>(i) + 1;
        }
    }
    return list.size() < kMaxEntries ? static_cast<int>(list.size()) + 1 : 0;
}

std::vector<QmHighscoreEntry> QmHighscoreList::InsertHighscore(const std::vector<QmHighscoreEntry>& list,
                                                               int64_t time, const std::string& name) {
    std::vector<QmHighscoreEntry> result = list;
    const QmHighscoreEntry entry{name, TimeText(time)};
    for (size_t i = 0; i < result.size(); ++i) {
        if (TimeValue(result[i].time) > time) {
            result.insert(result.begin() + static_cast<std::ptrdiff_t>(i), entry);
            if (result.size() > kMaxEntries) {
                result.pop_back();
            }
            return result;
        }
    }
    if (result.size() < kMaxEntries) {
        result.push_back(entry);
    }
    return result;
}

QmHighscoreList::Limits QmHighscoreList::BadgeLimits(const std::vector<QmHighscoreEntry>& list) {
    Limits limits;
    const auto seconds = [&list](size_t index) {
        return static_cast<float>(TimeValue(list[index].time)) / 1000.0f;
    };
    if (!list.empty()) {
        limits.gold = seconds(0);
    }
    if (list.size() >= 2) {
        limits.silver = seconds(1);
    }
    if (list.size() >= 3) {
        limits.bronze = seconds(2);
    }
    if (list.size() >= kMaxEntries) {
        limits.badge = seconds(kMaxEntries - 1);
    }
    return limits;
}

int QmHighscoreList::BadgeFor(const Limits& limits, int64_t raceTimeMs) {
    const float t = static_cast<float>(raceTimeMs) / 1000.0f;
    const float order[4] = {limits.gold, limits.silver, limits.bronze, limits.badge};
    for (int badge = 0; badge < 4; ++badge) {
        if (t < order[badge] || order[badge] == 0.0f) {
            return badge;
        }
    }
    return -1;
}
