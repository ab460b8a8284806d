#include "core/lists.h"
#include "core/places.h"

#include <algorithm>

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using Texts = std::vector<std::string>;

class Lists : public forms::Window {
 public:
  explicit Lists(forms::WindowHost& host)
      : forms::Window(host, "Lists", "", base::Twips(1), base::Twips(1)) {}
  forms::ListField List{*this, "List", forms::ListStyle::kDropDown};
  forms::ListField Multi{*this, "Multi", forms::ListStyle::kMulti};
};

class ListsTest : public StationTest {
 protected:
  Lists window{machine.Host()};
  forms::ListField& list = window.List;
};

TEST_F(ListsTest, BandsStandInTheOrderOfTheirFrequencies) {
  LoadBands(session, list);
  ASSERT_GT(list.Items().size(), 10u);
  EXPECT_EQ(list.Items().front(), "160 m");
  EXPECT_EQ(list.Items().back(), "  3cm");
}

TEST_F(ListsTest, PropagationsBeginWithAnEmptyEntry) {
  LoadPropagations(session, list);
  EXPECT_EQ(list.Items().front(), "");
}

TEST_F(ListsTest, FixedListsHoldWhatTheyAlwaysDid) {
  LoadBaudRates(list);
  EXPECT_EQ(list.Items(), (Texts{"300", "1200", "2400", "4800", "9600", "19200"}));
  LoadComPorts(list);
  EXPECT_EQ(list.Items(), (Texts{"COM1", "COM2", "COM3", "COM4"}));
}

TEST_F(ListsTest, ModesStandInTheOrderOfTheirCodes) {
  LoadModes(session, list);
  Texts modes;
  for (const std::string& row : Rows("select Modo from Modi order by Codice")) modes.push_back(row);
  EXPECT_EQ(list.Items(), modes);
}

TEST_F(ListsTest, CountriesShowTheirCodeInSixCharacters) {
  LoadCountries(session, list);
  EXPECT_NE(std::find(list.Items().begin(), list.Items().end(), "I     Italia"),
            list.Items().end());
}

TEST_F(ListsTest, ProvincesOfACountryShowTheirCodeInFourCharacters) {
  LoadProvinces(session, list, "I    ");
  EXPECT_NE(std::find(list.Items().begin(), list.Items().end(), "MI  Milano"), list.Items().end());
}

TEST_F(ListsTest, ChoicesShowTheirCodesInFiveCharacters) {
  const auto offers = [&](std::string_view entry) {
    return std::find(list.Items().begin(), list.Items().end(), entry) != list.Items().end();
  };
  LoadCountryChoices(session, list);
  EXPECT_TRUE(offers("I    Italia"));
  LoadProvinceChoices(session, list, "I    ");
  EXPECT_TRUE(offers("MI   Milano"));
  LoadProvinceChoices(session, list, "");
  EXPECT_TRUE(list.Items().empty());
}

TEST_F(ListsTest, ACountryOrProvinceIsFoundByItsCodeAndShownWithItsName) {
  EXPECT_EQ(FindCountryText(session, "i    "), "I    Italia");
  EXPECT_EQ(session.Tables.TbCountry->Field("Country").Text(), "I");
  EXPECT_EQ(FindCountryText(session, "QQQ"), "");
  EXPECT_EQ(FindProvinceText(session, "I    ", "MI "), "MI  Milano");
  EXPECT_EQ(FindProvinceText(session, "F", "MI"), "");
}

TEST_F(ListsTest, NotesAreListedInThreeWays) {
  session.Db.Execute("delete * from NoteHelp");
  session.Db.Execute("insert into NoteHelp values ('A','uno')");
  session.Db.Execute("insert into NoteHelp values ('A','due')");
  session.Db.Execute("insert into NoteHelp values ('B','tre')");
  LoadNotes(session, list, "ALL");
  EXPECT_EQ(list.Items(), (Texts{"A     uno", "A     due", "B     tre"}));
  LoadNotes(session, list, "TIPO");
  EXPECT_EQ(list.Items(), (Texts{"A     ", "B     "}));
  LoadNotes(session, list, "A");
  EXPECT_EQ(list.Items(), (Texts{"uno", "due"}));
}

TEST_F(ListsTest, AnEntryIsSelectedByTheBeginningThatItsCodeFills) {
  list.SetItems({"I0   zero", "I    Italia", "I    twice"});
  SelectListEntry(list, "I", 5);
  EXPECT_EQ(list.ListIndex(), 1);
  SelectListEntry(list, "none", 5);
  EXPECT_EQ(list.ListIndex(), -1);
  window.Multi.Tag = "MULTI";
  window.Multi.SetItems({"SSB", "CW"});
  SelectListEntry(window.Multi, "CW", 2);
  EXPECT_TRUE(window.Multi.Selected(1));
  EXPECT_FALSE(window.Multi.Selected(0));
}

}  // namespace
}  // namespace brenvo::core
