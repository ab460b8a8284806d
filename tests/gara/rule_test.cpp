#include "gara/rule.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/gara/rules.h"

namespace brenvo::gara {
namespace {

using base::DateTime;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

std::vector<std::string> FaultTexts(std::string_view json) {
  std::vector<std::string> texts;
  for (const RuleFault& fault : ReadRuleText(json).faults) texts.push_back(fault.Text());
  return texts;
}

std::string SmallRule(std::string_view changed = "", std::string_view with = "") {
  std::string json = R"({"formato": 1, "nome": "Prova", "organizzatore": "Io", "sigla": "PROVA",
"anno": 2025,
"bande": ["2 m"], "modi": ["SSB"],
"finestre": [{"mese": 9, "quale": 1, "giorno": "sabato", "inizio": "14:00", "minuti": 1440}],
"scambio": [{"campo": "rapporto"}, {"campo": "locatore"}],
"punti": {"tipo": "fisso", "valore": 2},
"doppi per": "banda",
"log": {"formato": "edi", "scadenza": {"giorno": "mercoledì"}},
"esempi": [{"nominativo": "IK4ABC", "qso": [
{"banda": "2 m", "modo": "SSB", "nominativo": "I2AB", "punti": 2}],
"punti": 2, "punteggio": 2}]})";
  if (!changed.empty()) {
    const std::size_t at = json.find(changed);
    EXPECT_NE(at, std::string::npos) << changed;
    if (at != std::string::npos) json.replace(at, changed.size(), with);
  }
  return json;
}

TEST(ContestRule, EveryDeliveredRuleIsReadWholeAndItsExamplesComeOut) {
  int rules = 0, contacts = 0;
  for (const auto& entry : std::filesystem::directory_iterator(DeliveredRules())) {
    SCOPED_TRACE(entry.path().filename().string());
    const ReadRule read = ReadRuleText(BytesOfFile(entry.path()));
    for (const RuleFault& fault : read.faults) ADD_FAILURE() << fault.Text();
    EXPECT_FALSE(read.rule.examples.empty());
    for (const RuleFault& fault : FailedExamples(read.rule)) ADD_FAILURE() << fault.Text();
    for (const Example& example : read.rule.examples) contacts += std::ssize(example.contacts) > 0;
    // What may be sent knows when, what it is called and where it goes.
    if (read.rule.IsComplete()) {
      EXPECT_FALSE(read.rule.windows.empty());
      EXPECT_FALSE(read.rule.categories.empty());
      EXPECT_FALSE(read.rule.sendTo.empty());
      EXPECT_TRUE(read.rule.deadline);
    }
    ++rules;
  }
  EXPECT_EQ(rules, 18);
  EXPECT_GE(contacts, 18);
}

TEST(ContestRule, AnExampleThatComesOutOtherwiseIsToldWithItsLine) {
  const ReadRule read = ReadRuleText(SmallRule("\"punteggio\": 2", "\"punteggio\": 3"));
  ASSERT_THAT(read.faults, IsEmpty());
  const auto failed = FailedExamples(read.rule);
  ASSERT_EQ(failed.size(), 1u);
  EXPECT_EQ(failed[0].Text(), "riga 9, esempi: punteggio: scritto 3, dalle regole 2");
}

TEST(ContestRule, ASmallRuleHasNoFault) { EXPECT_THAT(FaultTexts(SmallRule()), IsEmpty()); }

TEST(ContestRule, AFaultIsToldWithItsLineAndItsField) {
  EXPECT_THAT(FaultTexts(SmallRule("\"tipo\": \"fisso\"", "\"tipo\": \"fiso\"")),
              ElementsAre("riga 6, punti.tipo: \"fiso\" non c'è: si scrive \"km\", \"anelli\", "
                          "\"fisso\", \"tabella\""));
  EXPECT_THAT(FaultTexts(SmallRule("\"anno\": 2025,", "\"anno\": 2025, \"colore\": 3,")),
              ElementsAre("riga 2, colore: campo sconosciuto"));
  EXPECT_THAT(FaultTexts(SmallRule("\"anno\": 2025,", "\"anno\": \"2025\",")),
              ElementsAre("riga 2, anno: qui ci vuole un numero"));
  EXPECT_THAT(FaultTexts(SmallRule("\"14:00\"", "\"25:00\"")),
              ElementsAre("riga 4, finestre[1].inizio: l'ora si scrive come 14:00"));
  EXPECT_THAT(FaultTexts(SmallRule("\"tipo\": \"fisso\", \"valore\": 2",
                                   "\"tipo\": \"km\", \"km per grado\": 300")),
              ElementsAre("riga 6, punti.km per grado: va da 100 a 120"));
  EXPECT_THAT(FaultTexts(SmallRule("\"doppi per\": \"banda\",\n", "")),
              ElementsAre("riga 1, doppi per: manca"));
  EXPECT_THAT(FaultTexts(SmallRule("\"nome\": \"Prova\"", "\"formato\": 2")),
              ElementsAre("riga 1: \"formato\" c'è già alla riga 1"));
}

TEST(ContestRule, WhatIsNoJsonIsToldWithItsLine) {
  EXPECT_THAT(FaultTexts(SmallRule("\"anno\": 2025,", "\"anno\": 2025")),
              ElementsAre("riga 3: il testo non è JSON: manca o avanza un segno, o una lettera non "
                          "è UTF-8"));
  EXPECT_EQ(FaultTexts("").size(), 1u);
  EXPECT_EQ(FaultTexts("[1]").size(), 1u);
  EXPECT_EQ(FaultTexts(std::string("\xff\xfe")).size(), 1u);
}

TEST(ContestRule, AFileBeyondItsBoundsIsRefused) {
  EXPECT_THAT(FaultTexts(std::string(kMostRuleBytes + 1, ' ')),
              ElementsAre("il file è più lungo di 1048576 byte"));
  EXPECT_THAT(FaultTexts(std::string(1000, '[')),
              ElementsAre("riga 1: troppe parentesi l'una nell'altra, più di 12"));
  std::string many = "[";
  for (std::size_t i = 0; i <= kMostRuleValues; ++i) many += "1,";
  EXPECT_THAT(FaultTexts(many), ElementsAre("riga 1: troppi valori, più di 50000"));
  std::string members = "{";
  for (int i = 0; i < 300; ++i) members += "\"a" + std::to_string(i) + "\":1,";
  EXPECT_THAT(FaultTexts(members), ElementsAre("riga 1: troppi campi, più di 200"));
}

TEST(ContestRule, AWindowByRuleFallsOnItsDays) {
  // The first Saturday, the third one, the third Sunday, the last Saturday.
  const auto begin = [](int month, int which, int weekday, int year) {
    RuleWindow window;
    window.month = month;
    window.which = which;
    window.weekday = weekday;
    window.beginMinute = 14 * 60;
    window.lengthMinutes = 24 * 60;
    const auto period = PeriodOf(window, year);
    return period ? base::IsoText(period->begin) : std::string("none");
  };
  EXPECT_EQ(begin(9, 1, 6, 2024), "2024-09-07 14:00:00");
  EXPECT_EQ(begin(9, 1, 6, 2018), "2018-09-01 14:00:00");
  EXPECT_EQ(begin(10, 1, 6, 2023), "2023-10-07 14:00:00");
  EXPECT_EQ(begin(6, 3, 6, 2025), "2025-06-21 14:00:00");
  EXPECT_EQ(begin(6, 3, 0, 2025), "2025-06-15 14:00:00");
  EXPECT_EQ(begin(11, 1, 6, 2017), "2017-11-04 14:00:00");
  EXPECT_EQ(begin(5, 1, 6, 2021), "2021-05-01 14:00:00");
  EXPECT_EQ(begin(2, -1, 6, 2024), "2024-02-24 14:00:00");
  EXPECT_EQ(begin(2, 5, 6, 2025), "none");
}

TEST(ContestRule, AFixedDayBelongsToItsOwnYear) {
  const Rule romagna = DeliveredRule("romagna");
  ASSERT_EQ(PeriodsOf(romagna, 2025).size(), 3u);
  EXPECT_EQ(base::IsoText(PeriodsOf(romagna, 2025)[2].end), "2025-02-02 15:00:00");
  EXPECT_THAT(PeriodsOf(romagna, 2026), IsEmpty());
}

TEST(ContestRule, ALogIsDueOnTheWednesdayBehindTheWeekend) {
  const Rule iaru = DeliveredRule("iaru-145");
  const Period period = PeriodsOf(iaru, 2024).at(0);
  EXPECT_EQ(base::IsoText(*DeadlineOf(iaru, period)), "2024-09-11 23:59:59");
  Rule days = iaru;
  days.deadline = Deadline{-1, 10, 12 * 60};
  EXPECT_EQ(base::IsoText(*DeadlineOf(days, period)), "2024-09-18 12:00:59");
}

TEST(ContestRule, WhatTheRulesLeaveOpenKeepsThemFromBeingSent) {
  EXPECT_TRUE(DeliveredRule("iaru-145").IsComplete());
  EXPECT_FALSE(DeliveredRule("iac").IsComplete());
}

}  // namespace
}  // namespace brenvo::gara
