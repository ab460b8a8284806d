// The functions that a statement may call.
#pragma once

#include <string_view>

#include "dialect/schema.h"

namespace brenvo::dialect {

// A store that writes statements out switches over these, so that one without its form does not
// compile.
enum class FunctionName {
  kLeft,
  kRight,
  kMid,
  kLen,
  kTrim,
  kLTrim,
  kRTrim,
  kUCase,
  kLCase,
  kSpace,
  kStr,
  kVal,
  kAbs,
  kDateValue,
  kCVDate,
  kCDate,
  kYear,
  kMonth,
  kDay,
  kIIf,
  kIsNull,
  kCount,
  kSum,
  kAvg,
  kMax,
  kMin,
};

struct Function {
  enum class Kind {
    kPlain,      // of its arguments alone
    kLeft,       // Left: indexes are served by its own form
    kDateValue,  // a date without its time
    kDate,       // a date with its time
    kCondition,  // IIf: the first argument is a condition
    kIsNull,
    kCount,
    kSum,      // Sum, Avg: a number of numbers
    kExtreme,  // Max, Min: of the argument's type
  };
  FunctionName id;
  std::string_view name;
  Kind kind;
  int fewest, most;  // arguments
  ValueType result;
  // What the arguments must be: 't' text, 'n' number, 'd' date, '?' anything.
  std::string_view arguments;
};

// Null when there is no function of that name.
const Function* FindFunction(std::string_view name);

}  // namespace brenvo::dialect
