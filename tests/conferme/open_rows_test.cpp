// What stands beside the records: contradictions, contacts like a credit, cards of a log file,
// whose a box is.
#include "conferme/open_rows.h"

#include <gmock/gmock.h>

#include <sstream>

#include "conferme/conferme.h"
#include "conferme/match_log.h"
#include "conferme/paper_cards.h"
#include "core/confirmations.h"
#include "core/log_time.h"
#include "core/qsl_cards.h"
#include "history/take_back.h"
#include "tests/conferme/reports.h"
#include "tests/support/station.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class OpenRowsTest : public StationTest {
 protected:
  OpenRowsTest() {
    core::StoreLogTime(session, core::LogTime::kUtc);
    Exec("update [User] set Call='IK0XYZ'");
  }
  void Insert(const std::string& call, const std::string& band, const std::string& mode,
              const std::string& country = "", const std::string& time = "22:14") {
    Exec("insert into Log (DataQso,Call,Banda,Modo,Country) values ('01/01/2001 " + time + "','" +
         call + "','" + band + "','" + mode + "','" + country + "')");
  }
  TakenCounts Take(const Report& report) {
    std::ostringstream told;
    return TakeReport(session, "prova", report, *MatchLog(session, report.records), told);
  }
  static std::vector<std::string> WhyOf(const std::vector<OpenRecord>& rows) {
    std::vector<std::string> why;
    for (const OpenRecord& each : rows) {
      why.push_back(each.record.call + ": " + each.why);
      EXPECT_LT(each.number, 0);
    }
    return why;
  }
  static std::string CardRecord(const Fields& further) {
    Fields fields = {{"CALL", "CT7AAA"},
                     {"BAND", "20M"},
                     {"MODE", "CW"},
                     {"QSO_DATE", "20010101"},
                     {"TIME_ON", "221400"}};
    fields.insert(fields.end(), further.begin(), further.end());
    return RecordOf(fields);
  }
};

TEST_F(OpenRowsTest, WhatTheLogHasOtherwiseIsListedAsLongAsItIsSo) {
  Insert("CT7AAA", " 20 m", "CW");
  Insert("DL3CCC", " 20 m", "CW");
  Exec("update Log set Locator='JN65AA',[Zona CQ]=15,[Zona ITU]=28");
  Take(ReportOf(LotwReport(
      {LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400",
                  {{"GRIDSQUARE", "IM57VF"},
                   {"CQZ", "14"},
                   {"ITUZ", "37"},
                   {"APP_LoTW_ITUZ_Inferred", "Y"}}),
       LotwRecord("DL3CCC", "20M", "CW", "20010101", "221400", {{"GRIDSQUARE", "JN65"}})})));
  EXPECT_THAT(WhyOf(Contradictions(session)),
              ElementsAre("CT7AAA: Locator JN65AA, LoTW dice IM57VF; Zona CQ 15, LoTW dice 14"));
  EXPECT_THAT(Contradictions(session)[0].candidates, ElementsAre(1));
  Exec("update Log set Locator='IM57VF',[Zona CQ]=14 where QsoNr=1");
  EXPECT_THAT(Contradictions(session), IsEmpty());
}

TEST_F(OpenRowsTest, ACreditWithoutAContactIsOfferedThoseThatAreLikeIt) {
  Insert("CT1ZZZ", " 20 m", "FT8", "CT");
  Insert("CT7AAA", " 20 m", "FT8", "CT");
  Insert("CT7AAA", " 40 m", "FT8", "CT");
  Insert("CT7AAA", " 20 m", "SSB", "CT");
  Insert("CT7AAA/P", " 20 m", "FT4", "CT");
  Insert("DL3CCC", " 20 m", "FT8", "DL");
  ReportRecord credit;
  credit.credit = true;
  credit.call = "CT7AAA";
  credit.band = "20m";
  credit.modeGroup = "DATA";
  credit.dxcc = 272;
  EXPECT_THAT(SimilarTo(session, credit), ElementsAre(2, 5, 1));
}

TEST_F(OpenRowsTest, AnOfferedContactGetsTheCreditByHand) {
  Insert("CT7AAA", " 20 m", "FT8", "CT");
  Take(ReportOf("<PROGRAMID:17>LoTW qslcards.php<EOH>" +
                RecordOf({{"CALL", "CT7AAA"},
                          {"BAND", "20M"},
                          {"MODE", "DATA"},
                          {"QSO_DATE", "19990101"},
                          {"DXCC", "272"},
                          {"CREDIT_GRANTED", "DXCC:CARD"}})));
  Know<Conferme>("Conferme");
  Conferme& window = Open<Conferme>("Conferme");
  Event([&] { window.Tabella.ClickCell(1, 0); });
  ASSERT_EQ(window.Candidati.Items().size(), 1U);
  Press(window, "cmAbbina");
  EXPECT_EQ(window.Avviso.Text(), "CT7AAA abbinato al Qso 1");
  EXPECT_THAT(Rows("select Campo,Valore from LogAdif"), ElementsAre("CREDIT_GRANTED|DXCC:CARD"));
  EXPECT_THAT(OpenRecords(session), IsEmpty());
}

TEST_F(OpenRowsTest, CardsOfALogFileAreTakenWhereTheOperatorSaysThatTheyArePaper) {
  Insert("CT7AAA", " 20 m", "CW");
  const Report report = ReportOf(
      "x<EOH>" + CardRecord({{"QSL_RCVD", "Y"}, {"QSL_RCVD_VIA", "B"}, {"QSLRDATE", "20010203"}}));
  ASSERT_EQ(report.cards.size(), 1U);
  EXPECT_THAT(report.records, IsEmpty());
  Take(report);
  EXPECT_THAT(Rows("select QsoNr from Log where QslRicevuta"), IsEmpty());
  EXPECT_EQ(TakeCards(session, "cartoline", report), 1);
  EXPECT_THAT(Rows("select QsoNr from Log where QslRicevuta"), ElementsAre("1"));
  EXPECT_THAT(Rows("select QsoNr,Verso,Via,Data from LogQsl"), ElementsAre("1|R|B|03/02/2001"));
  // A second time nothing is new, and what was taken can be taken back.
  EXPECT_EQ(TakeCards(session, "cartoline", report), 0);
  Event([&] { history::TakeBackLast(session); });
  EXPECT_THAT(Rows("select QsoNr from Log where QslRicevuta"), IsEmpty());
  EXPECT_THAT(Rows("select QsoNr from LogQsl"), IsEmpty());
}

TEST_F(OpenRowsTest, WhatCameByWireIsNoCard) {
  EXPECT_THAT(ReportOf("x<EOH>" + CardRecord({{"QSL_RCVD", "Y"}, {"QSL_RCVD_VIA", "E"}})).cards,
              IsEmpty());
  EXPECT_THAT(ReportOf("x<EOH>" + CardRecord({{"QSL_RCVD", "N"}})).cards, IsEmpty());
  // In a report of LoTW the same field means LoTW.
  EXPECT_THAT(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400")})).cards,
              IsEmpty());
}

TEST_F(OpenRowsTest, ABoxSaysWhoHasGivenIt) {
  Insert("CT7AAA", " 20 m", "CW");
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "Sì"), "");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400")})));
  EXPECT_EQ(core::GiversOfBox(session.Db, 1), "LoTW");
  core::MarkCards(session, "prova", {1}, core::CardSide::kReceived,
                  {core::CardWay::kBureau, std::nullopt});
  EXPECT_EQ(core::GiversOfBox(session.Db, 1), "");
}

TEST_F(OpenRowsTest, AReportOfManyBlocksIsTakenAndTakenBackWhole) {
  constexpr int kContacts = 2100;  // contacts are written a thousand at a time
  std::vector<std::string> records;
  for (int i = 0; i < kContacts; ++i) {
    const std::string call = fmt::format("IK{}AAA", i);
    Insert(call, " 20 m", "CW");
    records.push_back(LotwRecord(call, "20M", "CW", "20010101", "221400",
                                 {{"GRIDSQUARE", "JN65AA"}, {"CREDIT_GRANTED", "DXCC:LOTW"}}));
  }
  // Some have a part of it already: that comes back as it was.
  Exec(
      "insert into LogAdif (QsoNr,Campo,Valore) select QsoNr,'CREDIT_GRANTED','WAZ' from Log where "
      "QsoNr<=1500");
  Exec(
      "insert into LogAdif (QsoNr,Campo,Valore) select QsoNr,'LOTW_QSL_SENT','Q' from Log where "
      "QsoNr>=1500");
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "Sì"), "");
  const auto all = [&] {
    std::vector<std::string> rows;
    for (const char* select :
         {"select * from Log order by QsoNr", "select * from LogAdif order by QsoNr,Campo",
          "select * from LogConferme order by QsoNr"}) {
      for (std::string& row : Rows(select)) rows.push_back(std::move(row));
    }
    return rows;
  };
  const auto before = all();
  const TakenCounts counts = Take(ReportOf(LotwReport(records)));
  EXPECT_EQ(counts.changed, kContacts);
  EXPECT_EQ(Rows("select QsoNr from Log where QslRicevuta and Locator='JN65AA'").size(),
            static_cast<std::size_t>(kContacts));
  EXPECT_THAT(Rows("select Valore from LogAdif where Campo='CREDIT_GRANTED' and QsoNr=1500"),
              ElementsAre("WAZ,DXCC:LOTW"));
  const auto taken = all();
  Event([&] { history::TakeBackLast(session); });
  EXPECT_TRUE(all() == before);
  // And the taking back is taken back.
  Event([&] {
    history::TakeBack(session,
                      *history::FindWork(session, history::LastWorks(session, 1)[0].Lavoro));
  });
  EXPECT_TRUE(all() == taken);
}

}  // namespace
}  // namespace brenvo::conferme
