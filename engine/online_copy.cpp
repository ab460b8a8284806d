#include "engine/online_copy.h"

#include <cstdint>
#include <exception>
#include <string>

#include "engine/journal.h"
#include "engine/sqlite_file.h"
#include "engine/sync.h"

namespace brenvo {
namespace {

constexpr int kStepsBetweenQuestions = 20000;  // of SQLite's machine: some milliseconds

// Asks whether to go on from within SQLite, which no exception may cross.
struct Question {
  const std::function<bool()>& goOn;
  bool stop = false;
  std::exception_ptr failure;

  static int Ask(void* question) {
    Question& self = *static_cast<Question*>(question);
    try {
      self.stop = self.stop || !self.goOn();
    } catch (...) {
      self.stop = true;
      self.failure = std::current_exception();
    }
    return self.stop ? 1 : 0;
  }
};

// Two copies are two files: a journal of the one is none of the other's.
std::string ChanceMark() {
  std::int32_t chance = 0;
  sqlite3_randomness(sizeof chance, &chance);
  return std::to_string(chance & 0x7FFFFFFF);
}

}  // namespace

struct OnlineCopy::Files {
  std::filesystem::path path;  // of the copy
  SqliteFile from, to;
  sqlite3_backup* copying = nullptr;
  bool sound = false;

  void CloseSource() {
    if (copying != nullptr) sqlite3_backup_finish(copying);
    copying = nullptr;
    from.reset();
  }
  ~Files() {
    CloseSource();
    to.reset();
    if (sound) return;
    std::error_code ignored;
    for (const char* suffix : {"", "-journal", "-wal", "-shm"}) {
      std::filesystem::path left = path;
      left += suffix;
      std::filesystem::remove(left, ignored);
    }
  }
};

OnlineCopy::OnlineCopy(const std::filesystem::path& from, const std::filesystem::path& to)
    : files_(std::make_unique<Files>()) {
  std::error_code ignored;
  if (!std::filesystem::exists(from, ignored)) {
    throw DatabaseError(DatabaseError::kFileNotFound,
                        "Il file '" + from.string() + "' non esiste.");
  }
  RequireOwnJournal(from);
  files_->path = to;
  std::filesystem::remove(to, ignored);
  files_->from = OpenSqliteFile(from);
  // What is read first is what is copied, whatever others write meanwhile.
  RunSql(files_->from.get(), "BEGIN; SELECT count(*) FROM sqlite_schema");
  files_->to = OpenSqliteFile(to, SQLITE_OPEN_CREATE);
  // The copy is made safe once, at its end.
  RunSql(files_->to.get(),
         ("PRAGMA synchronous = OFF; PRAGMA schema_version = " + ChanceMark()).c_str());
  files_->copying = sqlite3_backup_init(files_->to.get(), "main", files_->from.get(), "main");
  if (files_->copying == nullptr) throw LastFailureOf(files_->to.get());
}

OnlineCopy::~OnlineCopy() = default;

bool OnlineCopy::Step(int pages) {
  const int code = sqlite3_backup_step(files_->copying, pages);
  if (code == SQLITE_DONE) {
    files_->CloseSource();
    return false;
  }
  const int kind = code & 0xFF;
  if (kind == SQLITE_OK || kind == SQLITE_BUSY || kind == SQLITE_LOCKED) return true;
  throw FailureOf(code, sqlite3_errstr(code));
}

bool OnlineCopy::Verify(const std::function<bool()>& goOn) {
  Question question{goOn, false, nullptr};
  sqlite3_progress_handler(files_->to.get(), kStepsBetweenQuestions, Question::Ask, &question);
  std::string complaint;
  try {
    complaint = Complaint(files_->to.get(), true);
  } catch (const DatabaseError&) {
    if (!question.stop) throw;
  }
  if (question.failure) std::rethrow_exception(question.failure);
  if (question.stop) return false;
  sqlite3_progress_handler(files_->to.get(), 0, nullptr, nullptr);
  if (!complaint.empty()) {
    throw DatabaseError(DatabaseError::kNotADatabase,
                        "Il file del database e' danneggiato (" + complaint + ").");
  }
  files_->to.reset();
  SyncToDisk(files_->path);
  files_->sound = true;
  return true;
}

}  // namespace brenvo
