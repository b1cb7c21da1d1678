#pragma once
// One database connection behind a small interface, so that the service's statements run the same
// on SQLite and on PostgreSQL. Statements use the placeholders $1, $2, ... in order of first use
// and every value is bound, never spliced into the text. Values travel as text except blobs, which
// travel as raw bytes. Errors throw SrvSqlError; the caller's transaction is then rolled back.
#include <cstdint>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

class SrvSqlError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// A bound value: text, a 64-bit integer (sent as text), a blob or NULL.
class SrvSqlValue {
public:
    enum class Kind { Null, Text, Blob };
    SrvSqlValue() = default;
    SrvSqlValue(const char* text) : kind(Kind::Text), bytes(text) {}
    SrvSqlValue(std::string text) : kind(Kind::Text), bytes(std::move(text)) {}
    SrvSqlValue(int64_t number) : kind(Kind::Text), bytes(std::to_string(number)) {}
    SrvSqlValue(int number) : kind(Kind::Text), bytes(std::to_string(number)) {}
    static SrvSqlValue Blob(std::string data) {
        SrvSqlValue v(std::move(data));
        v.kind = Kind::Blob;
        return v;
    }
    Kind GetKind() const { return kind; }
    const std::string& Bytes() const { return bytes; }

private:
    Kind kind = Kind::Null;
    std::string bytes;
};

// The rows of a query: every column as bytes (integers as their decimal text, NULL as empty).
class SrvSqlRows {
public:
    void AddRow(std::vector<std::string> row) { rows.push_back(std::move(row)); }
    size_t Count() const { return rows.size(); }
    bool Empty() const { return rows.empty(); }
    const std::string& Text(size_t row, size_t column) const { return rows.at(row).at(column); }
    int64_t Int(size_t row, size_t column) const;

private:
    std::vector<std::vector<std::string>> rows;
};

class SrvSql {
public:
    enum class Dialect { Sqlite, Postgres };
    virtual ~SrvSql() = default;

    virtual Dialect GetDialect() const = 0;
    // Runs one statement; blobColumns lists the result columns that hold blobs.
    virtual SrvSqlRows Query(const std::string& sql, const std::vector<SrvSqlValue>& params = {},
                             const std::vector<int>& blobColumns = {}) = 0;
    // Starts a transaction that will write (SQLite takes its write lock at once, so two writers
    // never deadlock on an upgrade).
    virtual void BeginWrite() = 0;
    void Commit() { Query("COMMIT"); }
    void Rollback() noexcept;

    // "postgresql://..." or "postgres://..." opens PostgreSQL, anything else is a SQLite file path.
    static std::unique_ptr<SrvSql> Open(const std::string& target);
    static bool IsPostgres(const std::string& target);
};
