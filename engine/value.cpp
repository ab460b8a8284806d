#include "engine/value.h"

#include <cmath>

#include "base/number.h"
#include "engine/database_error.h"

namespace brenvo {
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
  return std::visit(
      Overload{[](std::monostate) { return std::string(); },
               [](std::int64_t v) { return std::to_string(v); },
               [](double v) { return PlainNumber(v); }, [](const std::string& v) { return v; },
               [](DateTime v) { return DateTimeText(v); },
               [](bool v) { return std::string(v ? "-1" : "0"); }},
      data_);
}

double Value::Number() const {
  return std::visit(
      Overload{[](std::monostate) { return 0.0; },
               [](std::int64_t v) { return static_cast<double>(v); }, [](double v) { return v; },
               [](const std::string& v) { return Val(v); },
               [](DateTime v) -> double { FailConversion(DateTimeText(v)); },
               [](bool v) { return v ? -1.0 : 0.0; }},
      data_);
}

std::int64_t Value::Integer() const {
  if (const auto* whole = std::get_if<std::int64_t>(&data_)) return *whole;
  const double number = Number();
  if (!(std::fabs(number) < 9.2e18)) FailConversion(Text());
  return RoundHalfEven(number);
}

bool Value::Bool() const {
  if (const auto* text = std::get_if<std::string>(&data_)) {
    if (text->empty()) FailConversion(*text);
    return Val(*text) != 0;
  }
  return Number() != 0;
}

DateTime Value::Date() const {
  return std::visit(
      Overload{[](std::monostate) { return DateTime(); },
               [](std::int64_t v) -> DateTime { FailConversion(std::to_string(v)); },
               [](double v) -> DateTime { FailConversion(PlainNumber(v)); },
               [](const std::string& v) {
                 if (const auto date = ParseDate(v)) return *date;
                 if (const auto date = ParseIso(v)) return *date;
                 if (const auto time = ParseTime(v)) return *time;
                 FailConversion(v);
               },
               [](DateTime v) { return v; }, [](bool) -> DateTime { FailConversion("si/no"); }},
      data_);
}

}  // namespace brenvo
