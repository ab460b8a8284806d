// One cell of a table.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>

#include "base/date.h"

namespace brenvo::engine {

// Null, a whole number, a double, a text, a date, or a yes/no. Reading it as another kind converts
// as the file engine does, and a conversion that has no sense throws DatabaseError 3421.
class Value {
 public:
  Value() = default;
  Value(int v) : data_(static_cast<std::int64_t>(v)) {}
  Value(std::int64_t v) : data_(v) {}
  Value(long long v) : data_(static_cast<std::int64_t>(v)) {}
  Value(double v) : data_(v) {}
  Value(bool v) : data_(v) {}
  Value(base::DateTime v) : data_(v) {}
  Value(std::string v) : data_(std::move(v)) {}
  Value(std::string_view v) : data_(std::string(v)) {}
  Value(const char* v) : data_(std::string(v)) {}

  using Data =
      std::variant<std::monostate, std::int64_t, double, std::string, base::DateTime, bool>;
  const Data& Get() const { return data_; }

  bool IsNull() const { return std::holds_alternative<std::monostate>(data_); }
  // Empty for Null; numbers without a leading blank; dates by DateTimeText; yes/no as "-1" and "0".
  std::string Text() const;
  // 0 for Null; a text by its leading number; yes is -1.
  double Number() const;
  // Number() rounded, halves to even.
  std::int64_t Integer() const;
  // False for Null and 0.
  bool Bool() const;
  // Day zero for Null.
  base::DateTime Date() const;

  // The same of what another tool may have written: nothing where Bool or Date would throw.
  std::optional<bool> ReadableBool() const;
  std::optional<base::DateTime> ReadableDate() const;

  friend bool operator==(const Value&, const Value&) = default;

 private:
  Data data_;
};

}  // namespace brenvo::engine
