#pragma once
// A recorded run: the steered racer's input changes keyed by race time in milliseconds. One event
// per time: a later event at the same time replaces the earlier one. The text form lists the
// events in time order as "time:type" joined by ";" (for example "0:2;812:0;1204:3").
#include <cstdint>
#include <map>
#include <string>

class QmRecording {
public:
    enum EventType {
        JumpPressed = 0,
        LeftPressed = 1,
        RightPressed = 2,
        JumpReleased = 3,
        LeftReleased = 4,
        RightReleased = 5,
    };

    void Add(int64_t time, int type) { events[time] = type; }
    void Clear() { events.clear(); }
    bool Empty() const { return events.empty(); }
    size_t Size() const { return events.size(); }
    const std::map<int64_t, int>& Events() const { return events; }

    std::string ToText() const;
    // Reads a recording text: parts without ":" are skipped; each number is read like atoi (a
    // leading integer, 0 when there is none). Replaces the current events.
    void FromText(const std::string& text);
    // Like FromText, but refuses text that is not strictly "time:type" parts with times of at
    // least 0 and types 0 to 5; on refusal the events are left empty and the reason is given.
    bool ParseStrict(const std::string& text, std::string& error);

private:
    std::map<int64_t, int> events;
};
