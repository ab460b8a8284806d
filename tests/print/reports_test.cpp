#include "print/reports.h"

#include <algorithm>
#include <cstdio>

#include "core/shared_windows.h"
#include "platform/device_error.h"
#include "print/report_engine.h"
#include "print/report_layout.h"
#include "tests/support/places.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using Texts = std::vector<std::string>;

// Stands for the selection dialog: answers what the test has told it to.
class Selection : public core::SelectionWindow {
 public:
  explicit Selection(core::Session& session)
      : core::SelectionWindow(session.Host(), "StatSel", "Selezione statistiche", base::Twips(100),
                              base::Twips(100)) {}
  bool ListsAll() const override { return false; }
  void OfferLayouts() override { offersLayouts = true; }
  bool IsVertical() const override { return vertical; }

  bool offersLayouts = false, vertical = false;
};

class ReportsTest : public StationTest {
 protected:
  ReportsTest() {
    Know<Selection>("StatSel");
    for (const char* layout : {"logv.rpt", "logo.rpt"}) {
      std::filesystem::copy_file(SourceDir() / "data" / layout, directory.Path() / layout);
    }
    machine.Host().InModal = [this](forms::Window& window) {
      auto& dialog = static_cast<Selection&>(window);
      asked = dialog.Tag;
      EXPECT_TRUE(dialog.offersLayouts);
      dialog.vertical = vertical;
      dialog.Tag = answer;
      dialog.Hide();
    };
  }
  // Runs a report on the answer and gives what SLog then holds.
  Texts Report(forms::Command frame::MainFrame::*command, std::string_view where,
               std::string_view columns) {
    answer = where;
    for (const ReportMember& member : ReportMembers()) {
      if (member.command == command) Event([&] { PrintReport(session, member); });
    }
    return Rows("select " + std::string(columns) + " from SLog");
  }
  void Log(std::string_view columns, std::string_view values) {
    session.Db.Execute("insert into Log (DataQso," + std::string(columns) + ") values ('0" +
                       std::to_string(++day) + "/01/2001 10:00'," + std::string(values) + ")");
  }
  int day = 0;
  bool vertical = true;
  std::string asked, answer;
};

TEST_F(ReportsTest, EachReportGivesItsOwnWord) {
  const std::pair<forms::Command frame::MainFrame::*, const char*> words[] = {
      {&frame::MainFrame::cmPLog, "PLOG"},
      {&frame::MainFrame::cmPSquare, "ZONE"},
      {&frame::MainFrame::cmPPrefissi, "PREFISSO"},
      {&frame::MainFrame::cmPContinenti, "CONTINENTE"},
      {&frame::MainFrame::cmPZone, "ZONE"},
      {&frame::MainFrame::cmPCountry, "COUNTRY"},
      {&frame::MainFrame::cmPProvincie, "PROVINCIE"},
      {&frame::MainFrame::cmPNote, "NOTE"}};
  ASSERT_EQ(ReportMembers().size(), std::size(words));
  for (const auto& [command, word] : words) {
    Report(command, "Cancel", "Call");
    EXPECT_EQ(asked, word);
  }
}

TEST_F(ReportsTest, ACancelledSelectionLeavesTheStagingTable) {
  session.Db.Execute("insert into SLog (Call) values ('OLD')");
  EXPECT_EQ(Report(&frame::MainFrame::cmPLog, "Cancel", "Call"), Texts{"OLD"});
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(session.Windows.Find("StatSel"), nullptr);
}

TEST_F(ReportsTest, TheLogReportTakesTheWholeSelectionByDate) {
  Log("Call,Banda", "'B','  2 m'");
  Log("Call,Banda", "'A','  2 m'");
  Log("Call,Banda", "'C',' 70cm'");
  session.Db.Execute("update Log set DataQso='01/01/1999' where Call='A'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPLog, "WHERE Banda='  2 m'", "Call"), (Texts{"A", "B"}));
  EXPECT_EQ(session.Handed.QueryText, "WHERE Banda='  2 m'");
  EXPECT_EQ(Lines(), Texts{"report \"logv.rpt\""});
  vertical = false;
  EXPECT_EQ(Report(&frame::MainFrame::cmPLog, "", "Call").size(), 3u);
  EXPECT_EQ(Lines(), Texts{"report \"logo.rpt\""});
}

TEST_F(ReportsTest, AnEmptyResultPrintsAnEmptyReport) {
  EXPECT_TRUE(Report(&frame::MainFrame::cmPLog, "", "Call").empty());
  EXPECT_EQ(Lines(), Texts{"report \"logv.rpt\""});
}

TEST_F(ReportsTest, OneContactStaysForEachCountryAndAConfirmedOneIsPreferred) {
  Log("Call,Country,QslRicevuta", "'A','I',False");
  Log("Call,Country,QslRicevuta", "'B','I',True");
  Log("Call,Country,QslRicevuta", "'C','F',False");
  Log("Call", "'D'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPCountry, "", "Call,Country"), (Texts{"C|F", "B|I"}));
}

TEST_F(ReportsTest, TheSquareReportKeepsTheFirstByFullLocator) {
  Log("Call,Locator,QslRicevuta", "'A','JN65AA',False");
  Log("Call,Locator,QslRicevuta", "'B','JN65BB',True");
  Log("Call,Locator,QslRicevuta", "'C','JN66AA',False");
  EXPECT_EQ(Report(&frame::MainFrame::cmPSquare, "", "Call"), (Texts{"A", "C"}));
}

TEST_F(ReportsTest, ContactsWithoutAContinentNeverReachTheContinentReport) {
  Log("Call,Continente", "'A',''");
  Log("Call", "'B'");
  Log("Call,Continente", "'C','EU'");
  Log("Call,Continente", "'D','EU'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPContinenti, "", "Call"), Texts{"C"});
}

TEST_F(ReportsTest, TheFirstRowOfTheZoneReportIsNeverDeleted) {
  Log("Call,[Zona CQ]", "'A',14");
  Log("Call,[Zona CQ]", "'B',15");
  Log("Call,[Zona CQ]", "'C',15");
  Log("Call,[Zona CQ]", "'D',0");
  EXPECT_EQ(Report(&frame::MainFrame::cmPZone, "", "Call"), (Texts{"A", "B"}));
}

TEST_F(ReportsTest, APaddedAndATrimmedPrefixAreOne) {
  Log("Call,Prefisso", "'A','IK3'");
  Log("Call,Prefisso", "'B','IK3  '");
  Log("Call,Prefisso", "'C','IK4'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPPrefissi, "", "Call").size(), 2u);
}

TEST_F(ReportsTest, KeysThatDifferInTheirCaseAloneAreOne) {
  Log("Call,[Note],QslRicevuta", "'A','[DCI/mi001]',False");
  Log("Call,[Note],QslRicevuta", "'B','[DCI/MI001]',False");
  Log("Call,[Note],QslRicevuta", "'C','[dci/mi001] tnx',True");
  EXPECT_EQ(Report(&frame::MainFrame::cmPNote, "WHERE Note LIKE '*DCI*'", "Call,[Note]"),
            Texts{"C|dci/mi001"});
  Log("Call,Locator", "'D','JN45AA'");
  Log("Call,Locator", "'E','jn45bb'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPSquare, "", "Call"), Texts{"D"});
}

TEST_F(ReportsTest, TheProvinceReportCountsProvinces) {
  Log("Call,Country,Provincia", "'A','I','MI'");
  Log("Call,Country,Provincia", "'B','I','VE'");
  Log("Call,Country,Provincia", "'C','I','MI'");
  EXPECT_EQ(
      Report(&frame::MainFrame::cmPProvincie, "WHERE (Country='I' OR Country='IS0')", "Provincia"),
      (Texts{"MI", "VE"}));
}

TEST_F(ReportsTest, ANoteIsCutToTheWordAndWhatFollowsInItsBrackets) {
  Log("Call,Note", "'A','bello [IOTA EU-025] grazie'");
  Log("Call,Note", "'B','[IOTA EU-024]'");
  Log("Call,Note", "'C','[IOTA EU-025]'");
  Log("Call,Note", "'D','IOTA senza parentesi'");
  EXPECT_EQ(Report(&frame::MainFrame::cmPNote, "WHERE Note LIKE '*IOTA*'", "Note"),
            (Texts{"IOTA EU-024", "IOTA EU-025"}));
}

TEST_F(ReportsTest, ConditionsJoinByAndOnlyBehindASelection) {
  EXPECT_EQ(AddCondition("", "Continente<>''"), "WHERE Continente<>''");
  EXPECT_EQ(AddCondition("WHERE Banda='  2 m'", "Continente<>''"),
            "WHERE Banda='  2 m' AND Continente<>''");
  EXPECT_EQ(AddCondition("WHERE Banda='  2 m'", ""), "WHERE Banda='  2 m'");
}

bool GoOn(std::int64_t, std::int64_t) { return true; }

class ReportEngineTest : public ReportsTest {
 protected:
  static ReportLayout Layout() {
    return ParseReportLayout(
        "titolo = Log di {call}\nintestazione = {data}\npiede = fine\n"
        "carattere = Courier New, 10, 10, 12\nmargine = 10\n"
        "colonna = Data; DataQso; 25; sinistra; data\n"
        "colonna = Call; Call; 30; centro\n"
        "colonna = Km; Qrb; 20; destra; ####\n");
  }
  void Fill(int rows) {
    for (int i = 0; i < rows; ++i) {
      session.Db.Execute("insert into SLog (DataQso,Call,Qrb) values ('05/01/2001','C" +
                         std::to_string(i) + "'," + std::to_string(i) + ")");
    }
  }
};

TEST_F(ReportEngineTest, APageHasHeadHeadingsRowsAndFoot) {
  Fill(1);
  PrintRows(session.Db, Layout(), {{"call", "I0XXX"}, {"data", "03/02/2001"}}, machine.GetPrinter(),
            GoOn);
  const Texts lines = Lines();
  ASSERT_EQ(lines.size(), 13u);
  EXPECT_EQ(lines[0], "print text 10 10 left \"Courier New\" 12 bold \"Log di I0XXX\"");
  EXPECT_TRUE(lines[1].ends_with("plain \"03/02/2001\"")) << lines[1];
  EXPECT_TRUE(lines[3].ends_with("\"fine\"")) << lines[3];
  EXPECT_TRUE(lines[4].ends_with("\"Pagina 1 di 1\"")) << lines[4];
  EXPECT_TRUE(lines[5].ends_with("bold \"Data\"")) << lines[5];
  EXPECT_TRUE(lines[9].ends_with("plain \"05/01/2001\"")) << lines[9];
  EXPECT_TRUE(lines[11].find(" right ") != std::string::npos) << lines[11];
  EXPECT_EQ(lines[12], "print end");
}

TEST_F(ReportEngineTest, HeadingsRepeatOnEveryPageAndPagesAreCounted) {
  const int perPage = RowsPerPage(Layout(), base::Mm(297));
  Fill(perPage * 2 + 1);
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  int headings = 0, pages = 0, lastPage = 0;
  for (const std::string& line : Lines()) {
    headings += line.ends_with("bold \"Call\"");
    pages += line == "print newpage";
    lastPage += line.ends_with("\"Pagina 3 di 3\"");
  }
  EXPECT_EQ(headings, 3);
  EXPECT_EQ(pages, 2);
  EXPECT_EQ(lastPage, 1);
}

TEST_F(ReportEngineTest, NothingIsPrintedIntoTheFoot) {
  Fill(RowsPerPage(Layout(), base::Mm(297)));
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  const Texts lines = Lines();
  std::vector<double> heights;
  double foot = 0;
  for (const std::string& line : lines) {
    double x = 0, y = 0;
    if (std::sscanf(line.c_str(), "print text %lf %lf", &x, &y) != 2) continue;
    if (line.ends_with("\"fine\"")) foot = y;
    heights.push_back(y);
  }
  ASSERT_GT(foot, 0);
  for (double y : heights) EXPECT_TRUE(y == foot || y + 10 * 25.4 / 72 < foot) << y;
}

TEST_F(ReportEngineTest, ATextWiderThanItsColumnIsCut) {
  session.Db.Execute(
      "insert into SLog (Call) values ('WWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWWW')");
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  bool cut = false;
  for (const std::string& line : Lines()) cut = cut || line.ends_with("WW...\"");
  EXPECT_TRUE(cut);
}

TEST_F(ReportEngineTest, TheCutTextIsTheLongestThatFits) {
  // Every character of the recorded printer is a third of the font's height wide: 10 points are
  // 1.176 millimetres, and 24 characters and the dots fit into 29 millimetres less the gap.
  session.Db.Execute("insert into SLog (Call) values ('" + std::string(60, 'W') + "')");
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  int length = 0;
  for (const std::string& line : Lines()) {
    const auto dots = line.rfind("...\"");
    if (dots != std::string::npos) length = static_cast<int>(dots - line.rfind('"', dots) - 1);
  }
  EXPECT_EQ(length, 21);
}

TEST_F(ReportEngineTest, ALineBreakInANoteIsABlankOnPaper) {
  session.Db.Execute("insert into SLog (Call) values ('A\r\nB\tC')");
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  bool found = false;
  for (const std::string& line : Lines()) found = found || line.ends_with("plain \"A  B C\"");
  EXPECT_TRUE(found);
}

TEST_F(ReportEngineTest, ATextOfAnyLengthIsCutAtOnce) {
  session.Db.Execute("insert into SLog (Call) values ('" + std::string(20000, 'W') + "')");
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  // A character is a third of 10 points wide: 24 fit into 29 millimetres, three of them dots.
  const std::string shown = '"' + std::string(21, 'W') + "...\"";
  const Texts lines = Lines();
  EXPECT_TRUE(std::any_of(lines.begin(), lines.end(),
                          [&](const std::string& line) { return line.ends_with(shown); }));
}

TEST_F(ReportEngineTest, AnEmptyTableIsOnePageWithoutRows) {
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), GoOn);
  const Texts lines = Lines();
  EXPECT_TRUE(lines[4].ends_with("\"Pagina 1 di 1\""));
  EXPECT_EQ(lines.back(), "print end");
}

TEST_F(ReportEngineTest, AllRowsAreToldBeforeTheDocumentEnds) {
  Fill(100);
  std::vector<std::int64_t> told;
  PrintRows(session.Db, Layout(), {}, machine.GetPrinter(), [&](std::int64_t done, std::int64_t) {
    EXPECT_NE(Lines().back(), "print end");
    told.push_back(done);
    return true;
  });
  EXPECT_EQ(told, (std::vector<std::int64_t>{50, 100}));
  EXPECT_EQ(Lines().back(), "print end");
}

TEST_F(ReportEngineTest, TheOperatorCanStopIt) {
  Fill(200);
  EXPECT_THROW(PrintRows(session.Db, Layout(), {}, machine.GetPrinter(),
                         [](std::int64_t done, std::int64_t total) {
                           EXPECT_EQ(total, 200);
                           return done < 100;
                         }),
               platform::DeviceError);
  const Texts lines = Lines();
  EXPECT_NE(lines.back(), "print end");
  EXPECT_TRUE(std::none_of(lines.begin(), lines.end(),
                           [](const std::string& line) { return line.ends_with("\"C150\""); }));
}

TEST_F(ReportEngineTest, AColumnThatTheTableLacksIsNamed) {
  const ReportLayout layout = ParseReportLayout("colonna = X; Nulla; 10; sinistra");
  try {
    PrintRows(session.Db, layout, {}, machine.GetPrinter(), GoOn);
    FAIL();
  } catch (const LayoutError& failure) {
    EXPECT_NE(std::string(failure.what()).find("Nulla"), std::string::npos);
  }
}

TEST(ReportLayout, ALineThatMakesNoSenseIsNamed) {
  const std::pair<const char*, const char*> cases[] = {
      {"titolo = x", "non ha colonne"},
      {"colonna = a; b; 10", "Riga 1"},
      {"\n# nota\ncolonna = a; b; zero; sinistra", "Riga 3"},
      {"colonna = a; b; 10; storta", "storta"},
      {"orientamento = obliquo", "orientamento"},
      {"nulla", "="},
      {"nome = x", "nome"},
      {"margine = -1", "misura"},
      {"carattere = Arial, 0.000000008", "misura"}};
  for (const auto& [text, piece] : cases) {
    try {
      ParseReportLayout(text);
      ADD_FAILURE() << text;
    } catch (const LayoutError& failure) {
      EXPECT_NE(std::string(failure.what()).find(piece), std::string::npos) << failure.what();
    }
  }
}

TEST(ReportLayout, AnEditorsMarkOfUtf8IsNoPartOfTheFirstLine) {
  const ReportLayout layout =
      ParseReportLayout("\xEF\xBB\xBF# mio\ncolonna = Nome; Qra; 10; sinistra");
  EXPECT_EQ(layout.columns.size(), 1u);
}

TEST(ReportLayout, CellsFollowTheirFormats) {
  const base::DateTime when = base::DateTime::Of(2001, 2, 3, 4, 5, 6);
  EXPECT_EQ(FormatReportCell(when, "data"), "03/02/2001");
  EXPECT_EQ(FormatReportCell(when, "ora"), "04:05");
  EXPECT_EQ(FormatReportCell(when, "data e ora"), "03/02/2001 04:05");
  EXPECT_EQ(FormatReportCell(true, "si/no"), "Sì");
  EXPECT_EQ(FormatReportCell(false, "si/no"), "");
  EXPECT_EQ(FormatReportCell(144.3, "#####.000"), "144.300");
  EXPECT_EQ(FormatReportCell("IK3ABC", ""), "IK3ABC");
  EXPECT_EQ(FormatReportCell(engine::Value(), "data"), "");
}

}  // namespace
}  // namespace brenvo::print
