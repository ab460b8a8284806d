#include "core/announcements.h"

#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using Texts = std::vector<std::string>;
constexpr ContactsChanged kManyOfLog{ContactTable::kLog, ManyContacts()};

class AnnouncementsTest : public StationTest {
 protected:
  ContactSubscription Heard(const std::string& name) {
    return session.Changes.Subscribe(
        [this, name](const ContactsChanged&) { heard.push_back(name); });
  }
  Texts heard;
};

TEST_F(AnnouncementsTest, EachListenerHearsInTheOrderOfSubscription) {
  const ContactSubscription first = Heard("first");
  const ContactSubscription second = Heard("second");
  session.Changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, (Texts{"first", "second"}));
}

TEST_F(AnnouncementsTest, WhatIsAnnouncedArrivesAsItIs) {
  std::vector<ContactsChanged> changes;
  const ContactSubscription subscription =
      session.Changes.Subscribe([&](const ContactsChanged& change) { changes.push_back(change); });
  const ContactsChanged one{ContactTable::kContestQso, OneContact{std::nullopt, 7}};
  session.Changes.Announce(one);
  session.Changes.AnnounceMany(ContactTable::kContestQso);
  EXPECT_EQ(changes,
            (std::vector<ContactsChanged>{one, {ContactTable::kContestQso, ManyContacts()}}));
  EXPECT_FALSE(changes[0].Many());
  EXPECT_TRUE(changes[1].Many());
}

TEST_F(AnnouncementsTest, ASubscriptionThatGoesHearsNoMoreEvenInTheMidstOfAnAnnouncement) {
  ContactSubscription second;
  const ContactSubscription first =
      session.Changes.Subscribe([&](const ContactsChanged&) { second = {}; });
  second = Heard("second");
  {
    const ContactSubscription third = Heard("third");
    session.Changes.Announce(kManyOfLog);
  }
  session.Changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, Texts{"third"});
}

TEST_F(AnnouncementsTest, AListenerMayEndItsOwnSubscription) {
  ContactSubscription own;
  int times = 0;
  own = session.Changes.Subscribe([&](const ContactsChanged&) {
    own = {};
    ++times;
  });
  session.Changes.Announce(kManyOfLog);
  session.Changes.Announce(kManyOfLog);
  EXPECT_EQ(times, 1);
}

TEST_F(AnnouncementsTest, OneThatSubscribesMeanwhileHearsTheNextChange) {
  ContactSubscription late;
  const ContactSubscription first = session.Changes.Subscribe([&](const ContactsChanged&) {
    if (heard.empty()) late = Heard("late");
    heard.push_back("first");
  });
  session.Changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, Texts{"first"});
  session.Changes.Announce(kManyOfLog);
  EXPECT_EQ(heard, (Texts{"first", "first", "late"}));
}

TEST_F(AnnouncementsTest, AListenerThatFailsIsToldAndKeepsNothingFromTheOthers) {
  const ContactSubscription first = session.Changes.Subscribe(
      [](const ContactsChanged&) { throw std::runtime_error("Non si legge"); });
  const ContactSubscription second = Heard("second");
  Event([this] { session.Changes.Announce(kManyOfLog); });
  EXPECT_EQ(heard, Texts{"second"});
  EXPECT_EQ(Lines(), Texts{"error \"Non si legge\""});
}

}  // namespace
}  // namespace brenvo::core
