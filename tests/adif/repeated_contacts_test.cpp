#include "adif/repeated_contacts.h"

#include <fmt/format.h>

#include <random>
#include <set>

#include "tests/adif/adif_station.h"

namespace brenvo {
namespace {

class RepeatedContactsTest : public AdifStation {
 protected:
  // At so many seconds of a day.
  static LogContact At(std::int64_t second, std::string_view call = "I1ABC",
                       std::string_view banda = "  2 m") {
    LogContact contact;
    contact.DataQso = DateTime::FromSeconds(DateTime::Of(2001, 2, 3).Seconds() + second);
    contact.Call = call;
    contact.Banda = banda;
    return contact;
  }
  void Store(const LogContact& contact) {
    session.Db.OpenAppender("Log")->Append(RowOf(contact));
  }
};

TEST_F(RepeatedContactsTest, AContactIsRepeatedInItsMinuteOnItsBand) {
  Store(At(600));
  RepeatedInLog log(session);
  EXPECT_TRUE(log.Find(At(600)));
  EXPECT_TRUE(log.Find(At(659, "i1abc ")));
  EXPECT_FALSE(log.Find(At(599)));
  EXPECT_FALSE(log.Find(At(660)));
  EXPECT_FALSE(log.Find(At(600, "I1ABD")));
  EXPECT_FALSE(log.Find(At(600, "I1ABC", " 20 m")));
}

TEST_F(RepeatedContactsTest, TheRowFoundIsTheRepeatedOne) {
  for (const char* call : {"I1A", "I1B", "I1C"}) Store(At(600, call));
  RepeatedInLog log(session);
  ASSERT_TRUE(log.Find(At(630, "I1B")));
  EXPECT_EQ(log.Row().Field("Call"), Value("I1B"));
}

TEST_F(RepeatedContactsTest, WhatIsStoredMeanwhileIsFound) {
  RepeatedInLog log(session);
  for (const std::int64_t second : {600, 600 + 60, 0, 3600}) {
    ASSERT_FALSE(log.Find(At(second))) << second;
    Store(At(second));
    log.Stored(At(second));
    ASSERT_TRUE(log.Find(At(second + 59))) << second;
  }
}

// Contacts on and off in time, among others in the log, as a file may bring them.
TEST_F(RepeatedContactsTest, InWhateverOrderTheyComeEachIsFoundWhenItIsThere) {
  for (unsigned seed = 1; seed <= 20; ++seed) {
    SCOPED_TRACE(seed);
    EmptyTheLog();
    std::mt19937 random(seed);
    std::set<std::string> there;
    const auto keyOf = [](const LogContact& contact) {
      return fmt::format("{} {}", contact.DataQso.Seconds() / 60, contact.Call);
    };
    std::set<DateTime> taken;
    const auto add = [&](const LogContact& contact) {
      if (!taken.insert(contact.DataQso).second) return false;
      Store(contact);
      there.insert(keyOf(contact));
      return true;
    };
    for (int i = 0; i < 30; ++i) add(At(random() % 7200, random() % 2 == 0 ? "I1A" : "I1B"));
    RepeatedInLog log(session);
    std::int64_t second = random() % 7200;
    for (int i = 0; i < 300; ++i) {
      second = random() % 10 == 0 ? random() % 7200 : second + random() % 120;
      const LogContact contact = At(second % 7200, random() % 2 == 0 ? "I1A" : "I1B");
      const bool repeated = there.contains(keyOf(contact));
      ASSERT_EQ(log.Find(contact), repeated) << i << ": " << keyOf(contact);
      if (!repeated && add(contact)) log.Stored(contact);
    }
  }
}

}  // namespace
}  // namespace brenvo
