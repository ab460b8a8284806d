#include "awards/award_grid.h"

#include <gmock/gmock.h>

#include <fstream>

#include "forms/field_visit.h"
#include "log/log_form.h"
#include "tests/awards/award_station.h"

namespace brenvo::awards {
namespace {

using Texts = std::vector<std::string>;

constexpr std::string_view kAll = "WHERE QsoNr>0";

using AwardGridTest = AwardStation;

TEST_F(AwardGridTest, EveryMemberHasItsHeadings) {
  const std::pair<const char*, const char*> headings[] = {{"SField", "Square|Qsl"},
                                                          {"SSQuare", "Square|Qsl"},
                                                          {"SPrefissi", "Prefisso|Country|Qsl"},
                                                          {"SContinenti", "Continente|Qsl"},
                                                          {"SZone", "Zona|Qsl"},
                                                          {"SCountry", "Country||Qsl||"},
                                                          {"SProvincie", "Provincie||Qsl"},
                                                          {"SNote", "||Qsl"}};
  for (const auto& [window, heading] : headings) {
    EXPECT_EQ(RowText(Award(window, kAll).Spread1, 0), heading) << window;
  }
}

TEST_F(AwardGridTest, EveryMemberHasItsWidths) {
  const auto widths = [this](std::string_view window) {
    forms::CellGrid& grid = Award(window, kAll).Spread1;
    std::vector<int> all;
    for (int column = 0; column < grid.Columns(); ++column) {
      all.push_back(grid.ColumnWidth(column).Value());
    }
    return all;
  };
  using Widths = std::vector<int>;
  EXPECT_EQ(widths("SField"), (Widths{-1, 2000}));
  EXPECT_EQ(widths("SSQuare"), (Widths{700, 1200}));
  EXPECT_EQ(widths("SPrefissi"), (Widths{700, 3000, 1200}));
  EXPECT_EQ(widths("SContinenti"), (Widths{1000, 1200}));
  EXPECT_EQ(widths("SZone"), (Widths{700, 1200}));
  EXPECT_EQ(widths("SCountry"), (Widths{750, 3000, 1200, 600, 0}));
  EXPECT_EQ(widths("SProvincie"), (Widths{900, 3000, 1200}));
  EXPECT_EQ(widths("SNote"), (Widths{750, 3000, 1200}));
}

TEST_F(AwardGridTest, OneThatIsStoppedWhileItCountsClosesInsteadOfTellingHalfAScore) {
  FillLog(14);
  Exec(
      "update Log set Country='I',Continente='EU',Locator='JN'+Left(Call,2)+'AA',Note='[IOTA "
      "EU-001]'");
  machine.StopProgressAt(0);
  // Of a day each contact is looked at; a step a group would be done before anybody asks.
  constexpr std::string_view kLong = "WHERE DateValue(DataQso)>=DateValue('01/01/1900')";
  for (const AwardMember& member : AwardMembers()) {
    Event([&] { EXPECT_FALSE(Award(member.window, kLong).Loaded()) << member.window; });
    EXPECT_EQ(session.Windows.Find(member.window), nullptr) << member.window;
    EXPECT_FALSE(session.Db.InTransaction());
  }
  EXPECT_TRUE(Lines().empty());
  machine.StopProgressAt(-1);
  EXPECT_TRUE(Award("SSQuare", kAll).Loaded());
  EXPECT_FALSE(machine.Host().Busy());
}

TEST_F(AwardGridTest, AnEmptySelectionHasOneGridRowAndScoresNothing) {
  AwardGrid& award = Award("SCountry", kAll);
  EXPECT_EQ(award.Spread1.Rows(), 1);
  EXPECT_EQ(award.Caption(), "Country - 0 confermati su 0");
}

TEST_F(AwardGridTest, BelowTheGridStandsWhichSelectionItShows) {
  const auto words = [this](std::string_view selection) {
    return Award("SSQuare", selection).Selezione.Text();
  };
  EXPECT_EQ(words(""), "Selezione: tutte le bande, tutti i modi, tutte le propagazioni");
  EXPECT_EQ(words("WHERE Banda='  2 m' AND Modo in ('SSB','CW') AND Propagazione in ('','Tropo')"),
            "Selezione: 2 m, SSB CW, propagazione nessuna Tropo");
  EXPECT_EQ(
      words("WHERE DateValue(DataQso)>=DateValue('01/02/2001') AND "
            "DateValue(DataQso)<=DateValue('03/02/2001') AND (Country='I' OR Country='IS0') "
            "AND QsldaInviare=True AND QslRicevuta=True AND QslInviata=True AND Note LIKE "
            "'*pane AND vino*'"),
      "Selezione: tutte le bande, tutti i modi, tutte le propagazioni, dal 01/02/2001, fino al "
      "03/02/2001, country I e IS0, Qsl da inviare, Qsl ricevuta, Qsl inviata, nota con pane "
      "AND vino");
  EXPECT_EQ(words("WHERE Modo in ('A','B','C','D','E','F')"),
            "Selezione: tutte le bande, A B C D e altre 2, tutte le propagazioni");
  EXPECT_EQ(words(kAll), "Selezione: tutte le bande, tutti i modi, tutte le propagazioni, QsoNr>0");
}

TEST_F(AwardGridTest, ASelectionOfAllEntriesOfAListIsToldAsAll) {
  std::string all;
  for (const std::string& kind : Rows("select Propagazione from Propagazione")) {
    all += ",'" + kind + "'";
  }
  EXPECT_EQ(Award("SSQuare", "WHERE Propagazione in (" + all.substr(1) + ")").Selezione.Text(),
            "Selezione: tutte le bande, tutti i modi, tutte le propagazioni");
}

TEST_F(AwardGridTest, FieldsAreCountedByTheFirstTwoCharacters) {
  Contact("Call,Locator,QslRicevuta", "'A','JN65AA',false");
  Contact("Call,Locator,QslRicevuta", "'B','JN55AA',true");
  Contact("Call,Locator", "'C','IO91AA'");
  Contact("Call,Locator", "'D',''");
  Contact("Call", "'E'");
  AwardGrid& award = Award("SField", kAll);
  EXPECT_EQ(Entries(award.Spread1), (Texts{"IO|", "JN|Confermato"}));
  EXPECT_EQ(award.Caption(), "Fields - 1 confermati su 2");
}

TEST_F(AwardGridTest, SquaresAreCountedByTheFirstFourCharacters) {
  Contact("Call,Locator,QslRicevuta", "'A','JN65AA',true");
  Contact("Call,Locator", "'B','JN55AA'");
  Contact("Call,Locator", "'C','JN55BB'");
  AwardGrid& award = Award("SSQuare", kAll);
  EXPECT_EQ(Entries(award.Spread1), (Texts{"JN55|", "JN65|Confermato"}));
  EXPECT_EQ(award.Caption(), "Square - 1 confermati su 2");
}

TEST_F(AwardGridTest, FieldsAndSquaresWithoutAFilterStayEmpty) {
  Contact("Call,Locator", "'A','JN65AA'");
  for (const char* window : {"SField", "SSQuare"}) {
    AwardGrid& award = Award(window, "");
    EXPECT_EQ(award.Spread1.Rows(), 1) << window;
    EXPECT_THAT(award.Caption(), testing::EndsWith(" 0 confermati su 0"));
  }
  EXPECT_TRUE(Lines().empty());
}

TEST_F(AwardGridTest, TheOthersAddTheirConditionWithWhere) {
  Contact("Call,Prefisso,Continente,[Zona CQ],Country", "'A','I1','EU',15,'I'");
  Contact("Call,Prefisso,Continente,[Zona CQ],Country", "'B','','',0,''");
  for (const char* window : {"SPrefissi", "SContinenti", "SZone", "SCountry"}) {
    EXPECT_EQ(Award(window, "").Spread1.Rows(), 2) << window;
    EXPECT_EQ(Award(window, kAll).Spread1.Rows(), 2) << window;
  }
  EXPECT_EQ(Award("SZone", "").Selection(), "WHERE [Zona CQ]<>0");
  EXPECT_EQ(Award("SZone", kAll).Selection(), "WHERE QsoNr>0 AND [Zona CQ]<>0");
}

TEST_F(AwardGridTest, TheFirstPrefixNeverShowsAsConfirmed) {
  Contact("Call,Prefisso,Country,QslRicevuta", "'A','DL1','DL',true");
  Contact("Call,Prefisso,Country,QslRicevuta", "'B','I1','I',true");
  Contact("Call,Prefisso,Country", "'C','OE1','OE'");
  AwardGrid& award = Award("SPrefissi", kAll);
  EXPECT_EQ(Entries(award.Spread1),
            (Texts{"DL1|Germania|", "I1|Italia|Confermato", "OE1|Austria|"}));
  EXPECT_EQ(award.Caption(), "Prefissi - 1 confermati su 3");
  EXPECT_EQ(award.Spread1.BackColour(1, 2), base::kWhite);
  EXPECT_EQ(award.Spread1.BackColour(2, 1), base::kGreen);
  EXPECT_EQ(award.Spread1.BackColour(2, 2), base::kGreen);
}

TEST_F(AwardGridTest, APrefixOfAnUnknownCountryHasNoDescription) {
  Contact("Call,Prefisso,Country", "'A','Q1','QQQ'");
  EXPECT_EQ(Entries(Award("SPrefissi", kAll).Spread1), Texts{"Q1||"});
}

TEST_F(AwardGridTest, APrefixThatWasStoredPaddedCountsOnce) {
  Contact("Call,Prefisso,Country", "'A','DL1','DL'");
  Contact("Call,Prefisso,Country,QslRicevuta", "'B','I1   ','I',true");
  Contact("Call,Prefisso,Country", "'C','I1','I'");
  EXPECT_EQ(Award("SPrefissi", kAll).Caption(), "Prefissi - 1 confermati su 2");
}

TEST_F(AwardGridTest, ContinentsAreListed) {
  Contact("Call,Continente,QslRicevuta", "'A','EU',true");
  Contact("Call,Continente", "'B','AS'");
  AwardGrid& award = Award("SContinenti", kAll);
  EXPECT_EQ(Entries(award.Spread1), (Texts{"AS|", "EU|Confermato"}));
  EXPECT_EQ(award.Caption(), "Continenti - 1 confermati su 2");
}

TEST_F(AwardGridTest, ZonesAreConfirmedInTheFeminineAndInOrderOfNumber) {
  Contact("Call,[Zona CQ],QslRicevuta", "'A',15,true");
  Contact("Call,[Zona CQ]", "'B',4");
  AwardGrid& award = Award("SZone", kAll);
  EXPECT_EQ(Entries(award.Spread1), (Texts{"4|", "15|Confermata"}));
  EXPECT_EQ(award.Caption(), "Zone - 1 confermate su 2");
  EXPECT_EQ(award.Spread1.BackColour(2, 1), base::kGreen);
}

TEST_F(AwardGridTest, AnEntryWithBothKindsOfContactCountsOnceAsConfirmed) {
  Contact("Call,Country", "'A','I'");
  Contact("Call,Country,QslRicevuta", "'B','I',true");
  Contact("Call,Country", "'C','I'");
  AwardGrid& award = Award("SCountry", kAll);
  EXPECT_EQ(Entries(award.Spread1), Texts{"I|Italia|Confermato||"});
  EXPECT_EQ(award.Caption(), "Country - 1 confermati su 1");
  for (int column : {1, 2, 3}) EXPECT_EQ(award.Spread1.BackColour(1, column), base::kGreen);
  EXPECT_EQ(award.Spread1.BackColour(1, 0), base::kWhite);
  EXPECT_EQ(award.Spread1.RowHeight(1), base::Twips(360));
}

TEST_F(AwardGridTest, AnEntryWithUnconfirmedContactsOnlyIsEmptyAndUncoloured) {
  Contact("Call,Country,Continente", "'A','I','EU'");
  AwardGrid& country = Award("SCountry", kAll);
  EXPECT_EQ(Entries(country.Spread1), Texts{"I|Italia|||"});
  EXPECT_EQ(country.Spread1.BackColour(1, 2), base::kWhite);
  EXPECT_EQ(Award("SContinenti", kAll).Spread1.BackColour(1, 1), base::kWhite);
}

TEST_F(AwardGridTest, ACountryThatIsNotInTheTableHasNoDescriptionAndNoFlag) {
  Contact("Call,Country,QslRicevuta", "'A','QQQ',true");
  EXPECT_EQ(Entries(Award("SCountry", kAll).Spread1), Texts{"QQQ||Confermato||"});
}

TEST_F(AwardGridTest, AFlagShowsAndItsNameGoesIntoTheHiddenColumn) {
  session.Db.Execute("UPDATE Country SET Flag='it.png' WHERE Country='I'");
  session.Db.Execute("UPDATE Country SET Flag='gone.png' WHERE Country='DL'");
  session.Db.Execute("UPDATE Country SET Flag='  ' WHERE Country='OE'");
  std::ofstream(directory.Path() / "it.png") << "picture";
  Contact("Call,Country", "'A','I'");
  Contact("Call,Country", "'B','DL'");
  Contact("Call,Country", "'C','OE'");
  forms::CellGrid& grid = Award("SCountry", kAll).Spread1;
  EXPECT_EQ(Entries(grid), (Texts{"DL|Germania|||gone.png", "I|Italia|||it.png", "OE|Austria|||"}));
  EXPECT_EQ(grid.CellPicture(1, 3), "");
  EXPECT_EQ(grid.CellPicture(2, 3), (directory.Path() / "it.png").string());
  EXPECT_EQ(grid.Alignment(2, 3), forms::CellAlignment::kCentre);
}

TEST_F(AwardGridTest, ProvincesAreDescribedByTheirCountry) {
  Contact("Call,Country,Provincia,QslRicevuta", "'A','I','VE',true");
  Contact("Call,Country,Provincia", "'B','I','MI'");
  Contact("Call,Country,Provincia", "'C','I','QQ'");
  AwardGrid& award = Award("SProvincie", "WHERE Country='I'");
  EXPECT_EQ(Entries(award.Spread1), (Texts{"MI|Milano|", "QQ||", "VE|Venezia|Confermata"}));
  EXPECT_EQ(award.Caption(), "Provincie - 1 confermate su 3");
  EXPECT_EQ(award.Spread1.BackColour(3, 2), base::kGreen);
  EXPECT_EQ(award.Spread1.BackColour(1, 2), base::kWhite);
  EXPECT_EQ(award.Spread1.RowHeight(1), forms::kOwnSize);
}

TEST_F(AwardGridTest, ListingAllCountriesKeepsTheTotalAtThoseWorked) {
  Contact("Call,Country,QslRicevuta", "'A','I',true");
  Contact("Call,Country", "'B','DL'");
  session.Handed.ElencaTutto = 1;
  AwardGrid& award = Award("SCountry", kAll);
  const Texts countries = Rows("SELECT Country,Descrizione FROM Country ORDER BY Country");
  const Texts entries = Entries(award.Spread1);
  ASSERT_EQ(entries.size(), countries.size());
  EXPECT_THAT(entries, testing::Contains("I|Italia|Confermato||"));
  EXPECT_THAT(entries, testing::Contains("DL|Germania|||"));
  EXPECT_THAT(entries, testing::Contains("OE|Austria|||"));
  EXPECT_EQ(award.Caption(), "Country - 1 confermati su 2");
  EXPECT_EQ(award.Spread1.RowHeight(5), base::Twips(360));
}

TEST_F(AwardGridTest, ACountryOutsideTheTableRaisesTheTotalAndShowsNowhere) {
  Contact("Call,Country,QslRicevuta", "'A','QQQ',true");
  Contact("Call,Country", "'B','I'");
  session.Handed.ElencaTutto = 1;
  AwardGrid& award = Award("SCountry", kAll);
  EXPECT_THAT(Entries(award.Spread1), testing::Not(testing::Contains(testing::HasSubstr("QQQ"))));
  EXPECT_EQ(award.Caption(), "Country - 0 confermati su 2");
}

TEST_F(AwardGridTest, ListingAllProvincesListsThoseOfTheFirstCountry) {
  Contact("Call,Country,Provincia,QslRicevuta", "'A','I','VE',true");
  session.Handed.ElencaTutto = 1;
  AwardGrid& award = Award("SProvincie", "WHERE Country='I'");
  const Texts provinces =
      Rows("SELECT Provincia FROM Provincie WHERE Country='I' ORDER BY Provincia");
  const Texts entries = Entries(award.Spread1);
  ASSERT_EQ(entries.size(), provinces.size());
  EXPECT_THAT(entries, testing::Contains("VE|Venezia|Confermata"));
  EXPECT_THAT(entries, testing::Contains("MI|Milano|"));
  EXPECT_EQ(award.Caption(), "Provincie - 1 confermate su 1");
  EXPECT_EQ(award.Spread1.RowHeight(5), forms::kOwnSize);
}

TEST_F(AwardGridTest, ElencaTuttoMeansNothingToTheOthers) {
  Contact("Call,Continente", "'A','EU'");
  session.Handed.ElencaTutto = 1;
  EXPECT_EQ(Award("SContinenti", kAll).Spread1.Rows(), 2);
  EXPECT_EQ(Award("SCountry", "WHERE Call='NOBODY'").Spread1.Rows(), 1);
}

TEST_F(AwardGridTest, ARefusedSelectionLeavesAnEmptyListWithoutAWord) {
  Contact("Call,Country", "'A','I'");
  AwardGrid& award = Award("SCountry", "WHERE DateValue(DataQso)>=DateValue('99/99/____')");
  EXPECT_EQ(award.Spread1.Rows(), 1);
  EXPECT_EQ(award.Caption(), "Country - 0 confermati su 0");
  EXPECT_TRUE(Lines().empty());
}

TEST_F(AwardGridTest, EntriesBeyondTheGridAreDroppedAndStillCounted) {
  session.Db.BeginTrans();
  constexpr int kEntries = 10050;
  for (int i = 0; i < kEntries; ++i) {
    char locator[8];
    std::snprintf(locator, sizeof locator, "%c%c%02d", 'A' + i / 100 / 26, 'A' + i / 100 % 26,
                  i % 100);
    Contact("Call,Locator,QslRicevuta", "'" + std::to_string(i) + "','" + locator + "AA',true");
  }
  session.Db.CommitTrans();
  AwardGrid& award = Award("SSQuare", kAll);
  EXPECT_EQ(award.Caption(), "Square - 10050 confermati su 10050");
  EXPECT_EQ(award.Spread1.Rows(), 10051);
  EXPECT_NE(award.Spread1.Cell(9998, 0), "");
  EXPECT_EQ(award.Spread1.Cell(9999, 0), "");
}

TEST_F(AwardGridTest, TheListDoesNotFollowTheLogNorTheSessionsSelection) {
  Contact("Call,Country", "'A','I'");
  AwardGrid& award = Award("SCountry", kAll);
  Contact("Call,Country", "'B','DL'");
  session.Handed.QueryText = "WHERE Country='DL'";
  EXPECT_EQ(award.Spread1.Rows(), 2);
  EXPECT_EQ(award.Selection(), "WHERE QsoNr>0 AND Country<>''");
  Event([&] { award.Close(); });
  EXPECT_EQ(session.Windows.Find("SCountry"), nullptr);
}

class NoteAwardTest : public AwardGridTest {
 protected:
  static constexpr std::string_view kDci = "WHERE Note LIKE '*DCI*'";
  void Noted(std::string_view note, bool confirmed = false) {
    Contact("Call,Note,QslRicevuta", "'C" + std::to_string(++calls_) + "','" + std::string(note) +
                                         "'," + (confirmed ? "true" : "false"));
  }

 private:
  int calls_ = 0;
};

TEST_F(NoteAwardTest, NotesAreCutToTheTagAndCounted) {
  Noted("bel qso [DCI MI001] 73");
  Noted("[DCI MI001]", true);
  Noted("[DCI VE002]");
  Noted("[IOTA EU-024]");
  AwardGrid& award = Award("SNote", kDci);
  EXPECT_EQ(Entries(award.Spread1), (Texts{"DCI MI001||Confermato", "DCI VE002||"}));
  EXPECT_EQ(award.Caption(), "Custom - 1 confermati su 2");
  EXPECT_EQ(Rows("SELECT * FROM SNote ORDER BY Note,QslRicevuta"),
            (Texts{"DCI MI001|-1", "DCI MI001|0", "DCI VE002|0"}));
}

TEST_F(NoteAwardTest, ANoteWithoutTheBracketDisappears) {
  Noted("DCI MI001 senza parentesi");
  Noted("[DCI MI002]");
  EXPECT_EQ(Entries(Award("SNote", kDci).Spread1), Texts{"DCI MI002||"});
  EXPECT_EQ(Rows("SELECT Note FROM SNote"), Texts{"DCI MI002"});
}

TEST_F(NoteAwardTest, TheKeyIsSplitAtItsSlashes) {
  Noted("[DCI/MI001/Castello Sforzesco]", true);  // both slashes: code and name
  Noted("[DCI/MI002]");                           // one: what stands behind it
  Noted("[DCI MI003]");                           // none: all of it
  forms::CellGrid& grid = Award("SNote", kDci).Spread1;
  EXPECT_EQ(Entries(grid),
            (Texts{"DCI MI003||", "MI001|Castello Sforzesco|Confermato", "MI002||"}));
  EXPECT_EQ(grid.BackColour(2, 1), base::kGreen);
  EXPECT_EQ(grid.BackColour(2, 2), base::kGreen);
}

TEST_F(NoteAwardTest, ASecondPartShorterThanTheFirstIsNotCutOff) {
  Noted("[DCI ITALIA/1/Castello]");
  EXPECT_EQ(Entries(Award("SNote", kDci).Spread1), Texts{"1/Castello||"});
}

TEST_F(NoteAwardTest, ARefusedSelectionLeavesNothingOfTheCommandBefore) {
  Noted("[DCI MI001]");
  Award("SNote", kDci);
  AwardGrid& award =
      Award("SNote", "WHERE DateValue(DataQso)>=DateValue('x') AND Note LIKE '*DCI*'");
  EXPECT_EQ(award.Spread1.Rows(), 1);
  EXPECT_EQ(award.Caption(), "Custom - 0 confermati su 0");
  EXPECT_FALSE(session.Db.InTransaction());
}

TEST_F(NoteAwardTest, ADoubleClickDoesNothing) {
  Noted("[DCI MI001]");
  AwardGrid& award = Award("SNote", kDci);
  Event([&] { award.Spread1.DoubleClickCell(1, 0); });
  EXPECT_EQ(session.Handed.QueryText, kDci);
}

class AwardLinksTest : public AwardGridTest {
 protected:
  AwardLinksTest() {
    Know<log::LogForm>("LogForm");
    Contact("DataQso,Call,Locator,Prefisso,Continente,[Zona CQ],Country,Provincia",
            "'01/01/2001','HERE','JN65AA','I3','EU',15,'I','VE'");
    Contact("DataQso,Call,Locator,Prefisso,Continente,[Zona CQ],Country,Provincia",
            "'02/01/2001','THERE','PM95AA','JA1','AS',25,'JA','13'");
  }
};

TEST_F(AwardLinksTest, ADoubleClickShowsTheContactsInTheLog) {
  const std::tuple<const char*, int, const char*> members[] = {
      {"SField", 1, "Select * from Log WHERE QsoNr>0 AND Locator<>'' And left(Locator,2)= 'JN'"},
      {"SSQuare", 1, "Select * from Log WHERE QsoNr>0 AND Locator<>'' And left(Locator,4)= 'JN65'"},
      {"SPrefissi", 1, "Select * from Log WHERE QsoNr>0 AND Prefisso<>'' And Prefisso='I3'"},
      {"SContinenti", 2, "Select * from Log WHERE QsoNr>0 AND Continente<>'' And Continente='EU'"},
      {"SCountry", 1, "Select * from Log WHERE QsoNr>0 AND Country<>'' And Country='I'"},
      {"SProvincie", 2, "Select * from Log WHERE QsoNr>0 AND Provincia<>'' And Provincia='VE'"},
      {"SZone", 1, "Select * from Log WHERE QsoNr>0 AND [Zona CQ]<>0 And [Zona CQ]=15"}};
  for (const auto& [window, row, select] : members) {
    AwardGrid& award = Award(window, kAll);
    machine.Advance(1000);
    Event([&] { award.Spread1.DoubleClickCell(row, 0); });
    EXPECT_EQ(session.Handed.QueryText, select) << window;
    auto& log = static_cast<log::LogForm&>(*session.Opened.CurrentLogForm);
    EXPECT_EQ(log.CallQso.Text(), "HERE") << window;
    EXPECT_EQ(log.QsoTotali.Text(), "1") << window;
  }
  EXPECT_TRUE(Lines().empty());
  // Only the first double click found no log window.
  EXPECT_EQ(session.Windows.FindInstance("LogForm#2"), nullptr);
}

TEST_F(AwardLinksTest, ADoubleClickBringsTheLogForward) {
  log::LogForm& log = Open<log::LogForm>("LogForm");
  AwardGrid& award = Award("SField", kAll);
  EXPECT_EQ(machine.Host().Front(), &award);
  Event([&] { award.Spread1.DoubleClickCell(1, 0); });
  EXPECT_EQ(machine.Host().Front(), &log);
}

TEST_F(AwardLinksTest, ALogThatStandsOpenBehindAClosedOneIsTheLogAgain) {
  forms::Window& first = *session.Windows.LoadSingle("LogForm");
  session.Windows.Unload(*session.Windows.LoadNew("LogForm"));
  ASSERT_FALSE(session.Opened.LogOpen);
  AwardGrid& award = Award("SField", kAll);
  Event([&] { award.Spread1.DoubleClickCell(1, 0); });
  EXPECT_TRUE(session.Opened.LogOpen);
  EXPECT_EQ(session.Opened.CurrentLogForm, &first);
  EXPECT_EQ(static_cast<log::LogForm&>(first).Selection, session.Handed.QueryText);
}

TEST_F(AwardLinksTest, ADoubleClickOnTheHeadingDoesNothing) {
  AwardGrid& award = Award("SField", kAll);
  Event([&] { award.Spread1.DoubleClickCell(0, 0); });
  EXPECT_EQ(session.Handed.QueryText, kAll);
  EXPECT_FALSE(session.Opened.LogOpen);
}

TEST_F(AwardLinksTest, MapCommandsAskForTheirMapOnTheWindowsSelection) {
  const std::tuple<const char*, const char*, const char*, const char*> maps[] = {
      {"SField", "cmMappa", "fieldmap.jpg", "FIELD04:05:06"},
      {"SSQuare", "cmMappaMondo", "wm.jpg", "SQUARE04:05:06"},
      {"SZone", "cmMappa", "wazmap.jpg", "WAZ04:05:06"},
      {"SProvincie", "cmMappa", "italia.jpg", "ITALIA04:05:06"}};
  for (const auto& [window, command, file, word] : maps) {
    AwardGrid& award = Award(window, kAll);
    session.Handed.QueryText = "something else";
    session.Map.Pointer_X = 7;
    Event([&, name = command] { award.FindCommand(name)->Press(); });
    SCOPED_TRACE(window);
    EXPECT_EQ(session.Map.MapFile, file);
    EXPECT_EQ(session.Map.Pointer_X, 0);
    EXPECT_EQ(session.Handed.QueryText, award.Selection());
    EXPECT_EQ(frame->HDisplayMappa.Text(), word);
  }
}

TEST_F(AwardLinksTest, TwoMapCommandsWithinASecondAreOne) {
  int shown = 0;
  frame->OnDisplayMap = [&](std::string_view) { ++shown; };
  AwardGrid& award = Award("SField", kAll);
  for (int i = 0; i < 2; ++i) Event([&] { award.FindCommand("cmMappa")->Press(); });
  EXPECT_EQ(shown, 1);
  machine.Advance(1000);
  Event([&] { award.FindCommand("cmMappa")->Press(); });
  EXPECT_EQ(shown, 2);
}

class MapWindow : public forms::Window {
 public:
  explicit MapWindow(core::Session& session)
      : forms::Window(session.Host(), "MappaSquare", "Mappa Square", base::Twips(100),
                      base::Twips(100)) {}
};

TEST_F(AwardLinksTest, TheMapOfEuropeIsAWindowOfItsOwn) {
  Know<MapWindow>("MappaSquare");
  AwardGrid& award = Award("SSQuare", kAll);
  for (int i = 0; i < 2; ++i) Event([&] { award.FindCommand("cmMappa")->Press(); });
  EXPECT_NE(session.Windows.FindInstance("MappaSquare#2"), nullptr);
  EXPECT_EQ(session.Handed.QueryText, kAll);
  EXPECT_EQ(frame->HDisplayMappa.Text(), "");
}

TEST_F(AwardLinksTest, EachWindowHasItsCommandsAndNoOthers) {
  const std::pair<const char*, Texts> windows[] = {
      {"SField", {"cmMappa"}},
      {"SSQuare", {"cmBySquare", "cmByDate", "cmMappa", "cmMappaMondo"}},
      {"SPrefissi", {}},
      {"SContinenti", {}},
      {"SZone", {"cmGeneraHTML", "cmMappa"}},
      {"SCountry", {"cmByCountry", "cmByDate"}},
      {"SProvincie", {"cmByProvince", "cmByDate", "cmMappa"}},
      {"SNote", {}}};
  for (const auto& [window, commands] : windows) {
    Texts names;
    for (forms::Field* field : Award(window, kAll).Fields()) {
      if (forms::FieldAs<forms::Command>(*field) != nullptr) names.push_back(field->Name());
    }
    EXPECT_EQ(names, commands) << window;
  }
}

TEST_F(AwardLinksTest, PagesStandUnderTheirMenuUnlessThereIsOnlyOne) {
  AwardGrid& country = Award("SCountry", kAll);
  ASSERT_EQ(country.MenuBar.size(), 1u);
  EXPECT_EQ(std::get<forms::Menu*>(country.MenuBar[0])->Caption(), "Genera HTML");
  AwardGrid& zone = Award("SZone", kAll);
  EXPECT_EQ(std::get<forms::Command*>(zone.MenuBar[0])->Caption(), "Genera HTML");
}

}  // namespace
}  // namespace brenvo::awards
