// A box that a service has ticked is no card: for labels, the account of cards and log files.
#include <gmock/gmock.h>

#include <fstream>
#include <iterator>
#include <sstream>

#include "adif/adif_export.h"
#include "conferme/taking.h"
#include "core/confirmations.h"
#include "core/qsl_cards.h"
#include "print/qsl_update.h"
#include "print/stampa_qsl.h"
#include "tests/conferme/reports.h"
#include "tests/support/station.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class PaperAlone : public StationTest {
 protected:
  PaperAlone() {
    Know<print::StampaQsl>("StampaQsl");
    session.Db.Execute("update [User] set Call='IK0XYZ'");
    for (const char* call : {"CT7AAA", "DL3CCC"}) {
      session.Db.Execute(
          std::string("insert into Log (DataQso,Call,Banda,Modo) values ('01/01/2001 22:14','") +
          call + "',' 20 m','CW')");
    }
    // The first by a service, the second by a card.
    EXPECT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "Sì"), "");
    const Report report =
        ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400")}));
    std::ostringstream told;
    TakeReport(session, "prova", report, *MatchLog(session, report.records), told);
    session.Db.Execute("update Log set QslRicevuta=True where QsoNr=2");
  }
  std::vector<std::string> Calls(const std::string& where) {
    std::vector<std::string> calls;
    const auto rows =
        session.Db.OpenSnapshot("select Call from Log where " + where + " order by QsoNr");
    for (; !rows->EOF_(); rows->MoveNext()) calls.push_back(rows->Field(std::size_t{0}).Text());
    return calls;
  }
  std::string Exported() {
    const auto file = directory.Path() / "fuori.adi";
    adif::ExportContacts(session, adif::kAllContacts, file, [](std::int64_t) { return true; });
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
  }
};

TEST_F(PaperAlone, AServicesBoxIsSetAndIsKnownAsIts) {
  EXPECT_THAT(Calls("QslRicevuta"), ElementsAre("CT7AAA", "DL3CCC"));
  EXPECT_TRUE(core::IsBoxOfService(session.Db, 1));
  EXPECT_FALSE(core::IsBoxOfService(session.Db, 2));
}

TEST_F(PaperAlone, GoesOutAsTheReceivedCardOfALogFile) {
  const std::string file = Exported();
  const std::size_t first = file.find("CT7AAA"), second = file.find("DL3CCC");
  ASSERT_LT(first, second);
  EXPECT_THAT(file.substr(first, second - first), HasSubstr("<QSL_RCVD:1>N"));
  EXPECT_THAT(file.substr(first, second - first), HasSubstr("<LOTW_QSL_RCVD:1>Y"));
  EXPECT_THAT(file.substr(second), HasSubstr("<QSL_RCVD:1>Y"));
}

TEST_F(PaperAlone, IsAnsweredByALabel) {
  print::StampaQsl& window = Open<print::StampaQsl>("StampaQsl");
  machine.TakeLines();
  window.DatiQso.SetOn(true);
  Event([&] { window.cmPrint.Press(); });
  std::string printed;
  for (const std::string& line : machine.TakeLines()) printed += line + "\n";
  EXPECT_THAT(printed, HasSubstr("DL3CCC"));
  EXPECT_THAT(printed, testing::Not(HasSubstr("CT7AAA")));
}

TEST_F(PaperAlone, IsAnsweredByTheUpdateBehindTheLabels) {
  machine.Messages().QueueAnswer(true);
  Event([&] { print::UpdateLogForQsl(session); });
  EXPECT_THAT(Calls("QslInviata"), ElementsAre("DL3CCC"));
}

TEST_F(PaperAlone, MakesTheBoxACardsOnceItHasCome) {
  core::MarkCards(session, "prova", {1}, core::CardSide::kReceived,
                  {core::CardWay::kBureau, std::nullopt});
  EXPECT_FALSE(core::IsBoxOfService(session.Db, 1));
  EXPECT_THAT(Exported(), HasSubstr("<QSL_RCVD:1>Y"));
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "No"), "");
  FollowBoxChoice(session, Service::kLotw);
  EXPECT_THAT(Calls("QslRicevuta"), ElementsAre("CT7AAA", "DL3CCC"));
}

}  // namespace
}  // namespace brenvo::conferme
