#pragma once

#include "Foundation/Timestamp.h"

#include <cstdint>
#include <initializer_list>
#include <string_view>
#include <variant>

struct sqlite3;
struct sqlite3_stmt;

namespace Nimbrel {

/// A value on its way into a statement. Flags are stored as 0 and 1, moments as seconds since 1970; no value is NULL.
/// Text is borrowed until the value is bound.
using SqlValue = std::variant<std::monostate, std::string_view, std::int64_t, bool, double, Timestamp>;

/// One statement from preparing to finalising. When it cannot be prepared the reason is logged, and it has no rows and
/// no effect. One thread.
class Statement {
 public:
  /// `database` may be null, which is one way of failing to prepare. Values are bound to the parameters 1, 2, 3 …
  Statement(sqlite3* database, std::string_view sql, std::initializer_list<SqlValue> values = {});
  ~Statement();
  Statement(const Statement&) = delete;
  Statement& operator=(const Statement&) = delete;

  /// Moves to the next row; false at the end and on any failure. A statement that writes is run by its first step.
  bool step();

  /// Columns of the current row, from 0. A text that is NULL is empty; texts are valid until the next step.
  [[nodiscard]] std::string_view text(int column) const;
  [[nodiscard]] std::int64_t integer(int column) const;
  [[nodiscard]] double real(int column) const;

 private:
  void bind(int parameter, const SqlValue& value);

  sqlite3_stmt* statement_ = nullptr;
};

}  // namespace Nimbrel
