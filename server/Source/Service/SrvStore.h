#pragma once
// Everything the service keeps: accounts, sessions, shared maps with their score files and
// thumbnails, settings, published files and the counters of the rate limits. One schema with
// numbered migrations serves SQLite and PostgreSQL alike; every write is one transaction, so an
// answered upload is on disk before the answer leaves. Connections are pooled: each request
// borrows one, so several requests and several service processes can use one database.
#include "SrvSql.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

struct SrvUserEntry {
    int64_t id = 0;
    std::string name;
    int64_t mapCount = 0;
    int64_t lastUploadMs = 0;
};

struct SrvMapEntry {
    int64_t id = 0;
    int64_t userId = 0;
    std::string userName;
    int64_t slot = 0;
    std::string fileName;
    std::string mapName;
    int64_t blockSize = 64;
    int64_t uploadedMs = 0;
};

struct SrvNewMap {
    int64_t slot = 0;
    std::string fileName; // wanted name; a clash with another of the user's maps gets "_2"...
    std::string mapName;
    std::string mapUid;
    int64_t blockSize = 64;
    std::string mapBytes;
    std::string scoreBytes;
    std::string thumbnail;
};

enum class SrvListResult { Done, Stale, Missing };

class SrvStore {
public:
    // Opens (and migrates) the database named by target: a SQLite path or a PostgreSQL URL.
    explicit SrvStore(std::string target);

    bool IsPostgres() const { return postgres; }

    std::string Setting(const std::string& key, const std::string& fallback);
    void SetSetting(const std::string& key, const std::string& value);

    // The new user's id, or nothing with the error word ("NAME_EXISTS" or "EMAIL_EXISTS").
    std::optional<int64_t> CreateUser(const std::string& name, const std::string& email,
                                      const std::string& passwordHash, int64_t nowMs, std::string& error);
    // The id and password hash of a user by name (names compare without case).
    std::optional<std::pair<int64_t, std::string>> FindUser(const std::string& name);
    // Removes a user with every map and session; false when there is none.
    bool RemoveUser(const std::string& name);

    void AddSession(int64_t userId, const std::string& tokenHash, int64_t nowMs, int64_t expiresMs);
    bool CheckSession(int64_t userId, const std::string& tokenHash, int64_t nowMs);

    // Whether fewer than limit events were counted under key within the window; when count is set
    // and so, this one is counted too.
    bool Allow(const std::string& key, int limit, int64_t windowMs, int64_t nowMs, bool count);

    // A number that grows with every change to the shared maps (uploads, deletions, moves,
    // removals): at once with this process's own changes, and within a tenth of a second with
    // those of other processes sharing the database (the service beside this one, or an admin
    // command). An answer made from the maps stays right while it stays the same.
    int64_t MapChanges();
    std::vector<SrvUserEntry> MapUsers();
    std::vector<SrvMapEntry> UserMaps(int64_t userId);
    std::vector<SrvMapEntry> AllMaps();
    // The stored name of the new map; the user's list version becomes nowMs.
    std::string PutMap(int64_t userId, const SrvNewMap& map, int64_t nowMs);
    // Both writes refuse (Stale) when the list changed after seenMs (service clock). On Done,
    // versionMs holds the list's version afterwards.
    SrvListResult DeleteMap(int64_t userId, int64_t slot, int64_t seenMs, int64_t nowMs, int64_t& versionMs);
    // offset: +1 next, -1 previous, 2 last, -2 first; the map trades slots with that one.
    SrvListResult MoveMap(int64_t userId, int64_t slot, int offset, int64_t seenMs, int64_t nowMs,
                          int64_t& versionMs);
    bool RemoveMap(const std::string& userName, int64_t slot);
    // A stored map or score file by the user's id and its file name.
    std::optional<std::string> UserFile(int64_t userId, const std::string& fileName);
    std::optional<std::string> Thumbnail(int64_t mapId);

    void PutFile(const std::string& name, const std::string& bytes);
    std::optional<std::string> File(const std::string& name);

private:
    std::unique_ptr<SrvSql> Borrow();
    void Return(std::unique_ptr<SrvSql> connection);
    template <class F> auto Read(F&& work);
    template <class F> auto Write(F&& work);
    void Migrate();
    int64_t LockedVersion(SrvSql& sql, int64_t userId);
    void Touch(SrvSql& sql, int64_t userId, int64_t nowMs);
    void CountMapChange(SrvSql& sql);

    std::string target;
    bool postgres = false;
    std::atomic<int64_t> mapChangesHere{0};
    std::atomic<int64_t> mapChangesCounted{0};
    std::atomic<int64_t> mapChangesRead{INT64_MIN / 2};
    std::mutex poolLock;
    std::vector<std::unique_ptr<SrvSql>> pool;
};
