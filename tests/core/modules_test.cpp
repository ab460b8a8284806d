#include "core/modules.h"

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

class ModulesTest : public StationTest {
 protected:
  Lists window{machine.Host()};
  forms::ListField& list = window.List;
};

TEST_F(ModulesTest, BlanksAloneAreAnEmptyField) {
  EXPECT_TRUE(IsEmptyField(""));
  EXPECT_TRUE(IsEmptyField("   "));
  EXPECT_FALSE(IsEmptyField(" x "));
  EXPECT_FALSE(IsEmptyField("__:__"));
}

TEST_F(ModulesTest, ATextThatIsNoDateIsTold) {
  EXPECT_TRUE(IsValidDate(session, "03/02/2001"));
  EXPECT_TRUE(Lines().empty());
  EXPECT_FALSE(IsValidDate(session, "31/02/2001"));
  EXPECT_EQ(Lines(), Texts{"message exclamation \"\" \"Data errata\""});
}

TEST_F(ModulesTest, KeyFiltersLetTheirKeysThrough) {
  EXPECT_EQ(DigitsOnlyKey('7'), U'7');
  EXPECT_EQ(DigitsOnlyKey(forms::kBackspace), forms::kBackspace);
  EXPECT_EQ(DigitsOnlyKey('.'), 0u);
  EXPECT_EQ(DigitsOnlyKey('a'), 0u);
  for (char32_t key : {U'-', U'.', U',', U'0', forms::kBackspace}) EXPECT_EQ(NumericKey(key), key);
  EXPECT_EQ(NumericKey('e'), 0u);
  EXPECT_EQ(UpperKey(U'ò'), U'Ò');
}

TEST_F(ModulesTest, BandsStandInTheOrderOfTheirFrequencies) {
  LoadBands(session, list);
  ASSERT_GT(list.Items().size(), 10u);
  EXPECT_EQ(list.Items().front(), "160 m");
  EXPECT_EQ(list.Items().back(), "  3cm");
}

TEST_F(ModulesTest, PropagationsBeginWithAnEmptyEntry) {
  LoadPropagations(session, list);
  EXPECT_EQ(list.Items().front(), "");
}

TEST_F(ModulesTest, FixedListsHoldWhatTheyAlwaysDid) {
  LoadBaudRates(list);
  EXPECT_EQ(list.Items(), (Texts{"300", "1200", "2400", "4800", "9600", "19200"}));
  LoadComPorts(list);
  EXPECT_EQ(list.Items(), (Texts{"COM1", "COM2", "COM3", "COM4"}));
}

TEST_F(ModulesTest, ModesStandInTheOrderOfTheirCodes) {
  LoadModes(session, list);
  Texts modes;
  for (const std::string& row : Rows("select Modo from Modi order by Codice")) modes.push_back(row);
  EXPECT_EQ(list.Items(), modes);
}

TEST_F(ModulesTest, CountriesShowTheirCodeInSixCharacters) {
  LoadCountries(session, list);
  EXPECT_NE(std::find(list.Items().begin(), list.Items().end(), "I     Italia"),
            list.Items().end());
}

TEST_F(ModulesTest, ProvincesOfACountryShowTheirCodeInFourCharacters) {
  LoadProvinces(session, list, "I    ");
  EXPECT_NE(std::find(list.Items().begin(), list.Items().end(), "MI  Milano"), list.Items().end());
}

TEST_F(ModulesTest, ChoicesShowTheirCodesInFiveCharacters) {
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

TEST_F(ModulesTest, ACountryOrProvinceIsFoundByItsCodeAndShownWithItsName) {
  EXPECT_EQ(FindCountryText(session, "i    "), "I    Italia");
  EXPECT_EQ(session.Tables.TbCountry->Field("Country").Text(), "I");
  EXPECT_EQ(FindCountryText(session, "QQQ"), "");
  EXPECT_EQ(FindProvinceText(session, "I    ", "MI "), "MI  Milano");
  EXPECT_EQ(FindProvinceText(session, "F", "MI"), "");
}

TEST_F(ModulesTest, NotesAreListedInThreeWays) {
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

TEST_F(ModulesTest, AnEntryIsSelectedByTheBeginningThatItsCodeFills) {
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

TEST_F(ModulesTest, FieldTextOfNullIsEmpty) {
  session.Db.Execute("insert into Log (Call) values ('A')");
  const auto row = session.Db.OpenSnapshot("select Qra,Call from Log");
  EXPECT_EQ(FieldText(*row, "Qra"), "");
  EXPECT_EQ(FieldText(*row, "Call"), "A");
}

}  // namespace
}  // namespace brenvo::core
