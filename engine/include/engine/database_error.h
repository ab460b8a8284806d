// What the file engine reports.
#pragma once

#include <stdexcept>
#include <string>

namespace brenvo::engine {

class DatabaseError : public std::runtime_error {
 public:
  // The file engine's own numbers, where the program or a reader of its messages meets them.
  enum : int {
    kPathAccess = 75,      // a file that cannot be renamed, deleted or written
    kInvalidPattern = 93,  // a pattern of LIKE that is none
    kNoSuchIndex = 3015,
    kUpdateWithoutEdit = 3020,
    kNoCurrentRecord = 3021,
    kDuplicateKey = 3022,
    kFileNotFound = 3024,
    kDiskFull = 3026,
    kReadOnly = 3027,
    kNoTransaction = 3034,     // a commit or rollback without a begin
    kInvalidPath = 3044,       // longer than the file engine takes
    kStopped = 3059,           // by whoever watches the work
    kUnknownParameter = 3061,  // a name in a statement that is no column
    kExecuteOfSelect = 3065,
    kSyntax = 3075,
    kUnknownTable = 3078,
    kAmbiguousName = 3079,
    kUnknownFunction = 3085,
    kCharactersAfterEnd = 3142,  // a second statement
    kFailed = 3146,              // any other failure of the file
    kRecordDeleted = 3167,
    kFileExists = 3204,
    kInvalidOperation = 3219,  // a statement that writes where only reading is allowed, ...
    kLocked = 3260,
    kItemNotFound = 3265,  // a column asked of a record
    kNotADatabase = 3343,
    kColumnCount = 3346,  // an INSERT with more or fewer values than columns
    kObjectClosed = 3420,
    kConversion = 3421,
    kTypeMismatchInExpression = 3464,
  };

  DatabaseError(int number, const std::string& description)
      : std::runtime_error(std::to_string(number) + " - " + description),
        Number(number),
        Description(description) {}

  int Number;
  std::string Description;  // Italian, without the number
};

}  // namespace brenvo::engine
