// Another program looks into the database for a moment while the station writes much at once.
#include <gmock/gmock.h>

#include "tests/station/all_windows.h"
#include "tests/support/other_program.h"
#include "upkeep/backup.h"

namespace brenvo::station {
namespace {

using testing::Contains;
using testing::Each;
using testing::HasSubstr;
using testing::Not;

class AShortLock : public AllWindowsTest {
 protected:
  AShortLock() {
    Exec("insert into Log (DataQso,Call,Banda) values ('01/01/2001','IK3ONE','  2 m')");
    machine.Advance(20000);  // the day's copy
    session.Db.BeginTrans();
    for (int i = 0; i < 600; ++i) {
      Exec("insert into Log (DataQso,Call,Banda,QslDaInviare) values ('02/01/2001','IK3A" +
           std::to_string(i) + "','  2 m',True)");
    }
    session.Db.CommitTrans();
    // A grid shows the first of them, and has read no more.
    session.Windows.Show(*session.Windows.LoadNew("LogForm"));
    machine.TakeLines();
  }
  void Command(std::string_view name) {
    const OtherProgram other(directory.Path() / "Brenvo.mdb",
                             "INSERT INTO Log (DataQso,Call,Banda,QslDaInviare) VALUES "
                             "('2001-01-03 10:00:00','IK3OTHER','  2 m',-1)");
    machine.Messages().QueueAnswer(true);
    Press(*frame, name);
    EXPECT_THAT(Lines(), Not(Contains(HasSubstr("3260"))));
  }
};

TEST_F(AShortLock, IsWaitedForByTheUpdateOfTheCards) {
  Command("cmQslAggiorna");
  EXPECT_EQ(Rows("select count(*) from Log where QslInviata"), std::vector<std::string>{"601"});
}

TEST_F(AShortLock, IsWaitedForByTheEmptyingOfTheLog) {
  Command("cmAzzeraLog");
  EXPECT_EQ(Rows("select count(*) from Log"), std::vector<std::string>{"0"});
}

TEST_F(AShortLock, IsWaitedForByTheAssigningOfPrefixes) {
  Command("cmAssegnaPrefissi");
  EXPECT_EQ(Rows("select count(*) from Log where Prefisso=''"), std::vector<std::string>{"0"});
  EXPECT_EQ(Rows("select Prefisso from Log where Call='IK3OTHER'"),
            std::vector<std::string>{"IK3  "});
}

TEST_F(AShortLock, IsWaitedForByTheRestoreOfACopy) {
  const OtherProgram other(directory.Path() / "Brenvo.mdb", "UPDATE Log SET Qra = 'X'");
  ASSERT_TRUE(upkeep::RestoreBackup(session, upkeep::BackupCopies(directory.Path())[0]));
  EXPECT_EQ(Rows("select Call from Log"), std::vector<std::string>{"IK3ONE"});
}

TEST_F(AShortLock, IsWaitedForByTheCompaction) {
  const OtherProgram other(directory.Path() / "Brenvo.mdb", "UPDATE Log SET Qra = 'X'");
  Press(*frame, "cmCompatta");
  EXPECT_TRUE(session.IsOpen());
  EXPECT_EQ(Rows("select count(*) from Log where Qra='X'"), std::vector<std::string>{"601"});
}

}  // namespace
}  // namespace brenvo::station
