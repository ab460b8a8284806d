#include "file/journal.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <optional>
#include <vector>

#include "sqlite_file.h"

namespace brenvo::file {
namespace {

constexpr std::size_t kFileHeader = 100, kJournalHeader = 32, kFrameHeader = 24;
// Places in a database's first page.
constexpr std::size_t kPageSizeAt = 16, kPagesAt = 28, kFreePagesAt = 36, kMarkAt = 40;
// Another tool that changes the schema counts the mark up, by one a change.
constexpr std::uint32_t kMostSchemaChanges = 1000;
// Where reading all of it takes no longer than a start may.
constexpr int kMostPagesReadWhole = 8192;
constexpr int kTries = 5;

using Bytes = std::vector<unsigned char>;

std::uint32_t BigEndian(const unsigned char* at) {
  return static_cast<std::uint32_t>(at[0]) << 24 | static_cast<std::uint32_t>(at[1]) << 16 |
         static_cast<std::uint32_t>(at[2]) << 8 | at[3];
}

std::uint32_t LittleEndian(const unsigned char* at) {
  return static_cast<std::uint32_t>(at[3]) << 24 | static_cast<std::uint32_t>(at[2]) << 16 |
         static_cast<std::uint32_t>(at[1]) << 8 | at[0];
}

std::filesystem::path JournalOf(std::filesystem::path database) {
  database += "-wal";
  return database;
}

// Up to so many bytes; fewer where the file has no more.
Bytes Take(std::ifstream& file, std::size_t size) {
  Bytes bytes(size);
  file.read(reinterpret_cast<char*>(bytes.data()), static_cast<std::streamsize>(size));
  bytes.resize(static_cast<std::size_t>(file.gcount()));
  return bytes;
}

Bytes HeadOf(const std::filesystem::path& file, std::size_t size) {
  std::ifstream in(file, std::ios::binary);
  return Take(in, size);
}

Bytes HeadOfDatabase(const std::filesystem::path& database) {
  const std::string bytes = FirstBytesOf(database, kFileHeader);
  return {bytes.begin(), bytes.end()};
}

// SQLite's running sum over eight bytes at a time, which each frame carries on.
class RunningSum {
 public:
  explicit RunningSum(bool bigEndian) : bigEndian_(bigEndian) {}
  void Add(const unsigned char* at, std::size_t size) {
    for (std::size_t i = 0; i + 8 <= size; i += 8) {
      const auto word = bigEndian_ ? BigEndian : LittleEndian;
      first_ += word(at + i) + second_;
      second_ += word(at + i + 4) + first_;
    }
  }
  bool Is(const unsigned char* at) const {
    return BigEndian(at) == first_ && BigEndian(at + 4) == second_;
  }

 private:
  bool bigEndian_;
  std::uint32_t first_ = 0, second_ = 0;
};

// What a journal says of the file that it belongs to.
struct Read {
  bool readable = false;  // as a journal
  bool holdsChanges = false;
  std::uint32_t pageSize = 0;
  std::vector<std::uint32_t> marks;  // of the first page, as often as it is in the journal
};

Read ReadJournal(const std::filesystem::path& journal) {
  Read read;
  std::ifstream in(journal, std::ios::binary);
  const Bytes header = Take(in, kJournalHeader);
  // One that was being made, or was made ready by a disk that did not get further.
  if (header.size() < kJournalHeader || BigEndian(header.data()) == 0) {
    read.readable = true;
    return read;
  }
  constexpr std::uint32_t kMagic = 0x377F0682;
  const std::uint32_t magic = BigEndian(header.data());
  read.pageSize = BigEndian(header.data() + 8);
  const bool sane = (magic & ~1U) == kMagic && read.pageSize >= 512 && read.pageSize <= 65536 &&
                    (read.pageSize & (read.pageSize - 1)) == 0;
  RunningSum sum((magic & 1) != 0);
  sum.Add(header.data(), 24);
  if (!sane || !sum.Is(header.data() + 24)) return read;
  read.readable = true;
  // A change counts once its last frame is there: that one tells the file's size.
  std::vector<std::uint32_t> pending;
  for (;;) {
    const Bytes frame = Take(in, kFrameHeader + read.pageSize);
    if (frame.size() < kFrameHeader + read.pageSize) return read;
    if (!std::equal(frame.begin() + 8, frame.begin() + 16, header.begin() + 16)) return read;
    sum.Add(frame.data(), 8);
    sum.Add(frame.data() + kFrameHeader, read.pageSize);
    if (BigEndian(frame.data()) == 0 || !sum.Is(frame.data() + 16)) return read;
    if (BigEndian(frame.data()) == 1) {
      pending.push_back(BigEndian(frame.data() + kFrameHeader + kMarkAt));
    }
    if (BigEndian(frame.data() + 4) == 0) continue;
    read.holdsChanges = true;
    read.marks.insert(read.marks.end(), pending.begin(), pending.end());
    pending.clear();
  }
}

std::uint32_t PageSizeOf(const Bytes& head) {
  const std::uint32_t size = static_cast<std::uint32_t>(head[kPageSizeAt]) << 8 | head[17];
  return size == 1 ? 65536 : size;
}

Journal Judge(const Bytes& head, const Read& journal) {
  if (!journal.readable) return Journal::kForeign;
  if (!journal.holdsChanges) return Journal::kNone;
  if (journal.pageSize != PageSizeOf(head)) return Journal::kForeign;
  // Written by somebody who gives no marks, and whose changes did not reach the first page.
  if (journal.marks.empty()) return Journal::kOwn;
  const FileMark file{BigEndian(&head[kMarkAt]), BigEndian(&head[kPagesAt]),
                      BigEndian(&head[kFreePagesAt])};
  const std::uint32_t first = journal.marks.front();
  const bool follows = NextMark(file, static_cast<std::uint16_t>(first)) == first ||
                       first - file.mark <= kMostSchemaChanges;
  // A first page that has been written back is one of the journal's own.
  const bool writtenBack =
      std::find(journal.marks.begin(), journal.marks.end(), file.mark) != journal.marks.end();
  return follows || writtenBack ? Journal::kOwn : Journal::kForeign;
}

// Opens the file to look at it: neither looking nor closing writes anything back.
SqliteFile OpenToLook(const std::filesystem::path& database) {
  SqliteFile file = OpenSqliteFile(database);
  sqlite3_busy_timeout(file.get(), 0);
  sqlite3_db_config(file.get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
  sqlite3_db_config(file.get(), SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
  RunSql(file.get(), "PRAGMA wal_autocheckpoint = 0; PRAGMA cell_size_check = ON");
  return file;
}

int PagesOf(sqlite3* file) {
  sqlite3_stmt* statement = nullptr;
  int code = sqlite3_prepare_v2(file, "PRAGMA page_count", -1, &statement, nullptr);
  if (code == SQLITE_OK) code = sqlite3_step(statement);
  const int pages = code == SQLITE_ROW ? sqlite3_column_int(statement, 0) : 0;
  sqlite3_finalize(statement);
  if (code != SQLITE_ROW) throw LastFailureOf(file);
  return pages;
}

std::string ComplaintOf(const SqliteFile& file) {
  return Complaint(file.get(), PagesOf(file.get()) <= kMostPagesReadWhole);
}

// About the database with its journal; empty too where another program has both, and where they
// cannot be looked at: who opens them is told why.
std::string ComplaintTogether(const std::filesystem::path& database) {
  try {
    const SqliteFile file = OpenToLook(database);
    RunSql(file.get(),
           "PRAGMA locking_mode = EXCLUSIVE; BEGIN; SELECT count(*) FROM sqlite_schema");
    return ComplaintOf(file);
  } catch (const engine::DatabaseError& failure) {
    return failure.Number == engine::DatabaseError::kNotADatabase ? failure.Description : "";
  }
}

bool IsSoundAlone(const std::filesystem::path& database) {
  try {
    return ComplaintOf(OpenToRead(database)).empty();
  } catch (const engine::DatabaseError&) {
    return false;
  }
}

std::string BesideIt(const std::filesystem::path& database) {
  return "Accanto a '" + Utf8Name(database.filename()) + "' c'è il giornale '" +
         Utf8Name(JournalOf(database).filename()) + "'";
}

}  // namespace

std::uint32_t NextMark(const FileMark& from, std::uint16_t chance) {
  // FNV-1a, folded to half its length.
  std::uint32_t hash = 2166136261U;
  for (const std::uint32_t part : {from.mark, from.pages, from.freePages, std::uint32_t{chance}}) {
    for (int shift = 0; shift < 32; shift += 8) hash = (hash ^ (part >> shift & 0xFF)) * 16777619U;
  }
  const std::uint32_t mark = ((hash >> 16 ^ hash) & 0xFFFF) << 16 | chance;
  return mark == 0 ? 1U << 16 : mark;
}

Journal JudgeJournal(const std::filesystem::path& database) {
  const std::filesystem::path journal = JournalOf(database);
  std::error_code error;
  if (!std::filesystem::exists(journal, error)) return Journal::kNone;
  for (int tried = 0; tried < kTries; ++tried) {
    const Bytes head = HeadOfDatabase(database), start = HeadOf(journal, kJournalHeader);
    if (head.size() < kFileHeader) return Journal::kNone;
    const Journal judgement = Judge(head, ReadJournal(journal));
    if (judgement != Journal::kForeign) return judgement;
    // Another program may be at work on both, and have written one of them back meanwhile.
    const bool still = head == HeadOfDatabase(database) && start == HeadOf(journal, kJournalHeader);
    if (still) return judgement;
  }
  return Journal::kOwn;
}

Journal RequireOwnJournal(const std::filesystem::path& database) {
  const Journal journal = JudgeJournal(database);
  if (journal != Journal::kForeign) return journal;
  throw JournalFailure(engine::DatabaseError::kNotADatabase,
                       BesideIt(database) +
                           ", che è di un altro file: il database è stato sostituito. Nulla del "
                           "giornale è stato applicato.");
}

void RequireSoundJournal(const std::filesystem::path& database) {
  if (RequireOwnJournal(database) == Journal::kNone) return;
  const std::string complaint = ComplaintTogether(database);
  if (complaint.empty() || !IsSoundAlone(database)) return;
  throw JournalFailure(engine::DatabaseError::kNotADatabase,
                       BesideIt(database) + ", che lo danneggia (" + complaint +
                           "). Nulla del giornale è stato applicato.");
}

}  // namespace brenvo::file
