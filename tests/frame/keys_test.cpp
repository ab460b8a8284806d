#include "frame/keys.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <set>

#include "frame/tasti.h"
#include "station/station.h"
#include "tests/support/grid_rows.h"
#include "tests/support/station.h"

namespace brenvo::frame {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

TEST(KeyNames, AreReadWhateverTheCaseTheOrderAndTheLanguage) {
  EXPECT_EQ(ReadKey("ctrl+b"), "Ctrl+B");
  EXPECT_EQ(ReadKey(" Shift + Control + b "), "Ctrl+Shift+B");
  EXPECT_EQ(ReadKey("maiusc+f12"), "Shift+F12");
  EXPECT_EQ(ReadKey("Pag Giù"), "PgDown");
  EXPECT_EQ(ReadKey("canc"), "Del");
  EXPECT_EQ(ReadKey("Ctrl++"), "Ctrl++");
  EXPECT_EQ(ReadKey("+"), "+");
  EXPECT_EQ(ReadKey("ctrl+-"), "Ctrl+-");
}

TEST(KeyNames, WhatIsNoneIsNone) {
  for (const char* text : {"", "ctrl", "ctrl+", "f0", "f25", "f01", "bb", "hyper+b", "ctrl+bb", "è",
                           "ctrl+ctrl", "+ctrl"}) {
    EXPECT_EQ(ReadKey(text), std::nullopt) << text;
  }
}

TEST(KeyNames, WhatWritesEditsOrMovesIsForNoCommand) {
  for (const char* key :
       {"B",    "Shift+B", "1",         ",",      "Alt+B",  "Ctrl+Alt+B", "Tab",    "Ctrl+Tab",
        "Esc",  "Return",  "Space",     "Ctrl+C", "Ctrl+V", "Ctrl+A",     "Ctrl+Z", "Ctrl+Left",
        "Home", "Del",     "Shift+Ins", "F1",     "Alt+F4", "Ctrl+F4"}) {
    EXPECT_NE(FaultOfKey(key), "") << key;
  }
  for (const char* key : {"F2", "Shift+F1", "Ctrl+B", "Ctrl+Shift+B", "Ctrl+1", "Ctrl++", "PgUp",
                          "Ctrl+Home", "Alt+F2", "Ctrl+PgDown"}) {
    EXPECT_EQ(FaultOfKey(key), "") << key;
  }
}

class KeysTest : public StationTest {
 protected:
  KeysTest() : StationTest(false) { frame = station::StartStation(session); }
  KeyOwner Owner(std::string_view window, std::string_view command) {
    for (const KeyOwner& each : AllKeyOwners(session)) {
      if (each.window == window && each.command == command) return each;
    }
    ADD_FAILURE() << window << '.' << command;
    return {};
  }
  std::string KeyOf(forms::Window& window, std::string_view command) {
    return window.FindCommand(command)->Shortcut();
  }
  Tasti& Table() { return Open<Tasti>("Tasti"); }
  void Mark(Tasti& table, std::string_view words) {
    Event([&] { table.Cerca.SetText(words); });
    Event([&] { table.Tabella.ClickCell(1, 0); });
  }
};

TEST_F(KeysTest, EveryKeyOfTheProgramIsOneThatCanBeReadAndStandsOnceInItsWindow) {
  std::set<std::pair<std::string, std::string>> seen;
  int keys = 0;
  for (const KeyOwner& owner : AllKeyOwners(session)) {
    if (owner.standard.empty()) continue;
    ++keys;
    EXPECT_EQ(ReadKey(owner.standard), owner.standard) << owner.window << '.' << owner.command;
    EXPECT_TRUE(seen.emplace(owner.window, owner.standard).second)
        << owner.window << " has " << owner.standard << " twice";
  }
  EXPECT_GT(keys, 80);
}

TEST_F(KeysTest, EachWindowIsKnownByTheNameThatItsCommandsAreFoundBy) {
  for (const std::string& name : session.Windows.KnownNames()) {
    session.Windows.Examine(name, [&](forms::Window& window) { EXPECT_EQ(window.Name(), name); });
  }
}

TEST_F(KeysTest, LookingThroughAllWindowsOpensNoneAndChangesNothing) {
  Lines();
  const std::size_t loaded = session.Windows.Loaded().size();
  AllKeyOwners(session);
  EXPECT_EQ(session.Windows.Loaded().size(), loaded);
  EXPECT_FALSE(session.Opened.LogOpen);
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(KeysTest, AChangedKeyIsThereInOpenWindowsInNewOnesAndAfterARestart) {
  forms::Window& log = Open<forms::Window>("LogForm");
  Keys(session).Set(Owner("LogForm", "cmInsert"), "Ctrl+Shift+F2");
  EXPECT_EQ(KeyOf(log, "cmInsert"), "Ctrl+Shift+F2");
  EXPECT_EQ(KeyOf(Open<forms::Window>("LogForm"), "cmInsert"), "Ctrl+Shift+F2");
  Keys(session).Set(Owner("Brenvo", "cmLog"), "");
  EXPECT_EQ(KeyOf(*frame, "cmLog"), "");
  EXPECT_EQ(session.GetSetting("Tasti", "Scelti", "none"),
            "Brenvo.cmLog= LogForm.cmInsert=Ctrl+Shift+F2");
  Keys(session).Set(Owner("LogForm", "cmInsert"), "F2");
  Keys(session).Set(Owner("Brenvo", "cmLog"), "Ctrl+L");
  EXPECT_EQ(KeyOf(log, "cmInsert"), "F2");
  EXPECT_EQ(KeyOf(*frame, "cmLog"), "Ctrl+L");
  EXPECT_EQ(session.GetSetting("Tasti", "Scelti", "none"), "");
}

TEST_F(KeysTest, TheMainWindowHasItsKeysFromTheStart) {
  Keys(session).Set(Owner("Brenvo", "cmLog"), "Ctrl+Shift+L");
  frame::MainFrame& second = static_cast<frame::MainFrame&>(
      session.Windows.Adopt(std::make_unique<frame::MainFrame>(session)));
  EXPECT_EQ(KeyOf(second, "cmLog"), "Ctrl+Shift+L");
}

TEST_F(KeysTest, SettingsThatSomebodyHasSpoiltHarmNothing) {
  session.SaveSetting("Tasti", "Scelti",
                      "=== LogForm.cmInsert=Quux .= LogForm.nothing=F5 LogForm.cmUpdate=F11  =F2");
  forms::Window& log = Open<forms::Window>("LogForm");
  EXPECT_EQ(KeyOf(log, "cmInsert"), "F2");
  EXPECT_EQ(KeyOf(log, "cmUpdate"), "F11");
}

TEST_F(KeysTest, TheTableShowsEveryCommandWithItsKeyAndItsStandard) {
  Tasti& table = Table();
  Event([&] { table.Cerca.SetText("utility storia"); });
  EXPECT_THAT(RowsOf(table.Tabella), ElementsAre("Brenvo|Utility > Storia...|Ctrl+Shift+Z|"
                                                 "Ctrl+Shift+Z"));
  Event([&] { table.Cerca.SetText("log inserisci f2"); });
  EXPECT_THAT(RowsOf(table.Tabella), Contains("Log|Inserisci|F2|F2"));
}

TEST_F(KeysTest, AKeyIsChangedAndTakenBackInTheTable) {
  forms::Window& log = Open<forms::Window>("LogForm");
  Tasti& table = Table();
  Mark(table, "log inserisci f2");
  EXPECT_EQ(table.Tasto.Text(), "F2");
  Event([&] { table.Tasto.SetText("ctrl+f11"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "Inserisci: Ctrl+F11");
  EXPECT_EQ(KeyOf(log, "cmInsert"), "Ctrl+F11");
  Event([&] { table.Cerca.SetText(""); });
  Event([&] { table.SoloCambiati.Press(); });
  EXPECT_THAT(RowsOf(table.Tabella), ElementsAre("Log|Inserisci|Ctrl+F11|F2"));
  Event([&] { table.Tabella.ClickCell(1, 0); });
  Press(table, "cmPredefinito");
  EXPECT_EQ(table.Avviso.Text(), "Inserisci: F2");
  EXPECT_EQ(KeyOf(log, "cmInsert"), "F2");
  EXPECT_THAT(RowsOf(table.Tabella), IsEmpty());
}

TEST_F(KeysTest, AKeyThatAnotherCommandOfTheWindowHasIsRefusedByName) {
  Tasti& table = Table();
  Mark(table, "log inserisci f2");
  Event([&] { table.Tasto.SetText("F3"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "F3 è già di Aggiorna: prima va cambiato quello");
  EXPECT_EQ(session.GetSetting("Tasti", "Scelti", "none"), "none");
  Event([&] { table.Tasto.SetText("q"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "Q non va: scrive: vuole Ctrl");
  Event([&] { table.Tasto.SetText("foo"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "foo non va: non è il nome di un tasto");
}

TEST_F(KeysTest, WhereTheFrontWindowAndTheMainMenuHaveTheSameKeyTheTableSaysWhoWins) {
  Tasti& table = Table();
  Mark(table, "log inserisci f2");
  Event([&] { table.Tasto.SetText("Ctrl+T"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(),
            "Inserisci: Ctrl+T; davanti a tutte le altre finestre è ancora di Comunication > DX "
            "cluster telnet");
  Mark(table, "comunication ft-736r");
  Event([&] { table.Tasto.SetText("Shift+F9"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(), "Comunication > FT-736R: Shift+F9");
  Event([&] { table.Tasto.SetText("Ctrl+Z"); });
  Press(table, "cmUpdate");
  EXPECT_THAT(table.Avviso.Text(), HasSubstr("Ctrl+Z non va"));
  Event([&] { table.Tasto.SetText("F12"); });
  Press(table, "cmUpdate");
  EXPECT_EQ(table.Avviso.Text(),
            "Comunication > FT-736R: F12; non quando è davanti Contest - Nuovo Qso, Log");
}

TEST_F(KeysTest, ACommandMayHaveNoKey) {
  Tasti& table = Table();
  Mark(table, "log inserisci f2");
  Event([&] { table.Tasto.SetText(""); });
  Event([&] { table.Tasto.OnEnter(); });
  EXPECT_EQ(table.Avviso.Text(), "Inserisci: nessun tasto");
  EXPECT_EQ(KeyOf(Open<forms::Window>("LogForm"), "cmInsert"), "");
  Event([&] { table.Cerca.SetText("log inserisci"); });
  Event([&] { table.SoloConTasto.Press(); });
  EXPECT_THAT(RowsOf(table.Tabella), Not(Contains(HasSubstr("Log|Inserisci"))));
}

TEST_F(KeysTest, AllKeysStandOnOnePageWhatManyWindowsShareOnce) {
  Tasti& table = Table();
  Lines();
  Press(table, "cmPrint");
  const std::vector<std::string> lines = Lines();
  EXPECT_THAT(lines, Not(Contains("print newpage")));
  EXPECT_THAT(lines, Contains("print end"));
  const auto search = std::count_if(lines.begin(), lines.end(), [](const std::string& line) {
    return line.ends_with("\"Ctrl+F\"");
  });
  EXPECT_LE(search, 2) << "of the main menu, and of all windows with a table";
  for (const KeyOwner& owner : AllKeyOwners(session)) {
    if (owner.key.empty()) continue;
    EXPECT_THAT(lines, Contains(HasSubstr('"' + owner.key + '"'))) << owner.words;
  }
  EXPECT_THAT(table.Avviso.Text(), HasSubstr("Stampati "));
}

}  // namespace
}  // namespace brenvo::frame
