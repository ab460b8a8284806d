#include "dialect/convert.h"

#include <cmath>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "engine/database_error.h"

namespace brenvo::dialect {
namespace {

[[noreturn]] void Fail(const engine::Value& value, std::string_view column) {
  throw engine::DatabaseError(
      engine::DatabaseError::kConversion,
      "Il valore '" + value.Text() + "' non è adatto alla colonna '" + std::string(column) + "'.");
}

engine::Value Whole(double number, const engine::Value& value, std::string_view column) {
  if (!(std::fabs(number) < 9.2e18)) Fail(value, column);
  return engine::Value(static_cast<std::int64_t>(base::RoundHalfEven(number)));
}

double NumberOf(const engine::Value& value, std::string_view column) {
  if (const auto* text = std::get_if<std::string>(&value.Get())) {
    const auto number = NumberOfText(*text);
    if (!number) Fail(value, column);
    return *number;
  }
  if (std::holds_alternative<base::DateTime>(value.Get())) Fail(value, column);
  const double number = value.Number();
  if (!std::isfinite(number)) Fail(value, column);
  return number;
}

engine::Value StoredDate(const engine::Value& value, std::string_view column) {
  base::DateTime date;
  if (const auto* stored = std::get_if<base::DateTime>(&value.Get())) {
    date = *stored;
  } else if (const auto* text = std::get_if<std::string>(&value.Get())) {
    const auto read = DateOfText(*text);
    if (!read) Fail(value, column);
    date = *read;
  } else {
    Fail(value, column);
  }
  // Beyond these years the text would not sort as the date does.
  if (date.Year() < 100 || date.Year() > 9999) Fail(value, column);
  return engine::Value(base::IsoText(date));
}

engine::Value StoredYesNo(const engine::Value& value, std::string_view column) {
  bool yes = false;
  if (const auto* text = std::get_if<std::string>(&value.Get())) {
    const std::string word = base::Trim(*text);
    if (base::SameText(word, "true")) {
      yes = true;
    } else if (!base::SameText(word, "false")) {
      yes = NumberOf(value, column) != 0;
    }
  } else {
    yes = NumberOf(value, column) != 0;
  }
  return engine::Value(std::int64_t{yes ? -1 : 0});
}

}  // namespace

std::optional<double> NumberOfText(std::string_view text) {
  const std::string trimmed = base::Trim(text);
  if (trimmed.empty()) return std::nullopt;
  // Val takes the longest beginning that is a number: the whole is one when no character that
  // could end the number early is left.
  std::size_t at = trimmed[0] == '-' || trimmed[0] == '+' ? 1 : 0;
  std::size_t digits = 0;
  const auto run = [&] {
    while (at < trimmed.size() && trimmed[at] >= '0' && trimmed[at] <= '9') ++at, ++digits;
  };
  run();
  if (at < trimmed.size() && trimmed[at] == '.') {
    ++at;
    run();
  }
  if (digits == 0) return std::nullopt;
  if (at < trimmed.size() && (trimmed[at] == 'e' || trimmed[at] == 'E')) {
    ++at;
    if (at < trimmed.size() && (trimmed[at] == '-' || trimmed[at] == '+')) ++at;
    digits = 0;
    run();
    if (digits == 0) return std::nullopt;
  }
  if (at != trimmed.size()) return std::nullopt;
  return base::Val(trimmed);
}

std::optional<base::DateTime> DateOfText(std::string_view text) {
  if (const auto date = base::ParseDate(text)) return date;
  if (const auto date = base::ParseIso(text)) return date;
  return base::ParseTime(text);
}

base::DateTime DateOfLiteral(std::string_view text) {
  if (const auto date = base::ParseDate(text)) return *date;
  if (const auto time = base::ParseTime(text)) return *time;
  throw engine::DatabaseError(
      engine::DatabaseError::kTypeMismatchInExpression,
      "Tipo di dati non corrispondente: '" + std::string(text) + "' non è una data.");
}

engine::Value ToColumn(const engine::Value& value, ColumnType type, std::string_view column) {
  if (value.IsNull())
    return type == ColumnType::kYesNo ? engine::Value(std::int64_t{0}) : engine::Value();
  switch (type) {
    case ColumnType::kText: {
      std::string text = value.Text();
      return base::IsAscii(text) ? engine::Value(std::move(text))
                                 : engine::Value(base::ValidUtf8(text));
    }
    case ColumnType::kInteger:
    case ColumnType::kCounter:
      if (std::holds_alternative<std::int64_t>(value.Get())) return value;
      return Whole(NumberOf(value, column), value, column);
    case ColumnType::kReal:
      return engine::Value(NumberOf(value, column));
    case ColumnType::kDateTime:
      return StoredDate(value, column);
    case ColumnType::kYesNo:
      return StoredYesNo(value, column);
  }
  return {};
}

engine::Value ToKey(const engine::Value& value, ColumnType type) {
  if (value.IsNull()) return {};
  switch (type) {
    case ColumnType::kText:
      return engine::Value(base::RTrim(base::ValidUtf8(value.Text())));
    case ColumnType::kInteger:
    case ColumnType::kCounter:
    case ColumnType::kReal:
      if (std::holds_alternative<std::int64_t>(value.Get())) return value;
      return engine::Value(value.Number());
    case ColumnType::kDateTime:
      return engine::Value(base::IsoText(value.Date()));
    case ColumnType::kYesNo:
      return engine::Value(std::int64_t{value.Bool() ? -1 : 0});
  }
  return {};
}

engine::Value FromRaw(engine::Value raw, ValueType type) {
  const engine::Value::Data& data = raw.Get();
  switch (type) {
    case ValueType::kText:
      if (!raw.IsNull() && !std::holds_alternative<std::string>(data))
        return engine::Value(raw.Text());
      return raw;
    case ValueType::kDate:
      if (const auto* text = std::get_if<std::string>(&data)) {
        if (const auto date = base::ParseIso(*text)) return engine::Value(*date);
      }
      return raw;
    case ValueType::kYesNo:
      if (std::holds_alternative<std::int64_t>(data) || std::holds_alternative<double>(data)) {
        return engine::Value(raw.Number() != 0);
      }
      return raw;
    case ValueType::kReal:
      if (const auto* whole = std::get_if<std::int64_t>(&data)) {
        return engine::Value(static_cast<double>(*whole));
      }
      return raw;
    case ValueType::kInteger:
    case ValueType::kAny:
      break;
  }
  return raw;
}

}  // namespace brenvo::dialect
