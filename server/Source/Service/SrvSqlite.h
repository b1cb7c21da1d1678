#pragma once
// A SQLite connection in WAL mode with full syncing, so that a committed write survives a crash of
// the process or the machine. Waits up to five seconds for another writer's lock.
#include "SrvSql.h"

struct sqlite3;

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
    sqlite3* db = nullptr;
};
