#pragma once
// Test support: sets (or, given nullptr, removes) an environment variable for the object's lifetime
// and puts the earlier value back afterwards.
#include <cstdlib>
#include <optional>
#include <string>

class ScopedEnv {
public:
    ScopedEnv(const char* name, const char* value) : name(name) {
        if (const char* old = std::getenv(name)) {
            previous = old;
        }
        Set(value);
    }
    ~ScopedEnv() { Set(previous ? previous->c_str() : nullptr); }
    ScopedEnv(const ScopedEnv&) = delete;
    ScopedEnv& operator=(const ScopedEnv&) = delete;

private:
    void Set(const char* value) const { value != nullptr ? setenv(name, value, 1) : unsetenv(name); }

    const char* name;
    std::optional<std::string> previous;
};
