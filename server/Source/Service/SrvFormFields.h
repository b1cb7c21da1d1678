#pragma once
// The fields of the game's form posts. The game writes "key=value&key=value" with the values as
// typed, never URL-encoded, so a name or password may itself hold '&' or '='. For each command the
// game's field order is known: a value runs to the next expected "&key=" (the last field's marker is
// searched from the end), which reads such values back exactly as they were typed. A body of an
// unknown shape falls back to a plain split at '&'. Nothing is decoded: "%41" stays three bytes.
#include <cstdint>
#include <map>
#include <optional>
#include <string>

class SrvFormFields {
public:
    static SrvFormFields Parse(const std::string& body);

    // The value of a field; empty when absent.
    const std::string& Get(const std::string& key) const;
    // A field read as a whole decimal number (an optional '-' and 1 to 18 digits, nothing else).
    std::optional<int64_t> Number(const std::string& key) const;

    static std::optional<int64_t> ParseNumber(const std::string& text);

private:
    std::map<std::string, std::string> fields;
};
