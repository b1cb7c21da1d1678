#include "SrvCrypto.h"

#include <sodium.h>

bool SrvCrypto::Init() {
    return sodium_init() >= 0;
}

std::string SrvCrypto::HashPassword(const std::string& password) {
    char out[crypto_pwhash_STRBYTES];
    if (crypto_pwhash_str_alg(out, password.data(), password.size(), kOpsLimit, kMemLimit,
                              crypto_pwhash_ALG_ARGON2ID13) != 0) {
        return std::string();
    }
    return out;
}

bool SrvCrypto::VerifyPassword(const std::string& hash, const std::string& password) {
    if (hash.empty() || hash.size() >= crypto_pwhash_STRBYTES) {
        return false;
    }
    return crypto_pwhash_str_verify(hash.c_str(), password.data(), password.size()) == 0;
}

std::string SrvCrypto::Hex(const std::string& bytes) {
    std::string hex(bytes.size() * 2 + 1, '\0');
    sodium_bin2hex(hex.data(), hex.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                   bytes.size());
    hex.pop_back();
    return hex;
}

std::string SrvCrypto::NewToken() {
    std::string bytes(16, '\0');
    randombytes_buf(bytes.data(), bytes.size());
    return Hex(bytes);
}

std::string SrvCrypto::TokenDigest(const std::string& token) {
    std::string digest(crypto_generichash_BYTES, '\0');
    crypto_generichash(reinterpret_cast<unsigned char*>(digest.data()), digest.size(),
                       reinterpret_cast<const unsigned char*>(token.data()), token.size(), nullptr, 0);
    return Hex(digest);
}
