#include "SrvSql.h"

#include "SrvPostgres.h"
#include "SrvSqlite.h"

#include <cstdlib>

int64_t SrvSqlRows::Int(size_t row, size_t column) const {
    return std::strtoll(Text(row, column).c_str(), nullptr, 10);
}

void SrvSql::Rollback() noexcept {
    try {
        Query("ROLLBACK");
    } catch (const SrvSqlError&) {
        // No transaction was open: nothing to undo.
    }
}

bool SrvSql::IsPostgres(const std::string& target) {
    return target.rfind("postgresql://", 0) == 0 || target.rfind("postgres://", 0) == 0;
}

std::unique_ptr<SrvSql> SrvSql::Open(const std::string& target) {
    if (IsPostgres(target)) {
        return std::make_unique<SrvPostgres>(target);
    }
    return std::make_unique<SrvSqlite>(target);
}
