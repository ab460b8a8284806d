#include "conferme/matching.h"

#include <gmock/gmock.h>

#include <random>

#include "tests/conferme/reports.h"
#include "tests/support/places.h"

namespace brenvo::conferme {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct LoggedContact {
  std::int64_t key;
  std::string call, band = "20m", mode = "CW";
  base::DateTime utc;
  std::string satellite{}, own{};
  bool bySatellite = false;
  int dxcc = 0;
};

base::DateTime At(int hour, int minute, int second = 0) {
  return base::DateTime::Of(2001, 1, 1, hour, minute, second);
}

ReportRecord Told(std::string call, base::DateTime when, std::string mode = "CW",
                  std::string band = "20m") {
  ReportRecord record;
  record.call = std::move(call);
  record.band = std::move(band);
  record.mode = std::move(mode);
  record.when = when;
  record.hasDay = record.hasTime = record.hasSeconds = true;
  record.id = record.call + " " + base::IsoText(when) + " " + record.mode + " " + record.band;
  return record;
}

std::vector<Match> MatchAll(const std::vector<ReportRecord>& records,
                            const std::vector<LoggedContact>& log, const Settled& settled = {}) {
  static const ModeTable modes = ModeTable::Read(SourceDir() / "data/rules" / kModeRules);
  static const worked::Rules rules = worked::ReadRules(SourceDir() / "data/rules/Lavorati.csv", {});
  Matcher matcher(records, modes, rules, settled);
  for (const LoggedContact& each : log) {
    if (!matcher.Wants(each.call)) continue;
    LogEntry entry;
    entry.key = each.key;
    entry.utc = each.utc;
    entry.call = each.call;
    entry.band = each.band;
    entry.mode = each.mode;
    entry.means = modes.Of(each.mode, "", rules);
    entry.bySatellite = each.bySatellite;
    entry.satellite = each.satellite;
    entry.ownCall = each.own;
    entry.dxcc = each.dxcc;
    matcher.See(entry);
  }
  return matcher.Run();
}

// "1 2 ?": the contacts given, "?" doubtful, "-" none, "!" ignored, "=" known.
std::string Found(const std::vector<Match>& matches) {
  std::string text;
  for (const Match& each : matches) {
    if (!text.empty()) text += ' ';
    switch (each.outcome) {
      case Outcome::kMatched:
        text += std::to_string(each.key);
        break;
      case Outcome::kKnown:
        text += "=" + std::to_string(each.key);
        break;
      case Outcome::kDoubtful:
        text += "?";
        break;
      case Outcome::kNone:
        text += "-";
        break;
      case Outcome::kIgnored:
        text += "!";
        break;
    }
  }
  return text;
}

TEST(ARecord, FindsItsContactWithinHalfAnHourAndNoLater) {
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAA", "20m", "CW", At(10, 30)}})),
            "1");
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAA", "20m", "CW", At(10, 30, 1)}})),
      "-");
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 30))}, {{1, "CT7AAA", "20m", "CW", At(10, 0)}})),
            "1");
}

TEST(ARecord, IsOfTheSameBandAndCall) {
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAA", "40m", "CW", At(10, 0)}})),
            "-");
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAB", "20m", "CW", At(10, 0)}})),
            "-");
}

TEST(ARecord, TakesTheSameCallBeforeAnotherFormOfIt) {
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAA/P", "20m", "CW", At(10, 0)},
                                                         {2, "CT7AAA", "20m", "CW", At(10, 20)}})),
            "2");
  EXPECT_EQ(Found(MatchAll({Told("F/CT7AAA", At(10, 0))}, {{1, "CT7AAA", "20m", "CW", At(10, 0)}})),
            "1");
}

TEST(ARecord, TakesTheNearerModeThenTheNearerTime) {
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0), "FT8")},
                           {{1, "CT7AAA", "20m", "RTTY", At(10, 1)},
                            {2, "CT7AAA", "20m", "FT8", At(10, 20)}})),
            "2");
  EXPECT_EQ(Found(MatchAll({Told("CT7AAA", At(10, 0))}, {{1, "CT7AAA", "20m", "CW", At(10, 5)},
                                                         {2, "CT7AAA", "20m", "CW", At(10, 4)}})),
            "2");
  // The same second before the same mode.
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(10, 0), "FT8")}, {{1, "CT7AAA", "20m", "RTTY", At(10, 0)},
                                                          {2, "CT7AAA", "20m", "FT8", At(10, 1)}})),
      "1");
}

TEST(ARecord, OfTheGroupOfDataFindsAnyDigitalMode) {
  const auto matches =
      MatchAll({Told("W1BBB", At(1, 0), "DATA", "40m")}, {{1, "W1BBB", "40m", "FT4", At(1, 1)}});
  EXPECT_EQ(Found(matches), "1");
  EXPECT_TRUE(matches[0].otherMode);
  EXPECT_EQ(Found(MatchAll({Told("W1BBB", At(1, 0), "DATA", "40m")},
                           {{1, "W1BBB", "40m", "FT2", At(1, 1)}})),
            "1");
}

TEST(ARecord, OfAnotherGroupIsDoubtfulWithTheContactAsCandidate) {
  const auto matches =
      MatchAll({Told("W1BBB", At(1, 0), "SSB")}, {{1, "W1BBB", "20m", "CW", At(1, 0)}});
  EXPECT_EQ(Found(matches), "?");
  EXPECT_THAT(matches[0].candidates, ElementsAre(1));
  EXPECT_EQ(matches[0].why, "il modo è di un altro gruppo");
}

TEST(TwoRecords, TenMinutesApartEachFindTheirOwnContact) {
  const std::vector<LoggedContact> log = {{1, "CT7AAA", "20m", "FT8", At(22, 14)},
                                          {2, "CT7AAA", "20m", "FT8", At(22, 24)}};
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(22, 14), "FT8"), Told("CT7AAA", At(22, 24), "FT8")}, log)),
      "1 2");
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(22, 24), "FT8"), Told("CT7AAA", At(22, 14), "FT8")}, log)),
      "2 1");
  // Each is nearest to the first contact; both find one all the same.
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(22, 15), "FT8"), Told("CT7AAA", At(22, 16), "FT8")}, log)),
      "1 2");
}

TEST(TwoRecords, NeverTakeOneContact) {
  const auto matches = MatchAll({Told("CT7AAA", At(10, 0)), Told("CT7AAA", At(10, 5))},
                                {{1, "CT7AAA", "20m", "CW", At(10, 1)}});
  EXPECT_EQ(Found(matches), "1 ?");
  EXPECT_EQ(matches[1].why, "il contatto è di un altro record");
}

TEST(TwoRecords, OfTwoServicesMayMeanOneContact) {
  ReportRecord other = Told("CT7AAA", At(10, 0));
  other.service = Service::kEqsl;
  EXPECT_EQ(
      Found(MatchAll({Told("CT7AAA", At(10, 0)), other}, {{1, "CT7AAA", "20m", "CW", At(10, 1)}})),
      "1 1");
}

TEST(ARecord, IsDoubtfulWhereTwoContactsFitEquallyWell) {
  const auto matches =
      MatchAll({Told("CT7AAA", At(10, 0))},
               {{2, "CT7AAA", "20m", "CW", At(10, 5)}, {1, "CT7AAA", "20m", "CW", At(9, 55)}});
  EXPECT_EQ(Found(matches), "?");
  EXPECT_THAT(matches[0].candidates, ElementsAre(1, 2));
  EXPECT_EQ(matches[0].why, "due contatti vanno bene allo stesso modo");
}

TEST(ARecord, BySatelliteIsOfThatSatellite) {
  ReportRecord record = Told("9A4DDD", At(18, 0), "FM", "70cm");
  record.bySatellite = true;
  record.satellite = "SO-50";
  const auto by = [](std::string name, bool satellite) {
    LoggedContact contact{1, "9A4DDD", "70cm", "FM", At(18, 0)};
    contact.satellite = std::move(name);
    contact.bySatellite = satellite;
    return std::vector<LoggedContact>{contact};
  };
  EXPECT_EQ(Found(MatchAll({record}, by("SO-50", true))), "1");
  EXPECT_EQ(Found(MatchAll({record}, by("", true))), "1");
  EXPECT_EQ(Found(MatchAll({record}, by("AO-7", true))), "-");
  EXPECT_EQ(Found(MatchAll({record}, by("", false))), "-");
  EXPECT_EQ(Found(MatchAll({Told("9A4DDD", At(18, 0), "FM", "70cm")}, by("SO-50", true))), "-");
}

TEST(ARecord, OfAnotherOwnCallIsNotOfTheContact) {
  ReportRecord record = Told("CT7AAA", At(10, 0));
  record.ownCall = "IK0XYZ";
  LoggedContact contact{1, "CT7AAA", "20m", "CW", At(10, 0)};
  contact.own = "IK0XYZ/P";
  EXPECT_EQ(Found(MatchAll({record}, {contact})), "1");
  contact.own = "II0ABC";
  EXPECT_EQ(Found(MatchAll({record}, {contact})), "-");
}

TEST(ARecord, WithoutSecondsFindsTheMinute) {
  ReportRecord record = Told("CT7AAA", At(10, 0));
  record.hasSeconds = false;
  EXPECT_EQ(Found(MatchAll({record}, {{1, "CT7AAA", "20m", "CW", At(10, 0, 59)},
                                      {2, "CT7AAA", "20m", "CW", At(10, 1, 0)}})),
            "1");
  EXPECT_EQ(Found(MatchAll({record}, {{1, "CT7AAA", "20m", "CW", At(10, 30, 59)}})), "1");
}

TEST(ARecord, ThatIsSettledIsNotAskedAboutAgain) {
  const std::vector<ReportRecord> records = {Told("CT7AAA", At(10, 0)), Told("CT7AAA", At(10, 3)),
                                             Told("CT7AAA", At(10, 6))};
  Settled settled;
  settled.ignored.emplace(Settled::KeyOf("LoTW", records[0].id), true);
  settled.contacts.emplace(Settled::KeyOf("LoTW", records[1].id), 7);
  settled.taken.emplace(std::pair(std::string("LoTW"), 7), records[1].id);
  EXPECT_EQ(
      Found(MatchAll(
          records, {{7, "CT7AAA", "20m", "CW", At(10, 6)}, {8, "CT7AAA", "20m", "CW", At(10, 20)}},
          settled)),
      "! =7 8");
}

TEST(ACredit, IsOfTheContactOfThatDayBandAndGroup) {
  ReportRecord credit = Told("CT7AAA", base::DateTime::Of(2001, 1, 1), "DATA");
  credit.credit = true;
  credit.hasTime = false;
  credit.dxcc = 272;
  LoggedContact contact{1, "CT7AAA", "20m", "FT8", At(22, 14)};
  contact.dxcc = 272;
  EXPECT_EQ(Found(MatchAll({credit}, {contact})), "1");
  contact.dxcc = 281;
  EXPECT_EQ(Found(MatchAll({credit}, {contact})), "-");
  contact.dxcc = 272;
  contact.mode = "CW";
  EXPECT_EQ(Found(MatchAll({credit}, {contact})), "?");
}

TEST(AMatch, DoesNotDependOnTheOrderOfRecordsAndContacts) {
  std::mt19937 random(1);
  const std::vector<std::string> modes = {"CW", "FT8", "RTTY", "SSB"};
  for (int round = 0; round < 200; ++round) {
    SCOPED_TRACE(round);
    std::vector<ReportRecord> records;
    std::vector<LoggedContact> log;
    for (int i = 0; i < 12; ++i) {
      const std::string call = random() % 2 == 0 ? "CT7AAA" : "CT7AAA/P";
      records.push_back(
          Told(call, At(10, static_cast<int>(random() % 50)), modes[random() % modes.size()]));
      records.back().id += std::to_string(i);
      log.push_back({i + 1, random() % 3 == 0 ? "CT7AAA/P" : "CT7AAA", "20m",
                     modes[random() % modes.size()], At(10, static_cast<int>(random() % 50), i)});
    }
    std::map<std::string, Match> before;
    const auto matches = MatchAll(records, log);
    for (std::size_t i = 0; i < records.size(); ++i) before[records[i].id] = matches[i];
    std::shuffle(records.begin(), records.end(), random);
    std::shuffle(log.begin(), log.end(), random);
    const auto again = MatchAll(records, log);
    std::set<std::int64_t> taken;
    for (std::size_t i = 0; i < records.size(); ++i) {
      EXPECT_EQ(again[i], before[records[i].id]) << records[i].id;
      if (again[i].outcome == Outcome::kMatched) {
        EXPECT_TRUE(taken.insert(again[i].key).second) << again[i].key;
      }
    }
  }
}

TEST(AMatch, OfAThousandRecordsAtOneMinuteIsLeftToTheOperator) {
  std::vector<ReportRecord> records;
  std::vector<LoggedContact> log;
  for (int i = 0; i < 1000; ++i) {
    records.push_back(Told("CT7AAA", At(10, 0)));
    records.back().id += std::to_string(i);
    log.push_back({i + 1, "CT7AAA", "20m", "CW", At(10, 0, i % 60)});
  }
  for (const Match& each : MatchAll(records, log)) {
    EXPECT_EQ(each.outcome, Outcome::kDoubtful);
    EXPECT_EQ(each.why, "troppi contatti possibili");
  }
}

}  // namespace
}  // namespace brenvo::conferme
