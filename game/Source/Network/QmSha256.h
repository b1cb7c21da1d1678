#pragma once
// The SHA-256 digest of a byte string, as lower-case hexadecimal (the update package's check).
#include <string>

class QmSha256 {
public:
    static std::string Hex(const std::string& data);
};
