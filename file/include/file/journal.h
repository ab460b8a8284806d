// What an unclean end leaves beside a database, and whether it is the file's own.
//
// SQLite applies whatever whole journal it finds under the right name. So that a file which has
// been put in the place of another is told from it, the first change of each journal gives the file
// a new mark, made of the one before: the counter that SQLite keeps of the schema's versions, whose
// value means nothing to anybody.
#pragma once

#include <cstdint>
#include <filesystem>
#include <string>

#include "engine/database_error.h"

namespace brenvo::file {

// A journal that stands beside a database and must not be applied to it. Number is 3343.
class JournalFailure : public engine::DatabaseError {
 public:
  using engine::DatabaseError::DatabaseError;
};

// What the mark that follows is made of: of the file as it is without a journal.
struct FileMark {
  std::uint32_t mark = 0;
  std::uint32_t pages = 0;
  std::uint32_t freePages = 0;
};

// A mark that has its origin in this one, and a part of chance. Never 0.
std::uint32_t NextMark(const FileMark& from, std::uint16_t chance);

enum class Journal {
  kNone,     // none, or one that holds nothing whole
  kOwn,      // of this file; also where nothing tells of which
  kForeign,  // of another file, or no journal at all
};

// Judges the journal of a database by both files as they lie on the disk; neither is changed. The
// database may be in use.
Journal JudgeJournal(const std::filesystem::path& database);

// JournalFailure when the journal is foreign; else what it is. For a database that is only read.
Journal RequireOwnJournal(const std::filesystem::path& database);
// JournalFailure when the journal is foreign, or when the database, sound without it, would be
// damaged with it. Nothing is applied and nothing changed. A database that another program has open
// is as that program has it, and is not read through.
void RequireSoundJournal(const std::filesystem::path& database);

}  // namespace brenvo::file
