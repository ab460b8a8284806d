#include <gmock/gmock.h>
#include <sqlite3.h>

#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::StartsWith;

// Changes the file as another program would, beside the open session.
void RunBeside(const std::filesystem::path& database, const char* statement) {
  sqlite3* handle = nullptr;
  ASSERT_EQ(sqlite3_open(database.c_str(), &handle), SQLITE_OK);
  EXPECT_EQ(sqlite3_exec(handle, statement, nullptr, nullptr, nullptr), SQLITE_OK)
      << sqlite3_errmsg(handle);
  sqlite3_close(handle);
}

class TransferTest : public ContestLogStation {
 protected:
  void Close(forms::Window& log) {
    Event([&] { log.Close(); });
  }
  std::string Marks() { return Rows("select count(*) from [Contest Qso] where InLog").front(); }
};

constexpr std::string_view kQuestion = "question \"\" \"Vuoi inserire i qso nel Log ?\" ";

TEST_F(TransferTest, WithoutMarksNothingIsAsked) {
  Add(1, "IK3ABC");
  Close(OpenLog());
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(TransferTest, AnAnswerOfNoKeepsTheMarksForNextTime) {
  Add(1, "IK3ABC", "JN65AB", 100, "", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(false);
  Close(log);
  EXPECT_EQ(Lines(), Texts{std::string(kQuestion) + "no"});
  EXPECT_EQ(Marks(), "1");
  EXPECT_EQ(Rows("select count(*) from Log"), Texts{"0"});
  machine.Messages().QueueAnswer(true);
  Close(OpenLog());
  EXPECT_EQ(Rows("select count(*) from Log"), Texts{"1"});
}

TEST_F(TransferTest, AMarkedContactReachesTheLogColumnByColumn) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Qra,Qth,Provincia) values "
      "('05/01/2001','IK3ABC','GIANNI','VENEZIA','VE')");
  Add(12, "IK3ABC", "JN65AB", 5, "[Exc=VE]ciao", true);
  session.Db.Execute("UPDATE [Contest Qso] SET Modo='CW',Qsl=True,QrkDato=599");
  Add(13, "IK3DEF");
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  contest.Frequenza.SetText("144.25");
  contest.Potenza.SetText("300");
  Press(contest, "cmUpdate");
  Press(contest, "cmQso");
  machine.Messages().QueueAnswer(true);
  Close(*machine.Host().Front());
  EXPECT_EQ(Lines(), Texts{std::string(kQuestion) + "yes"});
  EXPECT_EQ(Rows("select DataQso,Call,Qra,Qth,Provincia,Prefisso,[Zona CQ],[Zona ITU],Continente,"
                 "Locator,Qrb,Banda,Frequenza,Potenza,Modo,QrkDato,QrkRicevuto,QslDaInviare,"
                 "QslRicevuta,[Note] from Log where Locator='JN65AB'"),
            Texts{"07/09/2024 14:02:00|IK3ABC|GIANNI|VENEZIA|VE|IK3|15|28|EU|JN65AB|5|  2 m|"
                  "144.25|300|SSB|599012|57 112|-1|0|[Exc=VE]ciao"});
  EXPECT_EQ(Rows("select Country from Log where Locator='JN65AB'"),
            Rows("select Country from Prefissi where Prefisso='IK3'"));
  EXPECT_EQ(Rows("select ProgrDato,InLog,Qsl from [Contest Qso]"), (Texts{"12|0|0", "13|0|0"}));
}

TEST_F(TransferTest, MarksOfAnotherContestAskNothing) {
  AddContact(kDate, " 70cm", 1, "IK3ABC", "JN65AB", 5, "", true);
  Close(OpenLog());
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(TransferTest, ContactsOfAnotherContestStayWhereTheyAre) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  AddContact(kDate, " 70cm", 1, "IK3DEF", "JN65AB", 5, "", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3ABC"});
  EXPECT_EQ(Rows("select Call from [Contest Qso] where InLog"), Texts{"IK3DEF"});
}

TEST_F(TransferTest, AContactThatIsNotMarkedKeepsItsWishForACard) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  Add(2, "IK3DEF");
  session.Db.Execute("UPDATE [Contest Qso] SET Qsl=True");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select ProgrDato,Qsl from [Contest Qso] order by ProgrDato"),
            (Texts{"1|0", "2|-1"}));
}

TEST_F(TransferTest, ReportAndSerialAreOneTextOfSixCharacters) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  session.Db.Execute("UPDATE [Contest Qso] SET ProgrDato=12,ProgrRicevuto=1234,QrkRicevuto=5");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select QrkDato,QrkRicevuto from Log"), Texts{"59 012|5  123"});
}

TEST_F(TransferTest, ACallNeverLoggedBeforeKeepsNameAndPlaceUnset) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select Call from Log where Qra is null and Qth is null and Provincia is null"),
            Texts{"IK3ABC"});
}

TEST_F(TransferTest, AnEarlierContactWithoutNameAndPlaceGivesEmptyTexts) {
  session.Db.Execute("insert into Log (DataQso,Call,Qth) values ('05/01/2001','IK3ABC','VENEZIA')");
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select Qra,Qth,Provincia from Log where Locator='JN65AB' and Qra is not null and "
                 "Provincia is not null"),
            Texts{"|VENEZIA|"});
}

TEST_F(TransferTest, ACallWithoutAKnownPrefixHasAnEmptyCountryAndNoZones) {
  Add(1, "XX", "JN65AB", 5, "", true);
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select Country,Call from Log where Prefisso is null and [Zona CQ] is null and "
                 "[Zona ITU] is null and Continente is null and Country is not null"),
            Texts{"|XX"});
}

TEST_F(TransferTest, EveryModeReachesTheLogAsSsb) {
  for (const char* mode : {"USB", "CW", "FM"}) {
    const int serial = 1 + static_cast<int>(Rows("select Call from [Contest Qso]").size());
    Add(serial, std::string("IK3A") + mode, "JN65AB", 5, "", true);
    session.Db.Execute(
        fmt::format("UPDATE [Contest Qso] SET Modo='{}' WHERE ProgrDato={}", mode, serial));
  }
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_EQ(Rows("select Modo from Log"), (Texts{"SSB", "SSB", "SSB"}));
}

TEST_F(TransferTest, ARepeatedContactIsToldAndLeavesLogAndMarks) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  Add(2, "IK3DEF", "JN65AB", 5, "", true);
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda) values "
      "('07/09/2024 14:02:00','IK3DEF','  2 m')");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_THAT(Lines(), ElementsAre(std::string(kQuestion) + "yes", StartsWith("error \"3022")));
  EXPECT_EQ(Rows("select Call from Log"), Texts{"IK3DEF"});
  EXPECT_EQ(Marks(), "2");
  EXPECT_FALSE(session.Db.InTransaction());
  EXPECT_FALSE(machine.Host().Busy());
  // The log is still there, and closes without the transfer.
  machine.Messages().QueueAnswer(false);
  Close(log);
  EXPECT_EQ(session.Windows.Find("ContestQso"), nullptr);
}

TEST_F(TransferTest, AFailureOfTheFileInTheMiddleLeavesNeitherHalfATransferNorLostMarks) {
  for (int serial = 1; serial <= 5; ++serial) {
    Add(serial, fmt::format("IK3AB{}", serial), "JN65AB", 5, "", true);
  }
  ContestQso& log = OpenLog();
  RunBeside(directory.Path() / "Brenvo.mdb",
            "ALTER TABLE Log ADD COLUMN Guasto INTEGER CHECK (Call <> 'IK3AB3')");
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_THAT(Lines(), Contains(StartsWith("error ")));
  EXPECT_EQ(Rows("select count(*) from Log"), Texts{"0"});
  EXPECT_EQ(Marks(), "5");
}

TEST_F(TransferTest, AFailureWhileTheMarksAreClearedTakesTheContactsBackOutOfTheLog) {
  for (int serial = 1; serial <= 5; ++serial) {
    Add(serial, fmt::format("IK3AB{}", serial), "JN65AB", 5, "", true);
  }
  ContestQso& log = OpenLog();
  RunBeside(directory.Path() / "Brenvo.mdb",
            "ALTER TABLE \"Contest Qso\" ADD COLUMN Guasto INTEGER "
            "CHECK (ProgrDato <> 3 OR InLog <> 0)");
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_THAT(Lines(), Contains(StartsWith("error ")));
  EXPECT_EQ(Rows("select count(*) from Log"), Texts{"0"});
  EXPECT_EQ(Marks(), "5");
}

TEST_F(TransferTest, ADayThatItsMonthDoesNotHaveIsAFailure) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  session.Db.Execute("UPDATE [Contest Qso] SET Giorno=31");
  ContestQso& log = OpenLog();
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_THAT(Lines(), Contains(StartsWith("error \"3421")));
  EXPECT_EQ(Marks(), "1");
}

TEST_F(TransferTest, AContestWithoutItsHeaderIsAFailure) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  ContestQso& log = OpenLog();
  session.Db.Execute("DELETE * FROM Contest");
  machine.Messages().QueueAnswer(true);
  Close(log);
  EXPECT_THAT(Lines(), Contains(StartsWith("error ")));
  EXPECT_EQ(Rows("select count(*) from Log"), Texts{"0"});
}

TEST_F(TransferTest, AContestThatCannotBeReadHasNothingToOfferAndCloses) {
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  contest.DataContest.SetText("mai");
  Press(contest, "cmQso");
  Lines();
  Close(*session.Windows.Find("ContestQso"));
  EXPECT_EQ(session.Windows.Find("ContestQso"), nullptr);
  EXPECT_EQ(Lines(), Texts{});
}

TEST_F(TransferTest, TheHeadersScreenStaysOnItsOwnRecord) {
  Add(1, "IK3ABC", "JN65AB", 5, "", true);
  ContestForm& contest = OpenContest();
  Store(contest, kDate, kBand);
  Press(contest, "cmQso");
  forms::Window& log = *machine.Host().Front();
  Store(contest, "05/10/2024", kBand);
  machine.Messages().QueueAnswer(true);
  Close(log);
  contest.NomeContest.SetText("ottobre");
  Press(contest, "cmUpdate");
  EXPECT_EQ(Rows("select Nome from Contest order by DataContest"), (Texts{"0", "ottobre"}));
}

}  // namespace
}  // namespace brenvo::contest
