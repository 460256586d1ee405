#include "Catalogue/Statement.h"

#include "Foundation/Log.h"

#include <sqlite3.h>

#include <algorithm>
#include <string>

namespace Nimbrel {

Statement::Statement(sqlite3* database, std::string_view sql, std::initializer_list<SqlValue> values) {
  if (sqlite3_prepare_v2(database, sql.data(), static_cast<int>(sql.size()), &statement_, nullptr) != SQLITE_OK) {
    Log::write("Nimbrel SQL error: " + std::string(sqlite3_errmsg(database)) + " — " + std::string(sql));
    return;
  }
  int parameter = 0;
  for (const auto& value : values) bind(++parameter, value);
}

Statement::~Statement() { sqlite3_finalize(statement_); }

bool Statement::step() { return statement_ != nullptr && sqlite3_step(statement_) == SQLITE_ROW; }

std::string_view Statement::text(int column) const {
  // The text must be asked for before its length.
  const auto* bytes = reinterpret_cast<const char*>(sqlite3_column_text(statement_, column));
  if (bytes == nullptr) return {};
  return {bytes, static_cast<std::size_t>(sqlite3_column_bytes(statement_, column))};
}

std::int64_t Statement::integer(int column) const { return sqlite3_column_int64(statement_, column); }

double Statement::real(int column) const { return sqlite3_column_double(statement_, column); }

void Statement::bind(int parameter, const SqlValue& value) {
  struct Binder {
    sqlite3_stmt* statement;
    int parameter;

    void operator()(std::monostate) const { sqlite3_bind_null(statement, parameter); }
    void operator()(std::string_view text) const {
      // A text ends at its first nul, as the C interface of the library has it.
      const auto length = static_cast<int>(std::min(text.find('\0'), text.size()));
      sqlite3_bind_text(statement, parameter, text.empty() ? "" : text.data(), length, SQLITE_TRANSIENT);
    }
    void operator()(std::int64_t number) const { sqlite3_bind_int64(statement, parameter, number); }
    void operator()(bool flag) const { sqlite3_bind_int(statement, parameter, flag ? 1 : 0); }
    void operator()(double number) const { sqlite3_bind_double(statement, parameter, number); }
    void operator()(Timestamp moment) const { sqlite3_bind_double(statement, parameter, secondsSince1970(moment)); }
  };
  std::visit(Binder{statement_, parameter}, value);
}

}  // namespace Nimbrel
