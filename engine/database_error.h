// What the file engine reports.
#pragma once

#include <stdexcept>
#include <string>

namespace brenvo {

class DatabaseError : public std::runtime_error {
 public:
  // The file engine's own numbers, where the program or a reader of its messages meets them.
  enum : int {
    kPathAccess = 75,      // a file that cannot be renamed, deleted or written
    kInvalidPattern = 93,  // a pattern of LIKE that is none
    kTypeMismatchInExpression = 3464,
    kUpdateWithoutEdit = 3020,
    kNoCurrentRecord = 3021,
    kDuplicateKey = 3022,
    kFileNotFound = 3024,
    kDiskFull = 3026,
    kReadOnly = 3027,
    kUnknownParameter = 3061,  // a name in a statement that is no column
    kSyntax = 3075,
    kNoTransaction = 3034,  // a commit or rollback without a begin
    kExecuteOfSelect = 3065,
    kUnknownTable = 3078,
    kAmbiguousName = 3079,
    kUnknownFunction = 3085,
    kCharactersAfterEnd = 3142,  // a second statement
    kRecordDeleted = 3167,
    kInvalidOperation = 3219,  // a statement that writes where only reading is allowed, ...
    kNoSuchIndex = 3015,
    kLocked = 3260,
    kFileExists = 3204,
    kItemNotFound = 3265,  // a column asked of a record
    kColumnCount = 3346,   // an INSERT with more or fewer values than columns
    kNotADatabase = 3343,
    kObjectClosed = 3420,
    kConversion = 3421,
    kFailed = 3146,  // any other failure of the file
  };

  DatabaseError(int number, const std::string& description)
      : std::runtime_error(std::to_string(number) + " - " + description),
        Number(number),
        Description(description) {}

  int Number;
  std::string Description;  // Italian, without the number
};

}  // namespace brenvo
