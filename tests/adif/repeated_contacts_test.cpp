#include "adif/repeated_contacts.h"

#include <fmt/format.h>
#include <sqlite3.h>

#include <map>
#include <random>

#include "core/log_contact.h"
#include "tests/adif/adif_station.h"

namespace brenvo::adif {
namespace {

class RepeatedContactsTest : public AdifStation {
 protected:
  // At so many seconds of a day.
  static core::LogContact At(std::int64_t second, std::string_view call = "I1ABC",
                             std::string_view banda = "  2 m") {
    core::LogContact contact;
    contact.DataQso =
        base::DateTime::FromSeconds(base::DateTime::Of(2001, 2, 3).Seconds() + second);
    contact.Call = call;
    contact.Banda = banda;
    return contact;
  }
  static core::LogContact InMode(std::int64_t second, std::string_view modo,
                                 std::string_view note = "") {
    core::LogContact contact = At(second);
    contact.Modo = modo;
    contact.Note = note;
    return contact;
  }
  void Store(const core::LogContact& contact) {
    session.Db.OpenAppender("Log")->Append(core::RowOf(contact));
  }
  static bool IsRepeated(RepeatedInLog& log, const core::LogContact& contact) {
    return log.Find(contact).kind == Placement::Kind::kRepeated;
  }
};

TEST_F(RepeatedContactsTest, AContactIsRepeatedInItsMinuteOnItsBand) {
  Store(At(600));
  RepeatedInLog log(session);
  EXPECT_TRUE(IsRepeated(log, At(600)));
  EXPECT_TRUE(IsRepeated(log, At(659, "i1abc ")));
  EXPECT_FALSE(IsRepeated(log, At(599)));
  EXPECT_FALSE(IsRepeated(log, At(660)));
  EXPECT_FALSE(IsRepeated(log, At(600, "I1ABD")));
  EXPECT_FALSE(IsRepeated(log, At(600, "I1ABC", " 20 m")));
}

TEST_F(RepeatedContactsTest, SecondsThatBothTellKeepContactsApart) {
  Store(At(610));
  RepeatedInLog log(session);
  EXPECT_TRUE(IsRepeated(log, At(610)));
  EXPECT_FALSE(IsRepeated(log, At(611)));
  EXPECT_TRUE(IsRepeated(log, At(600))) << "the full minute tells none";
}

TEST_F(RepeatedContactsTest, AnotherModeIsAnotherContactAtTheNextFreeSecond) {
  Store(InMode(600, "Hellschreiber"));
  RepeatedInLog log(session);
  const Placement placement = log.Find(InMode(600, "THRB"));
  EXPECT_EQ(placement.kind, Placement::Kind::kNew);
  EXPECT_EQ(placement.second, 1);
  EXPECT_EQ(log.Find(InMode(630, "THRB")).second, 30) << "told, and free";
  Store(InMode(659, "RTTY"));
  Store(InMode(601, "Olivia"));
  EXPECT_EQ(log.Find(InMode(659, "THRB")).second, 2) << "behind the last comes the first";
}

TEST_F(RepeatedContactsTest, ContactsThatWereSentOnAreFoundAgain) {
  for (const auto& [second, modo] : {std::pair(630, "SSTV"), std::pair(631, "THRB")}) {
    Store(InMode(second, modo));
  }
  RepeatedInLog log(session);
  const Placement placement = log.Find(InMode(630, "THRB"));
  EXPECT_EQ(placement.kind, Placement::Kind::kRepeated);
  EXPECT_EQ(log.Row().Field("Modo"), engine::Value("THRB"));
}

TEST_F(RepeatedContactsTest, AMinuteIsFullWithSixtyModes) {
  for (int i = 0; i < 60; ++i) Store(InMode(600 + i, "MODO" + std::to_string(i)));
  RepeatedInLog log(session);
  EXPECT_EQ(log.Find(InMode(600, "CW")).kind, Placement::Kind::kFull);
  EXPECT_TRUE(IsRepeated(log, InMode(600, "MODO59")));
}

TEST_F(RepeatedContactsTest, AModeIsTheSameAsItsSubmodeAndAsOneThatIsNotTold) {
  const struct {
    core::LogContact a, b;
    bool same;
  } kPairs[] = {
      {InMode(0, "SSB"), InMode(0, "USB"), true},
      {InMode(0, "LSB"), InMode(0, "USB"), false},
      {InMode(0, "FT4"), InMode(0, "MFSK"), true},
      {InMode(0, "FT4"), InMode(0, "FT8"), false},
      {InMode(0, "CW"), InMode(0, "SSB"), false},
      {InMode(0, "CW"), InMode(0, ""), true},
      {InMode(0, "FT8"), InMode(0, "DATA"), true},
      {InMode(0, "Hellschreiber"), InMode(0, "hell"), true},
      {InMode(0, "PICCIONE"), InMode(0, "piccione "), true},
      {InMode(0, "PICCIONE"), InMode(0, "CW"), false},
      {InMode(0, "Satellite", "[AO-7/UV/SSB]"), InMode(0, "SSB"), true},
      {InMode(0, "Satellite", "[AO-7/UV/CW]"), InMode(0, "SSB"), false},
      {InMode(0, "Satellite"), InMode(0, "SSB"), true},
  };
  for (const auto& [a, b, same] : kPairs) {
    EXPECT_EQ(IsSameMode(ModeKeyOf(a), ModeKeyOf(b)), same) << a.Modo << a.Note << " " << b.Modo;
  }
}

TEST_F(RepeatedContactsTest, ARowWithoutADateIsPassedOver) {
  Store(At(600));
  session.Db.Execute("insert into Log (Call,Banda) values ('I1ABC','  2 m')");
  {
    sqlite3* file = nullptr;
    sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &file);
    sqlite3_exec(file, "INSERT INTO Log (DataQso,Call) VALUES ('2001-02-03 00:10:00 circa','X')",
                 nullptr, nullptr, nullptr);
    sqlite3_close(file);
  }
  Store(At(601, "I1ZZZ"));
  RepeatedInLog log(session);
  EXPECT_TRUE(IsRepeated(log, At(601, "I1ZZZ")));
  EXPECT_FALSE(IsRepeated(log, At(602, "I1YYY")));
}

TEST_F(RepeatedContactsTest, TheRowFoundIsTheRepeatedOne) {
  for (const char* call : {"I1A", "I1B", "I1C"}) Store(At(600, call));
  RepeatedInLog log(session);
  ASSERT_TRUE(IsRepeated(log, At(630, "I1B")));
  EXPECT_EQ(log.Row().Field("Call"), engine::Value("I1B"));
}

TEST_F(RepeatedContactsTest, WhatIsStoredMeanwhileIsFound) {
  RepeatedInLog log(session);
  for (const std::int64_t second : {600, 600 + 60, 0, 3600}) {
    ASSERT_FALSE(IsRepeated(log, At(second))) << second;
    Store(At(second));
    log.Stored(At(second));
    ASSERT_TRUE(IsRepeated(log, At(second + 59))) << second;
  }
}

// Contacts on and off in time, among others in the log, as a file may bring them.
TEST_F(RepeatedContactsTest, InWhateverOrderTheyComeEachIsFoundWhenItIsThere) {
  const char* const kModes[] = {"CW", "SSB", "USB", ""};
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    EmptyTheLog();
    std::mt19937 random(seed);
    const auto at = [&](std::int64_t second) {
      core::LogContact contact = At(second % 7200, random() % 2 == 0 ? "I1A" : "I1B");
      contact.Modo = kModes[random() % std::size(kModes)];
      return contact;
    };
    // By call and minute, in the order of coming.
    std::map<std::string, std::vector<InMinute>> there;
    const auto othersOf = [&](const core::LogContact& contact) -> std::vector<InMinute>& {
      return there[fmt::format("{} {}", contact.DataQso.Seconds() / 60, contact.Call)];
    };
    const auto add = [&](core::LogContact contact) {
      std::vector<InMinute>& others = othersOf(contact);
      const Placement placement = PlaceInMinute(others, InMinuteOf(contact));
      if (placement.kind != Placement::Kind::kNew) return contact;
      contact.DataQso = AtSecond(contact.DataQso, placement.second);
      Store(contact);
      others.push_back(InMinuteOf(contact));
      return contact;
    };
    for (int i = 0; i < 30; ++i) add(at(random()));
    RepeatedInLog log(session);
    std::int64_t second = random() % 7200;
    for (int i = 0; i < 300; ++i) {
      second = random() % 10 == 0 ? random() % 7200 : second + random() % 120;
      const core::LogContact contact = at(second);
      const Placement due = PlaceInMinute(othersOf(contact), InMinuteOf(contact));
      const Placement found = log.Find(contact);
      ASSERT_EQ(found.kind, due.kind) << i;
      if (due.kind != Placement::Kind::kNew) continue;
      ASSERT_EQ(found.second, due.second) << i;
      log.Stored(add(contact));
    }
  }
}

// However many there are, and whatever is in the log, they are counted as one by one.
TEST_F(RepeatedContactsTest, CountedOnDiskTheyAreWhatTheyAreOneByOne) {
  std::mt19937 random(7);
  RepeatedInFile file;
  PlacedContacts placed;
  RepeatedInFile::Counts due;
  const char* const kModes[] = {"CW", "SSB", "RTTY", "FT8", "AM"};
  const std::vector<InMinute> inLog = {InMinuteOf(InMode(0, "FT8")), InMinuteOf(InMode(30, "AM"))};
  for (int i = 0; i < 120'000; ++i) {
    const auto minute = static_cast<std::int64_t>(random() % 50'000);
    const core::LogContact contact = InMode(minute * 60 + random() % 3 * 15, kModes[random() % 5]);
    const bool known = minute % 2 == 0;
    file.Add(contact, known ? inLog : std::vector<InMinute>());
    const std::uint64_t key = RepeatedInFile::KeyOf(contact);
    if (known) {
      for (const InMinute& each : inLog) placed.Put(key, each);
    }
    const Placement placement = placed.Place(key, InMinuteOf(contact));
    due.repeated += placement.kind == Placement::Kind::kRepeated;
    due.full += placement.kind == Placement::Kind::kFull;
    due.moved +=
        placement.kind == Placement::Kind::kNew && placement.second != SecondOf(contact.DataQso);
  }
  const RepeatedInFile::Counts counts = file.Count();
  EXPECT_EQ(counts.repeated, due.repeated);
  EXPECT_EQ(counts.moved, due.moved);
  EXPECT_EQ(counts.full, due.full);
  EXPECT_GT(counts.repeated, 5'000);
  EXPECT_GT(counts.moved, 5'000);
}

}  // namespace
}  // namespace brenvo::adif
