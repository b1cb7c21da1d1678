#include "SrvFormFields.h"

#include <vector>

namespace {
// The fields the game sends for each command, in its order (after "qcode").
const std::map<std::string, std::vector<std::string>>& KnownOrders() {
    static const std::map<std::string, std::vector<std::string>> orders = {
        {"login", {"username", "password", "build"}},
        {"register", {"username", "password", "email", "build"}},
        {"mapuserlist", {}},
        {"requestmaps", {"uid"}},
        {"deletemap", {"user_id", "mapno", "prevtimems", "timems", "s"}},
        {"swapmaps", {"user_id", "mapno", "map2offset", "prevtimems", "timems", "s"}},
    };
    return orders;
}

std::map<std::string, std::string> SplitPlain(const std::string& body) {
    std::map<std::string, std::string> fields;
    size_t start = 0;
    while (start <= body.size()) {
        size_t end = body.find('&', start);
        if (end == std::string::npos) {
            end = body.size();
        }
        std::string piece = body.substr(start, end - start);
        size_t eq = piece.find('=');
        if (!piece.empty()) {
            std::string key = piece.substr(0, eq);
            if (!fields.count(key)) {
                fields[key] = eq == std::string::npos ? std::string() : piece.substr(eq + 1);
            }
        }
        start = end + 1;
    }
    return fields;
}
} // namespace

SrvFormFields SrvFormFields::Parse(const std::string& body) {
    SrvFormFields result;
    const std::string head = "qcode=";
    if (body.rfind(head, 0) == 0) {
        size_t codeEnd = body.find('&');
        std::string code = body.substr(head.size(), codeEnd == std::string::npos ? std::string::npos
                                                                                 : codeEnd - head.size());
        auto known = KnownOrders().find(code);
        if (known != KnownOrders().end()) {
            const std::vector<std::string>& order = known->second;
            std::map<std::string, std::string> fields{{"qcode", code}};
            size_t position = codeEnd;
            bool whole = true;
            for (size_t i = 0; i < order.size() && whole; ++i) {
                std::string marker = "&" + order[i] + "=";
                if (position == std::string::npos || body.compare(position, marker.size(), marker) != 0) {
                    whole = false;
                    break;
                }
                size_t valueStart = position + marker.size();
                size_t next = body.size();
                if (i + 1 < order.size()) {
                    std::string nextMarker = "&" + order[i + 1] + "=";
                    next =
                        (i + 2 == order.size()) ? body.rfind(nextMarker) : body.find(nextMarker, valueStart);
                    if (next == std::string::npos || next < valueStart) {
                        whole = false;
                        break;
                    }
                }
                fields[order[i]] = body.substr(valueStart, next - valueStart);
                position = next;
            }
            if (whole && (order.empty() ? codeEnd == std::string::npos : true)) {
                result.fields = std::move(fields);
                return result;
            }
        }
    }
    result.fields = SplitPlain(body);
    return result;
}

const std::string& SrvFormFields::Get(const std::string& key) const {
    static const std::string empty;
    auto found = fields.find(key);
    return found == fields.end() ? empty : found->second;
}

std::optional<int64_t> SrvFormFields::ParseNumber(const std::string& text) {
    size_t i = (!text.empty() && text[0] == '-') ? 1 : 0;
    if (text.size() == i || text.size() - i > 18) {
        return std::nullopt;
    }
    int64_t value = 0;
    for (size_t k = i; k < text.size(); ++k) {
        if (text[k] < '0' || text[k] > '9') {
            return std::nullopt;
        }
        value = value * 10 + (text[k] - '0');
    }
    return i ? -value : value;
}

std::optional<int64_t> SrvFormFields::Number(const std::string& key) const {
    auto found = fields.find(key);
    if (found == fields.end()) {
        return std::nullopt;
    }
    return ParseNumber(found->second);
}
