#include "digital/programs.h"

#include <sqlite3.h>

#include "adif/record_to_contact.h"
#include "adif/station_tables.h"
#include "digital/call_places.h"
#include "tests/digital/digital_station.h"
#include "tests/support/entity_table.h"

namespace brenvo::digital {
namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::HasSubstr;
using ::testing::IsEmpty;
using ::testing::Not;
using ::testing::SizeIs;
using ::testing::StartsWith;

class AtWork : public DigitalStation {
 protected:
  void SendStatus(std::string mode = "FT8", std::uint64_t dial = 14074000) {
    Send(Status{.dial = dial, .mode = std::move(mode), .deCall = "IK3ABC", .deGrid = "JN65AA"});
    machine.TakeLines();
  }
  void SendDecode(std::string message, std::uint32_t time = 50595000) {
    Decode decode = MessageOf<Decode>("02-decode-cq");
    decode.message = std::move(message);
    decode.time = time;
    Send(decode);
  }
  std::string NeedOf(std::size_t decode) {
    const auto& need = programs->Decodes().at(decode).need;
    return need ? programs->Needs().at(*need).words : "";
  }
  void Choose(const core::Choice& choice, std::string_view text) {
    Event([&] { EXPECT_EQ(session.Choices.Set(choice, text), ""); });
  }
};

TEST_F(AtWork, TheFirstDatagramOfAProgramIsAnsweredWithAHeartbeat) {
  ReceiveVector("00-heartbeat-wsjtx-schema3");
  ReceiveVector("00-heartbeat-wsjtx-schema3");
  EXPECT_THAT(Lines(), ElementsAre(Line(Heartbeat{3, "Brenvo", ""})));
}

TEST_F(AtWork, SeveralProgramsAreToldApartByAddressAndId) {
  SendStatus();
  Receive(Vector("01-status-jtdx"));
  Receive(Vector("01-status-full"), {"192.168.1.7", 50001});
  ASSERT_THAT(programs->All(), SizeIs(3));
  EXPECT_EQ(programs->All()[1].status->dial, 14074000u);
  EXPECT_EQ(programs->All()[2].status->mode, "MSK144");
}

TEST_F(AtWork, AnswersGoToTheLastPortOfTheProgramThatHeard) {
  SendStatus();
  ReceiveVector("02-decode-cq");
  Receive(Vector("06-close"), {"192.168.1.7", 4});  // another one
  Receive(WriteDatagram({{3, "WSJT-X"}, Status{}}), {"127.0.0.1", 50002});
  machine.TakeLines();
  Event([&] { EXPECT_TRUE(programs->Answer(programs->Decodes().front().number)); });
  const Texts lines = Lines();
  ASSERT_THAT(lines, SizeIs(1));
  EXPECT_THAT(lines.front(), StartsWith("datagram WSJTX 127.0.0.1:50002 "));
}

TEST_F(AtWork, AnAnswerHasTheExactBytes) {
  SendStatus();
  ReceiveVector("02-decode-cq");
  machine.TakeLines();
  Event([&] { EXPECT_TRUE(programs->Answer(programs->Decodes().front().number)); });
  EXPECT_THAT(Lines(), ElementsAre(Line(ReplyTo(MessageOf<Decode>("02-decode-cq")))));
}

TEST_F(AtWork, AProgramThatIsGoneIsNotAnswered) {
  SendStatus();
  ReceiveVector("02-decode-cq");
  machine.TakeLines();
  Advance(60000);
  EXPECT_TRUE(programs->All().front().gone);
  Event([&] { EXPECT_FALSE(programs->Answer(programs->Decodes().front().number)); });
  EXPECT_THAT(Lines(), IsEmpty());
  ReceiveVector("06-close");
  EXPECT_THAT(programs->All(), IsEmpty());
}

TEST_F(AtWork, UntilAProgramTellsItsFrequencyTheTransceiversBandCounts) {
  session.Rig.Put(core::RigNow{base::Hz(7074000), " 40 m", "", {}});
  SendDecode("CQ K1ABC FN42");
  EXPECT_EQ(programs->Decodes().front().banda, " 40 m");
  SendStatus();
  SendDecode("CQ K2ABC FN42");
  EXPECT_EQ(programs->Decodes().front().banda, " 20 m");
}

TEST_F(AtWork, ADecodeIsJudgedByTheOrderOfTheNeeds) {
  SendStatus();
  SendDecode("CQ K1ABC FN42");
  EXPECT_EQ(NeedOf(0), "Country");
  EXPECT_EQ(programs->Decodes().front().banda, " 20 m");
  Choose(core::choice::kDigitalNeeds, "Zona CQ, Country");
  EXPECT_EQ(NeedOf(0), "Zona CQ");
  Choose(core::choice::kDigitalNeeds, "Square banda modo conferma");
  EXPECT_EQ(NeedOf(0), "Square banda modo conferma");
}

TEST_F(AtWork, NeedsThatCannotBeReadAreRefusedWithTheReason) {
  Choose(core::choice::kDigitalNeeds, "Zona CQ");
  Event([&] {
    EXPECT_THAT(session.Choices.Set(core::choice::kDigitalNeeds, "Country, Prato"),
                HasSubstr("Prato"));
  });
  EXPECT_EQ(programs->Needs().front().words, "Zona CQ");
  EXPECT_EQ(programs->Fault(), "");
}

TEST_F(AtWork, NeedsThatSomebodyElseHasWrittenWrongAreToldAndTheUsualOnesStand) {
  session.SaveSetting("Digitale", "Bisogni", "Country, Prato");
  Start();
  EXPECT_THAT(programs->Fault(), HasSubstr("Prato"));
  EXPECT_EQ(programs->Needs().front().words, "Country");
  EXPECT_EQ(session.Choices.Text(core::choice::kDigitalNeeds).substr(0, 8), "Country!");
}

TEST_F(AtWork, AProvinceIsThatOfTheNewestContactWithTheCall) {
  const auto add = [&](std::string_view province, int day, std::string_view band) {
    session.Contacts.Add(core::ContactTable::kLog, *session.Tables.TbLog,
                         [&](engine::EditableRecordset& row) {
                           row.Set("DataQso", base::DateTime::Of(2001, 1, day, 10));
                           row.Set("Call", "IK0ABC");
                           row.Set("Banda", band);
                           row.Set("Modo", "FT8");
                           row.Set("Country", "I");
                           row.Set("Provincia", province);
                         });
  };
  add("LT", 1, "  2 m");
  add("RM", 2, "  2 m");
  SendStatus();
  Choose(core::choice::kDigitalNeeds, "Provincia banda");
  Advance(50);
  SendDecode("CQ IK0ABC JN61");
  EXPECT_EQ(NeedOf(0), "Provincia banda");
  // Nothing is known of who was never worked, nor of a call that is of another country by now.
  SendDecode("CQ IK0ABD JN61", 1000);
  SendDecode("CQ IK0ABC/MM", 2000);
  EXPECT_EQ(NeedOf(0) + NeedOf(1), "");
  Event([&] { add("RM", 3, " 20 m"); });
  EXPECT_EQ(NeedOf(2), "");
  // The newest one that is left counts.
  Event([&] {
    const auto rows = session.Db.OpenDynaset("select * from Log where Provincia='RM'");
    session.Contacts.Delete(core::ContactTable::kLog, *rows);
    rows->MoveNext();
    session.Contacts.Delete(core::ContactTable::kLog, *rows);
  });
  EXPECT_EQ(NeedOf(2), "Provincia banda");
}

TEST_F(AtWork, AContactThatIsStoredTakesTheNeedAndTheColourAway) {
  SendStatus();
  Choose(core::choice::kDigitalNeeds, "Country banda");
  machine.TakeLines();
  SendDecode("CQ K1ABC FN42");
  const base::Colour colour = Programs::ColourOf(0);
  EXPECT_THAT(Lines(), ElementsAre(Line(Highlight{"K1ABC",
                                                  Rgb{static_cast<std::uint8_t>(colour.red),
                                                      static_cast<std::uint8_t>(colour.green),
                                                      static_cast<std::uint8_t>(colour.blue)},
                                                  Rgb{0, 0, 0}, true})));
  ReceiveVector("05-qso-logged-jtdx-localtime");  // K1ABC on 20 m
  Advance(500);
  EXPECT_EQ(NeedOf(0), "");
  EXPECT_THAT(Lines(), Contains(Line(Highlight{"K1ABC", {}, {}, true})));
}

TEST_F(AtWork, NothingIsColouredWhereTheOperatorDoesNotWantItNorInJtdx) {
  SendStatus();
  Receive(Vector("01-status-jtdx"));
  Choose(core::choice::kDigitalColours, "No");
  machine.TakeLines();
  SendDecode("CQ K1ABC FN42");
  EXPECT_THAT(Lines(), Not(Contains(StartsWith("datagram"))));
  Choose(core::choice::kDigitalColours, "Sì");
  machine.TakeLines();
  Send(Decode{.time = 1000, .message = "CQ JA1ABC PM95"}, "JTDX");
  EXPECT_THAT(Lines(), Not(Contains(StartsWith("datagram"))));
}

TEST_F(AtWork, ANeedThatSoundsSoundsOnce) {
  SendStatus();
  Choose(core::choice::kDigitalColours, "No");
  machine.TakeLines();
  SendDecode("CQ K1ABC FN42");
  EXPECT_THAT(Lines(), ElementsAre("wave-start \"bisogno.wav\""));
  SendDecode("IK3ABC K1ABC -12", 50610000);
  EXPECT_THAT(Lines(), IsEmpty());
  SendDecode("CQ JA1ABC PM95", 50625000);
  EXPECT_THAT(Lines(), Contains("wave-start \"bisogno.wav\""));
  Choose(core::choice::kDigitalSound, "No");
  machine.TakeLines();
  SendDecode("CQ VK3ABC QF22", 50640000);
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(AtWork, WhatIsSentAgainIsShownOnceAndStaysSilent) {
  SendStatus();
  Decode again = MessageOf<Decode>("02-decode-replayed");
  Send(again);
  Send(again);
  EXPECT_THAT(programs->Decodes(), SizeIs(1));
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(AtWork, WhoCallsTheOwnStationIsMarked) {
  SendStatus();
  SendDecode("IK3ABC K1ABC -12");
  SendDecode("<IK3ABC> PJ4/K1ABC RR73", 1000);
  SendDecode("K1ABC IK3ABC R-12", 2000);
  SendDecode("CQ K1ABC FN42", 3000);
  EXPECT_TRUE(programs->Decodes()[3].isMine);
  EXPECT_TRUE(programs->Decodes()[2].isMine);
  EXPECT_FALSE(programs->Decodes()[1].isMine);  // sent by the own station
  EXPECT_FALSE(programs->Decodes()[0].isMine);
  EXPECT_TRUE(programs->Decodes()[0].isCq);
}

TEST_F(AtWork, NoMoreDecodesAndProgramsAreKeptThanTold) {
  for (std::uint32_t i = 0; i < Programs::kMostDecodes + 20; ++i) {
    if (i % 500 == 0) Advance(1000);
    SendDecode("CQ K1ABC FN42", i);
  }
  Advance(1000);
  EXPECT_THAT(programs->Decodes(), SizeIs(Programs::kMostDecodes));
  EXPECT_EQ(programs->FindDecode(1), nullptr);
  EXPECT_EQ(programs->FindDecode(25)->decode.time, 24u);
  for (std::size_t i = 0; i < Programs::kMostPrograms + 5; ++i) Send(Status{}, std::to_string(i));
  EXPECT_THAT(programs->All(), SizeIs(Programs::kMostPrograms));
}

TEST_F(AtWork, AFloodIsDroppedAndCounted) {
  const std::vector<platform::UdpDatagram> flood(10000, {kFrom, Vector("02-decode-cq")});
  Event([&] { machine.Udp().ReceiveAll("WSJTX", flood); });
  EXPECT_EQ(programs->Counts().heard, 10000);
  EXPECT_EQ(programs->Counts().flooded, 10000 - Programs::kMostPerSecond);
  EXPECT_THAT(programs->Decodes(), SizeIs(1));
}

TEST_F(AtWork, HostileDatagramsAreCountedAndStoreNothing) {
  for (const char* name : {"x-empty", "x-bad-magic", "x-schema-4", "x-unknown-type-99",
                           "x-string-length-lies", "x-truncated-midstring"}) {
    ReceiveVector(name);
  }
  Receive(std::string(65000, 'x'));
  Receive(WriteDatagram({{3, "WSJT-X"}, Decode{.message = std::string(64000, 'x')}}));
  Receive(WriteDatagram({{3, std::string(64000, 'x')}, Status{}}));
  ReceiveAdif(std::string(65000, '<'));
  EXPECT_EQ(programs->Counts().foreign, 5);
  EXPECT_EQ(programs->Counts().damaged, 4);
  EXPECT_EQ(programs->Counts().unknown, 1);
  EXPECT_THAT(programs->Decodes(), IsEmpty());
  Advance(500);
  EXPECT_EQ(ContactCount(), 0);
}

TEST_F(AtWork, WhatIsMeantForAProgramDoesNothing) {
  for (const char* name : {"04-reply-expected", "07-replay-expected", "08-halt-expected",
                           "13-highlight-expected", "15-configure-expected"}) {
    ReceiveVector(name);
  }
  EXPECT_THAT(programs->All(), IsEmpty());
  EXPECT_THAT(Lines(), IsEmpty());
}

TEST_F(AtWork, DatagramsAreForwardedAsTheyCameAndNeverBack) {
  Choose(core::choice::kDigitalColours, "No");
  Choose(core::choice::kDigitalForwards, "127.0.0.1:2238 127.0.0.1:2239");
  SendStatus();
  machine.TakeLines();
  ReceiveVector("03-clear");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("datagram WSJTX 127.0.0.1:2238 ADBCCBDA00000003"),
                                   StartsWith("datagram WSJTX 127.0.0.1:2239 ADBCCBDA00000003")));
  Receive(Vector("06-close"), {"127.0.0.1", 2238});
  EXPECT_THAT(Lines(), IsEmpty());
  // A loop of relays brings the same bytes again, from some other port.
  Receive(Vector("03-clear"), {"127.0.0.1", 40000});
  EXPECT_THAT(Lines(), Not(Contains(HasSubstr(":2239 "))));
}

TEST_F(AtWork, NothingIsForwardedToItself) {
  Choose(core::choice::kDigitalForwards, "127.0.0.1:2237 127.0.0.1:2238");
  SendStatus();
  machine.TakeLines();
  ReceiveVector("03-clear");
  EXPECT_THAT(Lines(), ElementsAre(StartsWith("datagram WSJTX 127.0.0.1:2238 ")));
}

TEST_F(AtWork, AContactGoesToAnOpenContestOnlyWhereTheOperatorWantsIt) {
  std::vector<core::ToldContact> taken;
  bool isOpen = true;
  programs->ToContest = [&](const core::ToldContact& told) {
    if (isOpen) taken.push_back(told);
    return isOpen;
  };
  auto logged = MessageOf<QsoLogged>("05-qso-logged-eu-vhf");
  Send(logged);
  Advance(500);
  EXPECT_THAT(taken, IsEmpty());
  EXPECT_EQ(ContactCount(), 1);
  Choose(core::choice::kDigitalContest, "Sì");
  logged.dxCall = "DL2ABC";
  Send(logged);
  Advance(500);
  ASSERT_THAT(taken, SizeIs(1));
  EXPECT_EQ(ContactCount(), 1);
  EXPECT_EQ(taken[0].call + taken[0].locator + taken[0].banda + taken[0].modo,
            "DL2ABCJO31NF  2 mMSK144");
  EXPECT_EQ(taken[0].serialSent, 12);
  EXPECT_EQ(taken[0].serialReceived, 34);
  isOpen = false;
  logged.dxCall = "DL3ABC";
  Send(logged);
  Advance(500);
  EXPECT_EQ(ContactCount(), 2);
}

TEST_F(AtWork, ListensOnlyWhileItIsToldTo) {
  Event([&] { programs->WindowOpened(false); });
  EXPECT_THAT(Lines(), ElementsAre("deaf WSJTX", "deaf ADIF"));
  Choose(core::choice::kDigitalListens, "Sì");
  EXPECT_THAT(Lines(),
              ElementsAre("listen WSJTX \"127.0.0.1:2237\"", "listen ADIF \"127.0.0.1:2333\""));
  Choose(core::choice::kDigitalAdifPort, "0");
  Choose(core::choice::kDigitalGroup, "239.255.0.1");
  Choose(core::choice::kDigitalInterfaces, "lo eth0");
  EXPECT_THAT(Lines(),
              Contains("listen WSJTX \"127.0.0.1:2237\" group \"239.255.0.1\" on \"lo\" on "
                       "\"eth0\""));
  EXPECT_FALSE(machine.Udp().IsOpen("ADIF"));
}

TEST_F(AtWork, APortThatIsTakenIsToldAndTriedAgain) {
  Event([&] { programs->WindowOpened(false); });
  machine.Udp().FailNext("WSJTX");
  Event([&] { programs->WindowOpened(true); });
  EXPECT_THAT(programs->Fault(), HasSubstr("2237"));
  Advance(Programs::kLook);
  EXPECT_EQ(programs->Fault(), "");
  EXPECT_TRUE(programs->Listens());
}

TEST_F(AtWork, AllProgramsAreHaltedAndAskedAgain) {
  SendStatus();
  Event([&] { programs->HaltAll(); });
  Event([&] { programs->ReplayAll(); });
  EXPECT_THAT(Lines(), ElementsAre(Line(HaltTx{false}), Line(Replay())));
}

TEST_F(AtWork, ACallIsFromWhereAnImportPutsItThatDay) {
  CallPlaces places(session);
  places.Read();
  adif::StationTables tables(session);
  for (const char* day : {"19850601", "20240510", "20240610"}) {
    for (const char* call : {"K1ABC", "IK3ABC", "PJ4/K1ABC", "9A5XYZ", "3DA0RS", "I0XXX", "VP8ABC",
                             "QQ9QQ", "UA9ABC", "GB6WW", "K0ABC/MM", "Y21XX", "IK0XYZ/5"}) {
      adif::MappedRecord mapped;
      adif::AdifRecord record;
      record.fields = {{"CALL", call}, {"QSO_DATE", day}, {"TIME_ON", "1200"}};
      adif::MapColumns(record, {}, tables, mapped);
      const core::CallPlace place = places.Of(call, mapped.contact.DataQso);
      EXPECT_EQ(place.Prefisso, mapped.contact.Prefisso) << call;
      EXPECT_EQ(place.Country, mapped.contact.Country) << call << day;
      EXPECT_EQ(place.ZonaCQ, mapped.contact.ZonaCQ) << call << day;
      EXPECT_EQ(place.ZonaITU, mapped.contact.ZonaITU) << call << day;
      EXPECT_EQ(place.Continente, mapped.contact.Continente) << call << day;
    }
  }
}

TEST_F(AtWork, ADecodeIsOfTheCountryOfItsDay) {
  SendStatus();
  Choose(core::choice::kDigitalNeeds, "Country");
  const auto hears = [&](base::DateTime now, std::string_view message, std::uint32_t time) {
    machine.SetNow(now);
    SendDecode(std::string(message), time);
    return programs->Decodes().front().country;
  };
  constexpr std::uint32_t kNoon = 43200000, kBeforeMidnight = 86385000;
  const auto inMay = base::DateTime::Of(2024, 5, 10, 14),
             inJune = base::DateTime::Of(2024, 6, 10, 14);
  EXPECT_EQ(hears(inMay, "CQ GB6WW IO75", kNoon), "GM");
  EXPECT_EQ(programs->Decodes().front().title, "Scozia");
  EXPECT_EQ(NeedOf(0), "Country");
  EXPECT_EQ(hears(inJune, "CQ GB6WW IO76", kNoon), "G");
  // In the first minutes of the 29th in UTC the 28th may still be told of.
  const auto behindMidnight = base::DateTime::Of(2024, 5, 29, 2, 1);
  EXPECT_EQ(hears(behindMidnight, "CQ GB6WW IO77", kBeforeMidnight), "GM");
  EXPECT_EQ(hears(behindMidnight, "CQ GB6WW IO77", 15000), "G");
  // At sea nobody is a need of a country.
  EXPECT_EQ(hears(inMay, "CQ K0ABC/MM", kNoon), "");
  EXPECT_EQ(NeedOf(0), "");
}

TEST_F(AtWork, OtherRulesJudgeAgainWhatIsThere) {
  SendStatus();
  SendDecode("CQ IK0ABC JN61");
  EXPECT_EQ(programs->Decodes().front().country, "I");
  const entities::Table table = TableOfCall("prova.tbl", "IK0ABC", 225);
  Event([&] { session.ByDate.Apply(table); });
  EXPECT_EQ(programs->Decodes().front().country, "IS0");
}

TEST_F(AtWork, ADecodeAsksNothingOfTheDatabase) {
  Choose(core::choice::kDigitalNeeds, "Country banda, Provincia, Square banda modo conferma");
  SendStatus();
  Advance(50);
  // From here on a statement over any of these tables fails.
  sqlite3* file = nullptr;
  ASSERT_EQ(sqlite3_open((directory.Path() / "Brenvo.mdb").c_str(), &file), SQLITE_OK);
  for (const char* table :
       {"Log", "LogAdif", "Prefissi", "Country", "UserRTX", "Modi", "EntitaQso", "EntitaCarichi"}) {
    const std::string rename = fmt::format("ALTER TABLE \"{0}\" RENAME TO \"{0}2\"", table);
    ASSERT_EQ(sqlite3_exec(file, rename.c_str(), nullptr, nullptr, nullptr), SQLITE_OK) << table;
  }
  sqlite3_close(file);
  machine.TakeLines();
  SendDecode("CQ K1ABC FN42");
  EXPECT_EQ(NeedOf(0), "Country banda");
  EXPECT_EQ(programs->Decodes().front().banda, " 20 m");
  EXPECT_GT(programs->Decodes().front().distance, 0);
  EXPECT_THAT(Lines(), Not(Contains(HasSubstr("error"))));
}

}  // namespace
}  // namespace brenvo::digital
