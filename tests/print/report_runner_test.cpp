#include "print/report_runner.h"

#include <gmock/gmock.h>

#include <fstream>

#include "platform/device_error.h"
#include "print/report_layout.h"
#include "tests/support/places.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using testing::Contains;
using testing::EndsWith;
using testing::HasSubstr;
using Texts = std::vector<std::string>;

class ReportRunnerTest : public StationTest {
 protected:
  std::filesystem::path Deliver(const char* layout) {
    std::filesystem::copy_file(SourceDir() / "data" / layout, directory.Path() / layout);
    return directory.Path() / layout;
  }
  std::filesystem::path Write(std::string_view text) {
    std::ofstream(directory.Path() / "mio.rpt", std::ios::binary) << text;
    return directory.Path() / "mio.rpt";
  }
  void Fill(int rows) {
    for (int i = 0; i < rows; ++i) {
      session.Db.Execute(
          "insert into SLog (DataQso,Call,Qrb,Qth,QslRicevuta) values "
          "('05/01/2001 10:30','C" +
          std::to_string(i) + "',1234,'Forlì',True)");
    }
  }
};

TEST_F(ReportRunnerTest, BothDeliveredLayoutsPrintTheirHeadRowsAndFoot) {
  Fill(1);
  for (const char* layout : {"logv.rpt", "logo.rpt"}) {
    RunReport(session, Deliver(layout));
    const Texts lines = Lines();
    EXPECT_THAT(lines, Contains(EndsWith("bold \"Log di stazione di I0XXX\""))) << layout;
    EXPECT_THAT(lines, Contains(EndsWith("\"Nome Cognome - 1 collegamenti - 03/02/2001\"")));
    EXPECT_THAT(lines, Contains(EndsWith("\"Pagina 1 di 1\"")));
    for (const char* heading : {"Data", "Ora", "Call", "Banda", "Locator", "Km"}) {
      EXPECT_THAT(lines, Contains(EndsWith("bold \"" + std::string(heading) + "\""))) << layout;
    }
    for (const char* cell : {"05/01/2001", "10:30", "C0", "1234"}) {
      EXPECT_THAT(lines, Contains(EndsWith("plain \"" + std::string(cell) + "\""))) << layout;
    }
    EXPECT_EQ(lines.back(), "print end");
  }
}

TEST_F(ReportRunnerTest, TheHorizontalLayoutLiesOnItsSideAndTheNextDocumentStands) {
  Fill(1);
  RunReport(session, Deliver("logo.rpt"));
  // The page's number ends at the right margin of 8 millimetres.
  EXPECT_THAT(Lines(), Contains(HasSubstr("print text 289 ")));
  EXPECT_EQ(machine.GetPrinter().PageHeight(), base::Mm(297));
}

TEST_F(ReportRunnerTest, ColumnsOfTheDeliveredLayoutsFitTheirPages) {
  const std::pair<const char*, double> pages[] = {{"logv.rpt", 210}, {"logo.rpt", 297}};
  for (const auto& [name, width] : pages) {
    std::ifstream file(Deliver(name), std::ios::binary);
    const ReportLayout layout =
        ParseReportLayout(std::string(std::istreambuf_iterator<char>(file), {}));
    double sum = 2 * layout.margin.Value();
    for (const ReportColumn& column : layout.columns) sum += column.width.Value();
    // What a printer leaves blank around a page is less than 4 millimetres on each side.
    EXPECT_LE(sum, width - 8) << name;
  }
}

TEST_F(ReportRunnerTest, AnOperatorsOwnLayoutIsTaken) {
  Fill(1);
  RunReport(session, Write("titolo = Il mio log\ncolonna = Nominativo; Call; 40; sinistra\n"));
  EXPECT_THAT(Lines(), Contains(EndsWith("bold \"Nominativo\"")));
}

TEST_F(ReportRunnerTest, TheOperatorStopsItAndNothingIsPrinted) {
  Fill(200);
  machine.StopProgressAt(100);
  const auto layout = Deliver("logv.rpt");
  Event([&] { RunReport(session, layout); });
  const Texts lines = Lines();
  EXPECT_EQ(lines.back(), "error \"Stampa interrotta\"");
  EXPECT_THAT(lines, testing::Not(Contains("print end")));
  EXPECT_EQ(Rows("select count(*) from SLog"), Texts{"200"});
}

TEST_F(ReportRunnerTest, AMissingOrBrokenLayoutIsNamed) {
  Event([&] { RunReport(session, directory.Path() / "manca.rpt"); });
  EXPECT_EQ(Lines(), Texts{"error \"Manca il formato di stampa manca.rpt\""});
  Event([&] { RunReport(session, Write("titolo = Log\norientamento = storto\n")); });
  EXPECT_THAT(Lines(), Contains(HasSubstr("Riga 2 del formato di stampa")));
}

TEST_F(ReportRunnerTest, AMissingPrinterIsToldAndLeavesTheLog) {
  session.Db.Execute("insert into Log (DataQso,Call) values ('05/01/2001','IK3ABC')");
  Fill(1);
  const auto layout = Deliver("logv.rpt");
  machine.GetPrinter().FailNext();
  Event([&] { RunReport(session, layout); });
  EXPECT_EQ(Lines(), Texts{"error \"La stampante non risponde\""});
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
}

}  // namespace
}  // namespace brenvo::print
