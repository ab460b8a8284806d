#include "contest/reg1test.h"

#include <gmock/gmock.h>

#include "tests/contest/sample_log.h"
#include "tests/support/golden.h"

namespace brenvo::contest {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

constexpr double kTwoMetres = 144.3;

std::string Text(const ContestHeader& header, const std::vector<Contact>& contacts,
                 std::optional<double> bandMhz = kTwoMetres) {
  return Reg1Test(header, bandMhz, contacts, TallyOf(contacts, SampleCountry), SampleCountry);
}

std::vector<std::string> LinesOf(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const auto end = std::min(text.find("\r\n", at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 2;
  }
  return lines;
}

// Line `number` counted from 1.
std::string Line(const std::string& text, std::size_t number) {
  return LinesOf(text).at(number - 1);
}

using Contacts = std::vector<Contact>;

// A file that somebody has read and found right, and what is special in its contest.
struct Case {
  const char* name;
  void (*change)(ContestHeader& header, Contacts& contacts);
  std::optional<double> bandMhz = kTwoMetres;
};
void PrintTo(const Case& contest, std::ostream* out) { *out << contest.name; }
const Case kCases[] = {
    {"no_switches", [](ContestHeader&, Contacts&) {}},
    {"square", [](ContestHeader& header, Contacts&) { header.Square = true; }},
    {"country", [](ContestHeader& header, Contacts&) { header.Country = true; }},
    {"all_switches",
     [](ContestHeader& header, Contacts&) { header.Square = header.Country = true; }},
    {"unknown_band", [](ContestHeader&, Contacts&) {}, std::nullopt},
    {"duplicate",
     [](ContestHeader&, Contacts& contacts) {
       contacts[2] = MakeContact(3, "DL1XYZ", "JN49AA", 950, "Qso doppio (2) ");
     }},
    {"end_of_month",
     [](ContestHeader& header, Contacts& contacts) {
       header.DataContest = base::DateTime::Of(2024, 8, 31);
       for (std::size_t i = 0; i < contacts.size(); ++i) contacts[i].Giorno = i < 2 ? 31 : 1;
     }},
    {"no_distance",
     [](ContestHeader&, Contacts& contacts) {
       for (Contact& contact : contacts) contact.Qrb = contact.Punti = 0;
     }},
    {"accents",
     [](ContestHeader& header, Contacts&) {
       header.Note = "  Città di Forlì: perché no? 5 € e così via, Ж  ";
       header.SQTH = "Cantù";
     }},
};

class Reg1TestFile : public testing::TestWithParam<Case> {};

TEST_P(Reg1TestFile, IsAsItWasReadAndFoundRight) {
  ContestHeader header = SampleHeader();
  Contacts contacts = SampleLog();
  GetParam().change(header, contacts);
  ExpectGolden(std::string("contest/golden/") + GetParam().name + ".txt",
               Text(header, contacts, GetParam().bandMhz));
}

INSTANTIATE_TEST_SUITE_P(Each, Reg1TestFile, testing::ValuesIn(kCases),
                         [](const auto& each) { return std::string(each.param.name); });

TEST(Reg1Test, OneContactWithoutSwitchesCountsEveryMultiplierAsOne) {
  const std::string text = Text(SampleHeader(), {MakeContact(1, "IK3ABC", "JN65AB", 120)});
  EXPECT_EQ(Line(text, 29), "CWWLs=1;0;1");
  EXPECT_EQ(Line(text, 31), "CWWLs=0;0;1");
  EXPECT_EQ(Line(text, 33), "CDXCs=1;0;1");
  EXPECT_EQ(Line(text, 28), "CQSOP=120");
  EXPECT_EQ(Line(text, 35), "CToSc=120");
}

TEST(Reg1Test, ACallOfNoKnownCountryCountsNone) {
  const std::string text = Text(SampleHeader(), {MakeContact(1, "XX1A", "JN65AB", 120)});
  EXPECT_EQ(Line(text, 33), "CDXCs=0;0;1");
  EXPECT_EQ(Line(text, 40), "20240907;1401;XX1A;;59;0001;59;0101;;JN65AB;120;;N;;");
}

TEST(Reg1Test, SquareAloneWithoutExchangesLeavesTheScoreAtThePoints) {
  ContestHeader header = SampleHeader();
  header.Square = true;
  const std::string text = Text(header, {MakeContact(1, "IK3ABC", "JN65AB", 120)});
  EXPECT_EQ(Line(text, 31), "CWWLs=0;0;0");
  EXPECT_EQ(Line(text, 35), "CToSc=120");
}

TEST(Reg1Test, CountryAloneCountsSquaresAndCountries) {
  ContestHeader header = SampleHeader();
  header.Country = true;
  const std::string text = Text(header, SampleLog());
  EXPECT_EQ(Line(text, 29), "CWWLs=3;0;3");
  EXPECT_EQ(Line(text, 33), "CDXCs=2;0;2");
  EXPECT_EQ(Line(text, 35), "CToSc=6050");
}

TEST(Reg1Test, ABandThatTheStationDoesNotHaveRunsIntoTheNextLabel) {
  EXPECT_EQ(Line(Text(SampleHeader(), SampleLog(), std::nullopt), 10), "PBand=PClub=");
}

TEST(Reg1Test, TheBandIsItsWholeMegahertz) {
  EXPECT_EQ(Line(Text(SampleHeader(), SampleLog(), 1296.9), 10), "PBand=1296 MHz");
}

TEST(Reg1Test, ALastDayBelowTenGivesASevenCharacterDate) {
  EXPECT_EQ(Line(Text(SampleHeader(), SampleLog()), 3), "TDate=20240907;2024097");
}

TEST(Reg1Test, WithoutAnyDistanceTheBestContactIsEmpty) {
  EXPECT_EQ(Line(Text(SampleHeader(), {MakeContact(1, "IK3ABC", "JN65AB", 0)}), 36), "CODXC=;;0");
}

TEST(Reg1Test, ADuplicateKeepsItsLineOpenForTheNextRecord) {
  std::vector<Contact> contacts = SampleLog();
  contacts[2] = MakeContact(3, "DL1XYZ", "JN49AA", 950, "Qso doppio (2) ");
  const auto lines = LinesOf(Text(SampleHeader(), contacts));
  ASSERT_EQ(lines.size(), 42u);
  EXPECT_EQ(lines[26], "CQSOs=3;1");
  EXPECT_EQ(lines[38], "[QSORecords;4]");
  EXPECT_EQ(lines[41],
            "20240907;1403;DL1XYZ;;59;0003;59;0103;;JN49AA;0;;N;;D"
            "20240907;1404;IK4GHI;;59;0004;59;0104;VE;JN53AA;60;;N;;");
}

TEST(Reg1Test, ADuplicateAtTheEndLeavesTheFileWithoutALineEnd) {
  const std::string text =
      Text(SampleHeader(), {MakeContact(1, "IK3ABC", "JN65AB", 120),
                            MakeContact(2, "IK3ABC", "JN65AB", 120, "Qso doppio (1) ")});
  EXPECT_TRUE(text.ends_with(";D"));
}

TEST(Reg1Test, NewMarksStandOnTheFirstContactOfEach) {
  const auto lines = LinesOf(Text(SampleHeader(), SampleLog()));
  EXPECT_THAT(std::vector(lines.begin() + 39, lines.end()),
              ElementsAre("20240907;1401;IK3ABC/P;;59;0001;59;0101;VE;JN65AB;120;N;N;N;",
                          "20240907;1402;DL1XYZ;;59;0002;59;0102;;JO62QM;950;;N;N;",
                          "20240907;1403;I5DEF;;59;0003;59;0103;FI;JN53KS;80;N;N;;",
                          "20240907;1404;IK4GHI;;59;0004;59;0104;VE;JN53AA;60;;;;"));
}

TEST(Reg1Test, ContactsWithoutALocatorCountTheEmptySquareOnce) {
  const std::string text =
      Text(SampleHeader(), {MakeContact(1, "IK3ABC", "", 0), MakeContact(2, "IK3DEF", "", 0)});
  EXPECT_EQ(Line(text, 40), "20240907;1401;IK3ABC;;59;0001;59;0101;;;0;;N;N;");
  EXPECT_EQ(Line(text, 41), "20240907;1402;IK3DEF;;59;0002;59;0102;;;0;;;;");
}

TEST(Reg1Test, AnEmptyExchangeIsCountedButNeverNew) {
  const std::string text =
      Text(SampleHeader(), {MakeContact(1, "IK3ABC", "JN65AB", 120, "[Exc=]")});
  EXPECT_EQ(Line(text, 31), "CWWLs=1;0;1");
  EXPECT_THAT(Line(text, 40), HasSubstr(";0101;;JN65AB;120;;N;N;"));
}

TEST(Reg1Test, RemarksOfSeveralLinesStandAsTyped) {
  ContestHeader header = SampleHeader();
  header.Note = " prima riga\r\nseconda riga ";
  EXPECT_THAT(Text(header, SampleLog()),
              HasSubstr("[Remarks]\r\nprima riga\r\nseconda riga\r\n[QSORecords;4]\r\n"));
}

TEST(Reg1Test, NumbersThatWereTypedAreTrimmed) {
  ContestHeader header = SampleHeader();
  header.Potenza = " 100 W";
  header.Altezza = "";
  const std::string text = Text(header, SampleLog());
  EXPECT_EQ(Line(text, 23), "SPowe=100");
  EXPECT_EQ(Line(text, 26), "SAntH=0");
}

}  // namespace
}  // namespace brenvo::contest
