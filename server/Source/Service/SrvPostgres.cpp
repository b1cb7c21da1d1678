#include "SrvPostgres.h"

#include <algorithm>
#include <libpq-fe.h>

SrvPostgres::SrvPostgres(const std::string& connection) {
    conn = PQconnectdb(connection.c_str());
    if (conn == nullptr || PQstatus(conn) != CONNECTION_OK) {
        std::string message = conn ? PQerrorMessage(conn) : "out of memory";
        PQfinish(conn);
        conn = nullptr;
        throw SrvSqlError("cannot connect to PostgreSQL: " + message);
    }
    Query("SET client_min_messages TO WARNING", {}, {});
}

SrvPostgres::~SrvPostgres() {
    PQfinish(conn);
}

SrvSqlRows SrvPostgres::Query(const std::string& sql, const std::vector<SrvSqlValue>& params,
                              const std::vector<int>& blobColumns) {
    if (PQstatus(conn) != CONNECTION_OK) {
        PQreset(conn);
    }
    std::vector<const char*> values;
    std::vector<int> lengths;
    std::vector<int> formats;
    for (const SrvSqlValue& value : params) {
        bool isNull = value.GetKind() == SrvSqlValue::Kind::Null;
        values.push_back(isNull ? nullptr : value.Bytes().c_str());
        lengths.push_back(static_cast<int>(value.Bytes().size()));
        formats.push_back(value.GetKind() == SrvSqlValue::Kind::Blob ? 1 : 0);
    }
    PGresult* result = PQexecParams(conn, sql.c_str(), static_cast<int>(params.size()), nullptr,
                                    values.data(), lengths.data(), formats.data(), 0);
    ExecStatusType status = PQresultStatus(result);
    if (status != PGRES_COMMAND_OK && status != PGRES_TUPLES_OK) {
        std::string message = result ? PQresultErrorMessage(result) : PQerrorMessage(conn);
        PQclear(result);
        throw SrvSqlError("postgresql: " + message);
    }
    SrvSqlRows rows;
    int count = PQntuples(result);
    int columns = PQnfields(result);
    for (int r = 0; r < count; ++r) {
        std::vector<std::string> row;
        for (int c = 0; c < columns; ++c) {
            const char* text = PQgetvalue(result, r, c);
            if (std::find(blobColumns.begin(), blobColumns.end(), c) != blobColumns.end()) {
                size_t size = 0;
                unsigned char* bytes = PQunescapeBytea(reinterpret_cast<const unsigned char*>(text), &size);
                row.emplace_back(reinterpret_cast<const char*>(bytes), bytes ? size : 0);
                PQfreemem(bytes);
            } else {
                row.emplace_back(text, PQgetlength(result, r, c));
            }
        }
        rows.AddRow(std::move(row));
    }
    PQclear(result);
    return rows;
}
