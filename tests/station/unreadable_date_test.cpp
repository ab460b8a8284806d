// A contact whose date another tool has made unreadable: it is shown, exported and printed without
// it, this is said, and everything around it is as it was.
#include <gmock/gmock.h>
#include <sqlite3.h>

#include <sstream>

#include "adif/adif_export.h"
#include "adif/adif_import.h"
#include "awards/award_grid.h"
#include "log/log_form.h"
#include "log/old_qso.h"
#include "print/report_runner.h"
#include "print/reports.h"
#include "print/stampa_qsl.h"
#include "tests/station/all_windows.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"

namespace brenvo::station {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::EndsWith;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

using Texts = std::vector<std::string>;

// As SQL writes it, and as text.
struct Unreadable {
  const char* name;
  const char* sql;
  const char* text;
};

class AnUnreadableDate : public testing::WithParamInterface<Unreadable>, public AllWindowsTest {
 protected:
  AnUnreadableDate() {
    for (const char* values :
         {"'01/01/2001 10:00','IK3ONE'", "'02/01/2001 10:00','IK3TWO'", "'03/01/2001','IK3TRE'"}) {
      Exec(std::string("insert into Log (DataQso,Call,Banda,Modo,Locator,Country,QslRicevuta) ") +
           "values (" + values + ",'  2 m','SSB','JN65AA','I',True)");
    }
    AsAnotherTool(std::string("UPDATE Log SET DataQso = ") + GetParam().sql +
                  " WHERE Call = 'IK3TWO'");
    machine.TakeLines();
  }
  void AsAnotherTool(const std::string& sql) const {
    sqlite3* tool = nullptr;
    sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &tool);
    EXPECT_EQ(sqlite3_exec(tool, sql.c_str(), nullptr, nullptr, nullptr), SQLITE_OK)
        << sqlite3_errmsg(tool);
    sqlite3_close(tool);
  }
  void PutIntoDirectory(const char* file) const {
    std::filesystem::copy_file(SourceDir() / "data" / file, directory.Path() / file);
  }
  std::string Told() const {
    return std::string("Non leggibile nel database: DataQso '") + GetParam().text + "'";
  }
  // The log's record of this call.
  log::LogForm& LogAt(std::string_view call) {
    log::LogForm& log = Open<log::LogForm>("LogForm");
    Press(log, "cmFirst");
    for (int i = 0; i < 3 && log.CallQso.Text() != call; ++i) Press(log, "cmNext");
    EXPECT_EQ(log.CallQso.Text(), call);
    return log;
  }
};

TEST_P(AnUnreadableDate, IsShownEmptyAndToldAndTheOtherContactsAreShownAsEver) {
  log::LogForm& log = LogAt("IK3TWO");
  EXPECT_EQ(log.DataQso.Text(), "");
  EXPECT_EQ(log.Qtr.Text(), "__:__");
  EXPECT_EQ(log.Locator.Text(), "JN65AA");
  EXPECT_EQ(log.StatusBar1.Panel(1), Told());
  std::set<std::string> seen;
  Press(log, "cmFirst");
  for (int i = 0; i < 3; ++i, Press(log, "cmNext")) {
    seen.insert(log.CallQso.Text() + " " + log.DataQso.Text());
    EXPECT_EQ(log.StatusBar1.Panel(1), log.CallQso.Text() == "IK3TWO" ? Told() : "");
  }
  EXPECT_THAT(seen, ElementsAre("IK3ONE 01/01/2001", "IK3TRE 03/01/2001", "IK3TWO "));
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_P(AnUnreadableDate, IsNotStoredAgainUntilOneIsTyped) {
  log::LogForm& log = LogAt("IK3TWO");
  Press(log, "cmUpdate");
  EXPECT_THAT(Lines(), ElementsAre("message exclamation \"\" \"Data errata\""));
  Event([&] { log.DataQso.SetText("02/01/2001"); });
  log.Qtr.SetText("10:00");
  Press(log, "cmUpdate");
  EXPECT_THAT(Rows("select DataQso,Call from Log where Call='IK3TWO'"),
              ElementsAre("02/01/2001 10:00:00|IK3TWO"));
}

TEST_P(AnUnreadableDate, StandsInTheGridsAsItIs) {
  log::LogForm& log = LogAt("IK3ONE");
  Event([&] { log.cmVista.Press(); });
  ASSERT_EQ(log.DataGrid1.Rows(), 4);
  std::set<std::string> cells;
  for (int row = 1; row < 4; ++row) cells.insert(log.DataGrid1.Cell(row, 1));
  EXPECT_THAT(cells, Contains(GetParam().text));
  for (int row = 1; row < 4; ++row) {
    if (log.DataGrid1.Cell(row, 2) != "IK3TWO") continue;
    Event([&] {
      log.DataGrid1.SetCurrent(row, 1);
      log.DataGrid1.DoubleClick();
    });
    EXPECT_EQ(log.CallQso.Text(), "IK3TWO");
  }
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_P(AnUnreadableDate, GoesIntoTheFileOfTheLogEmptyAndIsTold) {
  log::LogForm& log = LogAt("IK3TWO");
  machine.Messages().QueueAnswer(false);
  Press(log, "cmAllQso");
  EXPECT_EQ(log.StatusBar1.Panel(1), "Esportati senza data, che nel database non è leggibile: 1");
  const std::string file = ReadBytes(directory.Path() / "Log.ADI");
  EXPECT_THAT(file, HasSubstr("<call:6>IK3TWO \r\n<qso_date:0:d> \r\n<time_on:0> \r\n"));
  EXPECT_THAT(file, HasSubstr("<call:6>IK3TRE \r\n<qso_date:8:d>20010103 \r\n"));
}

TEST_P(AnUnreadableDate, IsLeftOutOfALogFileAndCounted) {
  const auto counts = adif::ExportContacts(
      session, adif::kAllContacts, directory.Path() / "all.adi", [](std::int64_t) { return true; });
  ASSERT_TRUE(counts);
  EXPECT_EQ(counts->written, 2);
  EXPECT_EQ(counts->leftOut, 1);
}

TEST_P(AnUnreadableDate, KeepsNoImportFromFindingWhatIsThere) {
  const auto file = directory.Path() / "in.adi";
  std::ofstream(file) << "<EOH><CALL:6>IK3ONE<QSO_DATE:8>20010101<TIME_ON:4>1000<BAND:2>2m"
                         "<MODE:3>SSB<EOR><CALL:6>IK3NEW<QSO_DATE:8>20000101<TIME_ON:4>1000"
                         "<BAND:2>2m<MODE:3>SSB<EOR>";
  std::ostringstream report;
  const auto counts = adif::ImportContacts(
      session, file, {}, [](std::int64_t) { return true; }, report);
  ASSERT_TRUE(counts);
  EXPECT_THAT(Rows("select Call from Log where Call in ('IK3ONE','IK3NEW') order by Call"),
              ElementsAre("IK3NEW", "IK3ONE"));
}

TEST_P(AnUnreadableDate, IsNoneOnTheAwardsPagesByDate) {
  Exec("delete * from Log where Call<>'IK3TWO'");
  std::ofstream(directory.Path() / "Country.html")
      << "<TR><TH>x</TH></TR><TR><TD>[DATA]|[CALL]</TD></TR>";
  session.Handed.QueryText = "WHERE QsoNr>0";
  Press(Open<awards::AwardGrid>("SCountry"), "cmByDate");
  EXPECT_THAT(Lines(), ElementsAre("open \"OUT_Country.html\""));
  EXPECT_THAT(ReadBytes(directory.Path() / "OUT_Country.html"), HasSubstr("<TD>|IK3TWO</TD>"));
}

TEST_P(AnUnreadableDate, IsPrintedEmptyInEveryReport) {
  InDialogs([](forms::Window& dialog) {
    dialog.Tag = "WHERE QsoNr>0";
    dialog.Hide();
  });
  Exec("update Log set [Note]='[SOTA x]'");
  for (const char* layout : {"logv.rpt", "logo.rpt"}) PutIntoDirectory(layout);
  for (const print::ReportMember& member : print::ReportMembers()) {
    SCOPED_TRACE(member.command);
    Event([&] { print::PrintReport(session, member); });
    EXPECT_THAT(Lines(), ElementsAre("report \"logo.rpt\""));
  }
  Exec("delete * from SLog");
  Exec("insert into SLog select * from Log where Call='IK3TWO'");
  for (const char* layout : {"logv.rpt", "logo.rpt"}) {
    print::RunReport(session, directory.Path() / layout);
    const Texts lines = Lines();
    EXPECT_THAT(lines, Contains(EndsWith("\"IK3TWO\"")));
    EXPECT_THAT(lines, Contains("print end"));
    if (*GetParam().text != '\0') {
      EXPECT_THAT(lines, Not(Contains(HasSubstr(GetParam().text))));
    }
  }
}

TEST_P(AnUnreadableDate, IsNotOnItsLabelAndTold) {
  print::StampaQsl& labels = Open<print::StampaQsl>("StampaQsl");
  labels.DatiQso.SetOn(true);
  Press(labels, "cmPrint");
  const Texts lines = Lines();
  EXPECT_EQ(lines.back(),
            "message exclamation \"Stampa Qsl\" \"Etichette senza data, che nel database non è "
            "leggibile: 1\"");
  EXPECT_THAT(lines, Contains("print end"));
  EXPECT_THAT(lines, Contains(HasSubstr("\"IK3TWO\"")));
  EXPECT_THAT(lines, Contains(HasSubstr("\"03/01/2001\"")));
}

TEST_P(AnUnreadableDate, FailsNoSelectionByDate) {
  for (const char* where : {"DateValue(DataQso)= cvdate('03/01/2001')",
                            "DateValue(DataQso)>=DateValue('03/01/2001') "
                            "and DateValue(DataQso)<=DateValue('03/01/2001')"}) {
    const auto rows = Rows(std::string("select Call from Log where ") + where);
    EXPECT_THAT(rows, ElementsAre("IK3TRE")) << where;
  }
}

constexpr Unreadable kUnreadable[] = {
    {"NoSuchDay", "'2024-13-45 10:00:00'", "2024-13-45 10:00:00"},
    {"Words", "'ieri''sera'", "ieri'sera"},
    {"Nothing", "''", ""},
    {"JulianDay", "2460310.5", "2460310.5"},
    {"UnixTime", "1704067200", "1704067200"},
    {"Bytes", "x'3F285A'", "?(Z"},
};

INSTANTIATE_TEST_SUITE_P(Any, AnUnreadableDate, testing::ValuesIn(kUnreadable),
                         [](const auto& each) { return std::string(each.param.name); });

}  // namespace
}  // namespace brenvo::station
