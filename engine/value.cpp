#include "engine/value.h"

#include <cmath>

#include "base/number.h"
#include "engine/database_error.h"

namespace brenvo::engine {
namespace {

template <typename... Cases>
struct Overload : Cases... {
  using Cases::operator()...;
};
template <typename... Cases>
Overload(Cases...) -> Overload<Cases...>;

[[noreturn]] void FailConversion(std::string_view text) {
  throw DatabaseError(DatabaseError::kConversion,
                      "Conversione di tipo non valida: '" + std::string(text) + "'.");
}

}  // namespace

std::string Value::Text() const {
  return std::visit(Overload{[](std::monostate) { return std::string(); },
                             [](std::int64_t v) { return std::to_string(v); },
                             [](double v) { return base::PlainNumber(v); },
                             [](const std::string& v) { return v; },
                             [](base::DateTime v) { return base::DateTimeText(v); },
                             [](bool v) { return std::string(v ? "-1" : "0"); }},
                    data_);
}

double Value::Number() const {
  return std::visit(
      Overload{[](std::monostate) { return 0.0; },
               [](std::int64_t v) { return static_cast<double>(v); }, [](double v) { return v; },
               [](const std::string& v) { return base::Val(v); },
               [](base::DateTime v) -> double { FailConversion(base::DateTimeText(v)); },
               [](bool v) { return v ? -1.0 : 0.0; }},
      data_);
}

std::int64_t Value::Integer() const {
  if (const auto* whole = std::get_if<std::int64_t>(&data_)) return *whole;
  const double number = Number();
  if (!(std::fabs(number) < 9.2e18)) FailConversion(Text());
  return base::RoundHalfEven(number);
}

std::optional<bool> Value::ReadableBool() const {
  if (const auto* text = std::get_if<std::string>(&data_)) {
    if (text->empty()) return std::nullopt;
    return base::Val(*text) != 0;
  }
  if (std::holds_alternative<base::DateTime>(data_)) return std::nullopt;
  return Number() != 0;
}

bool Value::Bool() const {
  if (const auto yes = ReadableBool()) return *yes;
  FailConversion(Text());
}

std::optional<base::DateTime> Value::ReadableDate() const {
  if (IsNull()) return base::DateTime();
  if (const auto* date = std::get_if<base::DateTime>(&data_)) return *date;
  const auto* text = std::get_if<std::string>(&data_);
  if (text == nullptr) return std::nullopt;
  if (const auto date = base::ParseDate(*text)) return date;
  if (const auto date = base::ParseIso(*text)) return date;
  return base::ParseTime(*text);
}

base::DateTime Value::Date() const {
  if (const auto date = ReadableDate()) return *date;
  FailConversion(std::holds_alternative<bool>(data_) ? "si/no" : Text());
}

}  // namespace brenvo::engine
