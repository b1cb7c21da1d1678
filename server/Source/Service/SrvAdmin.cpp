#include "SrvAdmin.h"

#include "Platform/VeFiles.h"
#include "SrvCrypto.h"
#include "SrvFormFields.h"
#include "SrvStore.h"

#include <cstdio>
#include <sodium.h>

std::string SrvAdmin::DigestLine(const std::string& bytes, const std::string& name) {
    std::string digest(crypto_hash_sha256_BYTES, '\0');
    crypto_hash_sha256(reinterpret_cast<unsigned char*>(digest.data()),
                       reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
    return SrvCrypto::Hex(digest) + "  " + name + "\n";
}

int SrvAdmin::Run(const std::string& database, const std::vector<std::string>& args) {
    const std::string& command = args[0];
    auto wants = [&](size_t count) {
        if (args.size() != count + 1) {
            std::fprintf(stderr, "admin %s takes %zu argument(s); see --help.\n", command.c_str(), count);
            return false;
        }
        return true;
    };
    try {
        SrvStore store(database);
        if (command == "set-version" || command == "set-minimum-build") {
            if (!wants(1)) {
                return 2;
            }
            auto number = SrvFormFields::ParseNumber(args[1]);
            if (!number || *number < 0 || *number > 2147483647) {
                std::fprintf(stderr, "\"%s\" is not a build number.\n", args[1].c_str());
                return 2;
            }
            store.SetSetting(command == "set-version" ? "version" : "minimum_build", std::to_string(*number));
            std::printf("%s: %lld\n", command == "set-version" ? "Announced version" : "Minimum build",
                        static_cast<long long>(*number));
            return 0;
        }
        if (command == "publish") {
            if (!wants(1)) {
                return 2;
            }
            std::string bytes;
            if (!ReadFileBytes(args[1], bytes) || bytes.size() < 2 ||
                static_cast<unsigned char>(bytes[0]) != 0x1f ||
                static_cast<unsigned char>(bytes[1]) != 0x8b) {
                std::fprintf(stderr, "\"%s\" cannot be read or is not a gzip file.\n", args[1].c_str());
                return 1;
            }
            const std::string name = "quillmaze-update.tar.gz";
            store.PutFile(name, bytes);
            store.PutFile("quillmaze-update.sha256", DigestLine(bytes, name));
            std::printf("Published %zu bytes: %s", bytes.size(), DigestLine(bytes, name).c_str());
            return 0;
        }
        if (command == "remove-user") {
            if (!wants(1)) {
                return 2;
            }
            bool removed = store.RemoveUser(args[1]);
            std::printf(removed ? "Removed user %s.\n" : "No user %s.\n", args[1].c_str());
            return removed ? 0 : 1;
        }
        if (command == "remove-map") {
            if (!wants(2)) {
                return 2;
            }
            auto slot = SrvFormFields::ParseNumber(args[2]);
            bool removed = slot && store.RemoveMap(args[1], *slot);
            std::printf(removed ? "Removed the map.\n" : "No such map.\n");
            return removed ? 0 : 1;
        }
        if (command == "list") {
            for (const SrvMapEntry& map : store.AllMaps()) {
                std::printf("%s\t%lld\t%s\t%s\n", map.userName.c_str(), static_cast<long long>(map.slot),
                            map.fileName.c_str(), map.mapName.c_str());
            }
            return 0;
        }
    } catch (const std::exception& error) {
        std::fprintf(stderr, "Database error: %s\n", error.what());
        return 1;
    }
    std::fprintf(stderr, "Unknown admin command \"%s\"; see --help.\n", command.c_str());
    return 2;
}
