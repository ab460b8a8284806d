#include "print/card_labels.h"

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "print/label_settings.h"
#include "print/stampa_qsl.h"
#include "tests/support/golden.h"
#include "tests/support/station.h"

namespace brenvo::print {
namespace {

using testing::ElementsAre;
using Texts = std::vector<std::string>;

LabelContact CardFor(std::string call, std::string manager = "", int minute = 0) {
  static std::int64_t qsoNr = 0;
  LabelContact contact;
  contact.qsoNr = ++qsoNr;
  contact.qso.Call = std::move(call);
  contact.qso.Banda = "  2 m";
  contact.qso.Modo = "SSB";
  contact.qso.QrkDato = "59";
  contact.qso.DataQso = base::DateTime::Of(2001, 2, 3, 10, minute);
  contact.Manager = std::move(manager);
  return contact;
}

// By the letter that a call begins with.
std::string CountryByLetter(const std::string& call) {
  return call.starts_with("IS") ? "IS0" : call.starts_with("D") ? "DL" : call.substr(0, 1);
}

CardRules SomeRules() {
  CardRules rules;
  rules.byDigit = {"CASA", "K"};
  rules.oneBureau = {{"I", "IS0"}};
  return rules;
}

// "DL1ABC 2": to whom, and how many lines; "*" for a manager.
Texts Piles(const std::vector<LabelContact>& contacts, int lines) {
  const CardRules rules = SomeRules();
  Texts piles;
  for (const CardLabel& label :
       LabelsFor(contacts, rules, HomeOf(rules, "I"), lines, CountryByLetter)) {
    piles.push_back(fmt::format("{}{} {}", label.to, label.manager ? "*" : "", label.lines.size()));
  }
  return piles;
}

TEST(CardLabels, GoToTheManagerWhereThatIsACallAndToTheStationItselfElse) {
  const auto to = [](const char* call, const char* manager) {
    const Addressee addressee = AddresseeOf(call, manager);
    return addressee.call + (addressee.manager ? "*" : "");
  };
  EXPECT_EQ(to("5Z4ABC", "dl1abc"), "DL1ABC*");
  EXPECT_EQ(to("5Z4ABC", " via G3XYZ "), "G3XYZ*");
  EXPECT_EQ(to("F/DL1ABC/P", ""), "DL1ABC");
  for (const char* word : {"BUREAU", "LoTW", "73", "vedi sito 2", "no"}) {
    EXPECT_EQ(to("5Z4ABC", word), "5Z4ABC") << word;
  }
}

TEST(CardLabels, LieInTheOrderOfTheBureauWithTheHomeCountryApart) {
  EXPECT_THAT(Piles({CardFor("IK3ABC"), CardFor("K6AAA"), CardFor("DL2ABC"), CardFor("IS0ABC"),
                     CardFor("I1ABC"), CardFor("K1ZZZ"), CardFor("DJ9ABC"), CardFor("AA1A"),
                     CardFor("ZL7A", "I2XYZ"), CardFor("DL0ABC", "G3XYZ")},
                    4),
              ElementsAre("AA1A 1", "DJ9ABC 1", "DL2ABC 1", "G3XYZ* 1", "K1ZZZ 1", "K6AAA 1",
                          "IS0ABC 1", "I1ABC 1", "I2XYZ* 1", "IK3ABC 1"));
}

TEST(CardLabels, TakeContactsWithOneStationTogetherAndGoOnOnTheNextLabel) {
  std::vector<LabelContact> contacts;
  for (int i = 0; i < 5; ++i)
    contacts.push_back(CardFor(i % 2 == 0 ? "DL1ABC" : "dl1abc/P", "", i));
  contacts.push_back(CardFor("DK1ABC"));
  contacts.push_back(CardFor("EA8ABC", "DL1ABC"));
  contacts.push_back(CardFor("EA9ABC", "DL1ABC", 1));
  EXPECT_THAT(Piles(contacts, 2),
              ElementsAre("DK1ABC 1", "DL1ABC 2", "DL1ABC 2", "DL1ABC 1", "DL1ABC* 2"));
}

TEST(CardLabels, HoldTheirContactsByDate) {
  const CardRules rules = SomeRules();
  const auto labels = LabelsFor({CardFor("DL1ABC", "", 9), CardFor("DL1ABC", "", 3)}, rules, {"I"},
                                4, CountryByLetter);
  ASSERT_EQ(labels.size(), 1u);
  EXPECT_EQ(labels[0].lines[0].qso.DataQso->Minute(), 3);
}

TEST(CardLabels, HaveRoomForTheLinesThatFit) {
  EXPECT_EQ(CardLinesOn(339), 6);
  EXPECT_EQ(CardLinesOn(480), 10);
  EXPECT_EQ(CardLinesOn(50), 1);
  // Smaller letters: more of them.
  EXPECT_GT(CardLinesOn(381, 635 / 800.0), CardLinesOn(381));
}

class DrawnLabelsTest : public StationTest {};

TEST_F(DrawnLabelsTest, AreAsTheyWereFoundRight) {
  platform::Printer& printer = session.Machine.GetPrinter();
  CardLabel station{"DL1ABC", false, {}};
  for (int i = 0; i < 2; ++i) station.lines.push_back({CardFor("DL1ABC", "", i).qso, i});
  station.lines[1].qso.QslRicevuta = true;
  DrawCardLabel(printer, base::Mm(0), base::Mm(0), station);
  CardLabel manager{"G3XYZ", true, {}};
  manager.lines.push_back({CardFor("EA8ABC").qso, 3});
  manager.lines[0].qso.QslRicevuta = true;
  manager.lines[0].qso.DataQso.reset();
  DrawCardLabel(printer, base::Mm(80), base::Mm(0), manager, 0.5);
  printer.EndDocument();
  std::string drawn;
  for (const std::string& line : Lines()) drawn += line + "\n";
  ExpectGolden("print/golden/card_labels.txt", drawn);
}

TEST_F(DrawnLabelsTest, WhatMayBeStoredIsWhatTheScreensSlidersHold) {
  Know<StampaQsl>("StampaQsl");
  auto& screen = Open<StampaQsl>("StampaQsl");
  forms::Slider* const sliders[] = {&screen.AltezzaEtichetta, &screen.LarghezzaEtichetta,
                                    &screen.SpazOrizzontale,  &screen.SpazVerticale,
                                    &screen.MargineSuperiore, &screen.MargineSinistro,
                                    &screen.EtichXFila};
  for (std::size_t i = 0; i < std::size(sliders); ++i) {
    EXPECT_EQ(sliders[i]->Minimum(), kSmallestLabels.*kLabelSettings[i].value) << i;
    EXPECT_EQ(sliders[i]->Maximum(), kLargestLabels.*kLabelSettings[i].value) << i;
  }
}

}  // namespace
}  // namespace brenvo::print
