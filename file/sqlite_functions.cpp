#include "sqlite_functions.h"

#include <sqlite3.h>

#include <iterator>
#include <memory>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "cells.h"
#include "dialect/convert.h"
#include "dialect/folding.h"
#include "dialect/like_pattern.h"

namespace brenvo::file {
namespace {

// No text of this program is longer, and no statement may ask for more.
constexpr double kLongestSpace = 65535;

using Failure = std::optional<engine::DatabaseError>;

void Fail(sqlite3_context* context, engine::DatabaseError error) {
  *static_cast<Failure*>(sqlite3_user_data(context)) = std::move(error);
  sqlite3_result_error(context, "dialect", -1);
}

void Return(sqlite3_context* context, const engine::Value& value) {
  const engine::Value::Data& data = value.Get();
  if (const auto* whole = std::get_if<std::int64_t>(&data)) {
    sqlite3_result_int64(context, *whole);
  } else if (const auto* real = std::get_if<double>(&data)) {
    sqlite3_result_double(context, *real);
  } else if (const auto* yes = std::get_if<bool>(&data)) {
    sqlite3_result_int(context, *yes ? -1 : 0);
  } else if (value.IsNull()) {
    sqlite3_result_null(context);
  } else {
    const auto* date = std::get_if<base::DateTime>(&data);
    const std::string text = date != nullptr ? base::IsoText(*date) : value.Text();
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
}

// Runs `Body` on the arguments as values. Any Null among them gives Null.
template <engine::Value (*Body)(const engine::Value* arguments, int count)>
void Call(sqlite3_context* context, int count, sqlite3_value** arguments) {
  try {
    engine::Value values[3];
    for (int i = 0; i < count && i < 3; ++i) {
      values[i] = ReadRaw(arguments[i]);
      if (values[i].IsNull()) return sqlite3_result_null(context);
    }
    Return(context, Body(values, count));
  } catch (const engine::DatabaseError& error) {
    Fail(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

std::size_t CountOf(const engine::Value& value) {
  const double number = value.Number();
  if (!(number >= 0) || number > kLongestSpace) {
    throw engine::DatabaseError(engine::DatabaseError::kConversion,
                                "Argomento non valido in una funzione.");
  }
  return static_cast<std::size_t>(base::RoundHalfEven(number));
}

base::DateTime DateOf(const engine::Value& value) {
  if (const auto* text = std::get_if<std::string>(&value.Get())) {
    if (const auto date = base::ParseIso(*text)) return *date;
    return dialect::DateOfLiteral(*text);
  }
  return dialect::DateOfLiteral(value.Text());
}

engine::Value RightOf(const engine::Value* a, int) {
  return base::Right(a[0].Text(), CountOf(a[1]));
}
engine::Value MidOf(const engine::Value* a, int count) {
  const std::size_t start = CountOf(a[1]);
  return count == 2 ? base::Mid(a[0].Text(), start) : base::Mid(a[0].Text(), start, CountOf(a[2]));
}
engine::Value UpperOf(const engine::Value* a, int) { return base::Upper(a[0].Text()); }
engine::Value LowerOf(const engine::Value* a, int) { return base::Lower(a[0].Text()); }
engine::Value SpaceOf(const engine::Value* a, int) { return base::Space(CountOf(a[0])); }
engine::Value StrOf(const engine::Value* a, int) { return base::Str(a[0].Number()); }
engine::Value ValOf(const engine::Value* a, int) { return base::Val(a[0].Text()); }
engine::Value TextOf(const engine::Value* a, int) {
  // A date arrives as the file holds it.
  if (const auto* text = std::get_if<std::string>(&a[0].Get())) {
    if (const auto date = base::ParseIso(*text)) return base::DateTimeText(*date);
  }
  return a[0].Text();
}
engine::Value DateValueOf(const engine::Value* a, int) { return DateOf(a[0]).DatePart(); }
engine::Value DateWithTimeOf(const engine::Value* a, int) { return DateOf(a[0]); }
engine::Value YearOf(const engine::Value* a, int) { return DateOf(a[0]).Year(); }
engine::Value MonthOf(const engine::Value* a, int) { return DateOf(a[0]).Month(); }
engine::Value DayOf(const engine::Value* a, int) { return DateOf(a[0]).Day(); }

// dialect_store(type, value): what a column of that type stores.
void Store(sqlite3_context* context, int, sqlite3_value** arguments) {
  try {
    const auto type = static_cast<dialect::ColumnType>(sqlite3_value_int(arguments[0]));
    Return(context, dialect::ToColumn(ReadRaw(arguments[1]), type, "?"));
  } catch (const engine::DatabaseError& error) {
    Fail(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

// dialect_like(pattern, text); the pattern is read once for all rows when it is constant.
void Like(sqlite3_context* context, int, sqlite3_value** arguments) {
  if (sqlite3_value_type(arguments[0]) == SQLITE_NULL ||
      sqlite3_value_type(arguments[1]) == SQLITE_NULL) {
    return sqlite3_result_null(context);
  }
  try {
    auto* pattern = static_cast<dialect::LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<dialect::LikePattern> fresh;
    if (pattern == nullptr) {
      fresh = std::make_unique<dialect::LikePattern>(ReadRaw(arguments[0]).Text());
      pattern = fresh.get();
    }
    sqlite3_result_int(context, pattern->Matches(ReadRaw(arguments[1]).Text()) ? 1 : 0);
    if (fresh) {
      sqlite3_set_auxdata(context, 0, fresh.release(),
                          [](void* data) { delete static_cast<dialect::LikePattern*>(data); });
    }
  } catch (const engine::DatabaseError& error) {
    Fail(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

int Collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
  return dialect::CompareFolded({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
                                {static_cast<const char*>(b), static_cast<std::size_t>(sizeB)});
}

using Body = void (*)(sqlite3_context*, int, sqlite3_value**);
constexpr struct {
  const char* name;
  int arguments;
  Body body;
} kRegistered[] = {
    {"dialect_right", 2, Call<RightOf>},
    {"dialect_mid", 2, Call<MidOf>},
    {"dialect_mid", 3, Call<MidOf>},
    {"dialect_upper", 1, Call<UpperOf>},
    {"dialect_lower", 1, Call<LowerOf>},
    {"dialect_space", 1, Call<SpaceOf>},
    {"dialect_str", 1, Call<StrOf>},
    {"dialect_val", 1, Call<ValOf>},
    {"dialect_text", 1, Call<TextOf>},
    {"dialect_datevalue", 1, Call<DateValueOf>},
    {"dialect_date", 1, Call<DateWithTimeOf>},
    {"dialect_year", 1, Call<YearOf>},
    {"dialect_month", 1, Call<MonthOf>},
    {"dialect_day", 1, Call<DayOf>},
    {"dialect_store", 2, Store},
    {"dialect_like", 2, Like},
};

}  // namespace

const char* SqlOf(dialect::FunctionName function) {
  switch (function) {
    case dialect::FunctionName::kLeft:
      return "substr";
    case dialect::FunctionName::kRight:
      return "dialect_right";
    case dialect::FunctionName::kMid:
      return "dialect_mid";
    case dialect::FunctionName::kLen:
      return "length";
    case dialect::FunctionName::kTrim:
      return "trim";
    case dialect::FunctionName::kLTrim:
      return "ltrim";
    case dialect::FunctionName::kRTrim:
      return "rtrim";
    case dialect::FunctionName::kUCase:
      return "dialect_upper";
    case dialect::FunctionName::kLCase:
      return "dialect_lower";
    case dialect::FunctionName::kSpace:
      return "dialect_space";
    case dialect::FunctionName::kStr:
      return "dialect_str";
    case dialect::FunctionName::kVal:
      return "dialect_val";
    case dialect::FunctionName::kAbs:
      return "abs";
    case dialect::FunctionName::kDateValue:
      return "dialect_datevalue";
    case dialect::FunctionName::kCVDate:
    case dialect::FunctionName::kCDate:
      return "dialect_date";
    case dialect::FunctionName::kYear:
      return "dialect_year";
    case dialect::FunctionName::kMonth:
      return "dialect_month";
    case dialect::FunctionName::kDay:
      return "dialect_day";
    case dialect::FunctionName::kIIf:
      return "iif";
    case dialect::FunctionName::kIsNull:  // has a form of its own
      break;
    case dialect::FunctionName::kCount:
      return "count";
    case dialect::FunctionName::kSum:
      return "sum";
    case dialect::FunctionName::kAvg:
      return "avg";
    case dialect::FunctionName::kMax:
      return "max";
    case dialect::FunctionName::kMin:
      return "min";
  }
  return "";
}

void RegisterFunctions(sqlite3* file, std::optional<engine::DatabaseError>* failure) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
  for (const auto& function : kRegistered) {
    sqlite3_create_function_v2(file, function.name, function.arguments, kFlags, failure,
                               function.body, nullptr, nullptr, nullptr);
  }
  sqlite3_create_collation_v2(file, kFoldingOrder, SQLITE_UTF8, nullptr, Collate, nullptr);
}

}  // namespace brenvo::file
