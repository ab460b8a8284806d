// The session: the open database, its table handles, and what windows hand to each other.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/contact_door.h"
#include "engine/database.h"
#include "forms/signal.h"
#include "forms/window_list.h"
#include "platform/platform.h"

namespace brenvo::forms {
class TextField;
}

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

// The choice of the prefix table's pick dialog; Prefisso is "CANCEL" when nothing was chosen.
struct PrefixChoice {
  std::string Prefisso, Country, ZonaCQ, ZonaITU, Continente;
};

// One object, made by main, the driver or a test, and passed by reference.
class Session {
 public:
  Session(platform::Platform& platform, std::filesystem::path appPath);
  ~Session();

  platform::Platform& Machine;
  forms::WindowList Windows;
  // Contacts come in, change and go through here.
  ContactDoor Contacts{Windows};

  // Start-up and shutdown in the order that the main frame runs them. Open throws what fails.
  void Open();
  void CloseTables();
  // The compaction's halves: everything but TbHrd is closed and reopened.
  void CloseForCompaction();
  void ReopenAfterCompaction();
  // Once it is closed: DatabaseError 3260 when the database is still open in another program.
  void RequireNoOtherProgram() const;
  bool IsOpen() const { return Db.IsOpen(); }
  // Before the tables are closed, and when they are open again after that.
  forms::Signal<> Closing, Reopened;

  // The directory of the database and of all delivered files.
  std::filesystem::path AppPath;
  engine::Database Db;
  std::unique_ptr<engine::Table> TbLog, TbHrd, TbContest, TbContestQso, TbPrefissi, TbCountry,
      TbProvincie, TbNoteHelp, TbUser, TbUserRTX, TbSquare;
  std::string MyLocator;
  std::string ManagerPath;

  // The selection handed from one window to the next: a WHERE clause, or a whole SELECT.
  std::string QueryText;
  std::string SearchText;
  std::unique_ptr<engine::Dynaset> DsSearch;
  std::string NoteChoice;
  PrefixChoice ChosenPrefix;
  std::string PrefixTag;  // "LOG" opens the prefix table as a pick dialog
  int ElencaTutto = 0;
  int ModoPosiziona = 0;
  ContestContext CurrentContest;

  // The main frame's hidden field whose change runs the map viewer.
  forms::TextField* HDisplayMappa = nullptr;
  std::string MapFile;
  std::string CurrentMapPath;
  int Pointer_X = 0, Pointer_Y = 0;

  bool LogOpen = false;
  LogWindow* CurrentLogForm = nullptr;
  // Windows that others find; null while closed.
  MatrixWindow* Hrd = nullptr;
  MatrixWindow* HrdMode = nullptr;
  FeedWindow* OldQsoForm = nullptr;
  FeedWindow* OldQsoLocator = nullptr;
  bool HrdOpen() const { return Hrd != nullptr; }
  bool HrdModeOpen() const { return HrdMode != nullptr; }
  bool TncOpen = false, TncTelnetOpen = false, WWConvOpen = false, FT736Open = false,
       ContestOpen = false, CheckCallContestOpen = false;

  // The station profile has been stored.
  std::function<void()> OnProfileStored;

  // The map's door: sets the text whose change runs the viewer. `word` is the overlay's, empty
  // for the pointer alone; the current time is added.
  void DisplayMap(std::string_view word);
  // Shows a SELECT on Log in the log window that opened last.
  void ShowInLog(std::string_view select);

  // Shorthands.
  platform::WindowHost& Host() { return Machine.Host(); }
  platform::MessageBox& Messages() { return Machine.Messages(); }
  base::DateTime Now() { return Machine.GetClock().Now(); }
  std::string GetSetting(std::string_view section, std::string_view key,
                         std::string_view defaultValue) {
    return Machine.Settings().GetSetting(section, key, defaultValue);
  }
  void SaveSetting(std::string_view section, std::string_view key, std::string_view value) {
    Machine.Settings().SaveSetting(section, key, value);
  }
  // A delivered file by its name as the system writes it; see files.h.
  std::filesystem::path File(std::string_view name) const;

  // Opens the help file at a window's topic.
  void Help(int topic);
  // Tells a database failure under the operation's name and ends the program.
  [[noreturn]] void EndWith(const engine::DatabaseError& failure, std::string_view operation);
};

}  // namespace brenvo::core
