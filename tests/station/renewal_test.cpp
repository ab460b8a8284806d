// Every command that changes many contacts announces it, and the windows that are open show it.
#include <gmock/gmock.h>

#include <fstream>

#include "contest/contest_form.h"
#include "contest/contest_qso.h"
#include "core/log_time.h"
#include "log/log_form.h"
#include "tests/station/all_windows.h"

namespace brenvo::station {
namespace {

using testing::ElementsAre;

constexpr core::ContactsChanged kManyOfLog{core::ContactTable::kLog, core::ManyContacts()};
constexpr core::ContactsChanged kManyOfContests{core::ContactTable::kContestQso,
                                                core::ManyContacts()};

class RenewalTest : public AllWindowsTest {
 protected:
  RenewalTest() {
    Exec(
        "insert into Log (DataQso,Call,Banda,QslDaInviare) values "
        "('01/01/2001','IK1AAA','  2 m',True)");
  }
  // Runs a command of the main menu, with Yes to its question if it asks one, and gives what it
  // announces.
  std::vector<core::ContactsChanged> Announced(std::string_view command, bool asks = true) {
    std::vector<core::ContactsChanged> changes;
    const forms::Subscription subscription = session.Contacts.Subscribe(
        [&](const core::ContactsChanged& change) { changes.push_back(change); });
    if (asks) machine.Messages().QueueAnswer(true);
    Press(*frame, command);
    return changes;
  }
};

TEST_F(RenewalTest, EveryBatchOverTheLogIsAnnouncedOnce) {
  EXPECT_THAT(Announced("cmQslAggiorna"), ElementsAre(kManyOfLog));
  EXPECT_THAT(Announced("Propagazione", false), ElementsAre(kManyOfLog));
  EXPECT_THAT(Announced("cmAssegnaPrefissi"), ElementsAre(kManyOfLog));
  EXPECT_THAT(Announced("cmAzzeraLog"), ElementsAre(kManyOfLog));
  EXPECT_THAT(Announced("cmAzzeraContest"), ElementsAre(kManyOfContests));
}

TEST_F(RenewalTest, ABatchThatIsRefusedAnnouncesNothing) {
  std::vector<core::ContactsChanged> changes;
  const forms::Subscription subscription = session.Contacts.Subscribe(
      [&](const core::ContactsChanged& change) { changes.push_back(change); });
  for (const char* command : {"cmQslAggiorna", "cmAssegnaPrefissi", "cmAzzeraLog"}) {
    machine.Messages().QueueAnswer(false);
    Press(*frame, command);
  }
  EXPECT_TRUE(changes.empty());
}

TEST_F(RenewalTest, AnImportIsSeenInAnOpenLog) {
  auto& log = Open<log::LogForm>("LogForm");
  const std::filesystem::path file = directory.Path() / "due.adi";
  std::ofstream(file) << "<EOH><CALL:6>IK2BBB<QSO_DATE:8>20010102<TIME_ON:4>1000<BAND:2>2m"
                         "<MODE:3>SSB<EOR><CALL:6>IK2CCC<QSO_DATE:8>20010102<TIME_ON:4>1001"
                         "<BAND:2>2m<MODE:3>SSB<EOR>";
  machine.Picks().Queue(file);
  core::StoreLogTime(session, core::LogTime::kUtc);
  InDialogs([this](forms::Window& import) { Press(import, "cmImporta"); });
  EXPECT_THAT(Announced("cmImportaAdif", false), ElementsAre(kManyOfLog));
  EXPECT_EQ(log.CallQso.Text(), "IK1AAA");
  EXPECT_EQ(log.QsoTotali.Text(), "3");
  Press(log, "cmNext");
  EXPECT_EQ(log.CallQso.Text(), "IK2BBB");
  Lines();
}

TEST_F(RenewalTest, ATransferIsSeenInTheLogAndInTheOtherLogOfItsContest) {
  Exec("insert into Contest (DataContest,Banda) values ('03/03/2001','  2 m')");
  Exec("update [Contest Qso] set Giorno=3,Qtr='10:00:00',InLog=True");
  auto& log = Open<log::LogForm>("LogForm");
  auto& first = Open<contest::ContestQso>("ContestQso");
  auto& second = Open<contest::ContestQso>("ContestQso");
  machine.Messages().QueueAnswer(true);
  Event([&] { first.Close(); });
  EXPECT_EQ(log.QsoTotali.Text(), "2");
  int inLog = 0;
  while (second.QC.Cell(0, inLog) != "In Log") ++inLog;
  EXPECT_EQ(second.QC.Cell(1, inLog), "No");
  Lines();
}

TEST_F(RenewalTest, EmptyingTheContestsLeavesNoCommandForTheOneOnScreen) {
  Exec("insert into Contest (DataContest,Banda) values ('03/03/2001','  2 m')");
  auto& contest = Open<contest::ContestForm>("Contest");
  auto& log = Open<contest::ContestQso>("ContestQso");
  EXPECT_TRUE(contest.cmUpdate.Enabled());
  Announced("cmAzzeraContest");
  EXPECT_FALSE(contest.cmUpdate.Enabled());
  EXPECT_EQ(contest.Banda.Text(), "  2 m");
  EXPECT_EQ(log.QC.Rows(), 1);
  Lines();
}

}  // namespace
}  // namespace brenvo::station
