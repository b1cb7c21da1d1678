#include "Gameplay/QmRecording.h"

#include <cstdlib>
#include <vector>

namespace {
std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t begin = 0;
    while (true) {
        const size_t end = text.find(separator, begin);
        if (end == std::string::npos) {
            parts.push_back(text.substr(begin));
            return parts;
        }
        parts.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
}

// atoll without its undefined behaviour on overflow: a leading integer, saturated.
int64_t LeadingInteger(const std::string& text) {
    size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t')) {
        ++i;
    }
    bool negative = false;
    if (i < text.size() && (text[i] == '-' || text[i] == '+')) {
        negative = text[i] == '-';
        ++i;
    }
    int64_t value = 0;
    for (; i < text.size() && text[i] >= '0' && text[i] <= '9'; ++i) {
        if (value > (INT64_MAX - 9) / 10) {
            value = INT64_MAX;
            break;
        }
        value = value * 10 + (text[i] - '0');
    }
    return negative ? -value : value;
}

bool StrictNumber(const std::string& text, int64_t& value) {
    if (text.empty() || text.size() > 15) {
        return false;
    }
    value = 0;
    for (char c : text) {
        if (c < '0' || c > '9') {
            return false;
        }
        value = value * 10 + (c - '0');
    }
    return true;
}
} // namespace

std::string QmRecording::ToText() const {
    std::string text;
    for (const auto& [time, type] : events) {
        if (!text.empty()) {
            text += ';';
        }
        text += std::to_string(time) + ":" + std::to_string(type);
    }
    return text;
}

void QmRecording::FromText(const std::string& text) {
    events.clear();
    if (text.empty()) {
        return;
    }
    for (const std::string& part : Split(text, ';')) {
        const std::vector<std::string> fields = Split(part, ':');
        if (fields.size() < 2) {
            continue;
        }
        const int64_t type = LeadingInteger(fields[1]);
        Add(LeadingInteger(fields[0]), static_cast<int>(type > INT32_MAX   ? INT32_MAX
                                                        : type < INT32_MIN ? INT32_MIN
                                                                           : type));
    }
}

bool QmRecording::ParseStrict(const std::string& text, std::string& error) {
    events.clear();
    if (text.empty()) {
        return true;
    }
    int index = 0;
    for (const std::string& part : Split(text, ';')) {
        ++index;
        const std::vector<std::string> fields = Split(part, ':');
        int64_t time = 0;
        int64_t type = 0;
        if (fields.size() != 2 || !StrictNumber(fields[0], time) || !StrictNumber(fields[1], type) ||
            type > 5) {
            error = "input " + std::to_string(index) + " (\"" + part.substr(0, 40) +
                    "\") is not TIME:TYPE with a time in milliseconds and a type from 0 to 5";
            events.clear();
            return false;
        }
        Add(time, static_cast<int>(type));
    }
    return true;
}
