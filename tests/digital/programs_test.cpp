#include "digital/programs.h"

#include "core/prefix.h"
#include "digital/call_places.h"
#include "tests/digital/digital_station.h"

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

TEST_F(AtWork, NeedsThatCannotBeReadAreToldAndTheUsualOnesStand) {
  Choose(core::choice::kDigitalNeeds, "Country, Prato");
  EXPECT_THAT(programs->Fault(), HasSubstr("Prato"));
  EXPECT_EQ(programs->Needs().front().words, "Country");
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

TEST_F(AtWork, CallsInMemoryAreResolvedAsByTheDatabase) {
  CallPlaces places;
  places.Read(session);
  for (const char* call : {"K1ABC", "IK3ABC", "PJ4/K1ABC", "9A5XYZ", "3DA0RS", "JA1ABC", "I0XXX",
                           "VP8ABC", "X", "", "QQ9QQ", "UA9ABC", "UA1ABC", "KH6ABC"}) {
    const core::ResolvedPrefix resolved = core::ResolvePrefix(session, call);
    const CallPlace* const place = places.Of(call, base::DateTime());
    EXPECT_EQ(place == nullptr ? "" : place->Country, resolved.Country) << call;
    EXPECT_EQ(place == nullptr ? 0 : place->ZonaCQ, resolved.ZonaCQ.Number()) << call;
  }
}

}  // namespace
}  // namespace brenvo::digital
