#include "sqlite_functions.h"

#include <sqlite3.h>

#include <iterator>
#include <memory>
#include <string>

#include "base/number.h"
#include "base/text.h"
#include "dialect/convert.h"
#include "dialect/folding.h"
#include "dialect/like_pattern.h"
#include "cells.h"

namespace brenvo {
namespace {

// No text of this program is longer, and no statement may ask for more.
constexpr double kLongestSpace = 65535;

using Failure = std::optional<DatabaseError>;

void Fail(sqlite3_context* context, DatabaseError error) {
  *static_cast<Failure*>(sqlite3_user_data(context)) = std::move(error);
  sqlite3_result_error(context, "dialect", -1);
}

void Return(sqlite3_context* context, const Value& value) {
  const Value::Data& data = value.Get();
  if (const auto* whole = std::get_if<std::int64_t>(&data)) {
    sqlite3_result_int64(context, *whole);
  } else if (const auto* real = std::get_if<double>(&data)) {
    sqlite3_result_double(context, *real);
  } else if (const auto* yes = std::get_if<bool>(&data)) {
    sqlite3_result_int(context, *yes ? -1 : 0);
  } else if (value.IsNull()) {
    sqlite3_result_null(context);
  } else {
    const auto* date = std::get_if<DateTime>(&data);
    const std::string text = date != nullptr ? IsoText(*date) : value.Text();
    sqlite3_result_text64(context, text.data(), text.size(), SQLITE_TRANSIENT, SQLITE_UTF8);
  }
}

// Runs `Body` on the arguments as values. Any Null among them gives Null.
template <Value (*Body)(const Value* arguments, int count)>
void Call(sqlite3_context* context, int count, sqlite3_value** arguments) {
  try {
    Value values[3];
    for (int i = 0; i < count && i < 3; ++i) {
      values[i] = ReadRaw(arguments[i]);
      if (values[i].IsNull()) return sqlite3_result_null(context);
    }
    Return(context, Body(values, count));
  } catch (const DatabaseError& error) {
    Fail(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

std::size_t CountOf(const Value& value) {
  const double number = value.Number();
  if (!(number >= 0) || number > kLongestSpace) {
    throw DatabaseError(DatabaseError::kConversion, "Argomento non valido in una funzione.");
  }
  return static_cast<std::size_t>(RoundHalfEven(number));
}

DateTime DateOf(const Value& value) {
  if (const auto* text = std::get_if<std::string>(&value.Get())) {
    if (const auto date = ParseIso(*text)) return *date;
    return DateOfLiteral(*text);
  }
  return DateOfLiteral(value.Text());
}

Value RightOf(const Value* a, int) { return Right(a[0].Text(), CountOf(a[1])); }
Value MidOf(const Value* a, int count) {
  const std::size_t start = CountOf(a[1]);
  return count == 2 ? Mid(a[0].Text(), start) : Mid(a[0].Text(), start, CountOf(a[2]));
}
Value UpperOf(const Value* a, int) { return Upper(a[0].Text()); }
Value LowerOf(const Value* a, int) { return Lower(a[0].Text()); }
Value SpaceOf(const Value* a, int) { return Space(CountOf(a[0])); }
Value StrOf(const Value* a, int) { return Str(a[0].Number()); }
Value ValOf(const Value* a, int) { return Val(a[0].Text()); }
Value TextOf(const Value* a, int) {
  // A date arrives as the file holds it.
  if (const auto* text = std::get_if<std::string>(&a[0].Get())) {
    if (const auto date = ParseIso(*text)) return DateTimeText(*date);
  }
  return a[0].Text();
}
Value DateValueOf(const Value* a, int) { return DateOf(a[0]).DatePart(); }
Value DateWithTimeOf(const Value* a, int) { return DateOf(a[0]); }
Value YearOf(const Value* a, int) { return DateOf(a[0]).Year(); }
Value MonthOf(const Value* a, int) { return DateOf(a[0]).Month(); }
Value DayOf(const Value* a, int) { return DateOf(a[0]).Day(); }

// dialect_store(type, value): what a column of that type stores.
void Store(sqlite3_context* context, int, sqlite3_value** arguments) {
  try {
    const auto type = static_cast<ColumnType>(sqlite3_value_int(arguments[0]));
    Return(context, ToColumn(ReadRaw(arguments[1]), type, "?"));
  } catch (const DatabaseError& error) {
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
    auto* pattern = static_cast<LikePattern*>(sqlite3_get_auxdata(context, 0));
    std::unique_ptr<LikePattern> fresh;
    if (pattern == nullptr) {
      fresh = std::make_unique<LikePattern>(ReadRaw(arguments[0]).Text());
      pattern = fresh.get();
    }
    sqlite3_result_int(context, pattern->Matches(ReadRaw(arguments[1]).Text()) ? 1 : 0);
    if (fresh) {
      sqlite3_set_auxdata(context, 0, fresh.release(),
                          [](void* data) { delete static_cast<LikePattern*>(data); });
    }
  } catch (const DatabaseError& error) {
    Fail(context, error);
  } catch (const std::bad_alloc&) {
    sqlite3_result_error_nomem(context);
  }
}

int Collate(void*, int sizeA, const void* a, int sizeB, const void* b) {
  return CompareFolded({static_cast<const char*>(a), static_cast<std::size_t>(sizeA)},
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

const char* SqlOf(FunctionName function) {
  switch (function) {
    case FunctionName::kLeft:
      return "substr";
    case FunctionName::kRight:
      return "dialect_right";
    case FunctionName::kMid:
      return "dialect_mid";
    case FunctionName::kLen:
      return "length";
    case FunctionName::kTrim:
      return "trim";
    case FunctionName::kLTrim:
      return "ltrim";
    case FunctionName::kRTrim:
      return "rtrim";
    case FunctionName::kUCase:
      return "dialect_upper";
    case FunctionName::kLCase:
      return "dialect_lower";
    case FunctionName::kSpace:
      return "dialect_space";
    case FunctionName::kStr:
      return "dialect_str";
    case FunctionName::kVal:
      return "dialect_val";
    case FunctionName::kAbs:
      return "abs";
    case FunctionName::kDateValue:
      return "dialect_datevalue";
    case FunctionName::kCVDate:
    case FunctionName::kCDate:
      return "dialect_date";
    case FunctionName::kYear:
      return "dialect_year";
    case FunctionName::kMonth:
      return "dialect_month";
    case FunctionName::kDay:
      return "dialect_day";
    case FunctionName::kIIf:
      return "iif";
    case FunctionName::kIsNull:  // has a form of its own
      break;
    case FunctionName::kCount:
      return "count";
    case FunctionName::kSum:
      return "sum";
    case FunctionName::kAvg:
      return "avg";
    case FunctionName::kMax:
      return "max";
    case FunctionName::kMin:
      return "min";
  }
  return "";
}

void RegisterFunctions(sqlite3* file, std::optional<DatabaseError>* failure) {
  constexpr int kFlags = SQLITE_UTF8 | SQLITE_DETERMINISTIC | SQLITE_DIRECTONLY;
  for (const auto& function : kRegistered) {
    sqlite3_create_function_v2(file, function.name, function.arguments, kFlags, failure,
                               function.body, nullptr, nullptr, nullptr);
  }
  sqlite3_create_collation_v2(file, kFoldingOrder, SQLITE_UTF8, nullptr, Collate, nullptr);
}

}  // namespace brenvo
