#include "Network/QmServiceAnswer.h"

#include <algorithm>
#include <cctype>
#include <limits>
#include <map>

namespace {
bool StartsWith(const std::string& text, const std::string& prefix) {
    return text.compare(0, prefix.size(), prefix) == 0;
}

// The decimal number at the start of text (a leading '-' allowed); 0 when there is none or it
// does not fit between the limits.
int64_t Number(const std::string& text, int64_t lowest = std::numeric_limits<int64_t>::min(),
               int64_t highest = std::numeric_limits<int64_t>::max()) {
    size_t at = 0;
    const bool negative = !text.empty() && text[0] == '-';
    at += negative ? 1 : 0;
    int64_t value = 0;
    bool any = false;
    for (; at < text.size() && std::isdigit(static_cast<unsigned char>(text[at])) != 0; ++at) {
        const int digit = text[at] - '0';
        if (value > (std::numeric_limits<int64_t>::max() - digit) / 10) {
            return 0;
        }
        value = value * 10 + digit;
        any = true;
    }
    value = negative ? -value : value;
    return any && value >= lowest && value <= highest ? value : 0;
}

int32_t Number32(const std::string& text) {
    return static_cast<int32_t>(
        Number(text, std::numeric_limits<int32_t>::min(), std::numeric_limits<int32_t>::max()));
}

std::vector<std::string> Split(const std::string& text, char separator) {
    std::vector<std::string> parts;
    size_t from = 0;
    while (parts.size() <= QmServiceAnswer::kMaxEntries) {
        const size_t to = text.find(separator, from);
        parts.push_back(text.substr(from, to == std::string::npos ? std::string::npos : to - from));
        if (to == std::string::npos) {
            break;
        }
        from = to + 1;
    }
    return parts;
}

// "1" + any character + "<user id>_<session>": the account the answer logs in.
void ReadAccount(const std::string& rest, QmServiceAnswer& answer) {
    const size_t underscore = rest.find('_');
    if (underscore == std::string::npos || rest.size() < 3) {
        answer.outcome = QmServiceAnswer::Outcome::NoSession;
        return;
    }
    answer.userId = Number32(rest.substr(2));
    // The session is echoed in form bodies: keep only what a token holds.
    for (const char c : rest.substr(underscore + 1)) {
        if (std::isalnum(static_cast<unsigned char>(c)) != 0) {
            answer.session.push_back(c);
        }
    }
    answer.outcome = QmServiceAnswer::Outcome::Done;
}

// "1<version>" done, "R" stale, anything else failed.
void ReadListWrite(const std::string& result, QmServiceAnswer& answer) {
    if (StartsWith(result, "1")) {
        answer.outcome = QmServiceAnswer::Outcome::Done;
        answer.number = Number(result.substr(1));
    } else if (StartsWith(result, "R")) {
        answer.outcome = QmServiceAnswer::Outcome::Stale;
    }
}
} // namespace

bool QmServiceAnswer::SafeFileName(const std::string& name) {
    if (name.empty() || name.size() > 80 || name[0] == '.') {
        return false;
    }
    return std::all_of(name.begin(), name.end(), [](char c) {
        return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
               c == '-' || c == '.' || c == ' ';
    });
}

bool QmServiceAnswer::Extract(std::string& buffer, std::string& message) {
    const size_t marker = buffer.find("[HP]");
    if (marker == std::string::npos) {
        return false;
    }
    message = buffer.substr(marker + 4);
    const size_t end = message.find("[HP&]");
    if (end != std::string::npos) {
        message.resize(end);
    }
    buffer.clear();
    return true;
}

QmServiceAnswer QmServiceAnswer::Parse(const std::string& message) {
    QmServiceAnswer answer;
    if (StartsWith(message, "VERSION")) {
        answer.word = Word::Version;
        answer.number = Number(message.substr(7));
        answer.outcome = Outcome::Done;
    } else if (StartsWith(message, "LOGIN")) {
        answer.word = Word::Login;
        const std::string rest = message.substr(5);
        if (StartsWith(rest, "1U")) {
            answer.outcome = Outcome::TooOld;
        } else if (StartsWith(rest, "1")) {
            ReadAccount(rest, answer);
        }
    } else if (StartsWith(message, "REGISTER")) {
        answer.word = Word::Register;
        const std::string rest = message.substr(8);
        if (StartsWith(rest, "11")) {
            ReadAccount(rest, answer);
        } else if (StartsWith(rest, "1")) {
            answer.outcome = Outcome::TooOld;
        }
        static const std::map<std::string, int32_t> words = {{"NAME_EXISTS", 147},
                                                             {"EMAIL_EXISTS", 148},
                                                             {"INCORRECT_EMAIL", 149},
                                                             {"EMPTY_FIELD", 150},
                                                             {"UNKNOWN_ERROR", 151}};
        const auto found = words.find(rest);
        answer.registerLine = found == words.end() ? 0 : found->second;
    } else if (StartsWith(message, "MAPUSERLIST")) {
        answer.word = Word::MapUserList;
        if (StartsWith(message.substr(11), "1")) {
            answer.outcome = Outcome::Done;
            for (const std::string& entry : Split(message.substr(12), ';')) {
                const std::vector<std::string> fields = Split(entry, ',');
                if (fields.size() >= 4 && answer.users.size() < kMaxEntries) {
                    answer.users.push_back({Number32(fields[0]), fields[1].substr(0, 40), Number32(fields[2]),
                                            fields[3] == "1"});
                }
            }
        }
    } else if (StartsWith(message, "REQUESTMAPS")) {
        answer.word = Word::RequestMaps;
        if (StartsWith(message.substr(11), "1")) {
            answer.outcome = Outcome::Done;
            for (const std::string& item : Split(message.substr(12), ',')) {
                const size_t colon = item.find(':');
                if (item.find(".map") == std::string::npos || colon == std::string::npos ||
                    answer.maps.size() >= kMaxEntries) {
                    continue;
                }
                QmSharedMap map{item.substr(0, colon), Number32(item.substr(colon + 1)), ""};
                if (SafeFileName(map.fileName)) {
                    answer.maps.push_back(map);
                }
            }
        }
    } else if (StartsWith(message, "POSTMAP")) {
        answer.word = Word::PostMap;
        answer.outcome = StartsWith(message.substr(7), "1") ? Outcome::Done : Outcome::Failed;
    } else if (StartsWith(message, "DELETEMAP")) {
        answer.word = Word::DeleteMap;
        ReadListWrite(message.substr(9), answer);
    } else if (StartsWith(message, "SWAPMAPS")) {
        answer.word = Word::SwapMaps;
        answer.moveKind = message.substr(8, 4);
        static const char* const kinds[] = {"FRST", "PREV", "NEXT", "LAST"};
        if (std::find(std::begin(kinds), std::end(kinds), answer.moveKind) != std::end(kinds)) {
            ReadListWrite(message.size() > 12 ? message.substr(12) : std::string(), answer);
        }
    }
    return answer;
}
