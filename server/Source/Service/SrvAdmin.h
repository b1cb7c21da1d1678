#pragma once
// The operator's commands, run against the same database as the service (which may keep running):
// announce a version, set the oldest build allowed in, publish the update package, remove a user
// or a map, list the shared maps.
#include <string>
#include <vector>

class SrvAdmin {
public:
    // Runs one command; the process's exit code (0 done, 1 failed, 2 misuse).
    static int Run(const std::string& database, const std::vector<std::string>& args);
    // The "sha256sum" line of the package.
    static std::string DigestLine(const std::string& bytes, const std::string& name);
};
