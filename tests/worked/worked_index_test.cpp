#include "worked/worked_index.h"

#include <gmock/gmock.h>

#include "tests/support/places.h"

namespace brenvo::worked {
namespace {

using enum State;

constexpr ServiceSet kCard = 1, kLotw = 2, kEqsl = 4;

std::shared_ptr<const Rules> DeliveredRules() {
  static const auto rules = std::make_shared<const Rules>(
      ReadRules(SourceDir() / "data" / "rules" / "Lavorati.csv", "no such file"));
  return rules;
}

class WorkedIndexTest : public testing::Test {
 protected:
  static Contact Venetian() {
    Contact contact;
    contact.Call = "IK3ABC";
    contact.Prefisso = "IK3";
    contact.Country = "I";
    contact.Continente = "EU";
    contact.Provincia = "TV";
    contact.Locator = "JN65DP";
    contact.Banda = "  2 m";
    contact.Modo = "SSB";
    contact.ZonaCQ = 15;
    contact.ZonaITU = 28;
    return contact;
  }
  State Asked(const Subject& subject, const Filter& filter = {}) const {
    return index.Ask(subject, filter).state;
  }
  Group GroupOf(const char* name) const { return DeliveredRules()->FindGroup(name).value(); }

  WorkedIndex index{DeliveredRules()};
};

TEST_F(WorkedIndexTest, EveryThingInAContactIsWorkedWithItAndNoOther) {
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), kNew);
  index.Add(Venetian());
  EXPECT_EQ(Asked(Subject::Call("IK3ABC")), kWorked);
  EXPECT_EQ(Asked(Subject::Prefisso("IK3")), kWorked);
  EXPECT_EQ(Asked(Subject::Country("I")), kWorked);
  EXPECT_EQ(Asked(Subject::ZonaCQ(15)), kWorked);
  EXPECT_EQ(Asked(Subject::ZonaITU(28)), kWorked);
  EXPECT_EQ(Asked(Subject::Continente("EU")), kWorked);
  EXPECT_EQ(Asked(Subject::Provincia("I", "TV")), kWorked);
  EXPECT_EQ(Asked(Subject::Square("JN65")), kWorked);
  EXPECT_EQ(Asked(Subject::Square6("JN65DP")), kWorked);

  EXPECT_EQ(Asked(Subject::Call("IK3")), kNew) << "a prefix is no call";
  EXPECT_EQ(Asked(Subject::Prefisso("I")), kNew);
  EXPECT_EQ(Asked(Subject::ZonaCQ(28)), kNew) << "the zones are two";
  EXPECT_EQ(Asked(Subject::ZonaITU(15)), kNew);
  EXPECT_EQ(Asked(Subject::Provincia("K", "TV")), kNew) << "a province is of a country";
  EXPECT_EQ(Asked(Subject::Square("JN66")), kNew);
  EXPECT_EQ(Asked(Subject::Square6("JN65DO")), kNew);
}

TEST_F(WorkedIndexTest, TextsCompareAsTheDatabaseCompares) {
  Contact contact = Venetian();
  contact.Call = "ik3abc  ";
  contact.Locator = "jn65dp";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Call("IK3abc")), kWorked);
  EXPECT_EQ(Asked(Subject::Call(" IK3ABC")), kNew) << "blanks in front count";
  EXPECT_EQ(Asked(Subject::Square("JN65ZZ")), kWorked);
  EXPECT_EQ(Asked(Subject::Square6("Jn65Dp")), kWorked);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC"), {.band = "  2 M  "}), kWorked);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC"), {.band = "2 m"}), kNew);
}

TEST_F(WorkedIndexTest, LongTextsThatDifferInOneCharacterAreTwo) {
  Contact contact;
  contact.Call = "VK9/OH0/IK3ABC/MM/QRP/LUNGO";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Call("vk9/oh0/ik3abc/mm/qrp/lungo")), kWorked);
  EXPECT_EQ(Asked(Subject::Call("VK9/OH0/IK3ABC/MM/QRP/LUNGA")), kNew);
  EXPECT_EQ(Asked(Subject::Call("VK9/OH0/IK3ABC/MM/QRP/LUNG")), kNew);
  EXPECT_EQ(Asked(Subject::Call("VK9/OH0/IK3ABB/MM/QRP/LUNGO")), kNew);
  EXPECT_EQ(Asked(Subject::Call("VK9/OH0[IK3ABC/MM/QRP/LUNGO")), kNew);
}

TEST_F(WorkedIndexTest, WhatIsEmptyOrTooShortIsNothing) {
  Contact contact;
  contact.Call = "  ";
  contact.Locator = "JN6";
  contact.Provincia = "TV";  // of no country
  index.Add(contact);
  EXPECT_EQ(index.Contacts(), 1);
  EXPECT_EQ(Asked(Subject::Call("")), kNew);
  EXPECT_EQ(Asked(Subject::ZonaCQ(0)), kNew);
  EXPECT_EQ(Asked(Subject::Square("JN6")), kNew);
  EXPECT_EQ(Asked(Subject::Provincia("", "TV")), kNew);
  contact.Locator = "JN65";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Square("JN65")), kWorked);
  EXPECT_EQ(Asked(Subject::Square6("JN65")), kNew);
  contact.Locator = "JN65  ";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Square6("JN65  ")), kNew);
}

TEST_F(WorkedIndexTest, AFilterAsksByBandByGroupOfModesAndBySatellite) {
  Contact contact = Venetian();
  index.Add(contact);
  contact.Banda = " 20 m";
  contact.Modo = "CW";
  index.Add(contact);
  contact.Banda = " 70cm";
  contact.Modo = "FM";
  contact.Propagazione = "satellite";
  index.Add(contact);
  const Subject country = Subject::Country("I");
  EXPECT_EQ(index.Ask(country).contacts, 3);
  EXPECT_EQ(index.Ask(country, {.band = "  2 m"}).contacts, 1);
  EXPECT_EQ(index.Ask(country, {.band = "  6 m"}), Answer());
  EXPECT_EQ(index.Ask(country, {.group = GroupOf("Fonia")}).contacts, 2);
  EXPECT_EQ(index.Ask(country, {.band = " 20 m", .group = GroupOf("Fonia")}), Answer());
  EXPECT_EQ(index.Ask(country, {.group = GroupOf("CW")}).contacts, 1);
  EXPECT_EQ(index.Ask(country, {.satellite = true}).contacts, 1);
  EXPECT_EQ(index.Ask(country, {.satellite = false}).contacts, 2);
  EXPECT_EQ(index.Ask(country, {.group = GroupOf("Fonia"), .satellite = false}).contacts, 1);
}

TEST_F(WorkedIndexTest, ModesOfOneGroupCountAsOneAndAModeOfNoGroupOnlyWhereTheModeDoesNotCount) {
  Contact contact = Venetian();
  for (const char* mode : {"USB", "lsb ", "AM", "DMR"}) {
    contact.Modo = mode;
    index.Add(contact);
  }
  contact.Modo = "Parola";
  index.Add(contact);
  EXPECT_EQ(index.Ask(Subject::Country("I"), {.group = GroupOf("Fonia")}).contacts, 4);
  EXPECT_EQ(index.Ask(Subject::Country("I"), {.group = kNoGroup}).contacts, 1);
  EXPECT_EQ(index.Ask(Subject::Country("I")).contacts, 5);
}

TEST_F(WorkedIndexTest, TheModeOfASatelliteContactIsTheOneInItsNote) {
  Contact contact = Venetian();
  contact.Modo = "Satellite";
  contact.Note = "[AO-7/B/CW]";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Country("I"), {.group = GroupOf("CW"), .satellite = true}), kWorked);
  contact.Note = "bel passaggio";
  index.Add(contact);
  EXPECT_EQ(index.Ask(Subject::Country("I"), {.satellite = true}).contacts, 2);
  EXPECT_EQ(index.Ask(Subject::Country("I"), {.group = kNoGroup}).contacts, 1);
}

TEST_F(WorkedIndexTest, AConfirmationCountsForWhatTheRulesLetItCount) {
  Contact contact = Venetian();
  contact.confirmedBy = kEqsl;
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::ZonaCQ(15)), kConfirmed);
  EXPECT_EQ(Asked(Subject::Country("I")), kWorked);
  EXPECT_EQ(index.Ask(Subject::Country("I")).confirmedBy, 0);
  contact.confirmedBy = kCard | kLotw;
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Country("I")), kConfirmed);
  EXPECT_EQ(index.Ask(Subject::Country("I")).confirmedBy, kCard | kLotw);
  EXPECT_EQ(index.Ask(Subject::ZonaCQ(15)).confirmedBy, kCard | kLotw | kEqsl);
}

TEST_F(WorkedIndexTest, WhoeverAsksMayLetFewerServicesCount) {
  Contact contact = Venetian();
  contact.confirmedBy = kCard;
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Country("I"), {.services = kLotw}), kWorked);
  EXPECT_EQ(Asked(Subject::Country("I"), {.services = kLotw | kCard}), kConfirmed);
}

TEST_F(WorkedIndexTest, AConfirmationOnOneBandIsNoneOnAnother) {
  Contact contact = Venetian();
  contact.confirmedBy = kCard;
  index.Add(contact);
  contact.confirmedBy = 0;
  contact.Banda = " 20 m";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Country("I"), {.band = "  2 m"}), kConfirmed);
  EXPECT_EQ(Asked(Subject::Country("I"), {.band = " 20 m"}), kWorked);
  EXPECT_EQ(Asked(Subject::Country("I")), kConfirmed);
}

TEST_F(WorkedIndexTest, ProvincesOfACountryCountForTheOneThatTheRulesName) {
  Contact contact = Venetian();
  contact.Country = "IS0";
  contact.Provincia = "CA";
  index.Add(contact);
  EXPECT_EQ(Asked(Subject::Provincia("I", "CA")), kWorked);
  EXPECT_EQ(Asked(Subject::Provincia("IS0", "ca")), kWorked);
  EXPECT_EQ(Asked(Subject::Provincia("K", "CA")), kNew);
  EXPECT_EQ(Asked(Subject::Country("I")), kNew);
}

TEST_F(WorkedIndexTest, AContactTakenAwayLeavesWhatTheOthersBrought) {
  const Contact first = Venetian();
  Contact second = Venetian();
  second.Call = "IK3DEF";
  second.confirmedBy = kCard;
  index.Add(first);
  index.Add(second);
  EXPECT_TRUE(index.Remove(second));
  EXPECT_EQ(Asked(Subject::Country("I")), kWorked);
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), kNew);
  EXPECT_TRUE(index.Remove(first));
  EXPECT_EQ(Asked(Subject::Country("I")), kNew);
  EXPECT_EQ(index.Contacts(), 0);
}

TEST_F(WorkedIndexTest, AContactThatIsNotThereIsRefusedAndNothingChanges) {
  index.Add(Venetian());
  Contact other = Venetian();
  other.confirmedBy = kCard;
  EXPECT_FALSE(index.Remove(other));
  other = Venetian();
  other.Locator = "JN65DQ";  // all but one thing is there
  EXPECT_FALSE(index.Remove(other));
  EXPECT_EQ(index.Contacts(), 1);
  EXPECT_EQ(index.Ask(Subject::Country("I")).contacts, 1);
}

TEST_F(WorkedIndexTest, TwoAreEqualWhenTheyAnswerAlikeInWhateverOrderTheyWereFilled) {
  Contact first = Venetian(), second = Venetian();
  second.Banda = " 20 m";
  second.Call = "IK3DEF";
  WorkedIndex other(DeliveredRules());
  index.Add(first);
  index.Add(second);
  other.Add(second);
  EXPECT_FALSE(index == other);
  other.Add(first);
  EXPECT_TRUE(index == other);
  EXPECT_TRUE(other.Remove(first));
  first.confirmedBy = kLotw;
  other.Add(first);
  EXPECT_FALSE(index == other);
  index.Shrink();
  EXPECT_EQ(Asked(Subject::Call("IK3DEF")), kWorked);
}

TEST_F(WorkedIndexTest, BandsBeyondTheMostThatAreToldApartStillCountWhereTheBandDoesNot) {
  Contact contact;
  contact.Call = "IK3ABC";
  constexpr int kBands = 1200;
  for (int i = 0; i < kBands; ++i) {
    const std::string band = std::to_string(i);
    contact.Banda = band;
    contact.Call = i % 100 == 0 ? "IK3ABC" : "";
    index.Add(contact);
  }
  EXPECT_EQ(index.Ask(Subject::Call("IK3ABC")).contacts, kBands / 100);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC"), {.band = "900"}), kWorked);
  EXPECT_EQ(Asked(Subject::Call("IK3ABC"), {.band = "1100"}), kNew);
  contact.Call = "IK3ABC";
  contact.Banda = "1100";
  EXPECT_TRUE(index.Remove(contact));
}

}  // namespace
}  // namespace brenvo::worked
