#include "digital/datagrams.h"

#include <gtest/gtest.h>

#include "tests/digital/vectors.h"

namespace brenvo::digital {
namespace {

Unread WhyUnread(std::string_view bytes) {
  const auto read = ReadDatagram(bytes);
  EXPECT_TRUE(std::holds_alternative<Unread>(read));
  return std::holds_alternative<Unread>(read) ? std::get<Unread>(read) : Unread::kForeign;
}

Datagram Read(std::string_view bytes) {
  const auto read = ReadDatagram(bytes);
  EXPECT_TRUE(std::holds_alternative<Datagram>(read));
  return std::holds_alternative<Datagram>(read) ? std::get<Datagram>(read) : Datagram();
}

const Header kWsjtx{3, "WSJT-X"};

TEST(Datagrams, AHeartbeatTellsTheNewestFormAndTheVersion) {
  EXPECT_EQ(Read(Vector("00-heartbeat-wsjtx-schema3")),
            (Datagram{kWsjtx, Heartbeat{3, "2.7.0", "6cbbe3"}}));
  EXPECT_EQ(Read(Vector("00-heartbeat-mshv")), (Datagram{{2, "MSHV"}, Heartbeat{3, "2.76", ""}}));
}

TEST(Datagrams, AHeartbeatWithoutTheNewestFormHasTheOldest) {
  EXPECT_EQ(MessageOf<Heartbeat>("00-heartbeat-old-schema2-no-max").newestSchema, kOldestSchema);
}

TEST(Datagrams, AStatusHasAllItsFields) {
  const auto status = MessageOf<Status>("01-status-full");
  EXPECT_EQ(status.dial, 144360000u);
  EXPECT_EQ(status.mode, "MSK144");
  EXPECT_EQ(status.dxCall, "DL1ABC");
  EXPECT_EQ(status.deGrid, "JN61FV");
  EXPECT_EQ(status.dxGrid, "JO31");
  EXPECT_TRUE(status.txEnabled);
  EXPECT_FALSE(status.transmitting);
  EXPECT_TRUE(status.fastMode);
  EXPECT_EQ(status.specialOperation, kEuVhf);
  EXPECT_EQ(status.period, 15u);
  EXPECT_EQ(status.configuration, "Default");
  EXPECT_EQ(status.txMessage, "DL1ABC IK0XYZ 540012 JN61FV");
}

TEST(Datagrams, AStatusMayEndEarly) {
  const auto status = MessageOf<Status>("01-status-mshv-short");
  EXPECT_EQ(status.deCall, "IK0XYZ");
  EXPECT_EQ(status.dxGrid, "");  // a null text
  EXPECT_EQ(status.specialOperation, 0);
  EXPECT_EQ(status.period, kNoNumber);
}

TEST(Datagrams, WhoSendsFirstInJtdxIsNoSpecialOperation) {
  EXPECT_EQ(MessageOf<Status>("01-status-jtdx").specialOperation, 0);
}

TEST(Datagrams, ADecodeKeepsItsExactDelay) {
  const auto decode = MessageOf<Decode>("02-decode-cq");
  EXPECT_TRUE(decode.isNew);
  EXPECT_EQ(decode.time, 50595000u);  // 14:03:15
  EXPECT_EQ(decode.snr, -12);
  EXPECT_EQ(DtOf(decode), 0.2);
  EXPECT_EQ(decode.df, 1534u);
  EXPECT_EQ(decode.mode, "~");
  EXPECT_EQ(decode.message, "CQ DX K1ABC FN42");
  EXPECT_FALSE(MessageOf<Decode>("02-decode-replayed").isNew);
  EXPECT_TRUE(MessageOf<Decode>("02-decode-hashed-call").lowConfidence);
}

TEST(Datagrams, ALoggedContactHasItsMomentsAndLetters) {
  const auto logged = MessageOf<QsoLogged>("05-qso-logged-eu-vhf");
  ASSERT_TRUE(logged.on && logged.off);
  EXPECT_EQ(base::IsoText(logged.on->time), "2026-07-04 14:03:00");
  EXPECT_EQ(base::IsoText(logged.off->time), "2026-07-04 14:04:30");
  EXPECT_EQ(logged.off->basis, Moment::Basis::kUtc);
  EXPECT_EQ(logged.name, "José");
  EXPECT_EQ(logged.comments, "tropo, città è ok");
  EXPECT_EQ(logged.exchangeReceived, "570034 JO31NF");
  EXPECT_EQ(logged.propagation, "MS");
}

TEST(Datagrams, ALoggedContactMayHaveNoBeginningAndNullTexts) {
  const auto logged = MessageOf<QsoLogged>("05-qso-logged-null-strings");
  EXPECT_FALSE(logged.on);
  EXPECT_EQ(logged.dxGrid, "");
  EXPECT_EQ(logged.mode, "FT4");
}

TEST(Datagrams, FieldsOfLaterVersionsAreReadAndWhatFollowsThemIsNot) {
  EXPECT_EQ(MessageOf<QsoLogged>("05-qso-logged-extra-tail").satellite, "QO-100");
  EXPECT_EQ(Read(Vector("05-qso-logged-extra-tail") + "more").message,
            Read(Vector("05-qso-logged-extra-tail")).message);
}

TEST(Datagrams, LocalTimesAreToldAsSuch) {
  EXPECT_EQ(MessageOf<QsoLogged>("05-qso-logged-jtdx-localtime").off->basis, Moment::Basis::kLocal);
}

TEST(Datagrams, AMomentMayBeAnOffsetFromUtc) {
  auto logged = MessageOf<QsoLogged>("05-qso-logged-eu-vhf");
  logged.on->basis = Moment::Basis::kOffset;
  logged.on->offset = -7200;
  EXPECT_EQ(std::get<QsoLogged>(Read(WriteDatagram({kWsjtx, logged})).message), logged);
}

TEST(Datagrams, TheRecordedOnesAreRead) {
  EXPECT_EQ(MessageOf<Heartbeat>("real-00-0").newestSchema, 3u);
  EXPECT_EQ(MessageOf<Status>("real-01-0").mode, "FT8");
  EXPECT_EQ(MessageOf<Decode>("real-02-0").message, "CQ DL1ABC JO31");
  EXPECT_EQ(MessageOf<QsoLogged>("real-05-0").name, "Niccolò");
  EXPECT_NE(MessageOf<LoggedAdif>("real-12-0").adif.find("<programid:6>WSJT-X"), std::string::npos);
}

// Each of these tells all its fields, and no null texts.
TEST(Datagrams, WhatIsReadIsWrittenByteForByte) {
  for (const char* name : {"00-heartbeat-wsjtx-schema3",
                           "00-heartbeat-mshv",
                           "01-status-full",
                           "01-status-na-values",
                           "02-decode-cq",
                           "02-decode-replayed",
                           "02-decode-hashed-call",
                           "02-decode-unresolved-hash",
                           "03-clear",
                           "04-reply-expected",
                           "05-qso-logged-extra-tail",
                           "06-close",
                           "07-replay-expected",
                           "08-halt-expected",
                           "10-wspr",
                           "12-logged-adif",
                           "13-highlight-expected",
                           "13-highlight-clear-expected",
                           "13-clearall-expected",
                           "15-configure-expected",
                           "16-annotation-expected",
                           "real-00-0",
                           "real-02-0"}) {
    EXPECT_EQ(WriteDatagram(Read(Vector(name))), Vector(name)) << name;
  }
}

TEST(Datagrams, WhatGoesToAProgramIsWrittenByteForByte) {
  const std::pair<Message, const char*> sent[] = {
      {ReplyTo(MessageOf<Decode>("02-decode-cq")), "04-reply-expected"},
      {Replay(), "07-replay-expected"},
      {HaltTx{true}, "08-halt-expected"},
      {Highlight{"K1ABC", Rgb{255, 0, 0}, Rgb{255, 255, 255}, true}, "13-highlight-expected"},
      {Highlight{"K1ABC", {}, {}, true}, "13-highlight-clear-expected"},
      {Highlight{"CLEARALL!", {}, {}, false}, "13-clearall-expected"},
      {Configure{.dxCall = "K1ABC", .dxGrid = "FN42", .generateMessages = true},
       "15-configure-expected"},
      {Annotation{"K1ABC", true, 1200}, "16-annotation-expected"}};
  for (const auto& [message, name] : sent) {
    EXPECT_EQ(WriteDatagram({kWsjtx, message}), Vector(name)) << name;
  }
}

TEST(Datagrams, MessagesWithoutAVectorComeBackAsTheyWere) {
  for (const Message& message :
       {Message(FreeText{"TU 73", true}), Message(Location{"JN65AA"}),
        Message(SwitchConfiguration{"2 m"}), Message(SetTxDf{1500}),
        Message(TriggerCq{"DX", true, false}), Message(Clear{std::uint8_t{2}})}) {
    EXPECT_EQ(Read(WriteDatagram({kWsjtx, message})).message, message);
  }
}

TEST(Datagrams, WhatIsNoneIsRefusedWithItsReason) {
  EXPECT_EQ(WhyUnread(Vector("x-empty")), Unread::kForeign);
  EXPECT_EQ(WhyUnread(Vector("x-bad-magic")), Unread::kForeign);
  EXPECT_EQ(WhyUnread(Vector("n1mm-2333-plain")), Unread::kForeign);
  EXPECT_EQ(WhyUnread(Vector("x-schema-4")), Unread::kSchema);
  EXPECT_EQ(WhyUnread(Vector("x-unknown-type-99")), Unread::kUnknownType);
  EXPECT_EQ(WhyUnread(Vector("x-string-length-lies")), Unread::kDamaged);
  EXPECT_EQ(WhyUnread(Vector("x-truncated-midstring")), Unread::kDamaged);
}

TEST(Datagrams, TheFirstFormIsRefused) {
  std::string bytes = Vector("03-clear");
  bytes[7] = 1;
  EXPECT_EQ(WhyUnread(bytes), Unread::kSchema);
}

TEST(Datagrams, ACutOneIsRefusedOrKeepsTheFieldsThatAreWhole) {
  for (const char* name : {"05-qso-logged-eu-vhf", "01-status-full", "02-decode-cq", "10-wspr"}) {
    const std::string whole = Vector(name);
    for (std::size_t size = 0; size < whole.size(); ++size) {
      const auto read = ReadDatagram(std::string_view(whole).substr(0, size));
      if (const auto* datagram = std::get_if<Datagram>(&read)) {
        EXPECT_TRUE(WriteDatagram(*datagram).starts_with(whole.substr(0, size))) << name << size;
      }
    }
  }
}

}  // namespace
}  // namespace brenvo::digital
