#include "conferme/sending.h"

#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "conferme/conferme.h"
#include "core/log_time.h"
#include "history/take_back.h"
#include "tests/support/station.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class SendingTest : public StationTest {
 protected:
  SendingTest() {
    Know<Conferme>("Conferme");
    core::StoreLogTime(session, core::LogTime::kUtc);
    session.Db.Execute("update [User] set Call='IK0XYZ'");
    for (const char* call : {"CT7AAA", "DL3CCC", "ZS1AB"}) Add(call);
  }
  void Add(const std::string& call) {
    session.Contacts.Add(
        core::ContactTable::kLog, *session.Tables.TbLog, [&](engine::EditableRecordset& row) {
          row.Set(core::column::kDataQso, base::DateTime::Of(2001, 1, 1, 22, 14, 0));
          row.Set(core::column::kCall, call);
          row.Set(core::column::kBanda, " 20 m");
          row.Set(core::column::kModo, "CW");
        });
  }
  void Field(std::int64_t key, const char* field, const char* value) {
    session.Db.OpenAppender("LogAdif")->Append({key, field, value});
  }
  std::string Arguments(const std::string& location) {
    return "-d -u -a compliant -x -l " + location + " " + session.File("\\LoTW.adi").string();
  }
  std::string Sent(std::string_view field) {
    std::string text;
    const auto rows = session.Db.OpenSnapshot("select QsoNr,Valore from LogAdif where Campo='" +
                                              std::string(field) + "' order by QsoNr");
    for (; !rows->EOF_(); rows->MoveNext()) {
      text +=
          (text.empty() ? "" : " ") + rows->Field(std::size_t{0}).Text() + rows->Field(1).Text();
    }
    return text;
  }
};

TEST_F(SendingTest, OnlyWhatTheServiceDoesNotHaveIsToBeSent) {
  Field(1, "LOTW_QSL_SENT", "Y");
  Field(2, "LOTW_QSL_SENT", "R");
  EXPECT_THAT(UnsentTo(session, Service::kLotw), ElementsAre(2, 3));
  Field(3, "LOTW_QSL_SENT", "I");
  EXPECT_THAT(UnsentTo(session, Service::kLotw), ElementsAre(2));
  EXPECT_THAT(UnsentTo(session, Service::kEqsl), ElementsAre(1, 2, 3));
}

TEST_F(SendingTest, WhatWasSentIsMarkedWithItsDayAndCanBeTakenBack) {
  Field(2, "LOTW_QSL_SENT", "R");
  EXPECT_EQ(MarkSent(session, Service::kLotw, {1, 2, 99}), 2);
  EXPECT_EQ(Sent("LOTW_QSL_SENT"), "1Y 2Y");
  EXPECT_EQ(Sent("LOTW_QSLSDATE"), "120010203 220010203");
  EXPECT_EQ(MarkSent(session, Service::kLotw, {1}), 0);
  history::TakeBackLast(session);
  EXPECT_EQ(Sent("LOTW_QSL_SENT"), "2R");
}

TEST_F(SendingTest, TqslIsGivenWhatIsNewAndNoPassword) {
  Conferme& window = Open<Conferme>("Conferme");
  Field(1, "LOTW_QSL_SENT", "Y");
  machine.Processes().Queue("tqsl", Arguments("Casa"), {0, "10:15:00: Final Status: Success (0)"});
  Press(window, "cmTqsl");
  EXPECT_EQ(window.Avviso.Text(), "2 Qso da \"Casa\": firmati e inviati");
  EXPECT_EQ(Sent("LOTW_QSL_SENT"), "1Y 2Y 3Y");
  std::ifstream in(session.File("\\LoTW.adi"), std::ios::binary);
  const std::string file{std::istreambuf_iterator<char>(in), {}};
  EXPECT_THAT(file, Not(HasSubstr("CT7AAA")));
  EXPECT_THAT(file, HasSubstr("DL3CCC"));
  Press(window, "cmTqsl");
  EXPECT_EQ(window.Avviso.Text(), "Nessun Qso da inviare a LoTW");
}

TEST_F(SendingTest, EachStationsContactsGoOutWithItsOwnLocation) {
  session.Db.Execute(
      "insert into Stazioni (Nome,Tipo,Call) values ('Monte','Portatile','IK0XYZ/P')");
  session.Db.Execute("update LogOrigine set Stazione=2 where QsoNr=3");
  Conferme& window = Open<Conferme>("Conferme");
  machine.Processes().Queue("tqsl", Arguments("Casa"), {8, ""});
  machine.Processes().Queue("tqsl", Arguments("Monte"),
                            {2, "10:15:00: Final Status: Rejected (2)\n"});
  Press(window, "cmTqsl");
  EXPECT_EQ(window.Avviso.Text(),
            "2 Qso da \"Casa\": LoTW li aveva già, o sono fuori dalle date del certificato; 1 Qso "
            "da \"Monte\": LoTW li ha rifiutati (Rejected (2))");
  EXPECT_EQ(Sent("LOTW_QSL_SENT"), "1Y 2Y");
}

TEST_F(SendingTest, AMissingProgramIsToldWithItsPackage) {
  Conferme& window = Open<Conferme>("Conferme");
  machine.Processes().FailNext("tqsl");
  Press(window, "cmTqsl");
  EXPECT_EQ(window.Avviso.Text(), "Manca tqsl: installare il pacchetto trustedqsl");
  EXPECT_THAT(Sent("LOTW_QSL_SENT"), IsEmpty());
}

TEST(TheEndOfTqsl, MeansSentForThreeOfItsCodes) {
  for (int status = -1; status <= 12; ++status) {
    const SigningEnd end = MeaningOf({status, ""});
    EXPECT_EQ(end.sent, status == 0 || status == 8 || status == 9) << status;
    EXPECT_FALSE(end.told.empty());
  }
  EXPECT_EQ(MeaningOf({11, "x\n10:15:00: Final Status: No connection (11)\n"}).told,
            "LoTW non si raggiunge (No connection (11))");
  EXPECT_EQ(MeaningOf({-1, ""}).told, "tqsl non ha finito in tempo");
}

}  // namespace
}  // namespace brenvo::conferme
