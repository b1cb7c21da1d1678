#include "Screen/Shader/VeUniformTable.h"

bool VeUniformTable::Register(const std::string& name,
                              const std::function<int32_t(const std::string&)>& locator) {
    for (const auto& entry : entries) {
        if (entry.first == name) {
            return false;
        }
    }
    entries.emplace_back(name, locator(name));
    return true;
}

int32_t VeUniformTable::Find(const std::string& name) const {
    for (const auto& entry : entries) {
        if (entry.first == name) {
            return entry.second;
        }
    }
    return kUnregistered;
}
