// The copies of the database that the station keeps by itself, one a day, and the way back to one.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "base/date.h"
#include "core/session.h"

namespace brenvo::upkeep {

using ShowProgress =
    std::function<std::unique_ptr<platform::Progress>(std::string_view title, std::int64_t total)>;

// A file in the directory "Backup" of the application directory.
struct BackupCopy {
  std::filesystem::path file;
  base::DateTime made;    // to the day; to the second for a file set aside
  bool setAside = false;  // the database that a copy took the place of
};

// Newest first; none when there is no such directory.
std::vector<BackupCopy> BackupCopies(const std::filesystem::path& appPath);

// "del 21/11/2026", with the time for a file set aside.
std::string TitleOf(const BackupCopy& copy);

// The number of contacts in a copy; nothing when it cannot be read.
std::optional<std::int64_t> ContactsIn(const BackupCopy& copy);
// The same in words: "12 QSO"; "non leggibile" of a copy that is damaged or none, and why a good
// one cannot be looked at now.
std::string ContentsOf(const BackupCopy& copy);

// Of the days on which copies were made, those that are no longer kept: all but the last ten up to
// `today`, and the last day of each of the last twelve months that have one. Later days, of a clock
// that has been set back since, stay and do not count.
std::vector<base::DateTime> DaysToDrop(std::vector<base::DateTime> days, base::DateTime today);

// Puts a copy in the place of the database, which must be closed and is set aside in "Backup".
// The operator sees how far it is. Nothing is changed when the copy is no sound database, or when
// he stops it: DatabaseError 3059 then, else what failed.
void PutBack(core::Session& session, const BackupCopy& copy);

// Makes the day's copy of the closed database at once, unless there is one. `show` as of
// Platform::ShowProgress; nobody can stop it. DatabaseError: what failed; nothing is left of it.
void MakeDaysCopy(const std::filesystem::path& appPath, base::DateTime now,
                  const ShowProgress& show);

// The database as it is without the journal that stands beside it, as a copy to put back; nothing
// where there is none, or no room for it. DropWithoutJournal deletes what it takes up.
std::optional<BackupCopy> WithoutJournal(core::Session& session);
void DropWithoutJournal(core::Session& session);

// What an interrupted PutBack has set aside, while nothing stands in the place of the database.
std::optional<BackupCopy> LeftByInterruptedPutBack(const std::filesystem::path& appPath);

// Closes all windows but the main frame, puts the copy in the place of the open database, and opens
// that; false, with the database as it was, when a window refuses to close. DatabaseError as of
// PutBack.
bool RestoreBackup(core::Session& session, const BackupCopy& copy);

// Makes the day's copy when it is missing, beside the operator's work: it is copied and verified on
// a thread with files of its own, and then given its name. What no longer is kept is deleted after
// that.
class DailyBackup {
 public:
  // `tell` gets what the operator is to know: that the copy is made, or why it is not.
  DailyBackup(core::Session& session, std::function<void(const std::string& text)> tell);
  ~DailyBackup();
  DailyBackup(const DailyBackup&) = delete;
  DailyBackup& operator=(const DailyBackup&) = delete;

  // Some seconds later the copy begins, unless the day has one.
  void Start();
  // A copy in work is given up as soon as it can be; the next start makes it.
  void Stop();
  bool Running() const { return timer_->Enabled(); }

 private:
  struct Job;
  void Tick();
  // The copy's day is the one that the clock shows now; true when it has its copy already.
  bool DayHasCopy();
  void Begin();
  void Finish();
  void Fail(const std::string& why);

  core::Session& session_;
  std::function<void(const std::string& text)> tell_;
  std::unique_ptr<platform::Timer> timer_;
  forms::Subscription closing_, reopened_;
  base::DateTime day_;  // also when midnight passes while the copy is made
  std::filesystem::path unfinished_, finished_;
  std::unique_ptr<Job> job_;
  std::unique_ptr<platform::BackgroundWork> work_;  // goes before what it works on
};

}  // namespace brenvo::upkeep
