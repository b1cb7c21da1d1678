#include "SrvStore.h"

#include <algorithm>
#include <chrono>

namespace {
constexpr size_t kPoolSize = 256; // above the request threads: every thread keeps its connection
// How often the count of changes to the shared maps is read again for other processes' writes.
constexpr int64_t kMapChangesRecheckMs = 100;

// Counts a write to the shared maps of this process once it has ended (committed or not), so that
// no answer made before the commit is taken for the new state.
class MapChangeHere {
public:
    explicit MapChangeHere(std::atomic<int64_t>& counter) : count(counter) {}
    ~MapChangeHere() { ++count; }
    MapChangeHere(const MapChangeHere&) = delete;
    MapChangeHere& operator=(const MapChangeHere&) = delete;

private:
    std::atomic<int64_t>& count;
};

// The schema's steps; a database records how many it has taken. Types are spelled for both
// databases: "ID" and "BLOB" are replaced per dialect.
const std::vector<std::vector<std::string>>& Migrations() {
    static const std::vector<std::vector<std::string>> steps = {
        {
            "CREATE TABLE users (id ID, name TEXT NOT NULL, name_key TEXT NOT NULL UNIQUE, "
            "email TEXT NOT NULL, email_key TEXT NOT NULL UNIQUE, password_hash TEXT NOT NULL, "
            "created_ms BIGINT NOT NULL, list_version BIGINT NOT NULL DEFAULT 0)",
            "CREATE TABLE sessions (token_hash TEXT PRIMARY KEY, user_id BIGINT NOT NULL REFERENCES "
            "users(id) "
            "ON DELETE CASCADE, expires_ms BIGINT NOT NULL)",
            "CREATE INDEX sessions_user ON sessions(user_id)",
            "CREATE TABLE maps (id ID, user_id BIGINT NOT NULL REFERENCES users(id) ON DELETE CASCADE, "
            "slot BIGINT NOT NULL, file_name TEXT NOT NULL, map_name TEXT NOT NULL, map_uid TEXT NOT NULL, "
            "block_size BIGINT NOT NULL, map_data BLOB NOT NULL, score_data BLOB NOT NULL, thumbnail BLOB "
            "NOT "
            "NULL, "
            "uploaded_ms BIGINT NOT NULL, UNIQUE (user_id, slot), UNIQUE (user_id, file_name))",
            "CREATE TABLE settings (key TEXT PRIMARY KEY, value TEXT NOT NULL)",
            "CREATE TABLE files (name TEXT PRIMARY KEY, data BLOB NOT NULL)",
            "CREATE TABLE events (key TEXT NOT NULL, at_ms BIGINT NOT NULL)",
            "CREATE INDEX events_key ON events(key, at_ms)",
        },
        {
            // Counts every change to the shared maps, so that answers made from them can be reused
            // until the count moves on, in every process that shares the database.
            "CREATE TABLE changes (name TEXT PRIMARY KEY, counter BIGINT NOT NULL)",
            "INSERT INTO changes (name, counter) VALUES ('maps', 0)",
        }};
    return steps;
}

std::string ForDialect(std::string sql, bool postgres) {
    auto replace = [&sql](const std::string& from, const std::string& to) {
        for (size_t at = sql.find(from); at != std::string::npos; at = sql.find(from, at + to.size())) {
            sql.replace(at, from.size(), to);
        }
    };
    replace("(id ID,", postgres ? "(id BIGSERIAL PRIMARY KEY," : "(id INTEGER PRIMARY KEY AUTOINCREMENT,");
    replace(" BLOB ", postgres ? " BYTEA " : " BLOB ");
    return sql;
}

// Lower-cases ASCII letters, so "Anna" and "anna" are one name.
std::string Key(const std::string& text) {
    std::string key = text;
    std::transform(key.begin(), key.end(), key.begin(),
                   [](char c) { return (c >= 'A' && c <= 'Z') ? static_cast<char>(c - 'A' + 'a') : c; });
    return key;
}

const char* kMapColumns =
    "m.id, m.user_id, u.name, m.slot, m.file_name, m.map_name, m.block_size, m.uploaded_ms";

std::vector<SrvMapEntry> MapEntries(const SrvSqlRows& rows) {
    std::vector<SrvMapEntry> maps;
    for (size_t r = 0; r < rows.Count(); ++r) {
        maps.push_back({rows.Int(r, 0), rows.Int(r, 1), rows.Text(r, 2), rows.Int(r, 3), rows.Text(r, 4),
                        rows.Text(r, 5), rows.Int(r, 6), rows.Int(r, 7)});
    }
    return maps;
}
} // namespace

SrvStore::SrvStore(std::string targetName)
    : target(std::move(targetName)), postgres(SrvSql::IsPostgres(target)) {
    Migrate();
}

std::unique_ptr<SrvSql> SrvStore::Borrow() {
    {
        std::lock_guard<std::mutex> guard(poolLock);
        if (!pool.empty()) {
            std::unique_ptr<SrvSql> connection = std::move(pool.back());
            pool.pop_back();
            return connection;
        }
    }
    return SrvSql::Open(target);
}

void SrvStore::Return(std::unique_ptr<SrvSql> connection) {
    std::lock_guard<std::mutex> guard(poolLock);
    if (pool.size() < kPoolSize) {
        pool.push_back(std::move(connection));
    }
}

template <class F> auto SrvStore::Read(F&& work) {
    std::unique_ptr<SrvSql> sql = Borrow();
    if constexpr (std::is_void_v<decltype(work(*sql))>) {
        work(*sql);
        Return(std::move(sql));
    } else {
        auto result = work(*sql);
        Return(std::move(sql));
        return result;
    }
}

// A failed write is rolled back and its connection dropped, so no half-done transaction is reused.
template <class F> auto SrvStore::Write(F&& work) {
    std::unique_ptr<SrvSql> sql = Borrow();
    sql->BeginWrite();
    try {
        if constexpr (std::is_void_v<decltype(work(*sql))>) {
            work(*sql);
            sql->Commit();
            Return(std::move(sql));
        } else {
            auto result = work(*sql);
            sql->Commit();
            Return(std::move(sql));
            return result;
        }
    } catch (...) {
        sql->Rollback();
        throw;
    }
}

void SrvStore::Migrate() {
    Write([this](SrvSql& sql) {
        if (postgres) {
            sql.Query("SELECT pg_advisory_xact_lock(7305)"); // one process migrates at a time
        }
        sql.Query("CREATE TABLE IF NOT EXISTS schema_version (version BIGINT NOT NULL)");
        SrvSqlRows rows = sql.Query("SELECT version FROM schema_version");
        int64_t done = rows.Empty() ? 0 : rows.Int(0, 0);
        if (rows.Empty()) {
            sql.Query("INSERT INTO schema_version (version) VALUES (0)");
        }
        const auto& steps = Migrations();
        for (size_t step = static_cast<size_t>(done); step < steps.size(); ++step) {
            for (const std::string& statement : steps[step]) {
                sql.Query(ForDialect(statement, postgres));
            }
            sql.Query("UPDATE schema_version SET version = $1", {static_cast<int64_t>(step + 1)});
        }
    });
}

std::string SrvStore::Setting(const std::string& key, const std::string& fallback) {
    return Read([&](SrvSql& sql) {
        SrvSqlRows rows = sql.Query("SELECT value FROM settings WHERE key = $1", {key});
        return rows.Empty() ? fallback : rows.Text(0, 0);
    });
}

void SrvStore::SetSetting(const std::string& key, const std::string& value) {
    Write([&](SrvSql& sql) {
        sql.Query("INSERT INTO settings (key, value) VALUES ($1, $2) "
                  "ON CONFLICT (key) DO UPDATE SET value = excluded.value",
                  {key, value});
    });
}

std::optional<int64_t> SrvStore::CreateUser(const std::string& name, const std::string& email,
                                            const std::string& passwordHash, int64_t nowMs,
                                            std::string& error) {
    return Write([&](SrvSql& sql) -> std::optional<int64_t> {
        if (!sql.Query("SELECT 1 FROM users WHERE name_key = $1", {Key(name)}).Empty()) {
            error = "NAME_EXISTS";
            return std::nullopt;
        }
        if (!sql.Query("SELECT 1 FROM users WHERE email_key = $1", {Key(email)}).Empty()) {
            error = "EMAIL_EXISTS";
            return std::nullopt;
        }
        SrvSqlRows rows =
            sql.Query("INSERT INTO users (name, name_key, email, email_key, password_hash, "
                      "created_ms, list_version) VALUES ($1, $2, $3, $4, $5, $6, $6) RETURNING id",
                      {name, Key(name), email, Key(email), passwordHash, nowMs});
        return rows.Int(0, 0);
    });
}

std::optional<std::pair<int64_t, std::string>> SrvStore::FindUser(const std::string& name) {
    return Read([&](SrvSql& sql) -> std::optional<std::pair<int64_t, std::string>> {
        SrvSqlRows rows = sql.Query("SELECT id, password_hash FROM users WHERE name_key = $1", {Key(name)});
        if (rows.Empty()) {
            return std::nullopt;
        }
        return std::make_pair(rows.Int(0, 0), rows.Text(0, 1));
    });
}

bool SrvStore::RemoveUser(const std::string& name) {
    MapChangeHere counted(mapChangesHere);
    return Write([&](SrvSql& sql) {
        SrvSqlRows rows = sql.Query("SELECT id FROM users WHERE name_key = $1", {Key(name)});
        if (rows.Empty()) {
            return false;
        }
        int64_t id = rows.Int(0, 0);
        sql.Query("DELETE FROM maps WHERE user_id = $1", {id});
        CountMapChange(sql);
        sql.Query("DELETE FROM sessions WHERE user_id = $1", {id});
        sql.Query("DELETE FROM users WHERE id = $1", {id});
        return true;
    });
}

void SrvStore::AddSession(int64_t userId, const std::string& tokenHash, int64_t nowMs, int64_t expiresMs) {
    Write([&](SrvSql& sql) {
        sql.Query("DELETE FROM sessions WHERE user_id = $1 AND expires_ms <= $2", {userId, nowMs});
        sql.Query("INSERT INTO sessions (token_hash, user_id, expires_ms) VALUES ($1, $2, $3)",
                  {tokenHash, userId, expiresMs});
    });
}

bool SrvStore::CheckSession(int64_t userId, const std::string& tokenHash, int64_t nowMs) {
    return Read([&](SrvSql& sql) {
        return !sql.Query("SELECT 1 FROM sessions WHERE token_hash = $1 AND user_id = $2 AND expires_ms > $3",
                          {tokenHash, userId, nowMs})
                    .Empty();
    });
}

bool SrvStore::Allow(const std::string& key, int limit, int64_t windowMs, int64_t nowMs, bool count) {
    auto work = [&](SrvSql& sql) {
        SrvSqlRows rows =
            sql.Query("SELECT COUNT(*) FROM events WHERE key = $1 AND at_ms > $2", {key, nowMs - windowMs});
        if (rows.Int(0, 0) >= limit) {
            return false;
        }
        if (count) {
            sql.Query("DELETE FROM events WHERE key = $1 AND at_ms <= $2", {key, nowMs - windowMs});
            sql.Query("INSERT INTO events (key, at_ms) VALUES ($1, $2)", {key, nowMs});
        }
        return true;
    };
    return count ? Write(work) : Read(work);
}

void SrvStore::CountMapChange(SrvSql& sql) {
    sql.Query("UPDATE changes SET counter = counter + 1 WHERE name = 'maps'");
}

int64_t SrvStore::MapChanges() {
    int64_t now = std::chrono::duration_cast<std::chrono::milliseconds>(
                      std::chrono::steady_clock::now().time_since_epoch())
                      .count();
    if (now - mapChangesRead.load() >= kMapChangesRecheckMs) {
        int64_t counted = Read([](SrvSql& sql) {
            SrvSqlRows rows = sql.Query("SELECT counter FROM changes WHERE name = 'maps'");
            return rows.Empty() ? int64_t{0} : rows.Int(0, 0);
        });
        mapChangesCounted.store(counted);
        mapChangesRead.store(now);
    }
    // Both counts only grow, so their sum moves on with either.
    return mapChangesCounted.load() + mapChangesHere.load();
}

std::vector<SrvUserEntry> SrvStore::MapUsers() {
    return Read([&](SrvSql& sql) {
        SrvSqlRows rows =
            sql.Query("SELECT u.id, u.name, COUNT(m.id), MAX(m.uploaded_ms) FROM users u "
                      "JOIN maps m ON m.user_id = u.id GROUP BY u.id, u.name ORDER BY u.name_key");
        std::vector<SrvUserEntry> users;
        for (size_t r = 0; r < rows.Count(); ++r) {
            users.push_back({rows.Int(r, 0), rows.Text(r, 1), rows.Int(r, 2), rows.Int(r, 3)});
        }
        return users;
    });
}

std::vector<SrvMapEntry> SrvStore::UserMaps(int64_t userId) {
    return Read([&](SrvSql& sql) {
        return MapEntries(sql.Query(std::string("SELECT ") + kMapColumns +
                                        " FROM maps m JOIN users u ON u.id = m.user_id WHERE m.user_id = $1 "
                                        "ORDER BY m.slot",
                                    {userId}));
    });
}

std::vector<SrvMapEntry> SrvStore::AllMaps() {
    return Read([&](SrvSql& sql) {
        return MapEntries(
            sql.Query(std::string("SELECT ") + kMapColumns +
                      " FROM maps m JOIN users u ON u.id = m.user_id ORDER BY u.name_key, m.slot"));
    });
}

// The user's list version, with the user's row locked for the rest of the transaction on PostgreSQL
// (SQLite's write transaction already holds the whole database).
int64_t SrvStore::LockedVersion(SrvSql& sql, int64_t userId) {
    SrvSqlRows rows = sql.Query(std::string("SELECT list_version FROM users WHERE id = $1") +
                                    (postgres ? " FOR UPDATE" : ""),
                                {userId});
    return rows.Empty() ? 0 : rows.Int(0, 0);
}

// A new list version: now, or one past the last when the clock has not moved on.
void SrvStore::Touch(SrvSql& sql, int64_t userId, int64_t nowMs) {
    sql.Query(
        "UPDATE users SET list_version = CASE WHEN list_version >= $2 THEN list_version + 1 ELSE $2 END "
        "WHERE id = $1",
        {userId, nowMs});
}

std::string SrvStore::PutMap(int64_t userId, const SrvNewMap& map, int64_t nowMs) {
    MapChangeHere counted(mapChangesHere);
    return Write([&](SrvSql& sql) {
        LockedVersion(sql, userId);
        sql.Query("DELETE FROM maps WHERE user_id = $1 AND slot = $2", {userId, map.slot});
        std::string base = map.fileName.substr(0, map.fileName.size() - 4);
        std::string name = map.fileName;
        for (int n = 2;
             !sql.Query("SELECT 1 FROM maps WHERE user_id = $1 AND file_name = $2", {userId, name}).Empty();
             ++n) {
            name = base + "_" + std::to_string(n) + ".map";
        }
        sql.Query("INSERT INTO maps (user_id, slot, file_name, map_name, map_uid, block_size, map_data, "
                  "score_data, "
                  "thumbnail, uploaded_ms) VALUES ($1, $2, $3, $4, $5, $6, $7, $8, $9, $10)",
                  {userId, map.slot, name, map.mapName, map.mapUid, map.blockSize,
                   SrvSqlValue::Blob(map.mapBytes), SrvSqlValue::Blob(map.scoreBytes),
                   SrvSqlValue::Blob(map.thumbnail), nowMs});
        Touch(sql, userId, nowMs);
        CountMapChange(sql);
        return name;
    });
}

SrvListResult SrvStore::DeleteMap(int64_t userId, int64_t slot, int64_t seenMs, int64_t nowMs,
                                  int64_t& versionMs) {
    MapChangeHere counted(mapChangesHere);
    return Write([&](SrvSql& sql) {
        if (LockedVersion(sql, userId) > seenMs) {
            return SrvListResult::Stale;
        }
        if (sql.Query("DELETE FROM maps WHERE user_id = $1 AND slot = $2 RETURNING id", {userId, slot})
                .Empty()) {
            return SrvListResult::Missing;
        }
        Touch(sql, userId, nowMs);
        CountMapChange(sql);
        versionMs = LockedVersion(sql, userId);
        return SrvListResult::Done;
    });
}

SrvListResult SrvStore::MoveMap(int64_t userId, int64_t slot, int offset, int64_t seenMs, int64_t nowMs,
                                int64_t& versionMs) {
    MapChangeHere counted(mapChangesHere);
    return Write([&](SrvSql& sql) {
        versionMs = LockedVersion(sql, userId);
        if (versionMs > seenMs) {
            return SrvListResult::Stale;
        }
        SrvSqlRows rows = sql.Query("SELECT id, slot FROM maps WHERE user_id = $1 ORDER BY slot", {userId});
        int64_t count = static_cast<int64_t>(rows.Count());
        int64_t index = -1;
        for (int64_t r = 0; r < count; ++r) {
            index = rows.Int(r, 1) == slot ? r : index;
        }
        if (index < 0) {
            return SrvListResult::Missing;
        }
        int64_t other = offset == 1 ? index + 1 : offset == -1 ? index - 1 : offset == 2 ? count - 1 : 0;
        if (other < 0 || other >= count || other == index) {
            return SrvListResult::Done; // already at that end: nothing moves
        }
        // Trade slots through a free one, as (user, slot) is unique at every step.
        int64_t a = rows.Int(index, 0), b = rows.Int(other, 0);
        int64_t slotA = rows.Int(index, 1), slotB = rows.Int(other, 1);
        sql.Query("UPDATE maps SET slot = -1 WHERE id = $1", {a});
        sql.Query("UPDATE maps SET slot = $2 WHERE id = $1", {b, slotA});
        sql.Query("UPDATE maps SET slot = $2 WHERE id = $1", {a, slotB});
        Touch(sql, userId, nowMs);
        CountMapChange(sql);
        versionMs = LockedVersion(sql, userId);
        return SrvListResult::Done;
    });
}

bool SrvStore::RemoveMap(const std::string& userName, int64_t slot) {
    MapChangeHere counted(mapChangesHere);
    return Write([&](SrvSql& sql) {
        SrvSqlRows rows = sql.Query("SELECT id FROM users WHERE name_key = $1", {Key(userName)});
        if (rows.Empty()) {
            return false;
        }
        int64_t userId = rows.Int(0, 0);
        LockedVersion(sql, userId);
        bool removed =
            !sql.Query("DELETE FROM maps WHERE user_id = $1 AND slot = $2 RETURNING id", {userId, slot})
                 .Empty();
        if (removed) {
            Touch(sql, userId, 0);
            CountMapChange(sql);
        }
        return removed;
    });
}

std::optional<std::string> SrvStore::UserFile(int64_t userId, const std::string& fileName) {
    return Read([&](SrvSql& sql) -> std::optional<std::string> {
        bool score = fileName.size() > 4 && fileName.compare(fileName.size() - 4, 4, ".dat") == 0;
        std::string mapName = score ? fileName.substr(0, fileName.size() - 4) + ".map" : fileName;
        SrvSqlRows rows = sql.Query(std::string("SELECT ") + (score ? "score_data" : "map_data") +
                                        " FROM maps WHERE user_id = $1 AND file_name = $2",
                                    {userId, mapName}, {0});
        if (rows.Empty()) {
            return std::nullopt;
        }
        return rows.Text(0, 0);
    });
}

std::optional<std::string> SrvStore::Thumbnail(int64_t mapId) {
    return Read([&](SrvSql& sql) -> std::optional<std::string> {
        SrvSqlRows rows = sql.Query("SELECT thumbnail FROM maps WHERE id = $1", {mapId}, {0});
        if (rows.Empty()) {
            return std::nullopt;
        }
        return rows.Text(0, 0);
    });
}

void SrvStore::PutFile(const std::string& name, const std::string& bytes) {
    Write([&](SrvSql& sql) {
        sql.Query("DELETE FROM files WHERE name = $1", {name});
        sql.Query("INSERT INTO files (name, data) VALUES ($1, $2)", {name, SrvSqlValue::Blob(bytes)});
    });
}

std::optional<std::string> SrvStore::File(const std::string& name) {
    return Read([&](SrvSql& sql) -> std::optional<std::string> {
        SrvSqlRows rows = sql.Query("SELECT data FROM files WHERE name = $1", {name}, {0});
        if (rows.Empty()) {
            return std::nullopt;
        }
        return rows.Text(0, 0);
    });
}
