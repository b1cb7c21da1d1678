#pragma once
// A PostgreSQL connection through libpq. Blobs are sent and read as bytea.
#include "SrvSql.h"

struct pg_conn;

class SrvPostgres : public SrvSql {
public:
    explicit SrvPostgres(const std::string& connection);
    ~SrvPostgres() override;
    SrvPostgres(const SrvPostgres&) = delete;
    SrvPostgres& operator=(const SrvPostgres&) = delete;

    Dialect GetDialect() const override { return Dialect::Postgres; }
    SrvSqlRows Query(const std::string& sql, const std::vector<SrvSqlValue>& params,
                     const std::vector<int>& blobColumns) override;
    void BeginWrite() override { Query("BEGIN", {}, {}); }

private:
    pg_conn* conn = nullptr;
};
