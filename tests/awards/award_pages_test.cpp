#include "awards/award_pages.h"

#include <gmock/gmock.h>

#include <fstream>

#include "tests/awards/award_station.h"
#include "tests/support/golden.h"
#include "tests/support/places.h"

namespace brenvo::awards {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kWholeLog = "WHERE QsoNr>0";

class AwardPagesTest : public AwardStation {
 protected:
  void WriteFile(std::string_view name, std::string_view text) {
    std::ofstream(directory.Path() / name, std::ios::binary) << text;
  }
  std::string Page(std::string_view name) { return ReadBytes(directory.Path() / name); }
  // Every template with every token that any page serves.
  void WriteTemplates() {
    for (const char* name : {"Country.html", "Provincie.html", "Square.html", "Zone.html"}) {
      WriteFile(name,
                "<table>\r\n<TR><TH>testata</TH></TR>\r\n"
                "<TR><TD>[COUNTRY][PROVINCIA][SQUARE][ZONA]</TD><TD>[DESCRIZIONE]</TD><TD>[QSL]"
                "</TD><TD>[FLAG]</TD><TD>[DATA]</TD><TD>[CALL]</TD><TD>[MODO]</TD><TD>[PROP]</TD>"
                "</TR>\r\n</table>");
    }
  }
  // Confirmed and unconfirmed, old and new contacts of two entries and one of a third.
  void WriteLog() {
    session.Db.Execute("UPDATE Country SET Flag='it.png' WHERE Country='I'");
    const char* contacts[] = {
        "'01/01/2000 10:00:00','I3OLD',true,'I','VE','JN65AA',15,'SSB','Tropo'",
        "'02/01/2000 10:00:00','I3NEW',true,'I','VE','JN65BB',15,'CW','Tropo'",
        "'01/01/1999 10:00:00','I3UNC',false,'I','VE','JN65CC',15,'FM',''",
        "'05/01/2000 10:00:00','JA1OLD',false,'JA','13','PM95AA',25,'SSB','F2'",
        "'06/01/2000','JA1NEW',false,'JA','13','PM95AA',25,'SSB','F2'",
        "'03/01/2000 10:00:00','Q1XYZ',true,'QQQ','QQ','AA00AA',40,'SSB','Tropo'"};
    for (const char* contact : contacts) {
      Contact("DataQso,Call,QslRicevuta,Country,Provincia,Locator,[Zona CQ],Modo,Propagazione",
              contact);
    }
  }
  // A command writes this page and shows it; it is the golden file's.
  void ExpectPage(std::string_view window, std::string_view command, std::string_view page,
                  const std::string& golden) {
    WriteTemplates();
    WriteLog();
    Press(Award(window, kWholeLog), command);
    EXPECT_EQ(Lines(), Texts{"open \"" + std::string(page) + "\""});
    ExpectGolden("awards/golden/" + golden, Page(page));
  }
};

TEST_F(AwardPagesTest, CountriesAreWrittenInTheOrderOfTheList) {
  ExpectPage("SCountry", "cmByCountry", "OUT_Country.html", "country_by_country.html");
}

TEST_F(AwardPagesTest, CountriesAreWrittenByDate) {
  ExpectPage("SCountry", "cmByDate", "OUT_Country.html", "country_by_date.html");
}

TEST_F(AwardPagesTest, ProvincesInTheOrderOfTheListSayConfermata) {
  ExpectPage("SProvincie", "cmByProvince", "OUT_Provincie.html", "provincie_by_province.html");
}

TEST_F(AwardPagesTest, ProvincesByDateSayConfermato) {
  ExpectPage("SProvincie", "cmByDate", "OUT_Provincie.html", "provincie_by_date.html");
}

TEST_F(AwardPagesTest, SquaresInTheOrderOfTheListTellTheNewestContact) {
  ExpectPage("SSQuare", "cmBySquare", "OUT_Square.html", "square_by_square.html");
}

TEST_F(AwardPagesTest, SquaresByDateTellTheOldestContact) {
  ExpectPage("SSQuare", "cmByDate", "OUT_Square.html", "square_by_date.html");
}

TEST_F(AwardPagesTest, ZonesAreWrittenInTheOrderOfTheirNumbers) {
  ExpectPage("SZone", "cmGeneraHTML", "OUT_Zone.html", "zone.html");
}

TEST_F(AwardPagesTest, AGridWithoutEntriesYieldsHeadAndTail) {
  WriteFile("Country.html", "head<tr>h</tr><tr>[COUNTRY]</tr>tail");
  AwardGrid& award = Award("SCountry", kWholeLog);
  for (const char* command : {"cmByCountry", "cmByDate"}) {
    Press(award, command);
    EXPECT_EQ(Page("OUT_Country.html"), "head<tr>h</tr>\r\ntail\r\n");
  }
}

TEST_F(AwardPagesTest, ATokenThatStandsTwiceIsReplacedOnce) {
  WriteFile("Country.html", "<tr></tr><tr>[QSL][QSL]</tr>");
  WriteLog();
  Press(Award("SCountry", "WHERE Country='I'"), "cmByCountry");
  EXPECT_EQ(Page("OUT_Country.html"), "<tr></tr>\r\n<tr>Confermato[QSL]</tr>\r\n\r\n");
}

TEST_F(AwardPagesTest, AnEntryWithoutAFlagGetsAnEmptyPicture) {
  WriteFile("Country.html", "<tr></tr><tr>[FLAG]</tr>");
  WriteLog();
  Press(Award("SCountry", "WHERE Country='JA'"), "cmByCountry");
  EXPECT_EQ(Page("OUT_Country.html"), "<tr></tr>\r\n<tr><img alt src=\"\"></tr>\r\n\r\n");
}

TEST_F(AwardPagesTest, TwoCommandsOverwriteThePageAndLeaveTheTemplate) {
  const std::string design = "<tr></tr><tr>[COUNTRY]</tr>";
  WriteFile("Country.html", design);
  WriteLog();
  Press(Award("SCountry", kWholeLog), "cmByCountry");
  Press(Award("SCountry", "WHERE Country='JA'"), "cmByDate");
  EXPECT_EQ(Page("OUT_Country.html"), "<tr></tr>\r\n<tr>JA</tr>\r\n\r\n");
  EXPECT_EQ(Page("Country.html"), design);
}

TEST_F(AwardPagesTest, ATemplateWithoutItsRowsYieldsAnEmptyPageAndNoWord) {
  WriteFile("Country.html", "<table><tr>only one</tr></table>");
  WriteFile("OUT_Country.html", "left over");
  WriteLog();
  AwardGrid& award = Award("SCountry", kWholeLog);
  for (const char* command : {"cmByCountry", "cmByDate"}) {
    Press(award, command);
    EXPECT_EQ(Page("OUT_Country.html"), "");
    EXPECT_TRUE(Lines().empty());
  }
}

TEST_F(AwardPagesTest, AMissingTemplateIsToldAndWritesNoPage) {
  WriteLog();
  Press(Award("SZone", kWholeLog), "cmGeneraHTML");
  EXPECT_EQ(Lines(), Texts{"error \"File non leggibile: Zone.html\""});
  EXPECT_FALSE(std::filesystem::exists(directory.Path() / "OUT_Zone.html"));
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(AwardPagesTest, APageThatCannotBeWrittenIsTold) {
  WriteTemplates();
  WriteLog();
  std::filesystem::create_directory(directory.Path() / "OUT_Zone.html");
  Press(Award("SZone", kWholeLog), "cmGeneraHTML");
  EXPECT_EQ(Lines(), Texts{"error \"File non scrivibile: OUT_Zone.html\""});
}

TEST_F(AwardPagesTest, AnEntryNeverWorkedEndsThePageThere) {
  WriteFile("Country.html", "<tr></tr><tr>[COUNTRY]</tr>");
  Contact("DataQso,Call,Country", "'01/01/2000','A','1A'");
  session.Handed.ElencaTutto = 1;
  AwardGrid& award = Award("SCountry", kWholeLog);
  ASSERT_EQ(award.Spread1.Cell(1, 0), "1A");
  Press(award, "cmByCountry");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error ")));
  EXPECT_EQ(Page("OUT_Country.html"), "<tr></tr>\r\n<tr>1A</tr>\r\n");
  Press(award, "cmByDate");
  EXPECT_THAT(Lines(), testing::ElementsAre(testing::StartsWith("error ")));
  EXPECT_FALSE(session.Db.InTransaction());
  EXPECT_EQ(Rows("select Country from SLog"), Texts{"1A"});
}

TEST_F(AwardPagesTest, APageThatTheOperatorStopsIsNotShown) {
  WriteFile("Country.html", "<tr></tr><tr>[COUNTRY]</tr>");
  WriteLog();
  AwardGrid& award = Award("SCountry", kWholeLog);
  ASSERT_EQ(Entries(award.Spread1).size(), 3u);
  machine.StopProgressAt(2);
  Press(award, "cmByCountry");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Page("OUT_Country.html"), "<tr></tr>\r\n<tr>I</tr>\r\n");
  Press(award, "cmByDate");
  EXPECT_TRUE(Lines().empty());
  EXPECT_EQ(Rows("select Country from SLog"), Texts{});
}

TEST_F(AwardPagesTest, StagingByDateFillsItsColumns) {
  WriteTemplates();
  WriteLog();
  const char* columns =
      "select Country,Provincia,Locator,Note,QslRicevuta,Qra,DataQso,Call,Modo,"
      "Propagazione from SLog where Call like 'I3*'";
  Press(Award("SCountry", kWholeLog), "cmByDate");
  EXPECT_EQ(Rows(columns), Texts{"I|||Italia|-1|it.png|01/01/2000 10:00:00|I3OLD|SSB|Tropo"});
  Press(Award("SProvincie", kWholeLog), "cmByDate");
  EXPECT_EQ(Rows(columns), Texts{"|VE||Venezia|-1||01/01/2000 10:00:00|I3OLD|SSB|Tropo"});
  Press(Award("SSQuare", kWholeLog), "cmByDate");
  EXPECT_EQ(Rows(columns), Texts{"||JN65||-1||01/01/2000 10:00:00|I3OLD|SSB|Tropo"});
}

TEST_F(AwardPagesTest, TheDeliveredTemplatesServeTheirTokens) {
  WriteLog();
  const std::tuple<const char*, const char*, const char*, const char*> pages[] = {
      {"SCountry", "cmByCountry", "Country.html", "OUT_Country.html"},
      {"SProvincie", "cmByProvince", "Provincie.html", "OUT_Provincie.html"},
      {"SSQuare", "cmBySquare", "Square.html", "OUT_Square.html"},
      {"SZone", "cmGeneraHTML", "Zone.html", "OUT_Zone.html"}};
  for (const auto& [window, command, design, page] : pages) {
    std::filesystem::copy_file(BuildDir() / "delivered" / design, directory.Path() / design);
    Press(Award(window, kWholeLog), command);
    const std::string text = Page(page);
    EXPECT_THAT(text, testing::HasSubstr("<td class=\"call\">JA1")) << page;
    EXPECT_THAT(text, testing::Not(testing::ContainsRegex("\\[[A-Z]+\\]"))) << page;
    EXPECT_THAT(text, testing::Not(testing::HasSubstr("@AWARD_STYLE@"))) << page;
  }
}

}  // namespace
}  // namespace brenvo::awards
