#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <charconv>
#include <chrono>
#include <map>
#include <string>

#include "tests/data/sqlite_query.h"

namespace brenvo {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::MatchesRegex;
using testing::SizeIs;

// The day that a text dd/mm/yyyy names; a day that the calendar lacks, or other text, is not ok().
std::chrono::year_month_day DayOf(const std::string& text) {
  const auto number = [&text](std::size_t start, std::size_t length) {
    int value = -1;
    std::from_chars(text.data() + start, text.data() + start + length, value);
    return value;
  };
  if (text.size() != 10 || text[2] != '/' || text[5] != '/') return {};
  return std::chrono::year(number(6, 4)) / number(3, 2) / number(0, 2);
}

TEST(DeliveredCountries, AreTodaysAndTheDeletedOnes) {
  EXPECT_THAT(DeliveredColumn("SELECT Country FROM Country WHERE Deleted = ''"), SizeIs(340));
  EXPECT_THAT(DeliveredColumn("SELECT Country FROM Country WHERE Deleted <> ''"), SizeIs(62));
}

TEST(DeliveredCountries, HaveShortUpperCaseCodes) {
  EXPECT_THAT(DeliveredColumn("SELECT Country FROM Country"),
              Each(MatchesRegex("[A-Z0-9][A-Z0-9/]{0,4}")));
}

TEST(DeliveredCountries, HaveANameOfTheirOwn) {
  EXPECT_THAT(DeliveredColumn("SELECT Country FROM Country WHERE trim(Descrizione) = ''"),
              IsEmpty());
  EXPECT_THAT(DeliveredColumn("SELECT Descrizione FROM Country GROUP BY Descrizione "
                              "HAVING count(*) > 1"),
              IsEmpty());
}

TEST(DeliveredCountries, BearItalianNames) {
  std::map<std::string, std::string> names;
  for (const TextRow& row : Delivered("SELECT Country, Descrizione FROM Country")) {
    names[row[0]] = row[1];
  }
  EXPECT_EQ(names["I"], "Italia");
  EXPECT_EQ(names["IS0"], "Sardegna");
  EXPECT_EQ(names["DL"], "Germania");
  EXPECT_EQ(names["K"], "Stati Uniti d'America");
  EXPECT_EQ(names["EA8"], "Isole Canarie");
  EXPECT_EQ(names["G"], "Inghilterra");
  EXPECT_EQ(names["HV"], "Città del Vaticano");
  EXPECT_EQ(names["9A"], "Croazia");
  EXPECT_EQ(names["PA"], "Paesi Bassi");
  EXPECT_EQ(names["OY"], "Isole Fær Øer");
}

TEST(DeliveredCountries, HaveALocatorOfSixCharacters) {
  EXPECT_THAT(DeliveredColumn("SELECT Locator FROM Country"),
              Each(MatchesRegex("[A-R][A-R][0-9][0-9][A-X][A-X]")));
}

TEST(DeliveredCountries, LieWhereTheyAre) {
  EXPECT_THAT(DeliveredColumn("SELECT substr(Locator, 1, 4) FROM Country "
                              "WHERE Country IN ('I', 'IS0', 'LU', 'ZL', 'KH6') ORDER BY Country"),
              ElementsAre("JN62", "JN40", "BL11", "FF87", "RF70"));
}

TEST(DeliveredCountries, HaveDaysOrNothingAsDates) {
  for (const TextRow& row : Delivered("SELECT Country, [From], Deleted FROM Country")) {
    for (const std::string& day : {row[1], row[2]}) {
      EXPECT_TRUE(day.empty() || DayOf(day).ok()) << row[0] << " " << day;
    }
    if (!row[1].empty() && !row[2].empty()) {
      EXPECT_LT(DayOf(row[1]), DayOf(row[2])) << row[0];
    }
  }
}

TEST(DeliveredCountries, EndedOnTheDayThatTheAwardGives) {
  EXPECT_THAT(DeliveredColumn("SELECT Deleted FROM Country WHERE Descrizione IN ('Cecoslovacchia', "
                              "'Germania Orientale (DDR)', 'Territorio Libero di Trieste') "
                              "ORDER BY Descrizione"),
              ElementsAre("31/12/1992", "02/10/1990", "31/03/1957"));
}

TEST(DeliveredProvinces, OfItalyAreTodaysAndThoseOfEarlierYears) {
  const auto codes = DeliveredColumn("SELECT Provincia FROM Provincie WHERE Country = 'I'");
  EXPECT_THAT(codes, SizeIs(110 + 3));
  EXPECT_THAT(codes, Each(MatchesRegex("[A-Z][A-Z]")));
  EXPECT_THAT(codes, IsSupersetOf({"RM", "MI", "NA", "AO", "BT", "FC", "PU", "FO", "PS"}));
}

TEST(DeliveredProvinces, OfSardiniaStandUnderItAndUnderItaly) {
  // A contact with Sardinia shows its own provinces; the award counts them within Italy.
  const std::vector<std::string> sardinian = {"CA", "CI", "NU", "OG", "OR", "OT", "SS", "SU", "VS"};
  EXPECT_EQ(DeliveredColumn("SELECT Provincia FROM Provincie WHERE Country = 'IS0' "
                            "ORDER BY Provincia"),
            sardinian);
  EXPECT_THAT(DeliveredColumn("SELECT Provincia FROM Provincie WHERE Country = 'I'"),
              IsSupersetOf(sardinian));
}

TEST(DeliveredProvinces, HaveShortCodesANameAndACountry) {
  EXPECT_THAT(DeliveredColumn("SELECT Provincia FROM Provincie"),
              Each(MatchesRegex("[A-Z0-9]{1,3}")));
  EXPECT_THAT(DeliveredColumn("SELECT Provincia FROM Provincie WHERE trim(Descrizione) = '' OR "
                              "Country NOT IN (SELECT Country FROM Country WHERE Deleted = '')"),
              IsEmpty());
}

TEST(DeliveredProvinces, OfOtherCountriesAreThoseThatAwardsCount) {
  std::map<std::string, std::string> counts;
  for (const TextRow& row : Delivered("SELECT Country, count(*) FROM Provincie GROUP BY Country")) {
    counts[row[0]] = row[1];
  }
  EXPECT_EQ(counts["K"], "49");  // the capital's district with the states; two are other countries
  EXPECT_EQ(counts["VE"], "13");
  EXPECT_EQ(counts["JA"], "47");
  EXPECT_EQ(counts["UR"], "27");
  EXPECT_EQ(counts["EA"], "47");
  EXPECT_EQ(counts["VK"], "8");
  EXPECT_EQ(counts["DL"], "16");
  EXPECT_EQ(counts["HB"], "26");
}

TEST(DeliveredBands, RunFrom160MetresTo3Centimetres) {
  EXPECT_THAT(
      DeliveredColumn("SELECT Banda FROM UserRTX ORDER BY Frequenza"),
      ElementsAre("160 m", " 80 m", " 60 m", " 40 m", " 30 m", " 20 m", " 17 m", " 15 m", " 12 m",
                  " 10 m", "  6 m", "  2 m", " 70cm", " 23cm", " 13cm", "  9cm", "  6cm", "  3cm"));
}

TEST(DeliveredBands, HaveTheirFrequencyInMegahertzWithinTheirEdgesInKilohertz) {
  EXPECT_THAT(DeliveredColumn("SELECT Banda FROM UserRTX "
                              "WHERE NOT Frequenza * 1000 BETWEEN FrequenzaI AND FrequenzaF"),
              IsEmpty());
}

TEST(DeliveredBands, DoNotOverlap) {
  EXPECT_THAT(DeliveredColumn("SELECT a.Banda FROM UserRTX AS a JOIN UserRTX AS b "
                              "ON a.Banda <> b.Banda AND a.FrequenzaI <= b.FrequenzaF AND "
                              "b.FrequenzaI <= a.FrequenzaF"),
              IsEmpty());
}

TEST(DeliveredBands, AreFoundBySpotsAtTheirEdges) {
  const auto bandOf = [](const std::string& kilohertz) {
    return DeliveredColumn("SELECT Banda FROM UserRTX WHERE " + kilohertz + " >= FrequenzaI AND " +
                           kilohertz + " <= FrequenzaF");
  };
  EXPECT_THAT(bandOf("7074.0"), ElementsAre(" 40 m"));
  EXPECT_THAT(bandOf("14000"), ElementsAre(" 20 m"));
  EXPECT_THAT(bandOf("14350"), ElementsAre(" 20 m"));
  EXPECT_THAT(bandOf("50313.0"), ElementsAre("  6 m"));
  EXPECT_THAT(bandOf("144300.0"), ElementsAre("  2 m"));
  EXPECT_THAT(bandOf("10368200.0"), ElementsAre("  3cm"));
  EXPECT_THAT(bandOf("27000"), IsEmpty());
}

TEST(DeliveredBands, AreAnnouncedByAWaveFileOfTheirName) {
  for (const TextRow& row : Delivered("SELECT Banda, FilenameDX, AnnunceDX FROM UserRTX")) {
    std::string name;
    for (const char c : row[0]) {
      if (c != ' ') name += c;
    }
    EXPECT_EQ(row[1], name + ".wav");
    EXPECT_EQ(row[2], "-1");
  }
}

TEST(DeliveredBands, HaveADefaultModeAndTheReportThatGoesWithIt) {
  EXPECT_THAT(DeliveredColumn("SELECT DISTINCT Modo || ' ' || RST FROM UserRTX ORDER BY 1"),
              ElementsAre("CW 599", "SSB 59"));
  EXPECT_THAT(
      DeliveredColumn("SELECT Banda FROM UserRTX WHERE Modo NOT IN (SELECT Modo FROM Modi)"),
      IsEmpty());
  EXPECT_THAT(DeliveredColumn("SELECT Banda FROM UserRTX WHERE NOT Potenza > 0"), IsEmpty());
}

TEST(DeliveredModes, BeginWithTheOnesMostUsedAndComeOnce) {
  const auto modes = DeliveredColumn("SELECT Modo FROM Modi ORDER BY Codice");
  EXPECT_EQ(modes.at(0), "SSB");
  EXPECT_THAT(modes, IsSupersetOf({"SSB", "CW", "FM", "RTTY", "FT8", "FT4", "SSTV", "Satellite"}));
  EXPECT_THAT(DeliveredColumn("SELECT DISTINCT upper(Modo) FROM Modi"), SizeIs(modes.size()));
}

TEST(DeliveredPropagations, BeginWithTheEmptyOne) {
  EXPECT_EQ(DeliveredColumn("SELECT Propagazione FROM Propagazione ORDER BY Codice").at(0), "");
}

TEST(DeliveredPropagations, HoldThoseThatTheNotesStandFor) {
  const auto propagations = DeliveredColumn("SELECT Propagazione FROM Propagazione");
  EXPECT_THAT(propagations, IsSupersetOf({"E sporadico", "F2", "Meteor Scatter", "TEP"}));
}

TEST(DeliveredTexts, ThatAreSearchedForHoldNoQuoteAndNoBlankAtTheEnd) {
  for (const std::string column :
       {"Country FROM Country", "Provincia FROM Provincie", "Prefisso FROM Prefissi",
        "Modo FROM Modi", "Propagazione FROM Propagazione", "Banda FROM UserRTX",
        "TipoNota FROM NoteHelp", "Nota FROM NoteHelp"}) {
    for (const std::string& text : DeliveredColumn("SELECT " + column)) {
      EXPECT_EQ(text.find('\''), std::string::npos) << column << ": " << text;
      EXPECT_FALSE(text.ends_with(' ')) << column << ": " << text;
    }
  }
}

TEST(DeliveredNotes, HoldTheShorthandOfPropagation) {
  EXPECT_THAT(DeliveredColumn("SELECT Nota FROM NoteHelp WHERE TipoNota = 'PROP' ORDER BY Nota"),
              ElementsAre("E.S.", "F2", "M.S.", "T.E.P."));
}

TEST(DeliveredNotes, OfSatellitesAreThreeTextsBetweenStrokes) {
  const auto notes = DeliveredColumn("SELECT Nota FROM NoteHelp WHERE TipoNota = 'SAT'");
  EXPECT_THAT(notes, Contains("QO-100/SX/SSB"));
  EXPECT_THAT(notes, Each(MatchesRegex("[A-Z0-9-]+/[A-Z0-9]+/[A-Z0-9]+")));
}

TEST(DeliveredNotes, HaveTypesThatTheListCanFindAndNoBrackets) {
  EXPECT_THAT(DeliveredColumn("SELECT TipoNota FROM NoteHelp"), Each(MatchesRegex("[A-Z]{1,5}")));
  EXPECT_THAT(DeliveredColumn("SELECT Nota FROM NoteHelp WHERE Nota GLOB '*[][]*'"), IsEmpty());
}

TEST(DeliveredProfile, IsOneNeutralStationThatWorks) {
  EXPECT_THAT(Delivered("SELECT Call, Locator, TNCPort, TNCBaud, TNCEcho, CallInterval FROM User"),
              ElementsAre(ElementsAre("I0XXX", "JN61EV", "COM1", "9600", "0", "10")));
}

TEST(DeliveredProfile, CanBeSavedAsItIs) {
  EXPECT_THAT(DeliveredColumn("SELECT Call FROM User WHERE trim(Qra) = '' OR trim(Qth) = '' OR "
                              "trim(Indirizzo) = '' OR trim(Provincia) = ''"),
              IsEmpty());
}

TEST(DeliveredDatabase, HoldsNoContacts) {
  for (const std::string table : {"Log", "SLog", "Contest", "[Contest Qso]", "qmgr", "Hrd"}) {
    EXPECT_THAT(DeliveredColumn("SELECT count(*) FROM " + table), ElementsAre("0")) << table;
  }
}

TEST(DeliveredDatabase, IsSound) {
  EXPECT_THAT(DeliveredColumn("PRAGMA integrity_check"), ElementsAre("ok"));
  EXPECT_THAT(DeliveredColumn("PRAGMA user_version"), ElementsAre("1"));
}

}  // namespace
}  // namespace brenvo
