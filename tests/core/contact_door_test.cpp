#include "core/contact_door.h"

#include <gmock/gmock.h>

#include "core/log_contact.h"
#include "core/session.h"
#include "tests/support/station.h"

namespace brenvo::core {
namespace {

using enum ContactTable;
using testing::ElementsAre;
using testing::IsEmpty;

class ContactDoorTest : public StationTest {
 protected:
  ContactDoorTest() {
    subscription_ = session.Contacts.Subscribe(
        [this](const ContactsChanged& change) { announced.push_back(change); });
  }
  static ContactDoor::Fill WithCall(const char* call) {
    return [call](engine::EditableRecordset& row) {
      row.Set(column::kDataQso, base::DateTime::Of(2001, 2, 3));
      row.Set(column::kCall, call);
    };
  }
  std::vector<std::string> Calls() {
    std::vector<std::string> calls;
    const auto stored = session.Db.OpenSnapshot("select Call from Log order by QsoNr");
    for (; !stored->EOF_(); stored->MoveNext()) calls.push_back(stored->Field("Call").Text());
    return calls;
  }
  // What has been announced, a contact by its key and call before and after: "1 IK3ABC".
  static std::string Told(const std::optional<StoredContact>& contact) {
    return contact ? std::to_string(contact->key) + " " + contact->contact.Call : "none";
  }
  std::vector<std::string> AnnouncedOnes() const {
    std::vector<std::string> told;
    for (const ContactsChanged& change : announced) {
      const auto& one = std::get<OneContact>(change.which);
      told.push_back(Told(one.before) + " > " + Told(one.after));
    }
    return told;
  }

  std::unique_ptr<engine::Dynaset> rows = session.Db.OpenDynaset("select * from Log");
  std::vector<ContactsChanged> announced;

 private:
  forms::Subscription subscription_;
};

TEST_F(ContactDoorTest, ANewAChangedAndADeletedContactAreAnnouncedByTheirKey) {
  session.Contacts.Add(kLog, *rows, WithCall("IK3ABC"));
  rows->SetBookmark(rows->LastModified());
  session.Contacts.Change(kLog, *rows, WithCall("IK3DEF"));
  EXPECT_THAT(Calls(), ElementsAre("IK3DEF"));
  session.Contacts.Delete(kLog, *rows);
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_THAT(AnnouncedOnes(),
              ElementsAre("none > 1 IK3ABC", "1 IK3ABC > 1 IK3DEF", "1 IK3DEF > none"));
}

TEST_F(ContactDoorTest, AContactIsInTheFileWhenItIsAnnounced) {
  std::size_t stored = 0;
  const forms::Subscription subscription =
      session.Contacts.Subscribe([&](const ContactsChanged&) { stored = Calls().size(); });
  session.Contacts.Add(kLog, *rows, WithCall("IK3ABC"));
  EXPECT_EQ(stored, 1u);
}

TEST_F(ContactDoorTest, AContactOfMidnightComesIn) {
  session.Contacts.Add(kLog, *rows, WithCall("IK3ABC"));
  rows->SetBookmark(rows->LastModified());
  EXPECT_EQ(rows->Field(column::kDataQso).Date(), base::DateTime::Of(2001, 2, 3));
}

TEST_F(ContactDoorTest, WhatCannotBeStoredIsNeitherStoredNorAnnounced) {
  EXPECT_THROW(session.Contacts.Add(kLog, *rows,
                                    [](engine::EditableRecordset& row) {
                                      row.Set(column::kCall, "IK3ABC");
                                      row.Set(column::kZonaCQ, "ovest");
                                    }),
               engine::DatabaseError);
  EXPECT_THROW(session.Contacts.Change(kLog, *rows, WithCall("IK3ABC")), engine::DatabaseError);
  EXPECT_THROW(session.Contacts.Delete(kLog, *rows), engine::DatabaseError);
  EXPECT_THAT(Calls(), IsEmpty());
  EXPECT_THAT(announced, IsEmpty());
}

TEST_F(ContactDoorTest, ManyAreAnnouncedOnceATableWhenTheWorkIsOver) {
  EXPECT_TRUE(session.Contacts.ChangeMany("Prova", {kLog, kContestQso}, [&] {
    session.Contacts.Add(kLog, *rows, WithCall("IK3ABC"));
    session.Contacts.ChangeMany("Prova", {}, [] { return true; });
    session.Contacts.Add(kLog, *rows, WithCall("IK3DEF"));
    EXPECT_THAT(announced, IsEmpty());
    return true;
  }));
  EXPECT_THAT(announced, ElementsAre(ContactsChanged{kLog, ManyContacts()},
                                     ContactsChanged{kContestQso, ManyContacts()}));
}

TEST_F(ContactDoorTest, AWorkThatStoredNothingIsNotAnnounced) {
  EXPECT_FALSE(session.Contacts.ChangeMany("Prova", {kLog}, [] { return false; }));
  EXPECT_THROW(
      session.Contacts.ChangeMany(
          "Prova", {kLog}, []() -> bool { throw std::runtime_error("Il file non si legge"); }),
      std::runtime_error);
  EXPECT_THAT(announced, IsEmpty());
  session.Contacts.Add(kLog, *rows, WithCall("IK3ABC"));
  EXPECT_THAT(AnnouncedOnes(), ElementsAre("none > 1 IK3ABC"));
}

TEST_F(ContactDoorTest, ListenersHearInTheOrderOfTheirSubscriptionAndNoMoreOnceItHasEnded) {
  std::vector<std::string> heard;
  const auto hear = [&](const char* name) {
    return session.Contacts.Subscribe(
        [&heard, name](const ContactsChanged&) { heard.emplace_back(name); });
  };
  const forms::Subscription first = hear("first");
  {
    const forms::Subscription second = hear("second");
    session.Contacts.ChangeMany("Prova", {kLog}, [] { return true; });
  }
  session.Contacts.ChangeMany("Prova", {kLog}, [] { return true; });
  EXPECT_THAT(heard, ElementsAre("first", "second", "first"));
}

TEST_F(ContactDoorTest, AListenerThatFailsIsToldAndKeepsNothingFromTheOthers) {
  const forms::Subscription first = session.Contacts.Subscribe(
      [](const ContactsChanged&) { throw std::runtime_error("Non si legge"); });
  int heard = 0;
  const forms::Subscription second =
      session.Contacts.Subscribe([&](const ContactsChanged&) { ++heard; });
  Event([this] { session.Contacts.ChangeMany("Prova", {kLog}, [] { return true; }); });
  EXPECT_EQ(heard, 1);
  EXPECT_THAT(Lines(), ElementsAre("error \"Non si legge\""));
}

TEST_F(ContactDoorTest, ContactsOneAfterAnotherAreStoredWithAllTheirColumns) {
  LogContact contact;
  contact.DataQso = base::DateTime::Of(2001, 2, 3, 4, 5, 6);
  contact.Call = "IK3ABC";
  contact.Frequenza = 144.3;
  contact.ZonaCQ = 15;
  contact.QslRicevuta = true;
  contact.Note = "Prima riga";
  session.Contacts.ChangeMany("Prova", {kLog}, [&] {
    ContactDoor::Appender appender = session.Contacts.OpenAppender();
    EXPECT_EQ(appender.Append(contact), 1);
    contact.Call = "IK3DEF";
    EXPECT_EQ(appender.Append(contact), 2);
    return true;
  });
  const auto stored = session.Db.OpenSnapshot("select * from Log order by QsoNr desc");
  EXPECT_EQ(ReadContact(*stored), contact);
  EXPECT_THAT(announced, ElementsAre(ContactsChanged{kLog, ManyContacts()}));
}

}  // namespace
}  // namespace brenvo::core
