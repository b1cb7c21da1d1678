#pragma once
// Passwords and session tokens. Passwords are kept as Argon2id hashes (libsodium's encoded form,
// with salt and cost inside); sessions are random 128-bit tokens shown to the game as 32 hex
// digits and kept in the database only as their BLAKE2b digest.
#include <string>

class SrvCrypto {
public:
    // The cost of a new hash: 2 passes over 19 MiB, so a login costs about 35 ms of one core while a
    // stolen hash still costs an attacker that memory per guess.
    static constexpr unsigned long long kOpsLimit = 2;
    static constexpr size_t kMemLimit = 19u * 1024u * 1024u;

    // False when libsodium cannot start.
    static bool Init();
    static std::string HashPassword(const std::string& password);
    static bool VerifyPassword(const std::string& hash, const std::string& password);
    static std::string NewToken();
    static std::string TokenDigest(const std::string& token);
    // Hex digits of bytes.
    static std::string Hex(const std::string& bytes);
};
