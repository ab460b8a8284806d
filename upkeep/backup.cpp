#include "upkeep/backup.h"

#include <fmt/format.h>

#include <algorithm>
#include <exception>
#include <set>

#include "core/files.h"
#include "file/database_file.h"
#include "file/file_check.h"
#include "file/online_copy.h"
#include "file/sync.h"

namespace brenvo::upkeep {
namespace {

constexpr std::string_view kDirectory = "Backup";
constexpr std::string_view kUnfinished = "Brenvo-in-corso.mdb";
// In the application directory; it lasts until it gets the database's name.
constexpr std::string_view kPuttingBack = "Brenvo-ripristino.mdb";
constexpr std::string_view kWithoutJournal = "Brenvo-senza-giornale.mdb";
constexpr std::string_view kDailyPrefix = "Brenvo-", kAsidePrefix = "Brenvo-prima-";
constexpr std::string_view kSuffix = ".mdb";
constexpr std::size_t kDaysKept = 10, kMonthsKept = 12;
// The start is over, and the operator's first keys have had their answer.
constexpr int kFirstPause = 5000, kPause = 100;  // milliseconds
constexpr int kPagesPerSlice = 500;              // two megabytes, some milliseconds
constexpr int kParts = 1000;                     // of a copy, in the progress that is shown

std::filesystem::path DirectoryOf(const std::filesystem::path& appPath) {
  return appPath / kDirectory;
}

std::string DayName(base::DateTime day) {
  return fmt::format("{}{:04}-{:02}-{:02}{}", kDailyPrefix, day.Year(), day.Month(), day.Day(),
                     kSuffix);
}

std::string AsideName(base::DateTime time) {
  return fmt::format("{}{:04}-{:02}-{:02} {:02}-{:02}-{:02}{}", kAsidePrefix, time.Year(),
                     time.Month(), time.Day(), time.Hour(), time.Minute(), time.Second(), kSuffix);
}

// What a file name tells; nothing when it is not one of ours.
std::optional<BackupCopy> CopyOf(const std::filesystem::path& file) {
  std::string name = file.filename().string();
  BackupCopy copy{file, {}, name.starts_with(kAsidePrefix)};
  name.erase(0, copy.setAside ? kAsidePrefix.size() : 0);
  if (copy.setAside) {
    // "2026-11-21 18-31-05": the time with the separator that a file name can hold.
    if (name.size() != 19 + kSuffix.size() || !name.ends_with(kSuffix)) return std::nullopt;
    name.resize(19);
    name[13] = name[16] = ':';
  } else {
    if (!name.starts_with(kDailyPrefix) || !name.ends_with(kSuffix)) return std::nullopt;
    name = name.substr(kDailyPrefix.size(), name.size() - kDailyPrefix.size() - kSuffix.size()) +
           " 00:00:00";
  }
  const std::optional<base::DateTime> made = base::ParseIso(name);
  if (!made || (copy.setAside ? AsideName(*made) : DayName(*made)) != file.filename()) {
    return std::nullopt;
  }
  copy.made = *made;
  return copy;
}

void MakeDirectory(const std::filesystem::path& directory) {
  std::error_code error;
  std::filesystem::create_directories(directory, error);
  if (error) throw file::PathFailure(directory, error);
}

// The name of a file set aside now; a second that has its file already is left to it.
std::filesystem::path FreeAsideFile(const std::filesystem::path& directory, base::DateTime now) {
  std::filesystem::path file;
  std::error_code error;
  do {
    file = directory / AsideName(now);
    now = now.Later(1);
  } while (std::filesystem::exists(file, error));
  return file;
}

void DropOld(const std::filesystem::path& appPath, base::DateTime today) {
  std::vector<base::DateTime> days;
  for (const BackupCopy& copy : BackupCopies(appPath)) {
    if (!copy.setAside) days.push_back(copy.made);
  }
  std::error_code ignored;
  for (const base::DateTime day : DaysToDrop(std::move(days), today)) {
    std::filesystem::remove(DirectoryOf(appPath) / DayName(day), ignored);
  }
}

using GoOn = std::function<void(bool wanted)>;  // throws where work is to end

// A sound copy of the file, with how far it is.
void CopyShown(const std::filesystem::path& from, const std::filesystem::path& to,
               std::string_view title, const ShowProgress& show, const GoOn& goOn) {
  file::OnlineCopy copying(from, to);
  {
    const auto progress = show(title, kParts);
    while (copying.Step(kPagesPerSlice)) {
      goOn(progress->Advance(static_cast<std::int64_t>(copying.PartCopied() * kParts)));
    }
  }
  // Nobody knows how long the check takes.
  const auto progress = show("Controllo della copia", 0);
  copying.VerifyBeside([&] {
    goOn(progress->Advance(kParts));
    return true;
  });
}

// The same, unless the operator stops it.
void CopyWatched(core::Session& session, const std::filesystem::path& from,
                 const std::filesystem::path& to) {
  CopyShown(
      from, to, "Ripristino della copia",
      [&](std::string_view title, std::int64_t total) {
        return session.Machine.ShowProgress(title, total);
      },
      [](bool wanted) {
        if (wanted) return;
        throw engine::DatabaseError(engine::DatabaseError::kStopped, "Operazione interrotta.");
      });
}

}  // namespace

std::vector<BackupCopy> BackupCopies(const std::filesystem::path& appPath) {
  std::vector<BackupCopy> copies;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(DirectoryOf(appPath), error)) {
    if (!entry.is_regular_file(error)) continue;
    if (auto copy = CopyOf(entry.path())) copies.push_back(std::move(*copy));
  }
  std::sort(copies.begin(), copies.end(),
            [](const BackupCopy& a, const BackupCopy& b) { return a.made > b.made; });
  return copies;
}

std::string TitleOf(const BackupCopy& copy) {
  return "del " + base::DateText(copy.made) +
         (copy.setAside ? " alle " + base::TimeText(copy.made) + ", messa da parte"
                        : std::string());
}

std::optional<std::int64_t> ContactsIn(const BackupCopy& copy) {
  try {
    return file::RowsIn(copy.file, "Log");
  } catch (const engine::DatabaseError&) {
    return std::nullopt;
  }
}

std::string ContentsOf(const BackupCopy& copy) {
  try {
    return fmt::format("{} QSO", file::RowsIn(copy.file, "Log"));
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number == engine::DatabaseError::kNotADatabase) return "non leggibile";
    return "ora non si può leggere: " + failure.Description;
  }
}

std::vector<base::DateTime> DaysToDrop(std::vector<base::DateTime> days, base::DateTime today) {
  std::erase_if(days, [&](base::DateTime day) { return day > today; });
  std::sort(days.begin(), days.end(), std::greater<>());
  std::vector<base::DateTime> dropped;
  std::set<int> months;
  for (std::size_t i = 0; i < days.size(); ++i) {
    const bool lastOfMonth = months.insert(days[i].Year() * 12 + days[i].Month()).second;
    if (i >= kDaysKept && !(lastOfMonth && months.size() <= kMonthsKept)) {
      dropped.push_back(days[i]);
    }
  }
  return dropped;
}

void PutBack(core::Session& session, const BackupCopy& copy) {
  const std::filesystem::path database = session.File("\\Brenvo.mdb");
  const std::filesystem::path fresh = session.AppPath / kPuttingBack;
  CopyWatched(session, copy.file, fresh);
  file::OpenDatabaseFile(fresh).Close();  // sound, and of this program
  const std::filesystem::path directory = DirectoryOf(session.AppPath);
  MakeDirectory(directory);
  const std::filesystem::path aside = FreeAsideFile(directory, session.Now());
  // What was not yet written back belongs to the old file, and must not meet the new one.
  for (const char* suffix : {"", "-wal", "-shm"}) {
    std::filesystem::path from = database, to = aside;
    from += suffix;
    to += suffix;
    std::error_code error;
    if (std::filesystem::exists(from, error)) file::MoveSafely(from, to);
  }
  file::RenameSafely(fresh, database);
}

void MakeDaysCopy(const std::filesystem::path& appPath, base::DateTime now,
                  const ShowProgress& show) {
  const std::filesystem::path directory = DirectoryOf(appPath), finished = directory / DayName(now);
  std::error_code error;
  if (std::filesystem::exists(finished, error)) return;
  MakeDirectory(directory);
  CopyShown(core::FileIn(appPath, "\\Brenvo.mdb"), directory / kUnfinished, "Copia di sicurezza",
            show, [](bool) {});
  file::RenameSafely(directory / kUnfinished, finished);
}

std::optional<BackupCopy> WithoutJournal(core::Session& session) {
  const std::filesystem::path alone = session.AppPath / kWithoutJournal;
  std::error_code error;
  std::filesystem::copy_file(session.File("\\Brenvo.mdb"), alone,
                             std::filesystem::copy_options::overwrite_existing, error);
  if (!error) return BackupCopy{alone, session.Now(), false};
  std::filesystem::remove(alone, error);
  return std::nullopt;
}

void DropWithoutJournal(core::Session& session) {
  std::error_code ignored;
  std::filesystem::remove(session.AppPath / kWithoutJournal, ignored);
}

std::optional<BackupCopy> LeftByInterruptedPutBack(const std::filesystem::path& appPath) {
  std::error_code error;
  if (!std::filesystem::exists(appPath / kPuttingBack, error)) return std::nullopt;
  for (const BackupCopy& copy : BackupCopies(appPath)) {
    if (copy.setAside) return copy;
  }
  return std::nullopt;
}

namespace {

void PutBackAndReopen(core::Session& session, const BackupCopy& copy) {
  session.CloseForCompaction();
  try {
    session.RequireNoOtherProgram();
    PutBack(session, copy);
  } catch (const engine::DatabaseError& failure) {
    try {
      session.ReopenAfterCompaction();
    } catch (const engine::DatabaseError&) {
      session.EndWith(failure, "Ripristina backup");
    }
    throw;
  }
  session.ReopenAfterCompaction();
}

}  // namespace

bool RestoreBackup(core::Session& session, const BackupCopy& copy) {
  if (!session.Windows.UnloadAllButFirst()) return false;
  return session.Contacts.ChangeMany(
      "Ripristina backup", {core::ContactTable::kLog, core::ContactTable::kContestQso}, [&] {
        PutBackAndReopen(session, copy);
        return true;
      });
}

// The copy in work, and what became of it: the worker's alone until it has ended.
struct DailyBackup::Job {
  Job(const std::filesystem::path& from, const std::filesystem::path& to) : copy(from, to) {}

  file::OnlineCopy copy;
  bool sound = false;
  std::exception_ptr failure;

  void Run(const std::stop_token& stop) {
    try {
      while (copy.Step(kPagesPerSlice)) {
        if (stop.stop_requested()) return;
      }
      sound = copy.Verify([&] { return !stop.stop_requested(); });
    } catch (...) {
      failure = std::current_exception();
    }
  }
};

DailyBackup::DailyBackup(core::Session& session, std::function<void(const std::string& text)> tell)
    : session_(session), tell_(std::move(tell)), timer_(session.Machine.MakeTimer()) {
  timer_->OnTick = [this] { session_.Windows.RunEvent([this] { Tick(); }); };
  closing_ = session.Closing.Subscribe([this] { Stop(); });
  reopened_ = session.Reopened.Subscribe([this] { Start(); });
}

DailyBackup::~DailyBackup() = default;

void DailyBackup::Start() {
  if (DayHasCopy()) return;
  unfinished_ = DirectoryOf(session_.AppPath) / kUnfinished;
  timer_->SetInterval(kFirstPause);
  timer_->SetEnabled(true);
}

void DailyBackup::Stop() {
  timer_->SetEnabled(false);
  work_.reset();  // waits until it has ended
  job_.reset();
}

void DailyBackup::Tick() {
  try {
    if (work_ == nullptr) {
      Begin();
    } else if (work_->HasEnded()) {
      Finish();
    }
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number == engine::DatabaseError::kNotADatabase) session_.Db.RefuseWrites();
    Fail(failure.Description);
  } catch (const std::exception& failure) {
    Fail(failure.what());
  }
}

bool DailyBackup::DayHasCopy() {
  day_ = session_.Now();
  finished_ = DirectoryOf(session_.AppPath) / DayName(day_);
  std::error_code error;
  return std::filesystem::exists(finished_, error);
}

void DailyBackup::Begin() {
  if (DayHasCopy()) {
    Stop();
    return;
  }
  MakeDirectory(unfinished_.parent_path());
  // Opened here: the copy holds the log as it stands at this moment.
  job_ = std::make_unique<Job>(session_.File("\\Brenvo.mdb"), unfinished_);
  work_ = session_.Machine.RunInBackground(
      [job = job_.get()](const std::stop_token& stop) { job->Run(stop); });
  timer_->SetInterval(kPause);
}

void DailyBackup::Finish() {
  work_.reset();
  const std::unique_ptr<Job> job = std::move(job_);
  if (job->failure) std::rethrow_exception(job->failure);
  if (!job->sound) return;
  file::RenameSafely(unfinished_, finished_);
  timer_->SetEnabled(false);
  DropOld(session_.AppPath, session_.Now());
  tell_("Copia di sicurezza del " + base::DateText(day_) + " fatta");
}

void DailyBackup::Fail(const std::string& why) {
  Stop();
  tell_("La copia di sicurezza non è riuscita: " + why);
}

}  // namespace brenvo::upkeep
