#include "diplomi/count.h"

#include <gmock/gmock.h>

#include <random>

#include "tests/diplomi/slow_count.h"

namespace brenvo::diplomi {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

// A small world with all that the delivered awards ask for.
World SmallWorld() {
  World world;
  world.today = base::DateTime::Of(2026, 11, 23);
  const auto days = [](int fromYear, int toYear) {
    return entities::DaysFrom(
        fromYear == 0 ? std::nullopt : std::optional(base::DateTime::Of(fromYear, 1, 1)),
        toYear == 0 ? std::nullopt : std::optional(base::DateTime::Of(toYear, 12, 31)));
  };
  world.countries = {{"K", "Stati Uniti", "NA", {}},
                     {"JA", "Giappone", "AS", {}},
                     {"I", "Italia", "EU", {}},
                     {"IS0", "Sardegna", "EU", {}},
                     {"GM", "Scozia", "EU", {}},
                     {"OE", "Austria", "EU", {}},
                     {"JW", "Svalbard", "EU", {}},
                     {"TA", "Turchia", "AS", {}},
                     {"VK", "Australia", "OC", {}},
                     {"ZL", "Nuova Zelanda", "OC", {}},
                     {"OK", "Rep. Ceca", "EU", days(1993, 0)},
                     {"EA", "Spagna", "EU", {}},
                     {"DM/D", "DDR", "EU", days(1974, 1989)}};
  for (const char* code : {"FC", "FO", "MI", "TO", "SU", "PU", "PS"}) {
    world.provinces.push_back({"I", code, std::string("Provincia ") + code});
  }
  world.provinces.push_back({"IS0", "CA", "Cagliari"});
  world.provinces.push_back({"I", "CA", "Cagliari"});
  world.bands = {"160 m", "80 m", "40 m", "20 m", "15 m", "6 m", "2 m", "70cm"};
  return world;
}

std::vector<std::string> FailuresOf(const Award& award) {
  std::vector<std::string> texts;
  World world = SmallWorld();
  if (!award.list.empty() && std::filesystem::exists(DeliveredAwards() / award.list)) {
    world.lists[award.file] = ReadReferences(BytesOf(DeliveredAwards() / award.list));
  }
  for (const AwardFault& fault : FailedExamples(award, DeliveredCounting(), world)) {
    texts.push_back(fault.Text());
  }
  return texts;
}

TEST(AwardCount, EveryDeliveredAwardIsReadWholeAndItsExamplesComeOut) {
  int awards = 0;
  for (const auto& entry : std::filesystem::directory_iterator(DeliveredAwards())) {
    if (entry.path().extension() != ".json") continue;
    const Award award = DeliveredAward(entry.path().stem().string());
    EXPECT_THAT(FailuresOf(award), IsEmpty()) << entry.path();
    EXPECT_FALSE(award.examples.empty()) << entry.path();
    ++awards;
  }
  EXPECT_EQ(awards, 12);
}

TEST(AwardCount, AnExampleThatComesOutOtherwiseIsToldWithItsLine) {
  std::string text = SmallAward();
  const auto put = [&](std::string_view piece, std::string_view instead) {
    text.replace(text.find(piece), piece.size(), instead);
  };
  put("\"lavorati\": 2", "\"lavorati\": 3");
  put("{\"unità\": \"05\", \"stato\": \"confermato\"}",
      "{\"unità\": \"05\", \"stato\": \"lavorato\"}");
  EXPECT_THAT(FailuresOf(ReadAwardText(text).award),
              ElementsAre("riga 9, esempi[1].lavorati: ne vengono 2, non 3",
                          "riga 16, esempi[1].conta: 05 è confermato, non lavorato"));
}

TEST(AwardCount, AServiceThatNobodyKnowsIsToldAndNothingIsTried) {
  Award award = ReadAwardText(SmallAward()).award;
  award.counting[0].service = "LotW2";
  EXPECT_THAT(FailuresOf(award),
              ElementsAre("conferme[1].servizio: \"LotW2\" non c'è fra le conferme di "
                          "Lavorati.csv"));
}

class SmallLog {
 public:
  explicit SmallLog(const Award& award) : award_(award), log_(WantedFields({&award, 1})) {}

  PlainContact& Put(std::string call, std::string country, std::string band,
                    std::vector<std::string> services = {}) {
    PlainContact& made = contacts_.emplace_back();
    made.key = std::ssize(contacts_);
    made.utc = base::DateTime::Of(2001, 2, 3, 4, 5, 6).Later(made.key * 60);
    made.call = std::move(call);
    made.country = std::move(country);
    made.band = std::move(band);
    made.group = "CW";
    made.services = std::move(services);
    return made;
  }
  Counted Counts(const Choice& choice = {}, std::vector<OwnPlace> places = {{1, "I", "JN65AA"}}) {
    log_ = LogImage(WantedFields({&award_, 1}));
    for (const PlainContact& each : contacts_) AddPlain(log_, each, rules_);
    return Count(award_, log_, world_, places, rules_, choice);
  }
  // "K:accreditato@3" of each unit that is worked, all bands together.
  std::vector<std::string> Texts(const Counted& counted, std::size_t column = 0) {
    std::vector<std::string> texts;
    for (std::size_t i = 0; i < counted.units.size(); ++i) {
      const Cell& cell = counted.At(i, column);
      if (cell.state == State::kNone) continue;
      texts.push_back(counted.units[i].code + (counted.units[i].former ? "*:" : ":") +
                      std::string(NameOf(cell.state)) + "@" + std::to_string(cell.key));
    }
    return texts;
  }

  const Award& award_;
  worked::Rules rules_ = DeliveredCounting();
  World world_ = SmallWorld();
  std::vector<PlainContact> contacts_;
  LogImage log_;
};

TEST(AwardCount, TheEarliestContactOfTheHighestStateFillsACell) {
  const Award award = DeliveredAward("dxcc");
  SmallLog log(award);
  log.Put("K1A", "K", "20 m");
  log.Put("K1B", "K", "15 m", {"LoTW"});
  log.Put("K1C", "K", "20 m", {"Cartolina"});
  log.Put("K1D", "K", "20 m").fields["CREDIT_GRANTED"] = "DXCC:CARD";
  log.Put("K1E", "K", "20 m").fields["CREDIT_GRANTED"] = "DXCC:CARD";
  const Counted counted = log.Counts();
  EXPECT_THAT(log.Texts(counted), ElementsAre("K:accreditato@4"));
  EXPECT_EQ(counted.totals[0], (Totals{1, 1, 1}));
  // The credit of all bands together says nothing of the band.
  const auto band = static_cast<std::size_t>(std::ranges::find(counted.bands, "20 m") -
                                             counted.bands.begin() + 1);
  EXPECT_THAT(log.Texts(counted, band), ElementsAre("K:confermato@3"));
}

TEST(AwardCount, ACreditWithoutAContactCountsInTheTotalsWhateverItsDay) {
  const Award award = DeliveredAward("dxcc");
  SmallLog log(award);
  PlainContact& bare = log.Put("Y21A", "DM/D", "20 m");
  bare.key = -7;
  bare.utc = base::DateTime();
  bare.fields["CREDIT_GRANTED"] = "DXCC";
  log.Put("K1A", "K", "20 m");
  PlainContact& second = log.Put("K1B", "K", "20 m");
  second.key = -8;
  second.utc = base::DateTime();
  second.fields["CREDIT_GRANTED"] = "DXCC";
  PlainContact& third = log.Put("K1C", "K", "20 m");
  third.fields["CREDIT_GRANTED"] = "DXCC";
  const Counted counted = log.Counts();
  // A contact fills a cell before a credit that has none; what is no more counts apart.
  EXPECT_THAT(log.Texts(counted), ElementsAre("K:accreditato@4", "DM/D*:accreditato@-7"));
  EXPECT_EQ(counted.totals[0], (Totals{1, 1, 1}));
  EXPECT_EQ(counted.former[0], (Totals{1, 1, 1}));
}

TEST(AwardCount, WhatWasNoCountryThatDayIsToldAndDoesNotCount) {
  const Award award = DeliveredAward("dxcc");
  SmallLog log(award);
  log.Put("OK1A", "OK", "20 m").utc = base::DateTime::Of(1985, 1, 1);
  log.Put("OK1B", "OK", "20 m").utc = base::DateTime::Of(1993, 1, 1);
  log.Put("Y21A", "DM/D", "20 m").utc = base::DateTime::Of(1989, 12, 31, 23, 59, 59);
  log.Put("Y21B", "DM/D", "15 m").utc = base::DateTime::Of(1990, 1, 1);
  const Counted counted = log.Counts();
  EXPECT_THAT(log.Texts(counted), ElementsAre("OK:lavorato@2", "DM/D*:lavorato@3"));
  EXPECT_EQ(counted.left.notThen, 2);
}

TEST(AwardCount, OwnPlacesGoTogetherWithinTheDistanceOfEachOther) {
  const Award award = DeliveredAward("vucc");
  // Both are near the first one, but too far from each other: the nearer one stays.
  const std::vector<OwnPlace> places = {
      {1, "I", "JN65AA"}, {2, "I", "JN54AA"}, {3, "I", "JN76AA"}, {4, "I", ""}, {5, "I", "JN65"}};
  EXPECT_THAT(StationsThatGoTogether(award, places, 1), ElementsAre(1, 5, 3));
  EXPECT_THAT(StationsThatGoTogether(award, places, 4), ElementsAre(4));
  EXPECT_THAT(StationsThatGoTogether(award, places, 9), IsEmpty());
}

TEST(AwardCount, OwnPlacesOfAnotherCountryAreLeftOut) {
  const Award award = DeliveredAward("waip");
  SmallLog log(award);
  const auto put = [&](const char* call, const char* province, std::int64_t station) {
    PlainContact& made = log.Put(call, "I", "40 m", {"Cartolina"});
    made.province = province;
    made.station = station;
  };
  put("IK2A", "MI", 1);
  put("IK1A", "TO", 2);
  put("IK4A", "FO", 3);
  const std::vector<OwnPlace> places = {{1, "I", ""}, {2, "HB", ""}, {3, "i", ""}};
  Counted counted = log.Counts({}, places);
  EXPECT_THAT(log.Texts(counted), ElementsAre("FC:confermato@3", "MI:confermato@1"));
  EXPECT_EQ(counted.left.otherPlace, 1);
  EXPECT_THAT(counted.stations, ElementsAre(1, 3));
  Choice choice;
  choice.station = 2;
  counted = log.Counts(choice, places);
  EXPECT_THAT(log.Texts(counted), ElementsAre("TO:confermato@2"));
}

TEST(AwardCount, AProvinceHasItsNameAndIsMissingUntilItIsWorked) {
  const Award award = DeliveredAward("waip");
  SmallLog log(award);
  const Counted counted = log.Counts();
  std::vector<std::string> codes;
  for (const Unit& each : counted.units) codes.push_back(each.code + " " + each.name);
  EXPECT_THAT(codes, ElementsAre("CA Cagliari", "FC Provincia FC", "MI Provincia MI",
                                 "PU Provincia PU", "TO Provincia TO"));
}

TEST(AwardCount, OnlyListedReferencesCountWhereThereIsAList) {
  Award award = DeliveredAward("iota");
  SmallLog log(award);
  log.Put("IT9A", "I", "20 m").fields["IOTA"] = "EU-025";
  log.Put("IT9B", "I", "20 m").fields["IOTA"] = "EU-999";
  EXPECT_THAT(log.Texts(log.Counts()), ElementsAre("EU-025:lavorato@1", "EU-999:lavorato@2"));
  log.world_.lists["iota"] = {{"EU-025", "Sicilia"}, {"EU-024", "Sardegna"}};
  const Counted counted = log.Counts();
  EXPECT_THAT(log.Texts(counted), ElementsAre("EU-025:lavorato@1"));
  EXPECT_EQ(counted.units.size(), 2u);
}

TEST(AwardCount, EachGoalSaysHowFarItIs) {
  const Award award = DeliveredAward("dxcc");
  SmallLog log(award);
  log.Put("K1A", "K", "20 m", {"LoTW"});
  log.Put("K1A", "K", "15 m", {"LoTW"});
  log.Put("JA1A", "JA", "2 m", {"LoTW"});
  const Counted counted = log.Counts();
  const std::vector<Reached> goals = GoalsOf(award, counted);
  EXPECT_EQ(goals.front().goal->name, "DXCC");
  EXPECT_EQ(goals.front().now, (Totals{2, 2, 0}));
  EXPECT_EQ(goals.front().next, 100);
  // The Challenge adds up the bands from 160 to 6 metres.
  EXPECT_EQ(goals.back().goal->name, "DXCC Challenge");
  EXPECT_EQ(goals.back().now, (Totals{2, 2, 0}));
  EXPECT_EQ(goals.back().next, std::nullopt);
}

TEST(AwardCount, AContactThatGoesOrComesChangesTheImageAlone) {
  const Award award = DeliveredAward("dxcc");
  SmallLog log(award);
  log.Put("K1A", "K", "20 m");
  log.Put("JA1A", "JA", "20 m");
  log.Put("VK1A", "VK", "20 m");
  (void)log.Counts();
  log.log_.Settle();
  EXPECT_TRUE(log.log_.Remove(2));
  EXPECT_FALSE(log.log_.Remove(2));
  PlainContact other = log.contacts_[1];
  other.country = "ZL";
  AddPlain(log.log_, other, log.rules_);
  EXPECT_EQ(log.log_.Behind(), 1u);
  const std::vector<OwnPlace> places = {{1, "I", ""}};
  const Counted counted = Count(award, log.log_, log.world_, places, log.rules_, {});
  EXPECT_THAT(log.Texts(counted), ElementsAre("K:lavorato@1", "VK:lavorato@3", "ZL:lavorato@2"));
  EXPECT_TRUE(log.log_.Remove(2));
  EXPECT_TRUE(log.log_.Remove(1));
  EXPECT_EQ(log.log_.Rows().size(), 1u);
}

// Logs of a few words that meet often.
std::vector<PlainContact> RandomContacts(std::mt19937& random, int count) {
  const auto one = [&](std::initializer_list<const char*> words) {
    return std::string(words.begin()[random() % words.size()]);
  };
  std::vector<PlainContact> contacts;
  for (int i = 0; i < count; ++i) {
    PlainContact& made = contacts.emplace_back();
    const bool bare = random() % 12 == 0;
    made.key = bare ? -(i + 1) : i + 1;
    made.utc = base::DateTime::Of(static_cast<int>(1946 + random() % 60), 6, 2)
                   .Later(static_cast<std::int64_t>(random() % 7) * 60);
    made.call = one({"IK4XYZ", "IK4XYZ/5", "IT9AAA", "K1AA", "HB0/K1AA", "JA1AA/MM", "ik4abc",
                     "RAEM", "12", "IK4X?", "4X4AA/AM", "IK4"});
    made.country = one({"K", "JA", "I", "IS0", "GM", "OE", "JW", "TA", "OK", "DM/D", "QQ", ""});
    made.continent = one({"EU", "NA", "AS", "AN", "", "OC"});
    made.area = one({"", "", "IT9", "GM/S", "JW/B", "4U1V", "TA1", "IG9"});
    made.province = one({"FC", "FO", "MI", "CA", "XX", ""});
    made.locator = one({"JN65AA", "JN65", "jn65bb", "JN", "", "ZZ99", "FN31AA", "JN49"});
    made.band = one({"20 m", "15 m", "2 m", "70cm", "6 m", "40 m", "99 m"});
    made.group = one({"CW", "Fonia", "Digitale", ""});
    made.propagation = one({"", "", "", "Ripetitore", "Internet", "EME"});
    made.zoneCq = static_cast<int>(random() % 41);
    made.satellite = random() % 6 == 0;
    made.station = 1 + static_cast<std::int64_t>(random() % 2);
    if (!bare) {
      for (const char* service : {"Cartolina", "LoTW", "eQSL", "QRZ", "DCL", "Club Log"}) {
        if (random() % 4 == 0) made.services.emplace_back(service);
      }
    }
    if (random() % 3 == 0) made.fields["EQSL_AG"] = one({"Y", "N", "y"});
    if (random() % 3 == 0) made.fields["IOTA"] = one({"EU-025", "af-019", "EU-25", "X"});
    if (random() % 5 == 0) made.fields["VUCC_GRIDS"] = one({"JN65,JN66", "jo31", "FN31,FN32"});
    if (bare || random() % 4 == 0) {
      made.fields["CREDIT_GRANTED"] =
          one({"DXCC:CARD", "DXCC:LOTW,DXCC_BAND:LOTW", "DXCC_MODE", "WAE,WAE_BAND", "VUCC_BAND",
               "CQWAZ_MIXED,CQWAZ_MODE", "WAIP", "IOTA", "WAC", "DXCC_SATELLITE"});
    }
    if (random() % 3 == 0) {
      made.records.push_back(
          {"LoTW", one({"JN65AA", "JN48", "", "FN31,FN32"}), one({"EU-025", "AF-019", ""})});
    }
  }
  return contacts;
}

TEST(AwardCount, ComesOutAsTheSlowCountByTextsDoes) {
  const worked::Rules rules = DeliveredCounting();
  const World world = SmallWorld();
  std::mt19937 random(20261123);
  std::int64_t cells = 0, filled = 0;
  for (const char* name : {"dxcc", "dxcc-satellite", "waz", "wac", "wae", "wpx", "vucc", "waip",
                           "quadrati", "campi", "iota"}) {
    Award award = DeliveredAward(name);
    // Which own places go together is told by other tests.
    award.ownWithinKm = 0;
    award.ownCountry = false;
    for (int run = 0; run < 12; ++run) {
      const std::vector<PlainContact> contacts = RandomContacts(random, 60);
      LogImage log(WantedFields({&award, 1}));
      for (const PlainContact& each : contacts) AddPlain(log, each, rules);
      Choice choice;
      if (run % 3 == 1 && !award.modes.empty()) choice.mode = award.modes[run % award.modes.size()];
      if (run % 4 == 3) {
        choice.station = 2;
      }
      const Counted counted = Count(award, log, world, {}, rules, choice);
      const SlowCount slow(award, contacts, world, choice);
      for (std::size_t i = 0; i < counted.units.size(); ++i) {
        for (std::size_t column = 0; column < counted.Columns(); ++column) {
          const std::string band = column == 0 ? "" : counted.bands[column - 1];
          Cell cell = counted.At(i, column);
          cell.by = -1;
          ++cells;
          filled += cell.state != State::kNone;
          ASSERT_EQ(cell, slow.Of(counted.units[i].code, band))
              << name << " run " << run << ' ' << counted.units[i].code << ' ' << band << ": "
              << NameOf(cell.state) << " by " << cell.key;
        }
      }
      // A unit of the slow count that has no row would be missed above: every state is asked once
      // by the units that the log can have.
      for (const char* unit :
           {"K", "I", "SY", "DM/D", "OK", "EU", "NA", "JN65", "JN", "IK4", "FC", "EU-025", "05"}) {
        const Cell cell = slow.Of(unit, "");
        const bool has = std::ranges::find(counted.units, unit, &Unit::code) != counted.units.end();
        if (cell.state != State::kNone) {
          EXPECT_TRUE(has) << name << ' ' << unit;
        }
      }
    }
  }
  EXPECT_GT(filled, 1000);
  EXPECT_GT(cells, filled);
}

TEST(AwardCount, TheContactsOfACellBeginWithTheOneThatFillsIt) {
  const worked::Rules rules = DeliveredCounting();
  const World world = SmallWorld();
  const Award award = DeliveredAward("dxcc");
  std::mt19937 random(7);
  const std::vector<PlainContact> contacts = RandomContacts(random, 300);
  LogImage log(WantedFields({&award, 1}));
  for (const PlainContact& each : contacts) AddPlain(log, each, rules);
  const Counted counted = Count(award, log, world, {}, rules, {});
  int seen = 0;
  for (std::size_t i = 0; i < counted.units.size(); ++i) {
    for (std::size_t column = 0; column < counted.Columns(); ++column) {
      const Cell& cell = counted.At(i, column);
      const auto fillings = FillingsOf(award, log, world, {}, rules, {}, counted.units[i].code,
                                       column == 0 ? "" : counted.bands[column - 1], 5);
      ASSERT_EQ(fillings.empty(), cell.state == State::kNone);
      if (fillings.empty()) continue;
      ++seen;
      EXPECT_LE(fillings.size(), 5u);
      EXPECT_EQ(fillings.front().key, cell.key);
      EXPECT_EQ(fillings.front().state, cell.state);
      EXPECT_EQ(fillings.front().by, cell.by);
    }
  }
  EXPECT_GT(seen, 20);
}

TEST(AwardImage, ASquareIsItsNumber) {
  EXPECT_EQ(SquareText(SquareNumber("jn65AA")), "JN65");
  EXPECT_EQ(SquareText(SquareNumber(" RR99")), "RR99");
  EXPECT_EQ(SquareNumber("AA00"), 1);
  EXPECT_EQ(SquareNumber("RR99"), 32400);
  EXPECT_EQ(SquareNumber("SA00"), 0);
  EXPECT_EQ(SquareNumber("JN6"), 0);
  EXPECT_EQ(SquareNumber("J165"), 0);
  EXPECT_EQ(SquareText(0), "");
}

}  // namespace
}  // namespace brenvo::diplomi
