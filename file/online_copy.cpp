#include "file/online_copy.h"

#include <atomic>
#include <chrono>
#include <cstdint>
#include <future>
#include <string>

#include "file/journal.h"
#include "file/sync.h"
#include "question.h"
#include "sqlite_file.h"

namespace brenvo::file {
namespace {

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
    throw engine::DatabaseError(engine::DatabaseError::kFileNotFound,
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

double OnlineCopy::PartCopied() const {
  if (files_->copying == nullptr) return 1;
  const int all = sqlite3_backup_pagecount(files_->copying);  // 0 before the first step
  return all > 0 ? 1 - static_cast<double>(sqlite3_backup_remaining(files_->copying)) / all : 0;
}

bool OnlineCopy::Verify(const std::function<bool()>& goOn) {
  std::string complaint;
  {
    const Question question(files_->to.get(), goOn);
    try {
      complaint = Complaint(files_->to.get(), true);
    } catch (const engine::DatabaseError&) {
      if (!question.Stopped()) throw;
    }
    question.RethrowFailure();
    if (question.Stopped()) return false;
  }
  if (!complaint.empty()) {
    throw engine::DatabaseError(engine::DatabaseError::kNotADatabase,
                                "Il file del database è danneggiato (" + complaint + ").");
  }
  files_->to.reset();
  SyncToDisk(files_->path);
  files_->sound = true;
  return true;
}

bool OnlineCopy::VerifyBeside(const std::function<bool()>& goOn) {
  constexpr std::chrono::milliseconds kBetween(10);
  std::atomic<bool> wanted = true;
  auto sound =
      std::async(std::launch::async, [&] { return Verify([&] { return wanted.load(); }); });
  try {
    do {
      if (wanted && !goOn()) wanted = false;
    } while (sound.wait_for(kBetween) != std::future_status::ready);
  } catch (...) {
    wanted = false;
    sound.wait();
    files_->sound = false;
    throw;
  }
  const bool found = sound.get();
  if (!wanted) files_->sound = false;  // it may have come to its end all the same
  return found && wanted;
}

}  // namespace brenvo::file
