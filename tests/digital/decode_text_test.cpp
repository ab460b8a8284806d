#include "digital/decode_text.h"

#include <gtest/gtest.h>

namespace brenvo::digital {
namespace {

// Sender, called, locator, and what else it is.
std::string Told(std::string_view message) {
  const DecodeText read = ReadDecode(message);
  return read.call + '|' + read.to + '|' + read.locator + (read.isCq ? " cq" : "") +
         (read.isEnd ? " end" : "");
}

TEST(DecodeText, ACallToAllTellsCallAndLocator) {
  EXPECT_EQ(Told("CQ K1ABC FN42"), "K1ABC||FN42 cq");
  EXPECT_EQ(Told("CQ DX K1ABC FN42"), "K1ABC||FN42 cq");
  EXPECT_EQ(Told("CQ 145 K1ABC FN42"), "K1ABC||FN42 cq");
  EXPECT_EQ(Told("CQ PJ4/K1ABC"), "PJ4/K1ABC|| cq");
  EXPECT_EQ(Told("CQ TEST IK3ABC/P JN65"), "IK3ABC/P||JN65 cq");
  EXPECT_EQ(Told("QRZ K1ABC"), "K1ABC|| cq");
}

TEST(DecodeText, AnAnswerTellsBothStations) {
  EXPECT_EQ(Told("IK0XYZ K1ABC FN42"), "K1ABC|IK0XYZ|FN42");
  EXPECT_EQ(Told("IK0XYZ K1ABC -12"), "K1ABC|IK0XYZ|");
  EXPECT_EQ(Told("IK0XYZ K1ABC R+05"), "K1ABC|IK0XYZ|");
  EXPECT_EQ(Told("IK0XYZ K1ABC R 540012 JN61FV"), "K1ABC|IK0XYZ|JN61");
}

TEST(DecodeText, TheWordThatEndsAContactIsNoLocator) {
  EXPECT_EQ(Told("IK0XYZ K1ABC RR73"), "K1ABC|IK0XYZ| end");
  EXPECT_EQ(Told("IK0XYZ K1ABC 73"), "K1ABC|IK0XYZ| end");
  EXPECT_EQ(Told("IK0XYZ K1ABC RRR"), "K1ABC|IK0XYZ| end");
}

TEST(DecodeText, HashedCallsStandInBrackets) {
  EXPECT_EQ(Told("<IK0XYZ> K1ABC/P RR73"), "K1ABC/P|IK0XYZ| end");
  EXPECT_EQ(Told("<...> 9A5XYZ -12"), "9A5XYZ||");
  EXPECT_EQ(Told("IK0XYZ <...> -12"), "|IK0XYZ|");
}

TEST(DecodeText, WhoAnswersTwoAtOnceIsToldBehindTheSecond) {
  EXPECT_EQ(Told("K1ABC RR73; W9XYZ <KH1/KH7Z> -08"), "KH1/KH7Z|W9XYZ| end");
}

TEST(DecodeText, FreeTextTellsNothing) {
  for (const char* message : {"", " ", "TNX BOB 73 GL", "HELLO", "CQ", "CQ DX", "; ", "73", "<"}) {
    EXPECT_EQ(ReadDecode(message).call, "") << message;
  }
}

}  // namespace
}  // namespace brenvo::digital
