#include "adif/record_origin.h"

#include <fmt/format.h>

#include "adif/missing_bands.h"
#include "adif/names_told.h"
#include "base/text.h"
#include "base/uuid.h"
#include "core/contact_origin.h"
#include "core/stations.h"
#include "history/take_back.h"
#include "tests/adif/adif_station.h"

namespace brenvo::adif {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class RecordOriginTest : public AdifStation {
 protected:
  RecordOriginTest() { Exec("UPDATE [User] SET Call='IK3ABC',Provincia='VE'"); }
  static std::string Field(std::string_view name, std::string_view value) {
    return fmt::format("<{}:{}>{}", name, value.size(), value);
  }
  static std::string Record(const std::string& call, const std::string& more = "",
                            const std::string& hour = "10") {
    return Field("CALL", call) + "<QSO_DATE:8>20010203<TIME_ON:6>" + hour +
           "1500<BAND:2>2m<MODE:3>SSB" + more + "<EOR>\n";
  }
  ImportCounts ImportText(const std::string& text) { return Import(Write("in.adi", text)); }
  core::StationRow StationOf(std::int64_t qsoNr) {
    return *core::FindStation(session.Db, core::OriginOf(session.Db, qsoNr)->station);
  }
};

TEST_F(RecordOriginTest, ARecordThatNamesNoStationIsTheCurrentOnes) {
  ImportText(Record("DL1ABC"));
  EXPECT_EQ(StationOf(1).Call, "IK3ABC");
  EXPECT_EQ(StationOf(1).Tipo, "Casa");
}

TEST_F(RecordOriginTest, ARecordBringsItsStation) {
  ImportText(Record("DL1ABC", Field("STATION_CALLSIGN", "IQ3AB") + Field("OPERATOR", "ik3abc") +
                                  Field("MY_GRIDSQUARE", "JN55xx") + Field("MY_DXCC", "248") +
                                  Field("MY_STATE", "PD") + Field("MY_RIG", "IC-9700") +
                                  Field("MY_ANTENNA", "Yagi") + Field("MY_ALTITUDE", "1774.6")));
  const core::StationRow station = StationOf(1);
  EXPECT_EQ(station.Call, "IQ3AB");
  EXPECT_EQ(station.Operatore, "IK3ABC");
  EXPECT_EQ(station.Locator, "JN55XX");
  EXPECT_EQ(station.Country, "I");
  EXPECT_EQ(station.Provincia, "PD");
  EXPECT_EQ(station.RTX, "IC-9700");
  EXPECT_EQ(station.Antenna, "Yagi");
  EXPECT_EQ(station.Altezza, 1775);
  EXPECT_EQ(station.Tipo, "Da file");
}

TEST_F(RecordOriginTest, RecordsOfOneStationShareItAndThoseOfTheOwnCallTheOwnOne) {
  const std::string hill = Field("STATION_CALLSIGN", "IK3ABC/P") + Field("MY_GRIDSQUARE", "JN55XX");
  ImportText(Record("DL1ABC", hill) + Record("DL2ABC", hill) +
             Record("DL3ABC", Field("STATION_CALLSIGN", "IK3ABC")) +
             Record("DL4ABC", Field("MY_GRIDSQUARE", "JN65AA")) +
             Record("DL5ABC", Field("MY_GRIDSQUARE", "JN45AA")));
  EXPECT_THAT(Rows("select Stazione from LogOrigine order by QsoNr"),
              ElementsAre("2", "2", "1", "1", "3"));
  EXPECT_EQ(StationOf(5).Call, "IK3ABC");
  EXPECT_EQ(StationOf(5).Locator, "JN45AA");
}

TEST_F(RecordOriginTest, AContactGoesOutWithItsStationAndItsName) {
  ImportText(Record("DL1ABC"));
  const std::string file = Export();
  EXPECT_THAT(file, HasSubstr("<STATION_CALLSIGN:6>IK3ABC"));
  EXPECT_THAT(file, HasSubstr("<MY_GRIDSQUARE:6>JN65AA"));
  EXPECT_THAT(file, HasSubstr("<MY_DXCC:3>248"));
  EXPECT_THAT(file, HasSubstr("<MY_STATE:2>VE"));
  EXPECT_THAT(file, Not(HasSubstr("<OPERATOR:")));
  EXPECT_THAT(file, HasSubstr("<APP_BRENVO_UUID:36>" + core::OriginOf(session.Db, 1)->uuid));
}

TEST_F(RecordOriginTest, WhatTheFileSaidOfTheStationGoesOutInItsWords) {
  ImportText(Record("DL1ABC", Field("STATION_CALLSIGN", "iq3ab") + Field("MY_STATE", "zz9")));
  const std::string file = Export();
  EXPECT_THAT(file, HasSubstr("<STATION_CALLSIGN:5>iq3ab"));
  EXPECT_THAT(file, HasSubstr("<MY_STATE:3>zz9"));
  EXPECT_THAT(file, Not(HasSubstr("IQ3AB")));
}

TEST_F(RecordOriginTest, ALogThatComesAgainHasItsNamesAndStations) {
  ImportText(Record("DL1ABC", Field("STATION_CALLSIGN", "IQ3AB")) + Record("DL2ABC"));
  const std::string file = Export();
  const Texts names = Rows("select Uuid,Stazione from LogOrigine order by QsoNr");
  EmptyTheLog();
  Exec("DELETE * FROM LogOrigine");
  ImportText(file);
  EXPECT_EQ(Rows("select Uuid,Stazione from LogOrigine order by QsoNr"), names);
  EXPECT_EQ(Export(), file);
}

TEST_F(RecordOriginTest, ANameThatAnotherContactHasIsNotGivenTwice) {
  ImportText(Record("DL1ABC"));
  const std::string uuid = core::OriginOf(session.Db, 1)->uuid;
  ImportText(Record("DL2ABC", Field("APP_BRENVO_UUID", uuid)) +
             Record("DL3ABC", Field("APP_BRENVO_UUID", "nessuno")));
  EXPECT_THAT(Rows("select Uuid from LogOrigine group by Uuid"), SizeIs(3));
  EXPECT_NE(core::OriginOf(session.Db, 2)->uuid, uuid);
}

TEST_F(RecordOriginTest, OfTwoRecordsOfOneNameTheSecondGetsAnother) {
  const std::string uuid = "0190c0de-0000-7000-8000-00000000aB01";
  ImportText(Record("DL1ABC", Field("APP_BRENVO_UUID", uuid)) +
             Record("DL2ABC", Field("APP_BRENVO_UUID", uuid)));
  EXPECT_EQ(core::OriginOf(session.Db, 1)->uuid, "0190c0de-0000-7000-8000-00000000ab01");
  EXPECT_THAT(Rows("select Uuid from LogOrigine group by Uuid"), SizeIs(2));
}

TEST(NamesTold, HoldsEachNameHoweverManyThereAreInLargeOrSmallLetters) {
  NamesTold names;
  std::vector<std::string> all;
  for (int i = 0; i < 5000; ++i) all.push_back(base::NameUuid(std::to_string(i)));
  for (const std::string& name : all) EXPECT_TRUE(names.Add(name));
  for (const std::string& name : all) EXPECT_FALSE(names.Add(base::UpperAscii(name)));
  EXPECT_TRUE(names.Add("00000000-0000-0000-0000-000000000000"));
  EXPECT_FALSE(names.Add("00000000-0000-0000-0000-000000000000"));
}

TEST_F(RecordOriginTest, AnImportIsTakenBackWithAllThatItCompleted) {
  ImportText(Record("DL1ABC"));
  const Texts before = Rows("select * from Log");
  Import(Write("in.adi", Record("DL1ABC", Field("NAME", "Hans") + Field("IOTA", "EU-001")) +
                             Record("DL2ABC")),
         {{}, true});
  ASSERT_THAT(Rows("select Valore from LogAdif where Campo='IOTA'"), ElementsAre("EU-001"));
  const auto work = history::LastWork(session).value();
  EXPECT_EQ(work.Titolo, "Importa ADIF: in.adi");
  EXPECT_EQ(history::TakeBack(session, work).taken, 2);
  EXPECT_EQ(Rows("select * from Log"), before);
  EXPECT_THAT(Rows("select Valore from LogAdif where Campo='IOTA'"), IsEmpty());
}

TEST_F(RecordOriginTest, AStoppedImportLeavesNoStation) {
  std::string text;
  for (int i = 0; i < 600; ++i) {
    text += Record(fmt::format("DL{}ABC", i), Field("STATION_CALLSIGN", "IQ3AB"),
                   fmt::format("{:02}", i % 24));
  }
  EXPECT_TRUE(ImportStoppedAt(Write("in.adi", text), 2));
  EXPECT_THAT(Rows("select * from Stazioni where Call='IQ3AB'"), IsEmpty());
}

TEST_F(RecordOriginTest, BandsThatTheProfileLacksAreFoundAndGivenTheirRows) {
  const ImportCounts counts = ImportText(
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>101500<BAND:2>4m<MODE:2>CW<EOR>\n"
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>101600<BAND:2>8m<MODE:2>CW<EOR>\n"
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>101700<BAND:6>1.25cm<MODE:2>CW<EOR>\n"
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>101800<FREQ:5>47088<MODE:2>CW<EOR>\n"
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>101900<BAND:5>QO100<MODE:2>CW<EOR>\n"
      "<CALL:6>DL1ABC<QSO_DATE:8>20010203<TIME_ON:6>102000<BAND:2>2m<MODE:2>CW<EOR>\n");
  EXPECT_EQ(Told(counts), "6 = 6 + 0 + 0");
  EXPECT_THAT(Rows("select Banda from Log order by QsoNr"),
              ElementsAre("  4 m", "  8 m", "1.25cm", "6mm", "QO100", "  2 m"));
  const auto missing = MissingBands(session, counts.bands);
  EXPECT_THAT(missing, SizeIs(5));
  machine.Messages().QueueAnswer(true);
  OfferBands(session, "Importa ADIF", missing);
  EXPECT_THAT(Lines(),
              ElementsAre(HasSubstr("mancano bande dei contatti importati: 4 m, 8 m, 1.25cm, 6mm, "
                                    "QO100.")));
  EXPECT_THAT(MissingBands(session, counts.bands), IsEmpty());
  EXPECT_THAT(Rows("select Frequenza,FrequenzaI,FrequenzaF from UserRTX where Banda='  4 m'"),
              ElementsAre("70|70000|71000"));
  EXPECT_THAT(Rows("select Frequenza from UserRTX where Banda='QO100'"), ElementsAre("0"));
}

TEST_F(RecordOriginTest, BandsThatTheOperatorDoesNotWantLeaveTheProfileAlone) {
  machine.Messages().QueueAnswer(false);
  OfferBands(session, "Importa ADIF", {"  4 m"});
  OfferBands(session, "Importa ADIF", {});
  EXPECT_THAT(Rows("select * from UserRTX where Banda='  4 m'"), IsEmpty());
  EXPECT_THAT(Lines(), SizeIs(1));
}

}  // namespace
}  // namespace brenvo::adif
