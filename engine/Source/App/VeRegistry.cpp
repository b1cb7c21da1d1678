#include "App/VeRegistry.h"

#include <utility>

void VeRegistry::SetInt(std::string key, int32_t value) {
    ints[std::move(key)] = value;
}

void VeRegistry::SetString(std::string key, std::string value) {
    strings[std::move(key)] = std::move(value);
}

int32_t VeRegistry::GetInt(std::string key) {
    return ints[std::move(key)];
}

std::string VeRegistry::GetString(std::string key) {
    return strings[std::move(key)];
}

bool VeRegistry::IsOn(std::string key) {
    return GetInt(std::move(key)) == 1;
}
