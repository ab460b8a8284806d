#include "core/announcements.h"

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using Texts = std::vector<std::string>;
constexpr ContactsChanged kManyOfLog{ContactTable::kLog, ManyContacts()};

class AnnouncementsTest : public StationTest {
 protected:
  ContactSubscription Heard(const std::string& name) {
    return changes.Subscribe([this, name](const ContactsChanged&) { heard.push_back(name); });
  }
  Announcements changes{session.Windows};
  Texts heard;
};

TEST_F(AnnouncementsTest, EachListenerHearsInTheOrderOfSubscription) {
  const ContactSubscription first = Heard("first");
  const ContactSubscription second = Heard("second");
  changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, (Texts{"first", "second"}));
}

TEST_F(AnnouncementsTest, WhatIsAnnouncedArrivesAsItIs) {
  std::vector<ContactsChanged> arrived;
  const ContactSubscription subscription =
      changes.Subscribe([&](const ContactsChanged& change) { arrived.push_back(change); });
  const ContactsChanged one{ContactTable::kContestQso, OneContact{std::nullopt, 7}};
  changes.Announce(one);
  changes.AnnounceMany(ContactTable::kContestQso);
  EXPECT_EQ(arrived,
            (std::vector<ContactsChanged>{one, {ContactTable::kContestQso, ManyContacts()}}));
  EXPECT_FALSE(arrived[0].Many());
  EXPECT_TRUE(arrived[1].Many());
}

TEST_F(AnnouncementsTest, ASubscriptionThatGoesHearsNoMoreEvenInTheMidstOfAnAnnouncement) {
  ContactSubscription second;
  const ContactSubscription first = changes.Subscribe([&](const ContactsChanged&) { second = {}; });
  second = Heard("second");
  {
    const ContactSubscription third = Heard("third");
    changes.Announce(kManyOfLog);
  }
  changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, Texts{"third"});
}

TEST_F(AnnouncementsTest, AListenerMayEndItsOwnSubscription) {
  ContactSubscription own;
  int times = 0;
  own = changes.Subscribe([&](const ContactsChanged&) {
    own = {};
    ++times;
  });
  changes.Announce(kManyOfLog);
  changes.Announce(kManyOfLog);
  EXPECT_EQ(times, 1);
}

TEST_F(AnnouncementsTest, OneThatSubscribesMeanwhileHearsTheNextChange) {
  ContactSubscription late;
  const ContactSubscription first = changes.Subscribe([&](const ContactsChanged&) {
    if (heard.empty()) late = Heard("late");
    heard.push_back("first");
  });
  changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, Texts{"first"});
  changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, (Texts{"first", "first", "late"}));
}

TEST_F(AnnouncementsTest, AListenerThatFailsIsToldAndKeepsNothingFromTheOthers) {
  const ContactSubscription first =
      changes.Subscribe([](const ContactsChanged&) { throw std::runtime_error("Non si legge"); });
  const ContactSubscription second = Heard("second");
  Event([this] { changes.Announce(kManyOfLog); });
  EXPECT_EQ(heard, Texts{"second"});
  EXPECT_EQ(Lines(), Texts{"error \"Non si legge\""});
}

}  // namespace
}  // namespace brenvo::core
