#include "dialect/functions.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace brenvo::dialect {
namespace {

using Kind = Function::Kind;

constexpr Function kFunctions[] = {
    {FunctionName::kLeft, "Left", Kind::kLeft, 2, 2, ValueType::kText, "tn"},
    {FunctionName::kRight, "Right", Kind::kPlain, 2, 2, ValueType::kText, "tn"},
    {FunctionName::kMid, "Mid", Kind::kPlain, 2, 3, ValueType::kText, "tnn"},
    {FunctionName::kLen, "Len", Kind::kPlain, 1, 1, ValueType::kInteger, "t"},
    {FunctionName::kTrim, "Trim", Kind::kPlain, 1, 1, ValueType::kText, "t"},
    {FunctionName::kLTrim, "LTrim", Kind::kPlain, 1, 1, ValueType::kText, "t"},
    {FunctionName::kRTrim, "RTrim", Kind::kPlain, 1, 1, ValueType::kText, "t"},
    {FunctionName::kUCase, "UCase", Kind::kPlain, 1, 1, ValueType::kText, "t"},
    {FunctionName::kLCase, "LCase", Kind::kPlain, 1, 1, ValueType::kText, "t"},
    {FunctionName::kSpace, "Space", Kind::kPlain, 1, 1, ValueType::kText, "n"},
    {FunctionName::kStr, "Str", Kind::kPlain, 1, 1, ValueType::kText, "n"},
    {FunctionName::kVal, "Val", Kind::kPlain, 1, 1, ValueType::kReal, "t"},
    {FunctionName::kAbs, "Abs", Kind::kPlain, 1, 1, ValueType::kReal, "n"},
    {FunctionName::kDateValue, "DateValue", Kind::kDateValue, 1, 1, ValueType::kDate, "?"},
    {FunctionName::kCVDate, "CVDate", Kind::kDate, 1, 1, ValueType::kDate, "?"},
    {FunctionName::kCDate, "CDate", Kind::kDate, 1, 1, ValueType::kDate, "?"},
    {FunctionName::kYear, "Year", Kind::kPlain, 1, 1, ValueType::kInteger, "d"},
    {FunctionName::kMonth, "Month", Kind::kPlain, 1, 1, ValueType::kInteger, "d"},
    {FunctionName::kDay, "Day", Kind::kPlain, 1, 1, ValueType::kInteger, "d"},
    {FunctionName::kIIf, "IIf", Kind::kCondition, 3, 3, ValueType::kAny, "???"},
    {FunctionName::kIsNull, "IsNull", Kind::kIsNull, 1, 1, ValueType::kYesNo, "?"},
    {FunctionName::kCount, "Count", Kind::kCount, 1, 1, ValueType::kInteger, "?"},
    {FunctionName::kSum, "Sum", Kind::kSum, 1, 1, ValueType::kReal, "n"},
    {FunctionName::kAvg, "Avg", Kind::kSum, 1, 1, ValueType::kReal, "n"},
    {FunctionName::kMax, "Max", Kind::kExtreme, 1, 1, ValueType::kAny, "?"},
    {FunctionName::kMin, "Min", Kind::kExtreme, 1, 1, ValueType::kAny, "?"},
};

}  // namespace

const Function* FindFunction(std::string_view name) {
  const auto* found = std::find_if(std::begin(kFunctions), std::end(kFunctions),
                                   [&](const Function& f) { return base::SameText(f.name, name); });
  return found == std::end(kFunctions) ? nullptr : found;
}

}  // namespace brenvo::dialect
