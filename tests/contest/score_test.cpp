#include "contest/score.h"

#include <gtest/gtest.h>

#include "tests/contest/sample_log.h"

namespace brenvo::contest {
namespace {

using Texts = std::vector<std::string>;

TEST(ContestScore, WithoutASwitchTheScoreIsTheSumOfThePoints) {
  const Tally tally = TallyOf(SampleLog(), SampleCountry);
  EXPECT_EQ(tally.TotalePunti, 1210);
  EXPECT_EQ(MultiplierOf(tally, {}), 1);
  EXPECT_EQ(ScoreOf(tally, {}), 1210);
}

TEST(ContestScore, EachSwitchAddsItsOwnCount) {
  const Tally tally = TallyOf(SampleLog(), SampleCountry);
  EXPECT_EQ(MultiplierOf(tally, {true, false, false}), 3);
  EXPECT_EQ(MultiplierOf(tally, {false, true, false}), 2);
  EXPECT_EQ(MultiplierOf(tally, {false, false, true}), 2);
  EXPECT_EQ(MultiplierOf(tally, {true, true, true}), 7);
}

TEST(ContestScore, ThreeContactsInTwoSquaresDoubleTheirPoints) {
  const std::vector<Contact> contacts = {MakeContact(1, "IK3ABC", "JN65AB", 100),
                                         MakeContact(2, "IK3DEF", "JN65CD", 200),
                                         MakeContact(3, "I5GHI", "JN53AA", 300)};
  const Tally tally = TallyOf(contacts, SampleCountry);
  EXPECT_EQ(ScoreOf(tally, {true, false, false}), 1200);
}

TEST(ContestScore, AMultiplierOfNothingBecomesOne) {
  const std::vector<Contact> contacts = {MakeContact(1, "IK3ABC", "JN65AB", 100)};
  const Tally tally = TallyOf(contacts, SampleCountry);
  EXPECT_EQ(tally.Exchanges.Count(), 0u);
  EXPECT_EQ(MultiplierOf(tally, {false, false, true}), 1);
}

TEST(ContestScore, ADuplicateCountsInEverythingButPointsAndValidContacts) {
  std::vector<Contact> contacts = SampleLog();
  contacts.push_back(MakeContact(5, "OE1NEW", "JN88EE", 999, "[Exc=XX]Qso doppio (2) "));
  const Tally before = TallyOf(SampleLog(), SampleCountry);
  const Tally tally = TallyOf(contacts, SampleCountry);
  EXPECT_EQ(tally.TotaleQso, 5);
  EXPECT_EQ(tally.QsoValidi, 4);
  EXPECT_EQ(tally.TotaleQrb, before.TotaleQrb + 999);
  EXPECT_EQ(tally.TotalePunti, before.TotalePunti);
  EXPECT_EQ(tally.Squares.Count(), before.Squares.Count() + 1);
  EXPECT_EQ(tally.Exchanges.Count(), before.Exchanges.Count() + 1);
  EXPECT_EQ(tally.CallMaxQrb, "OE1NEW");
}

TEST(ContestScore, ACallOfNoKnownCountryCountsNone) {
  const Tally tally = TallyOf(std::vector{MakeContact(1, "OE1NEW", "JN88EE", 10)}, SampleCountry);
  EXPECT_EQ(tally.Countries.Count(), 0u);
  EXPECT_EQ(tally.Squares.Count(), 1u);
}

TEST(ContestScore, TheFirstOfEqualDistancesStaysTheGreatest) {
  const std::vector<Contact> contacts = {MakeContact(1, "IK3ABC", "JN65AB", 300),
                                         MakeContact(2, "IK3DEF", "JN65CD", 300)};
  const Tally tally = TallyOf(contacts, SampleCountry);
  EXPECT_EQ(tally.MaxQrb, 300);
  EXPECT_EQ(tally.ProgrMaxQrb, 1);
  EXPECT_EQ(tally.CallMaxQrb, "IK3ABC");
}

TEST(ContestScore, WithoutADistanceNoContactIsTheGreatest) {
  const std::vector<Contact> contacts = {MakeContact(1, "IK3ABC", "JN65AB", 0)};
  const Tally tally = TallyOf(contacts, SampleCountry);
  EXPECT_EQ(tally.MaxQrb, 0);
  EXPECT_EQ(tally.CallMaxQrb, "");
  EXPECT_EQ(tally.LocatorMaxQrb, "");
}

TEST(ContestScore, ANullNoteIsAValidContactAndThenAFailure) {
  std::vector<Contact> contacts = SampleLog();
  contacts[2].Note.reset();
  EXPECT_FALSE(IsDuplicate(contacts[2]));
  EXPECT_THROW(TallyOf(contacts, SampleCountry), std::runtime_error);
}

TEST(ContestScore, TextsThatDifferInCaseOrTrailingBlanksAreOne) {
  DistinctTexts texts;
  EXPECT_TRUE(texts.Add("MI"));
  EXPECT_FALSE(texts.Add("mi "));
  EXPECT_TRUE(texts.Add(" MI"));
  EXPECT_EQ(texts.Texts(), (Texts{"MI", " MI"}));
}

TEST(ContestNote, TheDuplicateMarkStandsInFrontOfTheTrimmedNote) {
  EXPECT_EQ(MarkDuplicate(" ciao ", "1"), "Qso doppio (1) ciao");
}

TEST(ContestNote, TheExchangeMarkStandsDirectlyInFront) {
  EXPECT_EQ(MarkExchange("Qso doppio (1) ", "MI"), "[Exc=MI]Qso doppio (1) ");
}

std::optional<std::string> ExchangeIn(std::string_view note) {
  return ExchangeOf(MakeContact(1, "IK3ABC", "JN65AB", 1, note));
}

TEST(ContestNote, TheExchangeEndsAtTheFirstClosingBracket) {
  EXPECT_EQ(ExchangeIn("[Exc=MI]ciao"), "MI");
  EXPECT_EQ(ExchangeIn("prima [Exc=MI] e [Exc=BO]"), "MI");
  EXPECT_EQ(ExchangeIn("[Exc=]"), "");
  EXPECT_EQ(ExchangeIn("[Exc=MI"), std::nullopt);
  EXPECT_EQ(ExchangeIn("MI]"), std::nullopt);
  EXPECT_EQ(ExchangeIn("[Exch=MI]"), std::nullopt);
  EXPECT_EQ(ExchangeIn("] [Exc=MI]"), "");
}

}  // namespace
}  // namespace brenvo::contest
