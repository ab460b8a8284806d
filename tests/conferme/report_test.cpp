#include "conferme/report.h"

#include <gmock/gmock.h>

#include "tests/conferme/reports.h"
#include "tests/support/places.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

std::filesystem::path SampleReport(std::string_view name) {
  return SourceDir() / "tests/data/conferme" / name;
}

std::string Escaped(const std::string& text) {
  std::string escaped;
  for (const char c : text) {
    escaped += c == '<' ? "&lt;" : c == '>' ? "&gt;" : c == '&' ? "&amp;" : std::string(1, c);
  }
  return escaped;
}

const std::string kQrzLog = RecordOf({{"call", "CT7AAA"},
                                      {"band", "20m"},
                                      {"mode", "FT8"},
                                      {"qso_date", "20010101"},
                                      {"time_on", "2214"},
                                      {"app_qrzlog_status", "C"},
                                      {"app_qrzlog_logid", "123"},
                                      {"app_qrzlog_qsldate", "20010105"},
                                      {"comment", "R&D <73>"}}) +
                            RecordOf({{"call", "W1BBB"},
                                      {"band", "40m"},
                                      {"mode", "CW"},
                                      {"qso_date", "20010102"},
                                      {"time_on", "0100"},
                                      {"app_qrzlog_status", "N"},
                                      {"app_qrzlog_logid", "124"}});

TEST(AReport, OfLotwIsReadWithItsRemarksBetweenTheFields) {
  const auto report = ReadReportFile(SampleReport("lotw.adi"));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->kind, ReportKind::kLotw);
  EXPECT_EQ(report->read, 7);
  EXPECT_EQ(report->faulty, 0);
  EXPECT_EQ(report->lastConfirmed, "2026-08-01 10:00:00");
  ASSERT_EQ(report->records.size(), 7U);
  const ReportRecord& first = report->records[0];
  EXPECT_EQ(first.call, "CT7AAA");
  EXPECT_EQ(first.ownCall, "IK0XYZ");
  EXPECT_EQ(first.band, "20m");
  EXPECT_EQ(first.mode, "FT8");
  EXPECT_EQ(first.when, base::DateTime::Of(2026, 7, 4, 22, 14, 0));
  EXPECT_TRUE(first.hasSeconds);
  EXPECT_EQ(first.day, base::DateTime::Of(2026, 8, 1));
  EXPECT_EQ(first.locator, "IM57VF");
  EXPECT_EQ(first.zoneCq, 14);
  EXPECT_EQ(first.inferred, "CQ");
  EXPECT_EQ(first.dxcc, 272);
  EXPECT_EQ(report->records[2].state, "CT");
  EXPECT_EQ(report->records[2].partnerMode, "FT4");
  EXPECT_TRUE(report->records[4].bySatellite);
  EXPECT_EQ(report->records[4].satellite, "SO-50");
  EXPECT_EQ(report->records[5].credits, "DXCC:LOTW,DXCC_BAND:LOTW,DXCC_MODE:LOTW");
}

TEST(AReport, OfLotwTellsContactsThatNobodyHasConfirmedApart) {
  const Report report =
      ReportOf(LotwReport({LotwRecord("CT7AAA", "20M", "FT8", "20010101", "221400"),
                           RecordOf({{"CALL", "W1BBB"},
                                     {"BAND", "40M"},
                                     {"MODE", "CW"},
                                     {"QSO_DATE", "20010101"},
                                     {"TIME_ON", "010000"},
                                     {"QSL_RCVD", "N"},
                                     {"GRIDSQUARE", "JN65AA"}})}));
  ASSERT_EQ(report.records.size(), 2U);
  EXPECT_TRUE(report.records[0].confirmed);
  EXPECT_FALSE(report.records[1].confirmed);
  EXPECT_EQ(report.records[1].locator, "");
}

TEST(AReport, OfEqslHasTimesWithoutSecondsAndNoDay) {
  const auto report = ReadReportFile(SampleReport("eqsl.adi"));
  ASSERT_TRUE(report);
  EXPECT_EQ(report->kind, ReportKind::kEqsl);
  ASSERT_EQ(report->records.size(), 3U);
  EXPECT_EQ(report->records[0].service, Service::kEqsl);
  EXPECT_TRUE(report->records[0].authentic);
  EXPECT_FALSE(report->records[0].hasSeconds);
  EXPECT_FALSE(report->records[0].day);
  EXPECT_EQ(report->records[1].submode, "FT4");
}

TEST(AReport, OfEqslLeavesListenersOut) {
  const Report report = ReportOf("Received eQSLs\r\n<PROGRAMID:21>eQSL.cc DownloadInBox<EOH>\r\n" +
                                 RecordOf({{"CALL", "I1234"},
                                           {"BAND", "20M"},
                                           {"MODE", "SSB"},
                                           {"QSO_DATE", "20010101"},
                                           {"TIME_ON", "1000"},
                                           {"APP_EQSL_SWL", "Y"}}));
  EXPECT_THAT(report.records, IsEmpty());
  EXPECT_EQ(report.silent, 1);
}

TEST(AReport, OfQrzIsReadAsAFileAndAsTheEscapedAnswer) {
  for (const std::string& text :
       {kQrzLog, "RESULT=OK&COUNT=2&ADIF=" + Escaped(kQrzLog),
        "COUNT=2&ADIF=" + Escaped(kQrzLog) + "&LOGIDS=123,124&RESULT=OK\n"}) {
    SCOPED_TRACE(text);
    const Report report = ReportOf(text);
    EXPECT_EQ(report.kind, ReportKind::kQrz);
    EXPECT_EQ(report.read, 2);
    EXPECT_EQ(report.silent, 1);
    ASSERT_EQ(report.records.size(), 1U);
    EXPECT_EQ(report.records[0].id, "LOGID 123");
    EXPECT_EQ(report.records[0].service, Service::kQrz);
    EXPECT_EQ(report.records[0].day, base::DateTime::Of(2001, 1, 5));
  }
}

TEST(AReport, OfQrzIsUnescapedWhereverTheBytesAreCut) {
  const std::string text = "RESULT=OK&COUNT=2&ADIF=" + Escaped(kQrzLog);
  for (const std::size_t piece : {1U, 2U, 3U, 7U}) {
    std::size_t at = 0;
    const auto report = ReadReport([&](char* buffer, std::size_t size) {
      const std::size_t got = std::min({size, piece, text.size() - at});
      std::copy_n(text.data() + at, got, buffer);
      at += got;
      return got;
    });
    EXPECT_EQ(report->records.size(), 1U) << piece;
  }
}

TEST(AReport, OfQrzThatIsARefusalSaysWhy) {
  EXPECT_EQ(RefusalOf("RESULT=FAIL&REASON=no such book"),
            "QRZ ha risposto con un errore: no such book; nulla è cambiato");
  EXPECT_EQ(RefusalOf("STATUS=AUTH&EXTENDED="),
            "QRZ non ha accettato la chiave del logbook; nulla è cambiato");
  EXPECT_EQ(RefusalOf("RESULT=OK&COUNT=3&ADIF=" + Escaped(kQrzLog)),
            "Il logbook QRZ dice di avere 3 record e ne ha 2: non è intero; nulla è cambiato");
  EXPECT_EQ(RefusalOf("RESULT=OK&COUNT=2"),
            "La risposta di QRZ non ha contatti (manca ADIF=); nulla è cambiato");
  EXPECT_EQ(RefusalOf("RESULT=OK&COUNT=0"), "");
}

TEST(AReport, OfClubLogIsReadWithNamesAndWithout) {
  const Report report =
      ReportOf(R"([["CT7AAA","272","2001-01-01 22:14:00","20","FT8"],)"
               R"({"call":"W1BBB","date":"2001-01-02 01:00:00","band":"40m","mode":"CW"}, 7])");
  EXPECT_EQ(report.kind, ReportKind::kClubLog);
  ASSERT_EQ(report.records.size(), 2U);
  EXPECT_EQ(report.records[0].call, "CT7AAA");
  EXPECT_EQ(report.records[0].band, "20m");
  EXPECT_EQ(report.records[0].mode, "FT8");
  EXPECT_EQ(report.records[1].when, base::DateTime::Of(2001, 1, 2, 1, 0, 0));
  EXPECT_THAT(report.faults, ElementsAre("riga 3: non è un riscontro"));
  EXPECT_EQ(RefusalOf(R"([["CT7AAA","2001-01-01)"),
            "Il file di Club Log non è JSON intero; nulla è cambiato");
}

TEST(AReport, OfAnyLogFileTellsEachServiceThatHasConfirmed) {
  const Report report = ReportOf("<EOH>" + RecordOf({{"CALL", "CT7AAA"},
                                                     {"BAND", "20M"},
                                                     {"MODE", "FT8"},
                                                     {"QSO_DATE", "20010101"},
                                                     {"TIME_ON", "221400"},
                                                     {"LOTW_QSL_RCVD", "V"},
                                                     {"EQSL_QSL_RCVD", "Y"},
                                                     {"EQSL_QSLRDATE", "20010110"},
                                                     {"GRIDSQUARE", "JN65AA"}}));
  EXPECT_EQ(report.kind, ReportKind::kAdif);
  ASSERT_EQ(report.records.size(), 2U);
  EXPECT_EQ(report.records[0].service, Service::kLotw);
  EXPECT_EQ(report.records[1].service, Service::kEqsl);
  EXPECT_EQ(report.records[1].day, base::DateTime::Of(2001, 1, 10));
  // What another program's log says of a place is no word of the partner's.
  EXPECT_EQ(report.records[0].locator, "");
}

TEST(AReport, OfCreditsHasThemWithoutATimeAndWithoutADay) {
  const Report report =
      ReportOf("<PROGRAMID:17>LoTW qslcards.php<EOH>" +
               RecordOf({{"CALL", "CT7AAA"},
                         {"BAND", "20M"},
                         {"MODE", "CW"},
                         {"QSO_DATE", "19790101"},
                         {"DXCC", "272"},
                         {"CREDIT_GRANTED", "DXCC:CARD,DXCC_BAND:CARD"}}) +
               RecordOf({{"CALL", "ZS1AB"}, {"DXCC", "462"}, {"CREDIT_GRANTED", "DXCC:CARD"}}));
  EXPECT_EQ(report.kind, ReportKind::kLotwCredits);
  ASSERT_EQ(report.records.size(), 2U);
  EXPECT_TRUE(report.records[0].credit);
  EXPECT_FALSE(report.records[0].hasTime);
  EXPECT_FALSE(report.records[1].hasDay);
}

TEST(AReport, ThatWasCutShortIsRefusedWhereverItWasCut) {
  std::vector<std::string> records;
  for (int i = 0; i < 5; ++i) {
    records.push_back(LotwRecord(fmt::format("CT{}AAA", i), "20M", "CW", "20010101", "101500"));
  }
  const std::string whole = LotwReport(records);
  ASSERT_EQ(RefusalOf(whole), "");
  const std::size_t mark = whole.find("<APP_LoTW_EOF>");
  for (std::size_t cut = whole.find("<eoh>") + 5; cut < mark + 5; cut += 7) {
    EXPECT_THAT(RefusalOf(whole.substr(0, cut)), HasSubstr("è troncato")) << cut;
  }
}

TEST(AReport, ThatDoesNotHoldAsManyRecordsAsItSaysIsRefused) {
  std::string text = LotwReport({LotwRecord("CT7AAA", "20M", "CW", "20010101", "101500")});
  text.replace(text.find("NUMREC:1>1"), 10, "NUMREC:1>2");
  EXPECT_EQ(RefusalOf(text),
            "Il rapporto LoTW dice di avere 2 record e ne ha 1: non è intero; nulla è cambiato");
}

TEST(AReport, ThatIsAPageOrAnotherFileIsRefusedInWords) {
  EXPECT_THAT(RefusalOf("<!DOCTYPE html><html><body>Sorry"), HasSubstr("è una pagina HTML"));
  EXPECT_EQ(RefusalOf("<html>Username/password incorrect</html>"),
            "LoTW non ha accettato nome o parola d'ordine; nulla è cambiato");
  EXPECT_EQ(RefusalOf("<HTML>Error: No such Username/Password found"),
            "eQSL non ha accettato nome o parola d'ordine; nulla è cambiato");
  EXPECT_EQ(RefusalOf(""), "Il file è vuoto; nulla è cambiato");
  EXPECT_THAT(RefusalOf("solo parole"), HasSubstr("nulla è cambiato"));
  EXPECT_THAT(RefusalOf("<?xml version=\"1.0\"?><ADX></ADX>"), HasSubstr("Non è un rapporto"));
}

TEST(AReport, PassesOverRecordsThatCannotBeUnderstoodAndTellsTheirLines) {
  const Report report = ReportOf(LotwReport(
      {RecordOf({{"CALL", "C T"},
                 {"BAND", "20M"},
                 {"MODE", "CW"},
                 {"QSO_DATE", "20010101"},
                 {"TIME_ON", "1015"},
                 {"QSL_RCVD", "Y"}}),
       RecordOf({{"CALL", "CT7AAA"}, {"BAND", "20M"}, {"MODE", "CW"}, {"QSL_RCVD", "Y"}}),
       LotwRecord("W1BBB", "40M", "CW", "20010101", "101500")}));
  EXPECT_EQ(report.records.size(), 1U);
  EXPECT_EQ(report.faulty, 2);
  EXPECT_THAT(report.faults, ElementsAre("riga 6: \"C T\" non è un nominativo",
                                         "riga 14: CT7AAA senza data e ora"));
}

TEST(AReport, TakesARecordOnceHoweverOftenItStandsThere) {
  const std::string record = LotwRecord("CT7AAA", "20M", "CW", "20010101", "101500");
  const Report report = ReportOf(LotwReport({record, record, record}));
  EXPECT_EQ(report.records.size(), 1U);
  EXPECT_EQ(report.repeated, 2);
}

TEST(AReport, OfRubbishTakesNoMoreMemoryThanItsRecords) {
  constexpr std::size_t kSize = std::size_t{40} << 20;
  std::size_t given = 0;
  const auto source = [&](char* buffer, std::size_t size) {
    const std::size_t got = std::min(size, kSize - given);
    std::fill_n(buffer, got, 'x');
    if (given == 0) std::copy_n("<CALL:6>CT7AAA", 14, buffer);
    given += got;
    return got;
  };
  EXPECT_THROW(ReadReport(source), ReportError);
}

TEST(AReport, IsLeftWhenTheOperatorStops) {
  std::string text = "<EOH>";
  for (int i = 0; i < 1000; ++i) text += "<CALL:6>CT7AAA<EOR>";
  EXPECT_FALSE(ReadReport(SourceOf(text), [](std::int64_t) { return false; }));
}

}  // namespace
}  // namespace brenvo::conferme
