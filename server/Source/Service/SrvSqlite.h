#pragma once
// A SQLite connection in WAL mode with full syncing, so that a committed write survives a crash of
// the process or the machine. Waits up to five seconds for another writer's lock. Statements are
// prepared once per connection and kept for their next use.
#include "SrvSql.h"

#include <unordered_map>

struct sqlite3;
struct sqlite3_stmt;

class SrvSqlite : public SrvSql {
public:
    explicit SrvSqlite(const std::string& path);
    ~SrvSqlite() override;
    SrvSqlite(const SrvSqlite&) = delete;
    SrvSqlite& operator=(const SrvSqlite&) = delete;

    Dialect GetDialect() const override { return Dialect::Sqlite; }
    SrvSqlRows Query(const std::string& sql, const std::vector<SrvSqlValue>& params,
                     const std::vector<int>& blobColumns) override;
    void BeginWrite() override { Query("BEGIN IMMEDIATE", {}, {}); }

private:
    sqlite3_stmt* Prepare(const std::string& sql);

    sqlite3* db = nullptr;
    std::unordered_map<std::string, sqlite3_stmt*> statements;
};
