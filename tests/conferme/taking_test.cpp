#include "conferme/taking.h"

#include <gmock/gmock.h>

#include <sstream>

#include "conferme/credits.h"
#include "core/log_time.h"
#include "history/take_back.h"
#include "tests/conferme/reports.h"
#include "tests/support/station.h"
#include "upkeep/maintenance.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
namespace column = core::column;

class TakingTest : public StationTest {
 protected:
  TakingTest() { session.Db.Execute("update [User] set Call='IK0XYZ'"); }

  void Add(const std::string& call, base::DateTime when, const std::string& band,
           const std::string& mode, const std::string& locator = "",
           const std::string& country = "") {
    session.Contacts.Add(core::ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set(column::kDataQso, when);
                           row.Set(column::kCall, call);
                           row.Set(column::kBanda, band);
                           row.Set(column::kModo, mode);
                           row.Set(column::kLocator, locator);
                           row.Set(column::kCountry, country);
                         });
  }
  TakenCounts Take(const Report& report) {
    std::ostringstream told;
    const auto matched = MatchLog(session, report.records);
    const TakenCounts counts = TakeReport(session, "prova", report, matched.value(), told);
    Told = told.str();
    return counts;
  }
  // "a|b" of each row.
  std::vector<std::string> Rows(const std::string& select) {
    std::vector<std::string> rows;
    const auto found = session.Db.OpenSnapshot(select);
    for (; !found->EOF_(); found->MoveNext()) {
      std::string text;
      for (std::size_t i = 0; i < found->Columns().size(); ++i) {
        text += (i == 0 ? "" : "|") + found->Field(i).Text();
      }
      rows.push_back(text);
    }
    return rows;
  }
  std::vector<std::string> Fields() {
    return Rows("select QsoNr,Campo,Valore from LogAdif order by QsoNr,Campo");
  }
  std::vector<std::string> Everything() {
    std::vector<std::string> all;
    for (const char* table : {"Log", "LogAdif", "LogConferme", "ConfermeRecord", "Storia"}) {
      for (std::string& row : Rows(std::string("select * from ") + table)) {
        all.push_back(table + ("|" + row));
      }
    }
    return all;
  }

  const base::DateTime kWhen = base::DateTime::Of(2001, 1, 1, 22, 14, 0);
  std::string Told;
};

TEST_F(TakingTest, AConfirmationIsKeptUnderTheStandardsFieldsWithWhatThePartnerSays) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  const TakenCounts counts =
      Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400",
                                           {{"GRIDSQUARE", "IM57VF"},
                                            {"CQZ", "14"},
                                            {"APP_LoTW_CQZ_Inferred", "Y"},
                                            {"ITUZ", "37"},
                                            {"IOTA", "EU-150"},
                                            {"CREDIT_GRANTED", "DXCC:LOTW,DXCC_BAND:LOTW"}})})));
  EXPECT_EQ(counts.matched, 1);
  EXPECT_EQ(counts.changed, 1);
  EXPECT_EQ(counts.filled, 3);
  EXPECT_THAT(Fields(),
              ElementsAre("1|APP_LOTW_RXQSO|Y", "1|CREDIT_GRANTED|DXCC:LOTW,DXCC_BAND:LOTW",
                          "1|IOTA|EU-150", "1|LOTW_QSL_RCVD|Y", "1|LOTW_QSL_SENT|Y",
                          "1|LOTW_QSLRDATE|20010201"));
  EXPECT_THAT(Rows("select QsoNr,Servizio,Locator,Iota,ZonaCQ,ZonaITU,Dedotti from LogConferme"),
              ElementsAre("1|LoTW|IM57VF|EU-150|14|37|CQ"));
  EXPECT_THAT(Rows("select Locator,[Zona CQ],[Zona ITU],QslRicevuta from Log"),
              ElementsAre("IM57VF|14|37|0"));
  EXPECT_THAT(Told, HasSubstr("Riempito, Qso 1 CT7AAA 01/01/2001 22:14:00 20 m: Locator IM57VF, "
                              "Zona CQ 14 (dedotta dal country), Zona ITU 37 da LoTW"));
}

TEST_F(TakingTest, ALocatorOrAZoneThatSaysOtherwiseIsToldAndNotTaken) {
  Add("CT7AAA", kWhen, " 20 m", "FT8", "JN65AA");
  session.Db.Execute("update Log set [Zona CQ]=15,[Zona ITU]=28");
  const TakenCounts counts =
      Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400",
                                           {{"GRIDSQUARE", "IM57VF"},
                                            {"CQZ", "14"},
                                            {"ITUZ", "37"},
                                            {"APP_LoTW_ITUZ_Inferred", "Y"}})})));
  // A zone that was worked out from the country contradicts nothing.
  EXPECT_EQ(counts.conflicts, 2);
  EXPECT_EQ(counts.filled, 0);
  EXPECT_THAT(Rows("select Locator,[Zona CQ],[Zona ITU] from Log"), ElementsAre("JN65AA|15|28"));
  EXPECT_THAT(Told, HasSubstr("Locator JN65AA, LoTW dice IM57VF"));
  EXPECT_THAT(Told, HasSubstr("Zona CQ 15, LoTW dice 14"));
}

TEST_F(TakingTest, ALocatorThatIsOnlyLongerIsNoContradiction) {
  Add("CT7AAA", kWhen, " 20 m", "FT8", "IM57");
  EXPECT_EQ(Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400",
                                                 {{"GRIDSQUARE", "IM57VF"}})})))
                .conflicts,
            0);
}

TEST_F(TakingTest, ASecondTimeTheSameReportChangesNothing) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Add("DL3CCC", kWhen, " 40 m", "SSB");
  Add("DL3CCC", kWhen.Later(600), " 40 m", "CW");
  const Report report = ReportOf(LotwReport(
      {LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400", {{"GRIDSQUARE", "IM57VF"}}),
       LotwRecord("DL3CCC", "40M", "FT8", "20010101", "221500"),
       LotwRecord("ZS1AB", "10M", "SSB", "20010101", "221500")}));
  const TakenCounts first = Take(report);
  EXPECT_EQ(first.changed, 1);
  EXPECT_EQ(first.doubtful, 1);
  EXPECT_EQ(first.unmatched, 1);
  const auto before = Everything();
  machine.SetNow(base::DateTime::Of(2001, 3, 4, 5, 6, 7));
  const TakenCounts again = Take(report);
  EXPECT_EQ(again.matched, 1);
  EXPECT_EQ(again.changed, 0);
  EXPECT_EQ(Everything(), before);
}

TEST_F(TakingTest, AWholeReportIsOneWorkThatCanBeTakenBack) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Add("DL3CCC", kWhen, " 40 m", "SSB");
  const auto contacts = Rows("select * from Log");
  std::vector<std::string> announced;
  const auto heard = session.Contacts.Subscribe([&](const core::ContactsChanged& change) {
    announced.push_back(change.Many() ? "many" : "one");
  });
  Take(ReportOf(LotwReport(
      {LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400", {{"GRIDSQUARE", "IM57VF"}}),
       LotwRecord("DL3CCC", "40M", "SSB", "20010101", "221500", {{"CQZ", "14"}})})));
  EXPECT_THAT(announced, ElementsAre("many"));
  EXPECT_EQ(Rows("select QsoNr from LogConferme").size(), 2U);
  const auto taken = history::TakeBackLast(session);
  ASSERT_TRUE(taken);
  EXPECT_EQ(history::Told(taken->work, taken->result), "Ripreso: prova (2 Qso)");
  EXPECT_EQ(Rows("select * from Log"), contacts);
  EXPECT_THAT(Fields(), IsEmpty());
  EXPECT_THAT(Rows("select QsoNr from LogConferme"), IsEmpty());
  // And that again.
  const auto works = history::LastWorks(session, 1);
  history::TakeBack(session, works.front());
  EXPECT_EQ(Rows("select QsoNr from LogConferme").size(), 2U);
  EXPECT_EQ(Rows("select QsoNr from LogAdif where Campo='LOTW_QSL_RCVD'").size(), 2U);
}

TEST_F(TakingTest, ARecordThatNobodyHasConfirmedOnlySaysThatItWasAccepted) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  const Report report = ReportOf(LotwReport({RecordOf({{"CALL", "CT7AAA"},
                                                       {"BAND", "20M"},
                                                       {"MODE", "FT8"},
                                                       {"QSO_DATE", "20010101"},
                                                       {"TIME_ON", "221400"},
                                                       {"QSL_RCVD", "N"}}),
                                             RecordOf({{"CALL", "ZS1AB"},
                                                       {"BAND", "20M"},
                                                       {"MODE", "FT8"},
                                                       {"QSO_DATE", "20010101"},
                                                       {"TIME_ON", "221400"},
                                                       {"QSL_RCVD", "N"}})}));
  EXPECT_EQ(Take(report).changed, 1);
  EXPECT_THAT(Fields(), ElementsAre("1|APP_LOTW_RXQSO|Y", "1|LOTW_QSL_SENT|Y"));
  EXPECT_THAT(Rows("select * from LogConferme"), IsEmpty());
  EXPECT_THAT(OpenRecords(session), IsEmpty());
}

TEST_F(TakingTest, ADoubtfulRecordWaitsWithItsCandidatesAndIsMatchedByHandForGood) {
  Add("CT7AAA", kWhen.Later(-300), " 20 m", "FT8");
  Add("CT7AAA", kWhen.Later(300), " 20 m", "FT8");
  const Report report = ReportOf(LotwReport(
      {LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400", {{"GRIDSQUARE", "IM57VF"}})}));
  EXPECT_EQ(Take(report).doubtful, 1);
  auto open = OpenRecords(session);
  ASSERT_EQ(open.size(), 1U);
  EXPECT_EQ(open[0].state, "D");
  EXPECT_THAT(open[0].candidates, ElementsAre(1, 2));
  EXPECT_EQ(open[0].record.locator, "IM57VF");
  EXPECT_EQ(open[0].record.when, kWhen);
  ASSERT_TRUE(MatchByHand(session, open[0].number, 2));
  EXPECT_THAT(OpenRecords(session), IsEmpty());
  EXPECT_THAT(Rows("select QsoNr,AMano from LogConferme"), ElementsAre("2|-1"));
  const TakenCounts again = Take(report);
  EXPECT_EQ(again.doubtful, 0);
  EXPECT_EQ(again.matched, 1);
  EXPECT_EQ(again.changed, 0);
  EXPECT_THAT(Rows("select QsoNr,AMano from LogConferme"), ElementsAre("2|-1"));
}

TEST_F(TakingTest, AnIgnoredRecordIsNotAskedAboutUntilItIsWantedAgain) {
  const Report report =
      ReportOf(LotwReport({LotwRecord("ZS1AB", "10M", "SSB", "20010101", "221500")}));
  EXPECT_EQ(Take(report).unmatched, 1);
  const std::int64_t number = OpenRecords(session).front().number;
  Ignore(session, {number}, true);
  EXPECT_EQ(Take(report).ignored, 1);
  EXPECT_EQ(OpenRecords(session).front().state, "I");
  Ignore(session, {number}, false);
  EXPECT_EQ(Take(report).unmatched, 1);
  Add("ZS1AB", kWhen, " 10 m", "SSB");
  EXPECT_EQ(Take(report).changed, 1);
  EXPECT_THAT(OpenRecords(session), IsEmpty());
}

TEST_F(TakingTest, AContactThatHasItsRecordIsNoneOfAnotherReports) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221000")})));
  const TakenCounts counts =
      Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400")})));
  EXPECT_EQ(counts.matched, 0);
  EXPECT_EQ(counts.unmatched, 1);
}

TEST_F(TakingTest, CreditsAreJoinedAndThoseWithoutAContactAreKept) {
  Add("CT7AAA", kWhen, " 20 m", "CW", "", "CT");
  session.Db.OpenAppender("LogAdif")->Append({1, "CREDIT_GRANTED", "DXCC:LOTW,WAZ"});
  const Report report =
      ReportOf("<PROGRAMID:17>LoTW qslcards.php<EOH>" +
               RecordOf({{"CALL", "CT7AAA"},
                         {"BAND", "20M"},
                         {"MODE", "CW"},
                         {"QSO_DATE", "20010101"},
                         {"DXCC", "272"},
                         {"CREDIT_GRANTED", "DXCC:CARD,DXCC_BAND:CARD"}}) +
               RecordOf({{"CALL", "ZS1AB"}, {"DXCC", "462"}, {"CREDIT_GRANTED", "DXCC:CARD"}}));
  const TakenCounts counts = Take(report);
  EXPECT_EQ(counts.changed, 1);
  EXPECT_EQ(counts.credits, 1);
  EXPECT_THAT(Fields(), ElementsAre("1|CREDIT_GRANTED|DXCC:LOTW&CARD,WAZ,DXCC_BAND:CARD"));
  const auto open = OpenRecords(session);
  ASSERT_EQ(open.size(), 1U);
  // That the contact has its record makes no difference.
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "CW", "20010101", "221400")})));
  EXPECT_EQ(Take(report).matched, 1);
  EXPECT_EQ(open[0].state, "C");
  EXPECT_EQ(open[0].record.dxcc, 462);
}

TEST_F(TakingTest, ACardsBoxStaysUntilTheServiceIsLetCountAndGetsBackExactlyWhatItGave) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Add("DL3CCC", kWhen, " 40 m", "SSB");
  Add("ZS1AB", kWhen, " 10 m", "SSB");
  session.Db.Execute("update Log set QslRicevuta=True where QsoNr=2");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400"),
                            LotwRecord("DL3CCC", "40M", "SSB", "20010101", "221500")})));
  const auto boxes = [&] { return Rows("select QsoNr from Log where QslRicevuta order by QsoNr"); };
  EXPECT_THAT(boxes(), ElementsAre("2"));
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "Sì"), "");
  EXPECT_EQ(FollowBoxChoice(session, Service::kLotw), 1);
  EXPECT_THAT(boxes(), ElementsAre("1", "2"));
  // One that comes meanwhile ticks at once.
  Take(ReportOf(LotwReport({LotwRecord("ZS1AB", "10M", "SSB", "20010101", "221500")})));
  EXPECT_THAT(boxes(), ElementsAre("1", "2", "3"));
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "No"), "");
  EXPECT_EQ(FollowBoxChoice(session, Service::kLotw), 2);
  EXPECT_THAT(boxes(), ElementsAre("2"));
}

TEST_F(TakingTest, ABoxThatTwoServicesGiveStaysWithTheOther) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "Sì"), "");
  ASSERT_EQ(session.Choices.Set(core::choice::kEqslGivesBox, "Sì"), "");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400")})));
  Take(ReportOf("Received eQSLs<PROGRAMID:21>eQSL.cc DownloadInBox<EOH>" +
                RecordOf({{"CALL", "CT7AAA"},
                          {"BAND", "20M"},
                          {"MODE", "FT8"},
                          {"QSO_DATE", "20010101"},
                          {"TIME_ON", "2214"}})));
  ASSERT_EQ(session.Choices.Set(core::choice::kLotwGivesBox, "No"), "");
  FollowBoxChoice(session, Service::kLotw);
  EXPECT_THAT(Rows("select QsoNr from Log where QslRicevuta"), ElementsAre("1"));
  ASSERT_EQ(session.Choices.Set(core::choice::kEqslGivesBox, "No"), "");
  FollowBoxChoice(session, Service::kEqsl);
  EXPECT_THAT(Rows("select QsoNr from Log where QslRicevuta"), IsEmpty());
}

TEST_F(TakingTest, OfAnInboxWithoutDaysTheDayIsThatOfTheReading) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Take(ReportOf("Received eQSLs<PROGRAMID:21>eQSL.cc DownloadInBox<EOH>" +
                RecordOf({{"CALL", "CT7AAA"},
                          {"BAND", "20M"},
                          {"MODE", "FT8"},
                          {"QSO_DATE", "20010101"},
                          {"TIME_ON", "2214"},
                          {"APP_EQSL_AG", "Y"}})));
  EXPECT_THAT(Fields(),
              ElementsAre("1|EQSL_AG|Y", "1|EQSL_QSL_RCVD|Y", "1|EQSL_QSLRDATE|20010203"));
}

TEST_F(TakingTest, StagesCountHowFarTheContactsHaveGone) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Add("DL3CCC", kWhen, " 40 m", "SSB");
  Add("ZS1AB", kWhen, " 10 m", "SSB");
  session.Db.OpenAppender("LogAdif")->Append({2, "LOTW_QSL_SENT", "Y"});
  // Sent to eQSL: one lately, one long ago.
  for (const auto& [key, day] : {std::pair(1, "20010330"), {2, "20010102"}}) {
    session.Db.OpenAppender("LogAdif")->Append({key, "EQSL_QSL_SENT", "Y"});
    session.Db.OpenAppender("LogAdif")->Append({key, "EQSL_QSLSDATE", day});
  }
  machine.SetNow(base::DateTime::Of(2001, 4, 3, 4, 5, 6));
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400",
                                       {{"CREDIT_GRANTED", "DXCC:LOTW"}})})));
  const Stages lotw = StagesOf(session).front();
  EXPECT_EQ(lotw.toSend, 1);
  EXPECT_EQ(lotw.sent, 2);
  EXPECT_EQ(lotw.accepted, 1);
  EXPECT_EQ(lotw.confirmed, 1);
  EXPECT_EQ(lotw.credited, 1);
  EXPECT_EQ(lotw.late, 1);
  EXPECT_EQ(StagesOf(session)[1].sent, 2);
  EXPECT_EQ(StagesOf(session)[1].late, 1);
}

TEST_F(TakingTest, AReportOfAnotherStationIsTold) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  session.Db.Execute("update [User] set Call='II0ABC'");
  session.Db.Execute("update Stazioni set Call='II0ABC'");
  const Report report =
      ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400")}));
  const auto matched = MatchLog(session, report.records);
  EXPECT_EQ(matched->foreign, 1);
  EXPECT_EQ(matched->foreignCall, "IK0XYZ");
  EXPECT_EQ(matched->matches[0].outcome, Outcome::kNone);
}

TEST_F(TakingTest, TheTimesOfALogInLocalTimeAreComparedAsUtc) {
  core::StoreLogTime(session, core::LogTime::kLocal);
  Add("CT7AAA", kWhen.Later(60 * 60), " 20 m", "FT8");
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400")})));
  EXPECT_THAT(Rows("select QsoNr from LogConferme"), ElementsAre("1"));
}

TEST_F(TakingTest, WhatIsKeptOfAContactGoesWithItAtTheNextCompaction) {
  Add("CT7AAA", kWhen, " 20 m", "FT8");
  Take(ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400")})));
  session.Db.Execute("delete * from Log");
  session.Db.Execute("delete * from StoriaLog");
  Event([&] { upkeep::CompattaDatabase(session); });
  EXPECT_THAT(Rows("select * from LogConferme"), IsEmpty());
}

TEST(Credits, AreJoinedWithTheirMedia) {
  EXPECT_EQ(MergeCredits("", "DXCC:LOTW,WAZ"), "DXCC:LOTW,WAZ");
  EXPECT_EQ(MergeCredits("DXCC:CARD", "dxcc:LOTW&card"), "DXCC:CARD&LOTW");
  EXPECT_EQ(MergeCredits("WAZ", "WAZ:LOTW"), "WAZ:LOTW");
  EXPECT_EQ(MergeCredits("DXCC:CARD,WAZ", ""), "DXCC:CARD,WAZ");
}

TEST(ARecordAsText, GivesTheRecordBack) {
  const auto report = ReadReportFile(SourceDir() / "tests/data/conferme/lotw.adi");
  for (const ReportRecord& record : report->records) {
    auto back = RecordOfText(TextOfRecord(record));
    ASSERT_TRUE(back);
    back->line = record.line;
    EXPECT_EQ(*back, record);
  }
  EXPECT_FALSE(RecordOfText("LoTW\tprova"));
  EXPECT_FALSE(RecordOfText(""));
}

}  // namespace
}  // namespace brenvo::conferme
