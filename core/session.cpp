#include "core/session.h"

#include <array>
#include <chrono>
#include <cstdlib>
#include <thread>

#include "base/number.h"
#include "base/text.h"
#include "base/uuid.h"
#include "core/files.h"
#include "core/shared_windows.h"
#include "file/database_file.h"

namespace brenvo::core {
namespace {

// A development build that runs from the first directory works on the live data of the second.
constexpr std::string_view kDevelopmentPath = "D:\\Programmi\\Radioamatori\\BrenvoSviluppo";
constexpr std::string_view kLivePath = "D:\\Programmi\\Radioamatori\\Brenvo";

struct Handle {
  std::string_view table;
  std::string_view index;
  std::unique_ptr<engine::Table> TableHandles::*handle;
};

// In the order of opening; closing follows the same order.
constexpr std::array<Handle, 11> kHandles = {{
    {"Log", "", &TableHandles::TbLog},
    {"Hrd", "PrimaryKey", &TableHandles::TbHrd},
    {"Contest", "PrimaryKey", &TableHandles::TbContest},
    {"Contest Qso", "PrimaryKey", &TableHandles::TbContestQso},
    {"Prefissi", "PrimaryKey", &TableHandles::TbPrefissi},
    {"Country", "PrimaryKey", &TableHandles::TbCountry},
    {"Provincie", "PrimaryKey", &TableHandles::TbProvincie},
    {"NoteHelp", "PrimaryKey", &TableHandles::TbNoteHelp},
    {"User", "", &TableHandles::TbUser},
    {"UserRTX", "PrimaryKey", &TableHandles::TbUserRTX},
    {"Square", "PrimaryKey", &TableHandles::TbSquare},
}};

void OpenHandle(Session& session, const Handle& handle) {
  auto& table = session.Tables.*handle.handle;
  table = session.Db.OpenTable(handle.table);
  if (!handle.index.empty()) table->SetIndex(handle.index);
  if (handle.table == "User") {
    table->MoveFirst();
    if (table->EOF_()) {
      throw engine::DatabaseError(engine::DatabaseError::kNoCurrentRecord,
                                  "La tabella User non ha righe");
    }
    session.Station.MyLocator = table->Field("Locator").Text();
  }
}

void Close(Session& session, bool withHrd) {
  session.Closing();
  session.Contacts.Close();
  for (const Handle& handle : kHandles) {
    if (handle.table == "Hrd" && !withHrd) continue;
    auto& table = session.Tables.*handle.handle;
    if (table) table->Close();
    table.reset();
  }
  session.Db.Close();
}

}  // namespace

Session::Session(forms::WindowPlatform& platform, std::filesystem::path appPath)
    : Machine(platform),
      Windows(platform.Host()),
      AppPath(appPath.string() == kDevelopmentPath ? std::filesystem::path(kLivePath)
                                                   : std::move(appPath)),
      readingOn_(platform.MakeTimer()) {
  // A few milliseconds of every ten, whatever the operator does meanwhile.
  constexpr int kPause = 10, kKeys = 16'384;
  readingOn_->SetInterval(kPause);
  readingOn_->OnTick = [this] {
    if (!Db.ReadOn(kKeys)) readingOn_->SetEnabled(false);
  };
}

Session::~Session() = default;

void Session::OpenDatabase() {
  const std::filesystem::path file = File("\\Brenvo.mdb");
  Db = file::OpenDatabaseFile(file);
  if (IsOutOfDate && IsOutOfDate(Db)) {
    Db.Close();
    BringUpToDate();
    Db = file::OpenDatabaseFile(file);
  }
  Db.WhenUnread([this] { readingOn_->SetEnabled(true); });
}

void Session::Open() {
  OpenDatabase();
  for (const Handle& handle : kHandles) OpenHandle(*this, handle);
  Station.ManagerPath = GetSetting("Log", "ManagerZX9TOK", "");
}

void Session::CloseTables() { Close(*this, true); }

// Nobody uses TbHrd: its handle stays as it is.
void Session::CloseForCompaction() { Close(*this, false); }

void Session::ReopenAfterCompaction() {
  OpenDatabase();
  for (const Handle& handle : kHandles) {
    if (handle.table != "Hrd") OpenHandle(*this, handle);
  }
  Reopened();
}

// A journal that stays behind belongs to another program that has the file open: under a new file's
// name it would be read into the wrong database.
void Session::RequireNoOtherProgram() const {
  constexpr std::chrono::milliseconds kPatience{2000}, kPause{20};
  std::filesystem::path journal = File("\\Brenvo.mdb");
  journal += "-wal";
  std::error_code error;
  // As long as for a lock: whoever only looks into it is soon gone, and its journal with it.
  for (auto waited = kPause; std::filesystem::exists(journal, error); waited += kPause) {
    if (waited > kPatience) {
      throw engine::DatabaseError(engine::DatabaseError::kLocked,
                                  "Il database è aperto in un altro programma.");
    }
    std::this_thread::sleep_for(kPause);
  }
}

void Session::DisplayMap(std::string_view word) {
  if (Map.Door != nullptr) Map.Door->DisplayMap(std::string(word) + base::TimeText(Now()));
}

void Session::ShowInLog(std::string_view select) {
  Handed.QueryText = select;
  if (Opened.CurrentLogForm != nullptr) {
    Opened.CurrentLogForm->ShowQueryText(base::DateTimeText(Now()));
  }
}

std::filesystem::path Session::File(std::string_view name) const { return FileIn(AppPath, name); }

std::string Session::NewUuid() {
  static constexpr std::int64_t kDaysTo1970 = 25569;  // from day zero
  const std::int64_t seconds = Machine.GetClock().UtcNow().Seconds() - kDaysTo1970 * 24 * 60 * 60;
  const std::uint64_t high = Machine.Random();
  return base::TimeUuid(static_cast<std::uint64_t>(seconds) * 1000 + high % 1000,
                        {high >> 32, Machine.Random()});
}

void Session::Help(int topic) { Machine.Open(File("\\Brenvo.HLP"), topic); }

void Session::EndWith(const engine::DatabaseError& failure, std::string_view operation) {
  Messages().Show(platform::MessageIcon::kCritical, operation,
                  base::Str(failure.Number) + " - " + failure.Description);
  Host().EndProgram();
  std::abort();  // the compiler does not believe a virtual function
}

}  // namespace brenvo::core
