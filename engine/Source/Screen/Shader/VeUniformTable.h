#pragma once
// The named uniforms of one shader program, in registration order. A name is looked up by exact,
// case-sensitive comparison; a name that was never registered has location 255.
#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

class VeUniformTable {
public:
    static constexpr int32_t kUnregistered = 255;

    // Appends the name with the location the locator gives, unless the name is already there.
    // Returns true when it was added.
    bool Register(const std::string& name, const std::function<int32_t(const std::string&)>& locator);
    int32_t Find(const std::string& name) const;
    size_t Size() const { return entries.size(); }

    std::vector<std::pair<std::string, int32_t>> entries;
};
