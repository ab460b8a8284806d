// The session: the open database, its table handles, and what windows hand to each other.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "core/contact_door.h"
#include "core/countries_by_date.h"
#include "core/preferences.h"
#include "core/rig_door.h"
#include "engine/database.h"
#include "forms/signal.h"
#include "forms/window_list.h"
#include "forms/window_platform.h"

namespace brenvo::core {

class LogWindow;
class MatrixWindow;
class FeedWindow;

// What the contest in work hands from window to window.
struct ContestContext {
  std::string DataContest;  // the date as text
  std::string Banda, Nome, Locator;
  bool MoltSquare = false, MoltCountry = false, MoltExch = false;
};

// The table handles, each on its index. A window that needs a row looks for it: another one may
// have led the handle elsewhere since.
struct TableHandles {
  std::unique_ptr<engine::Table> TbLog, TbHrd, TbContest, TbContestQso, TbPrefissi, TbCountry,
      TbProvincie, TbNoteHelp, TbUser, TbUserRTX, TbSquare;
};

// What is read of the operator's own station once, and again when he stores it.
struct OwnStation {
  std::string MyLocator;
  std::string ManagerPath;
  forms::Signal<> ProfileStored;
  forms::Signal<> CurrentChanged;  // the station of new contacts
};

// What a window hands to the one that it opens.
struct HandedOn {
  std::string QueryText;  // a WHERE clause, or a whole SELECT
  int ElencaTutto = 0;
  int ModoPosiziona = 0;
  ContestContext CurrentContest;
};

// The windows that others look for: null and false while closed.
struct OpenWindows {
  bool LogOpen = false;
  LogWindow* CurrentLogForm = nullptr;
  MatrixWindow* Hrd = nullptr;
  MatrixWindow* HrdMode = nullptr;
  FeedWindow* OldQsoForm = nullptr;
  FeedWindow* OldQsoLocator = nullptr;
  bool TncOpen = false, TncTelnetOpen = false, WWConvOpen = false, FT736Open = false,
       ContestOpen = false;
  bool HrdOpen() const { return Hrd != nullptr; }
  bool HrdModeOpen() const { return HrdMode != nullptr; }
};

// What stands in the fields of the log while a contact is typed or shown.
struct TypedCall {
  std::string_view call, locator;
};

// Whoever runs the map viewer on a request, an overlay's word and the time; the same request again
// is none.
class MapDoor {
 public:
  virtual void DisplayMap(std::string_view request) = 0;

 protected:
  ~MapDoor() = default;
};

// The map that is wanted, and the one that is shown.
struct MapRequest {
  std::string MapFile;
  int Pointer_X = 0, Pointer_Y = 0;
  std::string CurrentMapPath;
  MapDoor* Door = nullptr;        // null while there is no main frame
  std::optional<double> Heading;  // of the antenna, degrees from north; nothing without a rotator
};

// One object, made by main, the driver or a test, and passed by reference.
class Session {
 public:
  Session(forms::WindowPlatform& platform, std::filesystem::path appPath);
  ~Session();

  forms::WindowPlatform& Machine;
  forms::WindowList Windows;
  // Contacts come in, change and go through here.
  ContactDoor Contacts{*this};
  // What the operator has chosen.
  Preferences Choices{*this};
  // The transceiver that is at work.
  RigDoor Rig;

  // Start-up and shutdown in the order that the main frame runs them. Open throws what fails.
  void Open();
  void CloseTables();
  // The compaction's halves: everything but TbHrd is closed and reopened.
  void CloseForCompaction();
  void ReopenAfterCompaction();
  // Once it is closed: DatabaseError 3260 when the database is still open in another program.
  void RequireNoOtherProgram() const;
  bool IsOpen() const { return Db.IsOpen(); }
  // Whether the database, just opened, lacks what this program keeps in it; then what adds that to
  // the closed file. Neither where nobody has set them.
  std::function<bool(engine::Database& database)> IsOutOfDate;
  std::function<void()> BringUpToDate;
  // Before the tables are closed, and when they are open again after that.
  forms::Signal<> Closing, Reopened;
  // Who calls were on their days.
  CountriesByDate ByDate{*this};

  forms::Signal<const TypedCall&> CallTyped;

  // The directory of the database and of all delivered files.
  std::filesystem::path AppPath;
  engine::Database Db;
  TableHandles Tables;
  OwnStation Station;
  HandedOn Handed;
  OpenWindows Opened;
  MapRequest Map;

  // Shows what stands in Map. `word` is the overlay's, empty for the pointer alone; the current
  // time is added, and the same request within a second is none.
  void DisplayMap(std::string_view word);
  // Shows a SELECT on Log in the log window that opened last.
  void ShowInLog(std::string_view select);

  // Shorthands.
  forms::WindowHost& Host() { return Machine.Host(); }
  platform::MessageBox& Messages() { return Machine.Messages(); }
  base::DateTime Now() { return Machine.GetClock().Now(); }
  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view defaultValue) {
    return Machine.Settings().GetSetting(section, key, defaultValue);
  }
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
    Machine.Settings().SaveSetting(section, key, value);
  }
  // A name that nothing else has (base/uuid.h).
  std::string NewUuid();
  // A delivered file by its name as the system writes it; see files.h.
  std::filesystem::path File(std::string_view name) const;

  // Opens the help file at a window's topic.
  void Help(int topic);
  // Tells a database failure under the operation's name and ends the program.
  [[noreturn]] void EndWith(const engine::DatabaseError& failure, std::string_view operation);

 private:
  void OpenDatabase();
  // Reads on what is open, a little at a time, as long as there is something.
  std::unique_ptr<platform::Timer> readingOn_;
};

}  // namespace brenvo::core
