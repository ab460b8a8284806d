#include "gara/check.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gara/rules.h"

namespace brenvo::gara {
namespace {

using base::DateTime;
using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class ContestCheck : public ::testing::Test {
 protected:
  ContestCheck() {
    head.call = "IK4ABC";
    head.locator = "JN54MN";
    head.category = "SINGLE";
    head.mail = "ik4abc@example.org";
    head.power = "50";
    head.name = "Nicola";
    Log("DK5AB", "JN48QT");
    Log("S51ZO", "JN86DT");
    Log("I6XYZ", "JN63QN");
  }
  Contact& Log(std::string call, std::string locator) {
    Contact contact = Made("2 m", std::move(call), std::move(locator));
    contact.time = contact.time.Later(std::ssize(contacts) * 60);
    contact.serialSent = std::ssize(contacts) + 1;
    contact.serialReceived = 10 + std::ssize(contacts);
    return contacts.emplace_back(std::move(contact));
  }
  std::vector<std::string> Findings() {
    const OwnEntry own{head.call, head.locator, head.exchange, {}};
    Count count(rule, own);
    count.Reset(contacts);
    std::vector<LogRow> rows;
    for (std::size_t i = 0; i < contacts.size(); ++i) {
      rows.push_back({contacts[i], count.Worths()[i]});
      rows.back().worth.points += wrongPoints;
    }
    std::vector<std::string> texts;
    constexpr std::string_view kWeights[] = {"E", "W", "H"};
    for (const Finding& each : CheckLog({rule, head, own, PeriodsOf(rule, 2024).at(0), now, rows,
                                         count.Total().total + wrongScore, locatorsOf})) {
      texts.push_back(fmt::format("{} {}{}", kWeights[static_cast<int>(each.weight)],
                                  each.row ? fmt::format("{}: ", *each.row + 1) : "", each.text));
    }
    return texts;
  }

  Rule rule = DeliveredRule("iaru-145");
  LogHead head;
  std::vector<Contact> contacts;
  DateTime now = DateTime::Of(2024, 9, 9, 19, 0);
  std::int64_t wrongPoints = 0, wrongScore = 0;
  std::function<std::vector<std::string>(std::string_view)> locatorsOf;
  const std::string due = "H Il log scade mercoledì 11/09/2024 alle 23:59 UTC, fra 2 g 4 h";
};

TEST_F(ContestCheck, OfALogInOrderOnlyTheDeadlineIsSaid) {
  EXPECT_THAT(Findings(), ElementsAre(due));
}

TEST_F(ContestCheck, ADeadlineThatIsOverIsAWarning) {
  now = DateTime::Of(2024, 9, 12);
  EXPECT_THAT(Findings(), ElementsAre("W Il log scadeva mercoledì 11/09/2024 alle 23:59 UTC"));
}

TEST_F(ContestCheck, OfSixHoursInTwoPeriodsOnlyOneLongPauseIsLeftOut) {
  head.category = "6 HOURS";
  contacts.clear();
  const auto at = [&](std::string call, int hour, int minute) {
    Contact& contact = Log(std::move(call), "JN48QT");
    contact.time = DateTime::Of(2024, 9, 7, 14, 0).Later((hour * 60 + minute) * 60);
  };
  at("DK5AB", 0, 0);
  at("S51ZO", 3, 0);
  at("I6XYZ", 8, 0);   // behind a pause of five hours
  at("OK1XY", 11, 0);  // six hours in all
  EXPECT_THAT(Findings(), ElementsAre(due));
  at("OE3XY", 11, 1);
  EXPECT_THAT(Findings(),
              Contains("E In 6 HOURS contano 6 ore: dal primo all'ultimo QSO, senza le pause che "
                       "valgono, ne passano 6 e 1 minuti"));
  contacts.pop_back();
  contacts[1].time = DateTime::Of(2024, 9, 7, 18, 0);  // two pauses, of which one counts
  EXPECT_THAT(Findings(), Contains(::testing::HasSubstr("ne passano 7 e 0 minuti")));
  head.category = "SINGLE";
  EXPECT_THAT(Findings(), ElementsAre(due));
}

TEST_F(ContestCheck, EachFaultOfTheHeadIsTold) {
  head = LogHead();
  head.category = "SINGOLO";
  head.street = "Via Forlì";
  contacts.clear();
  EXPECT_THAT(Findings(), ElementsAre("E Manca il nominativo usato",
                                      "E Il proprio locatore non è di sei lettere e cifre",
                                      "E La categoria \"SINGOLO\" non è fra quelle dello sponsor",
                                      "E Non c'è nessun QSO", "W Manca la mail (RHBBS)",
                                      "W Manca la potenza", "W Manca il nome dell'operatore",
                                      "H Nel file l'indirizzo cambia lettere: Via Forlì", due));
}

TEST_F(ContestCheck, RulesThatAreOpenKeepALogFromBeingSent) {
  rule.open = {"La data"};
  EXPECT_THAT(Findings(), ElementsAre("E Regole da completare: La data", due));
}

TEST_F(ContestCheck, EachFaultOfAContactIsToldWithItsRow) {
  const auto with = [&](const std::function<void(Contact&)>& spoil) {
    const std::vector<Contact> kept = contacts;
    spoil(contacts[1]);
    std::vector<std::string> found = Findings();
    contacts = kept;
    std::erase(found, due);
    return found;
  };
  EXPECT_THAT(with([](Contact& c) { c.time = c.time.Later(-120 * 60); }),
              ElementsAre("E 2: Fuori dall'orario del contest",
                          "W 2: L'ora è prima di quella del QSO precedente"));
  EXPECT_THAT(with([](Contact& c) { c.mode = "FT8"; }),
              ElementsAre("E 2: Il modo FT8 non è del contest"));
  EXPECT_THAT(with([](Contact& c) { c.reportSent = "5"; }),
              ElementsAre("E 2: Il rapporto dato \"5\" non è tale"));
  EXPECT_THAT(with([](Contact& c) { c.reportReceived = "599"; }),
              ElementsAre("W 2: Il rapporto ricevuto 599 non è di SSB"));
  EXPECT_THAT(with([](Contact& c) { c.locator = "JN86"; }),
              ElementsAre("E 2: Il locatore ricevuto non è di sei lettere e cifre"));
  EXPECT_THAT(with([](Contact& c) { c.serialReceived = 0; }),
              ElementsAre("E 2: Manca il progressivo ricevuto"));
  EXPECT_THAT(with([](Contact& c) { c.serialSent = 1; }),
              ElementsAre("E 2: Il progressivo 1 è dato due volte",
                          "W 3: Prima manca il progressivo 2: un QSO cancellato?"));
  EXPECT_THAT(with([](Contact& c) { c.serialSent = 0; }),
              ElementsAre("E 2: Manca il progressivo dato",
                          "W 3: Prima manca il progressivo 2: un QSO cancellato?"));
  EXPECT_THAT(with([](Contact& c) { c.band = "70cm"; }),
              Contains("E 2: La banda 70cm non è del contest"));
  EXPECT_THAT(with([](Contact& c) { c.call = "IK4ABC/P"; }),
              ElementsAre("W 2: È il proprio nominativo"));
  EXPECT_THAT(with([](Contact& c) { c.call = "DK5AC"; }),
              ElementsAre("W 2: DK5AC e DK5AB differiscono di una lettera"));
  EXPECT_THAT(with([](Contact& c) { c.locator = "IM67AA"; }),
              ElementsAre("W 2: 1799 km sono tanti"));
  EXPECT_THAT(with([](Contact& c) { c.call = "?"; }), ElementsAre("E 2: Il nominativo non è tale"));
}

TEST_F(ContestCheck, OneStationWithTwoLocatorsOrAFallingSerialIsDoubted) {
  Log("DK5AB/P", "JN48QU").serialReceived = 3;
  EXPECT_THAT(Findings(), ElementsAre("W 4: DK5AB aveva il locatore JN48QT",
                                      "W 4: Il progressivo ricevuto scende: prima era 10",
                                      "H Doppi: 1, restano nel log con 0 punti", due));
}

TEST_F(ContestCheck, ALocatorThatHistoryDoesNotKnowIsDoubted) {
  locatorsOf = [](std::string_view call) {
    return call == "S51ZO" ? std::vector<std::string>{"JN76AA", "JN75ZZ"}
                           : std::vector<std::string>();
  };
  EXPECT_THAT(Findings(), ElementsAre("W 2: Locatore diverso dal solito: JN76AA", due));
}

TEST_F(ContestCheck, PointsAndScoreAreCountedOnceMore) {
  wrongPoints = 1;
  wrongScore = 5;
  const auto found = Findings();
  EXPECT_THAT(found, Contains("E 1: Punti 491, dalle regole 490"));
  EXPECT_THAT(found, Contains(::testing::StartsWith("E Il totale è ")));
}

TEST(ContestCalls, OneLetterMoreLessOrOtherIsOne) {
  EXPECT_TRUE(DifferByOne("IK4ABC", "IK4ABD"));
  EXPECT_TRUE(DifferByOne("IK4ABC", "IK4AB"));
  EXPECT_TRUE(DifferByOne("K4ABC", "IK4ABC"));
  EXPECT_FALSE(DifferByOne("IK4ABC", "IK4ABC"));
  EXPECT_FALSE(DifferByOne("IK4ABC", "IK4BAC"));
  EXPECT_FALSE(DifferByOne("IK4ABC", "IK4"));
}

}  // namespace
}  // namespace brenvo::gara
