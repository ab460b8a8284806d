#include "rig/replies.h"

#include <gmock/gmock.h>

#include <functional>
#include <map>

#include "tests/support/golden.h"
#include "tests/support/places.h"

namespace brenvo::rig {
namespace {

using testing::ElementsAre;
using testing::Optional;

// What Hamlib 4.5.4 answered to each command of the recorded talk with the program.
std::string Recorded(std::string_view program, std::string_view command) {
  const std::string all = ReadBytes(SourceDir() / "tests/data/rig/hamlib-4.5.4.txt");
  const std::size_t part = all.find("===== " + std::string(program));
  const std::string mark = "\n>>> " + std::string(command) + '\n';
  const std::size_t at = all.find(mark, part);
  if (part == all.npos || at == all.npos) {
    ADD_FAILURE() << "no such command: " << command;
    return {};
  }
  const std::size_t begin = at + mark.size();
  return all.substr(begin, std::min(all.find(">>> ", begin), all.find("=====", begin)) - begin);
}

std::optional<Reply> ReplyTo(const Request& request, std::string_view bytes) {
  ReplyReader reader;
  reader.Expect(request);
  reader.Feed(bytes);
  return reader.Take();
}

bool Breaks(const Request& request, std::string_view bytes) {
  ReplyReader reader;
  reader.Expect(request);
  reader.Feed(bytes);
  return reader.IsBroken() && !reader.Take();
}

TEST(Replies, WhatARecordedTransceiverSaidIsUnderstood) {
  EXPECT_THAT(ReplyTo(Request::WantsVfo(), Recorded("rigctld", "\\chk_vfo"))->lines,
              ElementsAre("0"));
  EXPECT_EQ(ReplyTo(Request::Frequency(), Recorded("rigctld", "+f"))->Number("Frequency"),
            144300000);
  const auto mode = ReplyTo(Request::Mode(), Recorded("rigctld", "+m"));
  EXPECT_EQ(mode->Find("Mode"), "USB");
  EXPECT_EQ(mode->Number("Passband"), 2400);
  EXPECT_EQ(
      ReplyTo(Request::SetFrequency(base::Hz(50313000)), Recorded("rigctld", "+F 50313000"))->code,
      kDone);
}

TEST(Replies, WhatARecordedRotatorSaidIsUnderstood) {
  EXPECT_EQ(ReplyTo(Request::Position(), Recorded("rotctld", "+p"))->Number("Azimuth"), 4.81);
}

TEST(Replies, AnAnswerThatComesByteByByteIsTheSame) {
  ReplyReader reader;
  reader.Expect(Request::Frequency());
  for (const char c : std::string_view("get_freq:\r\nFrequency: 7100000\r\nRPRT 0\r")) {
    reader.Feed(std::string_view(&c, 1));
    EXPECT_FALSE(reader.Take());
  }
  reader.Feed("\n");
  EXPECT_EQ(reader.Take()->Number("Frequency"), 7100000);
  EXPECT_FALSE(reader.Waits());
}

TEST(Replies, TwoAnswersInOnePacketBreakTheLineAsOneIsAskedAtATime) {
  EXPECT_TRUE(Breaks(Request::Frequency(),
                     "get_freq:\nFrequency: 7100000\nRPRT 0\nget_mode:\nMode: USB\nRPRT 0\n"));
}

TEST(Replies, WhatIsNoAnswerToTheQuestionBreaksTheLine) {
  // The answers of the recorded program to words that it did not know.
  EXPECT_TRUE(Breaks(Request::Frequency(), Recorded("rigctld", "+\\bogus")));
  EXPECT_TRUE(Breaks(Request::Frequency(), Recorded("rigctld", "F abc")));
  EXPECT_TRUE(Breaks(Request::Frequency(), Recorded("rigctld", "xyz")));
  EXPECT_TRUE(Breaks(Request::Frequency(), "get_mode:\nMode: USB\nRPRT 0\n"));
  EXPECT_TRUE(Breaks(Request::Frequency(), "get_freq:\nRPRT zero\n"));
}

TEST(Replies, WhatNobodyAskedForBreaksTheLine) {
  ReplyReader reader;
  reader.Feed("RPRT 0\n");
  EXPECT_TRUE(reader.IsBroken());
  reader.Reset();
  reader.Feed("half a line");
  reader.Expect(Request::Frequency());
  EXPECT_TRUE(reader.IsBroken());
}

TEST(Replies, ALineOrAnAnswerWithoutEndIsNotKept) {
  EXPECT_TRUE(Breaks(Request::Frequency(), std::string(ReplyReader::kLongestLine + 1, 'x')));
  std::string lines = "get_freq:\n";
  for (std::size_t i = 0; i <= ReplyReader::kMostLines; ++i) lines += "x\n";
  EXPECT_TRUE(Breaks(Request::Frequency(), lines));
}

TEST(Replies, AnErrorIsToldInWords) {
  const auto reply = ReplyTo(Request::Frequency(), "get_freq:\nRPRT -5\n");
  EXPECT_EQ(reply->code, -5);
  EXPECT_TRUE(IsDead(reply->code));
  EXPECT_EQ(WordsOf(-5), "nessuna risposta dall'apparato");
  EXPECT_TRUE(IsUnknown(-11));
  EXPECT_FALSE(IsUnknown(-5));
  EXPECT_EQ(WordsOf(-99), "errore -99");
  EXPECT_EQ(WordsOf(-2147483647 - 1), "errore -2147483648");
}

// Whoever adds a request has to write here what it sends, and to see that it keys nothing.
TEST(Requests, AllBytesThatCanBeSentAreTheseAndNoneOfThemTransmits) {
  const Request all[] = {Request::WantsVfo(),
                         Request::Frequency(),
                         Request::Mode(),
                         Request::Split(),
                         Request::SplitFrequency(),
                         Request::Strength(),
                         Request::SetFrequency(base::Hz(14250000.4)),
                         *Request::SetMode("PKTUSB"),
                         Request::RotatorState(),
                         Request::Position(),
                         Request::SetPosition(134.96, 0),
                         Request::StopTurning()};
  std::string bytes;
  for (const Request& each : all) bytes += each.Bytes(false);
  EXPECT_EQ(bytes,
            "\\chk_vfo\n+\\get_freq\n+\\get_mode\n+\\get_split_vfo\n+\\get_split_freq\n"
            "+\\get_level STRENGTH\n+\\set_freq 14250000\n+\\set_mode PKTUSB -1\n"
            "+\\dump_state\n+\\get_pos\n+\\set_pos 135.0 0.0\n+\\stop\n");
  EXPECT_EQ(Request::Frequency().Bytes(true), "+\\get_freq currVFO\n");
  EXPECT_EQ(Request::SetMode("USB")->Bytes(true), "+\\set_mode currVFO USB -1\n");
  EXPECT_EQ(Request::WantsVfo().Bytes(true), "\\chk_vfo\n");
  EXPECT_EQ(Request::Position().Bytes(true), "+\\get_pos\n");
}

TEST(Requests, AModeThatIsNoNameIsNoRequest) {
  for (const char* mode : {"", "USB\nT 1", "usb", "USB 1", "ABCDEFGHIJKLM"}) {
    EXPECT_FALSE(Request::SetMode(mode)) << mode;
  }
}

TEST(Requests, WhetherAVfoIsNamedIsReadInEachOfItsForms) {
  EXPECT_THAT(ReadWantsVfo("0"), Optional(false));
  EXPECT_THAT(ReadWantsVfo("1"), Optional(true));
  EXPECT_THAT(ReadWantsVfo("CHKVFO 1"), Optional(true));
  EXPECT_FALSE(ReadWantsVfo("SSH-2.0-OpenSSH"));
  EXPECT_FALSE(ReadWantsVfo(""));
}

TEST(RotatorAngles, LimitsAreReadInTheirOldAndTheirNewWords) {
  Reply reply;
  reply.lines = {"rotctld Protocol Ver: 1",      "Minimum Azimuth: -180.000000",
                 "Maximum Azimuth: 450.000000",  "Minimum Elevation: 0.000000",
                 "Maximum Elevation: 90.000000", "done"};
  EXPECT_THAT(ReadLimits(reply), Optional(RotatorLimits{-180, 450, 0, 90}));
  reply.lines = {"min_az=0.000000", "max_az=360.000000"};
  EXPECT_THAT(ReadLimits(reply), Optional(RotatorLimits{0, 360, 0, 0}));
  reply.lines = {"min_az=10", "max_az=10"};
  EXPECT_FALSE(ReadLimits(reply));
  reply.lines = {"min_az=-1e300", "max_az=1e300"};
  EXPECT_FALSE(ReadLimits(reply));
  reply.lines = {"min_az=nan", "max_az=450"};
  EXPECT_FALSE(ReadLimits(reply));
}

TEST(RotatorAngles, OfTwoAnglesThatLookAlikeTheNearerOneIsTaken) {
  const RotatorLimits overlap{0, 450, 0, 0};
  EXPECT_THAT(AngleFor(10, 350, overlap), Optional(370.0));
  EXPECT_THAT(AngleFor(10, 100, overlap), Optional(10.0));
  EXPECT_THAT(AngleFor(80, 440, overlap), Optional(440.0));
  EXPECT_THAT(AngleFor(90, 440, overlap), Optional(450.0));
  EXPECT_THAT(AngleFor(100, 440, overlap), Optional(100.0));
  EXPECT_THAT(AngleFor(360, 10, overlap), Optional(0.0));
  EXPECT_THAT(AngleFor(200, -170, {-180, 450, 0, 0}), Optional(-160.0));
}

TEST(RotatorAngles, ADirectionThatTheLimitsLeaveOutIsNone) {
  EXPECT_FALSE(AngleFor(270, 0, {0, 180, 0, 0}));
  EXPECT_THAT(AngleFor(180, 0, {0, 180, 0, 0}), Optional(180.0));
  EXPECT_EQ(DirectionOf(-10), 350);
  EXPECT_EQ(DirectionOf(450), 90);
}

TEST(Models, TheListOfTheLibraryIsReadByItsHeadings) {
  const std::string list =
      " Rig #  Mfg                    Model                   Version         Status      Macro\n"
      "     1  Hamlib                 Dummy                   20221128.0      Stable      "
      "RIG_MODEL_DUMMY\n"
      "  3073  Icom                   IC-7300                 20230109.10     Stable      "
      "RIG_MODEL_IC7300\n"
      "noise\n  -5  No                     Model                   \n";
  EXPECT_THAT(ReadModels(list), ElementsAre(Model{1, "Hamlib", "Dummy", "Stable"},
                                            Model{3073, "Icom", "IC-7300", "Stable"}));
  EXPECT_THAT(ReadModels("rigctl: command not found\n"), ElementsAre());
  EXPECT_THAT(ReadModels(" Rig # Mfg Version Model Status\n 1 a b c d\n"), ElementsAre());
}

}  // namespace
}  // namespace brenvo::rig
