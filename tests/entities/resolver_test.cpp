#include "entities/resolver.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

#include "entities/read_tables.h"
#include "tests/support/places.h"

namespace brenvo::entities {
namespace {

using base::DateTime;

const Table& Delivered() {
  static const Table table = ReadTableFile(SourceDir() / "data/rules/Entita.csv", {});
  return table;
}

const Resolver& Today() {
  static const Table* const tables[] = {&Delivered()};
  static const Resolver resolver(tables);
  return resolver;
}

// A table with "|" before the delivered one.
class With {
 public:
  explicit With(std::string_view rows)
      : table_(ReadTable(rows, "prova.tbl", {})),
        tables_{&table_, &Delivered()},
        resolver_(tables_) {}
  Answer operator()(std::string_view call, DateTime utc) const {
    return resolver_.Resolve(call, utc);
  }

 private:
  Table table_;
  std::vector<const Table*> tables_;
  Resolver resolver_;
};

struct Case {
  std::string_view call;
  DateTime utc;
  int entity;
  int cq = 0;  // 0: whichever
};

const DateTime kNow = DateTime::Of(2026, 3, 15, 12);

TEST(Resolving, KnowsWhoACallWasOnThatDay) {
  const Case cases[] = {
      {"GB6WW", DateTime::Of(2024, 4, 30, 23, 59, 59), 223},
      {"GB6WW", DateTime::Of(2024, 5, 1), 279},
      {"GB6WW", DateTime::Of(2024, 5, 28, 23, 59, 59), 279},
      {"GB6WW", DateTime::Of(2024, 5, 29), 223},
      {"GB6WWA", DateTime::Of(2025, 1, 31, 20, 15), 294},
      {"GB6WWA", DateTime::Of(2025, 2, 1), 223},
      {"3Y0K", DateTime::Of(2026, 3, 1), 24},
      {"3Y8XSA", DateTime::Of(2010, 11, 1), 13},
      {"3Y8XSA", DateTime::Of(2011, 12, 31, 23), 13},
      {"TX9W", kNow, 509},
      {"VK9WX", kNow, 303},
      {"VP6D", DateTime::Of(2001, 11, 16), 513},
      {"VP6D", DateTime::Of(2001, 11, 15, 23), 172},
      {"4U1ITU", kNow, 117},
      {"Y21XX", DateTime::Of(1985, 6, 1), 229},
      {"Y21XX", DateTime::Of(1990, 10, 2, 23, 59, 59), 229},
      {"Y21XX", DateTime::Of(1990, 10, 3), 230},
      {"DL1ABC", DateTime::Of(1970, 1, 1), 81},
      {"OK1ABC", DateTime::Of(1985, 6, 1), 218},
      {"OM3ABC", DateTime::Of(1992, 12, 31, 23), 218},
      {"OK1ABC", DateTime::Of(1993, 1, 1), 503},
      {"OM3ABC", DateTime::Of(1993, 1, 1), 504},
      {"UB5ABC", DateTime::Of(1985, 6, 1), 288},
      {"UB8ABC", DateTime::Of(1985, 6, 1), 288},
      {"UB5ABC", kNow, 54},
      {"4O3A", DateTime::Of(2000, 6, 1), 296},
      {"4O3A", kNow, 514},
  };
  for (const Case& each : cases) {
    EXPECT_EQ(Today().Resolve(each.call, each.utc).entity, each.entity)
        << each.call << ' ' << base::DateTimeText(each.utc);
  }
}

TEST(Resolving, KnowsWhatStandsBesideAStroke) {
  const Case cases[] = {
      {"IK0XYZ/5", kNow, 248},    {"HB0/IK0XYZ", kNow, 251},   {"JW/LB2PG", kNow, 259},
      {"K7WD/KH0", kNow, 166},    {"4O/UY5ZZ", kNow, 514},     {"F/IK0XYZ", kNow, 227},
      {"IK0XYZ/HB9", kNow, 287},  {"IK0XYZ/P", kNow, 248},     {"IK0XYZ/QRP", kNow, 248},
      {"VP8/IK0XYZ", kNow, 141},  {"VK9X/G3TXF", kNow, 35},    {"IK0XYZ/FD", kNow, 248},
      {"3D2ABC/R", kNow, 460},    {"3D2ABC/C", kNow, 489},     {"3D2ABC", kNow, 176},
      {"3D2R", kNow, 460},        {"3D2CCC", kNow, 489},       {"EA5ABC/8", kNow, 29},
      {"W1ABC/7", kNow, 291, 3},  {"KH6ABC/7", kNow, 291, 3},  {"UA3ABC/9", kNow, 15},
      {"R10RTRS/9", kNow, 15},    {"A60AA/9", kNow, 391},      {"LU1ABC/D", kNow, 100},
      {"LU1ABC/GA", kNow, 100},   {"HB0/IK0XYZ/P", kNow, 251}, {"9H1AB/EU25", kNow, 257},
      {"DL5MC/BY1PK", kNow, 318}, {"ik0xyz/hb9", kNow, 287},   {" IK0XYZ ", kNow, 248},
  };
  for (const Case& each : cases) {
    const Answer answer = Today().Resolve(each.call, each.utc);
    EXPECT_EQ(answer.entity, each.entity) << each.call << " by " << answer.rule;
    EXPECT_EQ(answer.cq, each.cq == 0 ? answer.cq : each.cq) << each.call;
  }
}

TEST(Resolving, VisitingADistrictOfItalyIsNeitherSardiniaNorSicily) {
  for (const std::string_view call : {"IW2UAB/0", "IK2ABC/0", "IK2ABC/9"}) {
    const Answer answer = Today().Resolve(call, kNow);
    EXPECT_EQ(answer.entity, 248) << call;
    EXPECT_EQ(answer.area, "") << call;
  }
  EXPECT_EQ(Today().Resolve("IS0ABC/5", kNow).entity, 225);
}

TEST(Resolving, TellsTheIslandsOfItalyApart) {
  const Answer pantelleria = Today().Resolve("IG9A", kNow);
  EXPECT_EQ(pantelleria.entity, 248);
  EXPECT_EQ(pantelleria.cq, 33);
  EXPECT_EQ(pantelleria.itu, 37);
  EXPECT_EQ(pantelleria.continent, "AF");
  EXPECT_EQ(pantelleria.area, "IG9");
  const Answer sicily = Today().Resolve("IT9ABC", kNow);
  EXPECT_EQ(sicily.entity, 248);
  EXPECT_EQ(sicily.area, "IT9");
  EXPECT_EQ(sicily.cq, 15);
  for (const std::string_view call : {"IS0ABC", "IM0ABC"}) {
    EXPECT_EQ(Today().Resolve(call, kNow).entity, 225) << call;
  }
}

TEST(Resolving, GuantanamoHasTwoLettersBehindItsPrefix) {
  EXPECT_EQ(Today().Resolve("KG4AB", kNow).entity, 105);
  EXPECT_EQ(Today().Resolve("KG4ABC", kNow).entity, 291);
  EXPECT_EQ(Today().Resolve("KG4A", kNow).entity, 291);
  EXPECT_EQ(Today().Resolve("KG4/W1ABC", kNow).entity, 105);
}

TEST(Resolving, EasterIslandIsNotChile) {
  EXPECT_EQ(Today().Resolve("CE0YAB", kNow).entity, 47);
  EXPECT_EQ(Today().Resolve("CE1ABC", kNow).entity, 112);
}

TEST(Resolving, TheSecondDistrictOfRussiaIsKaliningrad) {
  for (const std::string_view call : {"RV3FF/2", "R10RLHA/2", "UA9ABC/2/P"}) {
    EXPECT_EQ(Today().Resolve(call, kNow).entity, 126) << call;
  }
  EXPECT_EQ(Today().Resolve("RV3FF/3", kNow).entity, 54);
}

TEST(Resolving, AProvinceOfArgentinaTellsTheZoneAndAntarctica) {
  for (const auto& [call, entity, itu] : {std::tuple("LU1ABC/V", 100, 16),
                                          {"LW3DX/XA", 100, 16},
                                          {"LU1VZ/D", 100, 14},
                                          {"LU8DBS/Z", 13, 73}}) {
    const Answer answer = Today().Resolve(call, kNow);
    EXPECT_EQ(answer.entity, entity) << call;
    EXPECT_EQ(answer.itu, itu) << call;
  }
}

TEST(Resolving, TheBasesOfTheStatesInAntarcticaAreTheirsOnlyAsAPlace) {
  EXPECT_EQ(Today().Resolve("KC4/W3ABC", kNow).entity, 13);
  EXPECT_EQ(Today().Resolve("W3ABC/KC4", kNow).entity, 13);
  EXPECT_EQ(Today().Resolve("KC4ABC", kNow).entity, 291);
}

TEST(Resolving, OfTwoWholeCallsTheSecondIsTheStation) {
  EXPECT_EQ(Today().Resolve("AJ3M/BY1XX", kNow).entity, 318);
  EXPECT_EQ(Today().Resolve("DJ7BU/BY4XXX", kNow).entity, 318);
}

TEST(Resolving, AtSeaAndInTheAirIsNoCountry) {
  for (const std::string_view call : {"K0ABC/MM", "IK0XYZ/AM", "F/IK0XYZ/MM"}) {
    const Answer answer = Today().Resolve(call, kNow);
    EXPECT_EQ(answer.entity, 0) << call;
    EXPECT_EQ(answer.reason, Reason::kMobile) << call;
    EXPECT_EQ(answer.cq, 0) << call;
  }
}

TEST(Resolving, KnowsSpecialCalls) {
  EXPECT_EQ(Today().Resolve("3Z10HNY", kNow).entity, 269);
  EXPECT_EQ(Today().Resolve("R22ICH", kNow).entity, 54);
  EXPECT_EQ(Today().Resolve("II1ABC", kNow).entity, 248);
}

TEST(Resolving, SaysThatACountryDidNotExistYet) {
  const Answer answer = Today().Resolve("Z81A", DateTime::Of(2009, 1, 1));
  EXPECT_EQ(answer.entity, 0);
  EXPECT_EQ(answer.reason, Reason::kNotThen);
  EXPECT_EQ(Explanation("Z81A", answer), "Z81A: Sudan del Sud conta solo dal 14/07/2010");
}

TEST(Resolving, TellsItsRuleItsFileAndItsDays) {
  const Answer answer = Today().Resolve("GB6WW", DateTime::Of(2024, 5, 10));
  EXPECT_EQ(answer.reason, Reason::kCall);
  EXPECT_EQ(answer.rule, "GB6WW");
  EXPECT_EQ(answer.file, "Entita.csv");
  EXPECT_EQ(Explanation("GB6WW", answer), "GB6WW: Scozia dal 01/05 al 28/05/2024");
  EXPECT_EQ(Explanation("K0ABC/MM", Today().Resolve("K0ABC/MM", kNow)),
            "K0ABC/MM: in mare o in volo non conta per nessun country");
}

TEST(Resolving, WhatIsNoCallIsUnknown) {
  for (const std::string_view call :
       {"", "/", "//", "àèì", "ABC*", "QQ1ABC", "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"}) {
    const Answer answer = Today().Resolve(call, kNow);
    EXPECT_EQ(answer.entity, 0) << call;
    EXPECT_EQ(answer.reason, Reason::kUnknown) << call;
  }
}

TEST(Resolving, AListedCallThatCountsForNothingCountsForNothingInItsDays) {
  const With resolve(
      "=IK0XYZ =HB0/IK0XYZ|Pirata|EU|-1|0N|0E|28|15||R|2020/01/01-2020/12/31=0\n"
      "=X1X|x|EU|-1|0N|0E|28|15||R|=248\n");
  const Answer within = resolve("IK0XYZ", DateTime::Of(2020, 6, 1));
  EXPECT_EQ(within.entity, 0);
  EXPECT_EQ(within.reason, Reason::kInvalid);
  EXPECT_EQ(Explanation("IK0XYZ", within),
            "IK0XYZ: non conta per nessun country dal 01/01 al 31/12/2020");
  EXPECT_EQ(resolve("HB0/IK0XYZ", DateTime::Of(2020, 6, 1)).entity, 0);
  EXPECT_EQ(resolve("HB0/IK0XYZ", DateTime::Of(2021, 1, 1)).entity, 251);
  EXPECT_EQ(resolve("IK0XYZ", DateTime::Of(2021, 1, 1)).entity, 248);
  EXPECT_EQ(resolve("IK0XYZ/P", DateTime::Of(2020, 6, 1)).entity, 0);
}

TEST(Resolving, WhatHasDaysIsBelievedBeforeWhatHasNone) {
  // 3Y0K stands in the delivered table without days.
  const With resolve("=3Y0K|Bouvet|AF|-1|0N|0E|67|38||R|2026/02/01-2026/02/28=13\n");
  EXPECT_EQ(resolve("3Y0K", DateTime::Of(2026, 2, 10)).entity, 13);
  EXPECT_NE(resolve("3Y0K", DateTime::Of(2026, 3, 10)).entity, 24);
}

TEST(Resolving, TheShorterTimeWinsOverTheLongerOne) {
  const With resolve(
      "=TO1A|a|NA|4|0N|0E|11|8||R|2000/01/01-2010/12/31=79\n"
      "=TO1A|b|NA|4|0N|0E|11|8||R|2005/05/01-2005/05/10=84\n");
  EXPECT_EQ(resolve("TO1A", DateTime::Of(2005, 5, 5)).entity, 84);
  EXPECT_EQ(resolve("TO1A", DateTime::Of(2005, 5, 11)).entity, 79);
}

TEST(Resolving, AnEndedRuleIsAskedBeforeALongerOneOfToday) {
  const With resolve("I|x|EU|-1|0N|0E|28|15||R|1950/01/01-1950/12/31=271\n");
  EXPECT_EQ(resolve("IK0XYZ", DateTime::Of(1950, 6, 1)).entity, 271);
  EXPECT_EQ(resolve("IG9A", DateTime::Of(1950, 6, 1)).entity, 271);
  EXPECT_EQ(resolve("IK0XYZ", DateTime::Of(1951, 6, 1)).entity, 248);
}

TEST(Resolving, PatternsStandForLettersDigitsAndEither) {
  const With resolve(
      "QA%#|a|EU|-1|0N|0E|28|15||R|2000/01/01-2030/01/01=248\n"
      "QB[2-4X]|b|EU|-1|0N|0E|28|15||R|2000/01/01-2030/01/01=225\n"
      "QC%%|c|EU|-1|0N|0E|28|15||R|2000/01/01-2030/01/01=230\n");
  EXPECT_EQ(resolve("QAB1XYZ", kNow).entity, 248);
  EXPECT_EQ(resolve("QA11XYZ", kNow).entity, 0);
  EXPECT_EQ(resolve("QB3A", kNow).entity, 225);
  EXPECT_EQ(resolve("QBXA", kNow).entity, 225);
  EXPECT_EQ(resolve("QB5A", kNow).entity, 0);
  // With a letter's place at its end it is the whole call.
  EXPECT_EQ(resolve("QCAB", kNow).entity, 230);
  EXPECT_EQ(resolve("QCABC", kNow).entity, 0);
}

TEST(Resolving, ACountryThatCountsListedCallsAloneCountsNoOthers) {
  const Table xml = ReadTable(
      R"(<clublog xmlns="x" date="2026"><entities><entity><adif>344</adif><name>DPRK</name>)"
      R"(<cqz>25</cqz><cont>AS</cont><whitelist>TRUE</whitelist>)"
      R"(<whitelist_start>2000-01-01T00:00:00+00:00</whitelist_start></entity></entities>)"
      R"(<exceptions><exception record="1"><call>P5RS7</call><entity>DPRK</entity>)"
      R"(<adif>344</adif><cqz>25</cqz><cont>AS</cont></exception></exceptions></clublog>)",
      "cty.xml", {});
  const Table* const tables[] = {&xml, &Delivered()};
  const Resolver resolver(tables);
  EXPECT_EQ(resolver.Resolve("P5RS7", kNow).entity, 344);
  const Answer other = resolver.Resolve("P5ABC", kNow);
  EXPECT_EQ(other.entity, 0);
  EXPECT_EQ(other.reason, Reason::kNotListed);
  EXPECT_EQ(resolver.Resolve("P5ABC", DateTime::Of(1999, 1, 1)).entity, 344);
}

TEST(Resolving, ExceptionsHaveAZoneAndAnEndOfTheirOwn) {
  const Table xml = ReadTable(
      R"(<clublog xmlns="x" date="2026"><exceptions>)"
      R"(<exception record="1"><call>K1ABC</call><adif>291</adif><cqz>5</cqz><cont>NA</cont>)"
      R"(<start>2025-01-01T12:00:00+00:00</start><end>2025-01-31T00:00:00+00:00</end></exception>)"
      R"(</exceptions><prefixes><prefix record="2"><call>SV/A</call><adif>180</adif>)"
      R"(<cqz>20</cqz><cont>EU</cont></prefix></prefixes>)"
      R"(<invalid_operations><invalid record="3"><call>IK0XYZ</call></invalid>)"
      R"(</invalid_operations><zone_exceptions><zone_exception record="4"><call>W1AW</call>)"
      R"(<zone>3</zone><start>2020-01-01T00:00:00+00:00</start></zone_exception>)"
      R"(</zone_exceptions></clublog>)",
      "cty.xml", {});
  const Table* const tables[] = {&xml, &Delivered()};
  const Resolver resolver(tables);
  const auto reasonOf = [&](DateTime utc) { return resolver.Resolve("K1ABC", utc).reason; };
  EXPECT_EQ(reasonOf(DateTime::Of(2025, 1, 1, 11, 59, 59)), Reason::kPrefix);
  EXPECT_EQ(reasonOf(DateTime::Of(2025, 1, 1, 12)), Reason::kCall);
  // An end at midnight is that whole day.
  EXPECT_EQ(reasonOf(DateTime::Of(2025, 1, 31, 23, 59, 59)), Reason::kCall);
  EXPECT_EQ(reasonOf(DateTime::Of(2025, 2, 1)), Reason::kPrefix);
  EXPECT_EQ(resolver.Resolve("SV1ABC/A", kNow).entity, 180);
  EXPECT_EQ(resolver.Resolve("SV1ABC", kNow).entity, 236);
  EXPECT_EQ(resolver.Resolve("IK0XYZ", kNow).reason, Reason::kInvalid);
  EXPECT_EQ(resolver.Resolve("W1AW", kNow).cq, 3);
  EXPECT_EQ(resolver.Resolve("W1AW", DateTime::Of(2019, 1, 1)).cq, 5);
}

// As the dated tables of other houses: thousands of calls, each for some days, a call more than
// once.
TEST(Resolving, CallsWithTheirDaysAreRightWithinThemAndNeverOutside) {
  constexpr int kCalls = 2'000;
  constexpr std::int64_t kDay = 24 * 60 * 60;
  const int countries[] = {248, 225, 291, 230, 227, 223, 279, 318, 339, 15};
  std::mt19937 random(1);
  std::string text;
  std::vector<Rule> wanted;
  for (int i = 0; i < kCalls; ++i) {
    const std::string call = fmt::format("{}{}X{:03}", "IKFGDR"[i / 2 % 6], i / 2 % 10, i / 2);
    // The two of a call are apart by years.
    const DateTime first =
        DateTime::Of(1990 + 12 * (i % 2) + static_cast<int>(random() % 9),
                     1 + static_cast<int>(random() % 12), 1 + static_cast<int>(random() % 28));
    const DateTime last = first.Later(static_cast<std::int64_t>(random() % 60) * kDay);
    const int country = countries[random() % std::size(countries)];
    const auto dayText = [](DateTime day) {
      return fmt::format("{:04}/{:02}/{:02}", day.Year(), day.Month(), day.Day());
    };
    text += fmt::format("={}|Speciale {}|EU|-1|1N|2E|28|15||R|{}-{}={}\n", call, i, dayText(first),
                        dayText(last), country);
    Rule rule;
    rule.text = call;
    rule.entity = country;
    rule.when = DaysFrom(first, last);
    wanted.push_back(rule);
  }
  const With resolve(text);
  int right = 0, outside = 0;
  for (const Rule& rule : wanted) {
    const auto at = [&](std::int64_t second) {
      return resolve(rule.text, DateTime::FromSeconds(second));
    };
    right += at(rule.when.from + (rule.when.to - rule.when.from) / 2).entity == rule.entity;
    for (const std::int64_t second : {rule.when.from - 1, rule.when.to + 1}) {
      outside += at(second).reason == Reason::kCall;
    }
  }
  EXPECT_EQ(right, kCalls);
  EXPECT_EQ(outside, 0);
}

TEST(Spans, AreToldAsAnOperatorWritesDays) {
  const auto day = [](int year, int month, int d) { return DateTime::Of(year, month, d); };
  EXPECT_EQ(SpanText(DaysFrom(day(2024, 5, 1), day(2024, 5, 28))), "dal 01/05 al 28/05/2024");
  EXPECT_EQ(SpanText(DaysFrom(day(2023, 5, 1), day(2024, 5, 28))), "dal 01/05/2023 al 28/05/2024");
  EXPECT_EQ(SpanText(DaysFrom(day(2024, 5, 1), day(2024, 5, 1))), "il 01/05/2024");
  EXPECT_EQ(SpanText(DaysFrom(day(2024, 5, 1), {})), "dal 01/05/2024");
  EXPECT_EQ(SpanText(DaysFrom({}, day(2024, 5, 28))), "fino al 28/05/2024");
  EXPECT_EQ(SpanText({}), "");
}

}  // namespace
}  // namespace brenvo::entities
