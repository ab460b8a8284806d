#include "adif/adif_import.h"

#include <fmt/format.h>

#include "history/take_back.h"
#include "tests/adif/adif_station.h"
#include "tests/support/adif_samples.h"
#include "tests/support/integrity.h"
#include "upkeep/maintenance.h"

namespace brenvo::adif {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

class AdifImportTest : public AdifStation {};

std::string Record(std::initializer_list<std::pair<std::string_view, std::string_view>> fields) {
  std::string record;
  for (const auto& [name, value] : fields) record += Tagged(name, value);
  return record + "<EOR>\n";
}

// A record that can be stored, with further fields.
std::string Contact(std::initializer_list<std::pair<std::string_view, std::string_view>> fields) {
  return Tagged("CALL", "IK3ABC") + Tagged("QSO_DATE", "20010203") + Tagged("TIME_ON", "1015") +
         Record(fields);
}

struct Sampled {
  const char* file;
  const char* counts;  // read = fresh + repeated + refused
};

TEST_F(AdifImportTest, EveryRecordOfEverySampleIsAccountedFor) {
  const Sampled kSamples[] = {{"wsjtx.adi", "3 = 3 + 0 + 0"},    {"n1mm.adi", "3 = 3 + 0 + 0"},
                              {"lotw.adi", "2 = 2 + 0 + 0"},     {"eqsl.adi", "2 = 2 + 0 + 0"},
                              {"log4om.adi", "3 = 2 + 0 + 1"},   {"hrd.adi", "3 = 3 + 0 + 0"},
                              {"logger32.adi", "6 = 2 + 0 + 4"}, {"damaged.adi", "6 = 5 + 0 + 1"},
                              {"standard.adi", "2 = 2 + 0 + 0"}};
  for (const auto& [file, counts] : kSamples) {
    EmptyTheLog();
    EXPECT_EQ(AdifStation::Told(Preview(Sample(file)).counts), counts) << file;
    EXPECT_EQ(AdifStation::Told(Import(Sample(file))), counts) << file << Report;
    EXPECT_EQ(Import(Sample(file)).fresh, 0) << file << ": a second import stores nothing";
  }
}

TEST_F(AdifImportTest, ADigitalProgramsRecordsFillTheLog) {
  Import(Sample("wsjtx.adi"));
  EXPECT_THAT(
      Rows("Select DataQso,Call,Banda,Frequenza,Modo,QrkDato,QrkRicevuto,Locator,Qrb,Prefisso,"
           "Country,[Zona CQ],[Zona ITU],Continente,Potenza,Propagazione from Log order by QsoNr"),
      ElementsAre(
          "15/01/2023 18:10:30|K1ABC| 20 m|14.075123|FT8|-10|-07|FN42|6358|K1|K|5|8|NA|50|",
          "15/01/2023 18:12:00|JA1DEF| 15 m|21.1409|FT4|+02|-15||0|JA1|JA|25|45|AS|0|",
          "12/08/2023 03:59:45|DL5XY|  6 m|50.26|MSK144|+04|+06|JO31AA|802|DL5|DL|14|28|EU|0|"
          "Meteor Scatter"));
  EXPECT_THAT(Kept("K1ABC"), Contains("MY_GRIDSQUARE|JN65AA"));
}

TEST_F(AdifImportTest, SecondsThatAFileTellsKeepItsContactsApart) {
  Import(Sample("n1mm.adi"));
  EXPECT_THAT(
      Rows("Select DataQso,Call,Banda,Modo,[Zona CQ] from Log order by QsoNr"),
      ElementsAre("26/11/2022 00:01:03|DL5XYZ| 20 m|CW|14", "26/11/2022 00:01:41|K1TT| 40 m|CW|5",
                  "26/11/2022 00:01:55|K1TT| 40 m|CW|5"));
  EXPECT_THAT(Kept("DL5XYZ"), Contains("STX|1"));
}

TEST_F(AdifImportTest, RemarksBehindValuesAndTheEndMarkOfAConfirmationsReportCountForNothing) {
  Import(Sample("lotw.adi"));
  EXPECT_THAT(Rows("Select Call,Country,Provincia,Locator,[Zona CQ],[Zona ITU],QslRicevuta from "
                   "Log order by QsoNr"),
              ElementsAre("W1AW4|K|CT|FN31|5|8|-1", "VK9NS|VK9N|||32|60|-1"));
}

TEST_F(AdifImportTest, AMessageThatHoldsTagsIsKeptWhole) {
  Import(Sample("eqsl.adi"));
  EXPECT_THAT(Kept("EA5AB"), Contains("QSLMSG|73 de EA5AB <eor> <call:5>XXXXX bye"));
  EXPECT_THAT(Rows("Select Call,Modo,QrkDato,QrkRicevuto from Log order by QsoNr"),
              ElementsAre("EA5AB|PSK31|599|", "9A2ABC|FM|59|"));
}

TEST_F(AdifImportTest, Utf8WithLengthsInCharactersIsRead) {
  Import(Sample("log4om.adi"));
  EXPECT_THAT(Rows("Select Call,Qra,Qth,Locator,Provincia,Note,QslDaInviare,Modo from Log order by "
                   "QsoNr"),
              ElementsAre("IK3ABC|Nicolò|Forlì è città|JN65FR12|PD|Prima riga seconda riga|-1|SSB",
                          "OE3XX|Jürgen||||Grüße aus Wien, ò à è|0|USB"));
  EXPECT_THAT(Kept("IK3ABC"), Contains("LOCAL_CLUB|Città"));
  EXPECT_THAT(Kept("IK3ABC"), Contains("NOTES|Prima riga\r\nseconda riga"));
  EXPECT_THAT(Report, HasSubstr("nominativo non valido: OE3ÄX"));
}

TEST_F(AdifImportTest, ASatelliteBecomesItsShorthandAndItsWordsStayBeside) {
  Import(Sample("hrd.adi"));
  EXPECT_THAT(Rows("Select Call,Modo,Propagazione,Note,Qra,Potenza,Qrb from Log order by QsoNr"),
              ElementsAre("G4ABC|Satellite|Satellite|[AO-7/UV/USB]|André|13|1152",
                          "F6ABC|PSK31|||Hélène|0|612", "F6ABD|Olivia||||0|0"));
  EXPECT_THAT(Kept("G4ABC"), Contains("SAT_MODE|U/V"));
  EXPECT_THAT(Kept("G4ABC"), Contains("COMMENT|buon segnale"));
  EXPECT_THAT(Kept("G4ABC"), Contains("TX_PWR|12.5"));
  EXPECT_THAT(Kept("F6ABD"), Contains("SUBMODE|OLIVIA 8/250"));
}

TEST_F(AdifImportTest, EachRefusalStandsInTheReportWithLineTextAndReason) {
  Import(Sample("logger32.adi"));
  EXPECT_EQ(Report,
            "Riga 2: data non valida: 19991332\r\n"
            "<Call:6>IK1ZZZ<Qso_Date:8>19991332<Time_On:4>1745<Band:3>80m<Mode:3>LSB<eor>\r\n\r\n"
            "Riga 3: ora non valida: 2560\r\n"
            "<Call:6>IK1ZZZ<Qso_Date:8>19991231<Time_On:4>2560<Band:3>80m<Mode:3>LSB<eor>\r\n\r\n"
            "Riga 4: manca il nominativo (CALL)\r\n"
            "<Qso_Date:8>19991231<Time_On:4>2359<Band:3>80m<Mode:3>LSB<eor>\r\n\r\n"
            "Riga 5: manca la data (QSO_DATE)\r\n"
            "<Call:6>IK1ZZZ<Time_On:4>2359<Band:3>80m<Mode:3>LSB<eor>\r\n\r\n"
            "Record letti: 6\r\nImportati: 2\r\nRipetuti: 0 (completati: 0)\r\nRifiutati: 4\r\n");
  EXPECT_THAT(Rows("Select DataQso,Call,Banda,Frequenza,Modo,Potenza,Provincia from Log order by "
                   "QsoNr"),
              ElementsAre("12/03/1999 17:45:00|IZ2AB| 80 m|3.7|LSB|100|MI",
                          "31/12/1999|IK1ZZZ| 80 m|3.79|LSB|0|"));
}

TEST_F(AdifImportTest, OfADamagedFileAllThatIsWholeComesIn) {
  const ImportPreview preview = Preview(Sample("damaged.adi"));
  EXPECT_EQ(preview.damaged, 1);
  EXPECT_TRUE(preview.endsEarly);
  Import(Sample("damaged.adi"));
  EXPECT_THAT(Rows("Select Call from Log order by QsoNr"),
              ElementsAre("IK3AAA", "IK3BBB", "IK3CCC", "IK3DDD", "IK3EEE"));
}

TEST_F(AdifImportTest, EachRepairedFieldIsToldWithWhatWasToldAndWhatWasRead) {
  const std::string text =
      "<ADIF_VER:4>3.0.4 <EOH>\n"
      "<CALL:5>I3AAA<QSO_DATE:8>20010203<TIME_ON:4>1015<BAND:2>2m<MODE:3>SSB<COMMENT:9> 54\n"
      "<PROP_MODE:2>SAT<EOR>\n"
      "<CALL:5>I3BBB<QSO_DATE:6>20010203<TIME_ON:6>1016<BAND:1>20m<MODE:9>CW"
      "<ADDRESS:2>Via Roma\n12<EOR>\n"
      "<CALL:5>I3CCC<QSO_DATE:8>20010203<TIME_ON:4>1017<EOR>\n";
  const auto file = Write("a.adi", text);
  const ImportPreview preview = Preview(file);
  EXPECT_EQ(AdifStation::Told(preview.counts), "3 = 3 + 0 + 0");
  EXPECT_EQ(preview.counts.repairs, 7);
  EXPECT_EQ(preview.damaged, 0);
  Texts told;
  for (const RepairedField& each : preview.firstRepairs) {
    told.push_back(std::to_string(each.line) + " " + each.call + " " + each.name + " " +
                   std::to_string(each.told) + " " + std::to_string(each.read) + " " + each.text);
  }
  EXPECT_THAT(told, ElementsAre("2 I3AAA COMMENT 9 3 54", "2 I3AAA PROP_MODE 2 3 SAT",
                                "4 I3BBB QSO_DATE 6 8 20010203", "4 I3BBB TIME_ON 6 4 1016",
                                "4 I3BBB BAND 1 3 20m", "4 I3BBB MODE 9 2 CW",
                                "4 I3BBB ADDRESS 2 11 Via Roma 12"));
  EXPECT_EQ(Import(file).repairs, 7);
  EXPECT_THAT(Report, HasSubstr("Riparato, riga 2, I3AAA: campo COMMENT, lunghezza detta 9, letta "
                                "3: 54\r\n\r\n"));
  EXPECT_THAT(Report, HasSubstr("Rifiutati: 0\r\nCampi riparati: 7\r\n"));
  EXPECT_THAT(Rows("Select DataQso,Call,Banda,Modo,Propagazione,Note from Log order by QsoNr"),
              ElementsAre("03/02/2001 10:15:00|I3AAA|  2 m|SSB|Satellite|54",
                          "03/02/2001 10:16:00|I3BBB| 20 m|CW||", "03/02/2001 10:17:00|I3CCC||||"));
}

TEST_F(AdifImportTest, OnlyWhatMakesAContactIsRefusedWhenItStaysUnreadable) {
  const std::string who = "<CALL:5>I3AAA<QSO_DATE:8>20010203<TIME_ON:4>1015";
  const struct {
    std::string record;
    const char* refusal;
  } kCases[] = {
      {"<CALL:1>I3 AAA<QSO_DATE:8>20010203<TIME_ON:4>1015", "nominativo non valido: I3 AAA"},
      {"<CALL:5>I3AAA<QSO_DATE:2>2001x", "data non valida: 2001x"},
      {"<CALL:5>I3AAA<QSO_DATE:8>20010203<TIME_ON:9>9999", "ora non valida: 9999"},
      {who + "<BAND:2>20mm", "il campo BAND non si legge: 20mm"},
      {who + "<FREQ:2>abc", "il campo FREQ non si legge: abc"},
      {who + "<MODE:1>SSB o CW", "il campo MODE non si legge: SSB o CW"},
      {who + "<MODE:9>", "il campo MODE non si legge: "},
      {who + "<BAND:2>20mm<FREQ:2>14.2", ""},
      {who + "<BAND:2>2m<FREQ:2>abc", ""},
      {who + "<MODE:1>OLIVIA 8/500", ""},
      {who + "<MODE:1>FONIA", ""},
      {who + "<GRIDSQUARE:1>xyz<CQZ:5>44<DXCC:9>abc<TX_PWR:1>abc<DISTANCE:1>abc", ""}};
  for (const auto& [record, refusal] : kCases) {
    const auto file = Write("a.adi", "<EOH>" + record + "<EOR>");
    EmptyTheLog();
    const bool refused = *refusal != '\0';
    EXPECT_EQ(AdifStation::Told(Preview(file).counts), refused ? "1 = 0 + 0 + 1" : "1 = 1 + 0 + 0");
    EXPECT_EQ(AdifStation::Told(Import(file)), refused ? "1 = 0 + 0 + 1" : "1 = 1 + 0 + 0");
    EXPECT_THAT(Report, HasSubstr(refusal));
  }
}

TEST_F(AdifImportTest, TheBandComesFromTheFrequencyAndTheFrequencyFromTheBand) {
  const struct {
    std::pair<std::string_view, std::string_view> field;
    const char* row;
  } kCases[] = {{{"BAND", "2m"}, "  2 m|144.3"},
                {{"BAND", "70CM"}, " 70cm|432.2"},
                {{"FREQ", "144.050"}, "  2 m|144.05"},
                {{"FREQ", "7.25"}, " 40 m|7.25"},
                {{"FREQ", "14,2"}, " 20 m|14.2"},
                {{"FREQ", "14074"}, " 20 m|14.074"},
                {{"BAND", "4m"}, "  4 m|70"},
                {{"BAND", "1.25m"}, "1.25m|222"},
                {{"FREQ", "99"}, "|99"},
                {{"NAME", "x"}, "|0"}};
  for (const auto& [field, row] : kCases) {
    EmptyTheLog();
    Import(Write("a.adi", Contact({field})));
    EXPECT_THAT(Rows("Select Banda,Frequenza from Log"), ElementsAre(row)) << field.second;
  }
}

TEST_F(AdifImportTest, ModesAreThoseOfTheStationsList) {
  const struct {
    const char *mode, *submode, *modo;
  } kCases[] = {{"SSB", "", "SSB"},
                {"SSB", "LSB", "LSB"},
                {"LSB", "", "LSB"},
                {"MFSK", "FT4", "FT4"},
                {"DIGITALVOICE", "DSTAR", "D-STAR"},
                {"DSTAR", "", "D-STAR"},
                {"HELL", "", "Hellschreiber"},
                {"TOR", "AMTORFEC", "Amtor"},
                {"OLIVIA", "OLIVIA 8/500", "Olivia"},
                {"PKT", "", "Packet"},
                {"fax", "", "Fax"},
                {"THOR", "THOR16", "THOR16"},
                {"PHONE", "", "PHONE"}};
  for (const auto& [mode, submode, modo] : kCases) {
    EmptyTheLog();
    Import(Write("a.adi", Contact({{"MODE", mode}, {"SUBMODE", submode}})));
    EXPECT_THAT(Rows("Select Modo from Log"), ElementsAre(modo)) << mode << submode;
  }
}

TEST_F(AdifImportTest, WhichFlagsCountAsAReceivedCardIsAChoice) {
  const std::string record =
      Contact({{"QSL_RCVD", "N"}, {"LOTW_QSL_RCVD", "Y"}, {"EQSL_QSL_RCVD", "N"}});
  const auto file = Write("a.adi", record);
  Import(file);
  EXPECT_THAT(Rows("Select QslRicevuta from Log"), ElementsAre("0"));
  EmptyTheLog();
  Import(file, {{true, true, false}, false});
  EXPECT_THAT(Rows("Select QslRicevuta from Log"), ElementsAre("-1"));
  EmptyTheLog();
  Import(file, {{true, false, true}, false});
  EXPECT_THAT(Rows("Select QslRicevuta from Log"), ElementsAre("0"));
}

TEST_F(AdifImportTest, WhereTheFileIsSilentThePrefixTableSpeaks) {
  Import(Write("a.adi", Contact({})));
  EXPECT_THAT(Rows("Select Prefisso,Country,[Zona CQ],[Zona ITU],Continente from Log"),
              ElementsAre("IK3|I|15|28|EU"));
  EmptyTheLog();
  Import(Write("a.adi", Contact({{"PFX", "I3"},
                                 {"DXCC", "225"},
                                 {"CQZ", "33"},
                                 {"ITUZ", "37"},
                                 {"CONT", "af"},
                                 {"STATE", "CA"}})));
  EXPECT_THAT(Rows("Select Prefisso,Country,[Zona CQ],[Zona ITU],Continente,Provincia from Log"),
              ElementsAre("I3|IS0|33|37|AF|CA"));
  EmptyTheLog();
  Import(Write("a.adi",
               Contact({{"CQZ", "41"}, {"ITUZ", "0"}, {"CONT", "XX"}, {"COUNTRY", "sardinia"}})));
  EXPECT_THAT(Rows("Select Country,[Zona CQ],[Zona ITU],Continente from Log"),
              ElementsAre("IS0|15|28|EU"));
  EmptyTheLog();
  Import(Write("a.adi", Contact({{"DXCC", "0"}})));
  EXPECT_THAT(Rows("Select Country from Log"), ElementsAre(""));
}

TEST_F(AdifImportTest, ZonesAndContinentAreThoseOfTheCountryThatTheFileTells) {
  const struct {
    std::string_view call, dxcc;
    const char* row;
  } kCases[] = {{"3Y0X", "199", "3Y/P|12|72|SA"}, {"K1B", "20", "KH1|31|61|OC"},
                {"KG4NEX", "105", "KG4|8|11|NA"}, {"K1B", "291", "K|5|8|NA"},
                {"3Y0X", "24", "3Y/B|38|67|AF"},  {"VE3AA/9", "291", "K|0|0|NA"},
                {"IK3ABC", "0", "|0|0|"},         {"IK3ABC", "999", "I|15|28|EU"},
                {"IK3ABC", "295", "HV|15|28|EU"}, {"VK9AA", "186", "VO/D|0|9|NA"}};
  for (const auto& [call, dxcc, row] : kCases) {
    EmptyTheLog();
    Import(Write("a.adi", Record({{"CALL", call}, {"QSO_DATE", "20010203"}, {"DXCC", dxcc}})));
    EXPECT_THAT(Rows("Select Country,[Zona CQ],[Zona ITU],Continente from Log"), ElementsAre(row))
        << call;
  }
  EmptyTheLog();
  Import(Write("a.adi", Record({{"CALL", "3Y0X"},
                                {"QSO_DATE", "20010203"},
                                {"DXCC", "199"},
                                {"CQZ", "13"},
                                {"CONT", "AN"}})));
  EXPECT_THAT(Rows("Select [Zona CQ],[Zona ITU],Continente from Log"), ElementsAre("13|72|AN"))
      << "what is told of them holds";
}

TEST_F(AdifImportTest, LocatorsOfFourSixAndEightCharactersAreStoredAsTheyAre) {
  const struct {
    const char *grid, *row;
  } kCases[] = {{"JN55", "JN55|96"},    {"io91AA", "IO91AA|1233"},
                {"JN65AA", "JN65AA|1"}, {"JN65AA12", "JN65AA12|1"},
                {"JN6", "|0"},          {"ZZ99", "|0"}};
  for (const auto& [grid, row] : kCases) {
    EmptyTheLog();
    Import(Write("a.adi", Contact({{"GRIDSQUARE", grid}})));
    EXPECT_THAT(Rows("Select Locator,Qrb from Log"), ElementsAre(row)) << grid;
  }
  EmptyTheLog();
  Import(Write("a.adi", Contact({{"GRIDSQUARE", "IO91AA"}, {"DISTANCE", "1300"}})));
  EXPECT_THAT(Rows("Select Qrb from Log"), ElementsAre("1300"));
}

TEST_F(AdifImportTest, AMissingTimeIsThatOfTheEndOrMidnight) {
  Import(Write("a.adi",
               Record({{"CALL", "I1A"}, {"QSO_DATE", "20010203"}, {"TIME_OFF", "1200"}}) +
                   Record({{"CALL", "I1B"}, {"QSO_DATE", "2001-02-03"}}) +
                   Record({{"CALL", "i1c/p"}, {"QSO_DATE", "20010203"}, {"TIME_ON", "930"}})));
  EXPECT_THAT(
      Rows("Select Call,DataQso from Log order by QsoNr"),
      ElementsAre("I1A|03/02/2001 12:00:00", "I1B|03/02/2001", "I1C/P|03/02/2001 09:30:00"));
}

TEST_F(AdifImportTest, AValueThatAColumnCannotHoldRefusesItsRecordAlone) {
  const std::pair<std::string_view, std::string_view> kTooLarge[] = {
      {"QSO_DATE", "00990101"},
      {"QSO_DATE", "00000101"},
      {"QSO_DATE", "0001-01-01"},
      {"DISTANCE", "9223372036854775807"},
      {"DISTANCE", "99999999999999999999999999"},
      {"TX_PWR", "9223372036854775808"},
      {"TX_PWR", "1e300"},
      {"APP_BRENVO_ZONACQ", "-9300000000000000000"},
      {"APP_BRENVO_ZONAITU", "1e30"},
      {"APP_BRENVO_QRB", "9223372036854775807"},
      {"APP_BRENVO_POTENZA", "-1e19"},
      {"APP_BRENVO_DATAQSO", "0050-02-03 10:15:00"}};
  for (const auto& [name, value] : kTooLarge) {
    SCOPED_TRACE(std::string(name) + " " + std::string(value));
    EmptyTheLog();
    const std::string first =
        name == "QSO_DATE" ? Record({{"CALL", "I3AAA"}, {name, value}}) : Contact({{name, value}});
    const auto file = Write("a.adi", first + Contact({{"BAND", "2m"}}) + Contact({{"BAND", "6m"}}));
    const ImportPreview preview = Preview(file);
    EXPECT_EQ(AdifStation::Told(preview.counts), "3 = 2 + 0 + 1");
    EXPECT_EQ(preview.reasons.size(), 1u);
    EXPECT_EQ(AdifStation::Told(Import(file)), "3 = 2 + 0 + 1");
    EXPECT_THAT(Report, testing::StartsWith("Riga 1: "));
  }
}

TEST_F(AdifImportTest, ValuesAtTheEdgeOfAColumnAreStored) {
  const ImportCounts counts =
      Import(Write("a.adi", Contact({{"DISTANCE", "9100000000000000000"}, {"TX_PWR", "0.4"}}) +
                                Record({{"CALL", "I3AAA"}, {"QSO_DATE", "01000101"}}) +
                                Record({{"CALL", "I3BBB"},
                                        {"QSO_DATE", "99991231"},
                                        {"TIME_ON", "235959"},
                                        {"FREQ", "1e300"}})));
  EXPECT_EQ(AdifStation::Told(counts), "3 = 3 + 0 + 0");
  EXPECT_THAT(
      Rows("Select Call,DataQso from Log order by QsoNr"),
      ElementsAre("IK3ABC|03/02/2001 10:15:00", "I3AAA|01/01/0100", "I3BBB|31/12/9999 23:59:59"));
  EXPECT_THAT(Export(), HasSubstr("<CALL:5>I3BBB "));
}

TEST_F(AdifImportTest, ARepeatedContactIsLeftAlone) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda,Qra) values "
      "('03/02/2001 10:15:00','IK3ABC','  2 m','MARIO')");
  const ImportCounts counts =
      Import(Write("a.adi", Contact({{"BAND", "2m"}, {"NAME", "Paolo"}, {"QTH", "Padova"}})));
  EXPECT_EQ(AdifStation::Told(counts), "1 = 0 + 1 + 0");
  EXPECT_THAT(Rows("Select Qra,Qth from Log"), ElementsAre("MARIO|"));
}

TEST_F(AdifImportTest, OfARepeatedContactTheEmptyColumnsAreFilledWhenTheOperatorSaysSo) {
  session.Db.Execute(
      "insert into Log (DataQso,Call,Banda,Qra,QslInviata) values "
      "('03/02/2001 10:15:00','IK3ABC','  2 m','MARIO',true)");
  const auto file = Write("a.adi", Contact({{"BAND", "2m"},
                                            {"TIME_ON", "101542"},
                                            {"NAME", "Paolo"},
                                            {"QTH", "Padova"},
                                            {"QSL_RCVD", "Y"},
                                            {"QSL_SENT", "R"},
                                            {"IOTA", "EU-025"}}));
  const ImportCounts counts = Import(file, {{}, true});
  EXPECT_EQ(AdifStation::Told(counts), "1 = 0 + 1 + 0");
  EXPECT_EQ(counts.completed, 1);
  EXPECT_THAT(Rows("Select Qra,Qth,QslRicevuta,QslDaInviare,QslInviata from Log"),
              ElementsAre("MARIO|Padova|-1|0|-1"));
  EXPECT_THAT(Kept("IK3ABC"), Contains("IOTA|EU-025"));
  EXPECT_EQ(Import(file, {{}, true}).completed, 0) << "there is nothing left to fill";
}

TEST_F(AdifImportTest, WithinAFileARepeatedContactIsFoundAtOnceAndFillsTheFirst) {
  const std::string text = Contact({{"BAND", "2m"}, {"NAME", "Paolo"}}) +
                           Contact({{"BAND", "20m"}}) +
                           Contact({{"BAND", "2m"},
                                    {"TIME_ON", "101559"},
                                    {"NAME", "Mario"},
                                    {"QTH", "Padova"},
                                    {"IOTA", "EU-025"}});
  const ImportCounts counts = Import(Write("a.adi", text), {{}, true});
  EXPECT_EQ(AdifStation::Told(counts), "3 = 2 + 1 + 0");
  EXPECT_EQ(counts.completed, 1);
  EXPECT_THAT(Rows("Select Banda,Qra,Qth from Log order by QsoNr"),
              ElementsAre("  2 m|Paolo|Padova", " 20 m||"));
  EXPECT_THAT(Rows("Select QsoNr,Campo,Valore from LogAdif where Campo='IOTA'"),
              ElementsAre("1|IOTA|EU-025"));
}

// As a confirmation service has them: every mode in the same full minute.
std::string ThreeModes(std::string_view time) {
  std::string text;
  for (const char* mode : {"HELL", "THRB", "OLIVIA"}) {
    text += Record({{"CALL", "I1ABC"},
                    {"QSO_DATE", "20010203"},
                    {"TIME_ON", time},
                    {"BAND", "20m"},
                    {"MODE", mode}});
  }
  return text;
}

TEST_F(AdifImportTest, ThreeModesInOneMinuteAreThreeContacts) {
  for (const auto& [time, seconds] : {std::pair("0234", 0), std::pair("023400", 0),
                                      std::pair("023430", 30), std::pair("023458", 58)}) {
    SCOPED_TRACE(time);
    EmptyTheLog();
    const auto file = Write("a.adi", ThreeModes(time));
    const ImportPreview preview = Preview(file);
    EXPECT_EQ(AdifStation::Told(preview.counts), "3 = 3 + 0 + 0");
    EXPECT_EQ(preview.counts.moved, 2);
    EXPECT_EQ(Import(file).moved, 2);
    const auto at = [first = seconds](int further) {
      return fmt::format("02:34:{:02}", (first + further) % 60);
    };
    EXPECT_THAT(Report, HasSubstr(fmt::format("Spostato, riga 2, I1ABC: alle {} c'è già un altro "
                                              "modo, salvato alle {}\r\n\r\n",
                                              at(0), at(1))));
    EXPECT_THAT(Report, HasSubstr("Spostati nel minuto: 2\r\n"));
    EXPECT_THAT(Rows("Select DataQso,Modo from Log order by QsoNr"),
                ElementsAre("03/02/2001 " + at(0) + "|Hellschreiber",
                            "03/02/2001 " + at(1) + "|THRB", "03/02/2001 " + at(2) + "|Olivia"));
    EXPECT_EQ(AdifStation::Told(Preview(file).counts), "3 = 0 + 3 + 0");
    EXPECT_EQ(AdifStation::Told(Import(file)), "3 = 0 + 3 + 0");
  }
}

TEST_F(AdifImportTest, WhereEitherSideTellsNoSecondsTheModeDecides) {
  Import(Write("a.adi", ThreeModes("0234")));
  EXPECT_EQ(Import(Write("b.adi", ThreeModes("023417"))).fresh, 0) << "the log told none";
  EmptyTheLog();
  Import(Write("b.adi", ThreeModes("023417")));
  EXPECT_EQ(Import(Write("a.adi", ThreeModes("0234"))).fresh, 0) << "the file tells none";
  EXPECT_EQ(Import(Write("c.adi", ThreeModes("023440"))).fresh, 3) << "both tell them";
}

TEST_F(AdifImportTest, AContactThatWasSentOnIsFilledWhereItStands) {
  Import(Write("a.adi", ThreeModes("0234")));
  const auto file = Write("b.adi", Record({{"CALL", "I1ABC"},
                                           {"QSO_DATE", "20010203"},
                                           {"TIME_ON", "023412"},
                                           {"BAND", "20m"},
                                           {"MODE", "OLIVIA"},
                                           {"NAME", "Mario"}}));
  EXPECT_EQ(Import(file, {{}, true}).completed, 1);
  EXPECT_THAT(Rows("Select Modo,Qra from Log order by QsoNr"),
              ElementsAre("Hellschreiber|", "THRB|", "Olivia|Mario"));
}

TEST_F(AdifImportTest, AMinuteThatIsFullRefusesWhatComesInThePreviewAlready) {
  std::string text;
  for (int i = 0; i < 62; ++i) text += Contact({{"MODE", "MODO" + std::to_string(i)}});
  const auto file = Write("a.adi", text);
  const ImportPreview preview = Preview(file);
  EXPECT_EQ(AdifStation::Told(preview.counts), "62 = 60 + 0 + 2");
  EXPECT_EQ(preview.reasons,
            (std::map<std::string, std::int64_t>{{"nel minuto non c'è più un secondo libero", 2}}));
  EXPECT_EQ(AdifStation::Told(Import(file)), "62 = 60 + 0 + 2");
  EXPECT_THAT(Report, HasSubstr("Riga 62: nel minuto non c'è più un secondo libero\r\n"));
}

TEST_F(AdifImportTest, BlanksBehindACallMakeNoOtherContact) {
  const std::string text = Contact({{"APP_BRENVO_CALL", "ik3abc\\u0020"}}) + Contact({});
  EXPECT_EQ(AdifStation::Told(Import(Write("a.adi", text))), "2 = 1 + 1 + 0");
  EXPECT_EQ(AdifStation::Told(Import(Write("a.adi", text))), "2 = 0 + 2 + 0");
  EXPECT_THAT(Rows("Select Call from Log"), ElementsAre("ik3abc "));
}

TEST_F(AdifImportTest, EachContactHasItsOwnKeptFieldsHoweverManyComeTogether) {
  std::string text;
  constexpr int kContacts = 700;
  for (int i = 0; i < kContacts; ++i) {
    std::string record = GeneratedRecord(i);
    record.insert(record.size() - std::string_view("<EOR>\r\n").size(),
                  Tagged("APP_N", GeneratedCall(i)) + Tagged("STX", std::to_string(i)));
    text += record;
  }
  Import(Write("a.adi", text));
  EXPECT_EQ(Count("select Count(*) from Log"), kContacts);
  const Texts calls = Rows("Select Call from Log order by QsoNr");
  const Texts kept = Rows("Select Valore from LogAdif where Campo='APP_N' order by QsoNr");
  EXPECT_EQ(kept, calls);
}

TEST_F(AdifImportTest, AnImportThatIsStoppedLeavesNothing) {
  std::string text;
  for (int i = 0; i < 1000; ++i) text += GeneratedRecord(i);
  const auto file = Write("a.adi", text);
  Import(Write("b.adi", GeneratedRecord(5000)));
  const Texts log = Rows("Select * from Log"), kept = Rows("Select * from LogAdif");
  for (const int stopAt : {1, 3, 4}) {
    EXPECT_TRUE(ImportStoppedAt(file, stopAt));
    EXPECT_EQ(Rows("Select * from Log"), log);
    EXPECT_EQ(Rows("Select * from LogAdif"), kept);
    EXPECT_FALSE(session.Db.InTransaction());
  }
  EXPECT_EQ(AdifStation::Told(Import(file)), "1000 = 1000 + 0 + 0");
}

TEST_F(AdifImportTest, IntoAnEmptyLogTheIndexesAreMadeBehindItAndCanBeStopped) {
  constexpr int kRecords = 1500;
  std::string text;
  for (int i = 0; i < kRecords; ++i) text += GeneratedRecord(i);
  const auto file = Write("many.adi", text);
  const auto search = [&] { return session.Db.QueryPlan("Select * from Log where Call='I1A'"); };
  // Asked after each 250 records, and then while the indexes are made.
  EXPECT_TRUE(ImportStoppedAt(file, kRecords / 250 + 1));
  EXPECT_THAT(Rows("select Count(*) from Log"), ElementsAre("0"));
  EXPECT_THAT(Rows("select Count(*) from LogOrigine"), ElementsAre("0"));
  EXPECT_THAT(search(), HasSubstr("Log.Call"));
  EXPECT_EQ(Import(file).fresh, kRecords);
  EXPECT_THAT(search(), HasSubstr("Log.Call"));
  EXPECT_THAT(Rows("select Count(*) from LogOrigine"), ElementsAre(std::to_string(kRecords)));
  session.CloseForCompaction();
  EXPECT_EQ(IntegrityOf(session.File("\\Brenvo.mdb")), "ok");
  session.ReopenAfterCompaction();
}

TEST_F(AdifImportTest, WhatIsKeptOfADeletedContactGoesWithTheCompaction) {
  Import(Sample("standard.adi"));
  session.Db.Execute("delete * from Log where QsoNr=1");
  EXPECT_THAT(Export(), Not(HasSubstr("SWEATERSIZE"))) << "its user fields are not declared";
  const Texts others = Rows("Select * from LogAdif where QsoNr<>1 order by Campo");
  ASSERT_THAT(others, Not(IsEmpty()));
  upkeep::CompattaDatabase(session);
  EXPECT_EQ(Rows("Select * from LogAdif order by Campo"), others);
}

TEST_F(AdifImportTest, AnotherKindOfFileIsRefusedByItsName) {
  try {
    Preview(Write("log.cbr", "START-OF-LOG: 3.0\n"));
    FAIL() << "no refusal";
  } catch (const std::runtime_error& failure) {
    EXPECT_STREQ(failure.what(), "log.cbr non è un file ADIF: è un log Cabrillo");
  }
  EXPECT_THROW(Preview(directory.Path() / "missing.adi"), std::runtime_error);
}

TEST_F(AdifImportTest, ThePreviewTellsWhatTheFileHolds) {
  const ImportPreview preview = Preview(Sample("wsjtx.adi"));
  EXPECT_EQ(base::DateText(*preview.first), "15/01/2023");
  EXPECT_EQ(base::DateText(*preview.last), "12/08/2023");
  EXPECT_EQ(preview.bands,
            (std::map<std::string, std::int64_t>{{"  6 m", 1}, {" 15 m", 1}, {" 20 m", 1}}));
  EXPECT_EQ(preview.modes,
            (std::map<std::string, std::int64_t>{{"FT4", 1}, {"FT8", 1}, {"MSK144", 1}}));
  EXPECT_THAT(Rows("Select Call from Log"), IsEmpty());
}

TEST_F(AdifImportTest, ASilentRecordIsOfTheCountryThatItsCallWasOnThatDay) {
  const auto importOn = [&](std::string_view call, std::string_view day) {
    EmptyTheLog();
    Import(Write("a.adi", Record({{"CALL", call}, {"QSO_DATE", day}, {"TIME_ON", "1015"}})));
    return Rows("Select Country,[Zona CQ],[Zona ITU],Continente from Log").at(0);
  };
  EXPECT_EQ(importOn("GB6WW", "20240510"), "GM|14|27|EU");
  EXPECT_EQ(importOn("GB6WW", "20240610"), "G|14|27|EU");
  EXPECT_EQ(importOn("Y21XX", "19850601"), "DM/D|14|28|EU");
  EXPECT_EQ(importOn("OM3ABC", "19850601"), "OK/D|15|28|EU");
  // At sea no zone is anybody's.
  EXPECT_EQ(importOn("K0ABC/MM", "20240510"), "|0|0|");
}

TEST_F(AdifImportTest, ACountryThatTheFileTellsIsKeptAsTold) {
  Import(Write("a.adi", Contact({{"DXCC", "225"}})));
  EXPECT_THAT(Rows("Select QsoNr,Dxcc,Scelta from EntitaQso"), ElementsAre("1|225|0"));
  EmptyTheLog();
  Exec("delete from EntitaQso");
  Import(Write("a.adi", Contact({{"DXCC", "0"}})));
  EXPECT_THAT(Rows("Select Dxcc from EntitaQso"), ElementsAre("0"));
  EmptyTheLog();
  Exec("delete from EntitaQso");
  Import(Write("a.adi", Contact({})));
  EXPECT_THAT(Rows("Select Dxcc from EntitaQso"), IsEmpty());
}

TEST_F(AdifImportTest, ARepeatedContactTakesTheCountryThatAFileTellsAndGivesItBack) {
  Import(Write("a.adi", Contact({})));
  Import(Write("b.adi", Contact({{"DXCC", "225"}})));
  EXPECT_THAT(Rows("select QsoNr from EntitaQso"), IsEmpty());  // nothing was to be completed
  ImportOptions completes;
  completes.fillEmptyColumns = true;
  EXPECT_EQ(Import(Write("b.adi", Contact({{"DXCC", "225"}})), completes).completed, 1);
  EXPECT_THAT(Rows("select QsoNr,Dxcc from EntitaQso"), ElementsAre("1|225"));
  // The first file that has told it counts.
  EXPECT_EQ(Import(Write("c.adi", Contact({{"DXCC", "248"}})), completes).completed, 0);
  EXPECT_THAT(Rows("select QsoNr,Dxcc from EntitaQso"), ElementsAre("1|225"));
  Event([&] { history::TakeBack(session, *history::LastWork(session)); });
  EXPECT_THAT(Rows("select QsoNr,Dxcc from EntitaQso"), ElementsAre("1|"));
}

TEST_F(AdifImportTest, ACountryByARuleOfTheDayIsKeptWithTheRule) {
  const auto on = [](std::string_view call) {
    return Record({{"CALL", call}, {"QSO_DATE", "20240510"}, {"TIME_ON", "1015"}});
  };
  Import(Write("a.adi", on("GB6WW")));
  EXPECT_THAT(Rows("select QsoNr,Dxcc,Country,Motivo,Regola,Tabella from EntitaQso"),
              ElementsAre("1||GM|GB6WW: Scozia dal 01/05 al 28/05/2024|GB6WW|Entita.csv"));
  EmptyTheLog();
  Exec("delete from EntitaQso");
  Import(Write("a.adi", on("IK0ABC")));
  EXPECT_THAT(Rows("select QsoNr from EntitaQso"), IsEmpty());
}

}  // namespace
}  // namespace brenvo::adif
