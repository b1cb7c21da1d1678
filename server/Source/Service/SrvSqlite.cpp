#include "SrvSqlite.h"

#include <sqlite3.h>

SrvSqlite::SrvSqlite(const std::string& path) {
    // Without the allocation statistics, which take one lock of the whole process per allocation.
    static const int configured = sqlite3_config(SQLITE_CONFIG_MEMSTATUS, 0);
    (void)configured;
    if (sqlite3_open_v2(path.c_str(), &db, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE | SQLITE_OPEN_NOMUTEX,
                        nullptr) != SQLITE_OK) {
        std::string message = db ? sqlite3_errmsg(db) : "out of memory";
        sqlite3_close(db);
        db = nullptr;
        throw SrvSqlError("cannot open the database " + path + ": " + message);
    }
    sqlite3_busy_timeout(db, 5000);
    Query("PRAGMA journal_mode=WAL", {}, {});
    Query("PRAGMA synchronous=FULL", {}, {});
    Query("PRAGMA foreign_keys=ON", {}, {});
}

SrvSqlite::~SrvSqlite() {
    for (auto& [text, statement] : statements) {
        sqlite3_finalize(statement);
    }
    sqlite3_close(db);
}

namespace {
constexpr size_t kKeptStatements = 64; // the service has fewer different statements than this

// Leaves a kept statement ready for its next use whichever way this one ends.
struct StatementReset {
    sqlite3_stmt* statement;
    ~StatementReset() {
        sqlite3_reset(statement);
        sqlite3_clear_bindings(statement);
    }
};
} // namespace

sqlite3_stmt* SrvSqlite::Prepare(const std::string& sql) {
    auto found = statements.find(sql);
    if (found != statements.end()) {
        return found->second;
    }
    sqlite3_stmt* statement = nullptr;
    if (sqlite3_prepare_v3(db, sql.c_str(), static_cast<int>(sql.size()), SQLITE_PREPARE_PERSISTENT,
                           &statement, nullptr) != SQLITE_OK) {
        throw SrvSqlError(std::string("sqlite: ") + sqlite3_errmsg(db));
    }
    if (statements.size() >= kKeptStatements) {
        for (auto& [text, kept] : statements) {
            sqlite3_finalize(kept);
        }
        statements.clear();
    }
    statements.emplace(sql, statement);
    return statement;
}

SrvSqlRows SrvSqlite::Query(const std::string& sql, const std::vector<SrvSqlValue>& params,
                            const std::vector<int>&) {
    sqlite3_stmt* statement = Prepare(sql);
    StatementReset reset{statement};
    for (size_t i = 0; i < params.size(); ++i) {
        const std::string name = std::string("$").append(std::to_string(i + 1));
        int index = sqlite3_bind_parameter_index(statement, name.c_str());
        if (index == 0) {
            continue; // the statement does not use this value
        }
        const SrvSqlValue& value = params[i];
        const std::string& bytes = value.Bytes();
        int rc = SQLITE_OK;
        switch (value.GetKind()) {
        case SrvSqlValue::Kind::Null:
            rc = sqlite3_bind_null(statement, index);
            break;
        case SrvSqlValue::Kind::Text:
            rc = sqlite3_bind_text(statement, index, bytes.data(), static_cast<int>(bytes.size()),
                                   SQLITE_TRANSIENT);
            break;
        case SrvSqlValue::Kind::Blob:
            rc = sqlite3_bind_blob(statement, index, bytes.data(), static_cast<int>(bytes.size()),
                                   SQLITE_TRANSIENT);
            break;
        }
        if (rc != SQLITE_OK) {
            throw SrvSqlError(std::string("sqlite bind: ") + sqlite3_errmsg(db));
        }
    }
    SrvSqlRows rows;
    for (;;) {
        int rc = sqlite3_step(statement);
        if (rc == SQLITE_DONE) {
            break;
        }
        if (rc != SQLITE_ROW) {
            throw SrvSqlError(std::string("sqlite: ") + sqlite3_errmsg(db));
        }
        int columns = sqlite3_column_count(statement);
        std::vector<std::string> row;
        row.reserve(columns);
        for (int c = 0; c < columns; ++c) {
            const void* data = sqlite3_column_blob(statement, c);
            int size = sqlite3_column_bytes(statement, c);
            row.emplace_back(data ? static_cast<const char*>(data) : "", data ? size : 0);
        }
        rows.AddRow(std::move(row));
    }
    return rows;
}
