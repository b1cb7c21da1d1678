#pragma once
// The engine settings: integer and string values under keys beginning "VE_", filled once at
// start and read by the engine to decide which services exist. Reading a key that was never set
// enters it (0 or empty) and returns that. A switch is on only when its value is exactly 1.
// Main thread only.
#include <cstdint>
#include <map>
#include <string>

class VeRegistry {
public:
    void SetInt(std::string key, int32_t value);
    void SetString(std::string key, std::string value);
    int32_t GetInt(std::string key);
    std::string GetString(std::string key);
    // GetInt(key) == 1.
    bool IsOn(std::string key);

    bool HasInt(const std::string& key) const { return ints.count(key) != 0; }
    bool HasString(const std::string& key) const { return strings.count(key) != 0; }

private:
    std::map<std::string, int32_t> ints;
    std::map<std::string, std::string> strings;
};
