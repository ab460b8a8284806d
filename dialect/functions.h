// The functions and the order of texts that the dialect adds to SQLite. They live in the open
// connection alone: nothing in the file refers to them.
#pragma once

#include <optional>
#include <string_view>

#include "dialect/tree.h"
#include "engine/database_error.h"

struct sqlite3;

namespace brenvo {

// Orders texts without regard to case, of all letters and not of ASCII alone.
inline constexpr const char* kFoldingOrder = "DIALECT";

// Makes the functions known to a connection. A failure inside one is left in `failure`, and the
// running statement ends with SQLITE_ERROR.
void RegisterFunctions(sqlite3* file, std::optional<DatabaseError>* failure);

// What the dialect knows of a function that a statement calls.
struct Function {
  enum class Kind {
    kPlain,      // sql(arguments)
    kLeft,       // Left: indexes are served by its own form
    kDateValue,  // a date without its time
    kDate,       // a date with its time
    kCondition,  // IIf: the first argument is a condition
    kIsNull,
    kCount,
    kSum,      // Sum, Avg: a number of numbers
    kExtreme,  // Max, Min: of the argument's type
  };
  std::string_view name;
  Kind kind;
  const char* sql;
  int fewest, most;
  ValueType result;
  // What the arguments must be: 't' text, 'n' number, 'd' date, '?' anything.
  std::string_view arguments;
};

// Null when there is no function of that name.
const Function* FindFunction(std::string_view name);

// The date of a text as DateValue and CVDate read it; DatabaseError 3464 when it is none.
DateTime DateOfLiteral(std::string_view text);

// Texts by the folding order: negative, 0 or positive.
int CompareFolded(std::string_view a, std::string_view b);
// Whether the text holds letters that ASCII's case folding does not reach.
bool NeedsFolding(std::string_view text);

}  // namespace brenvo
