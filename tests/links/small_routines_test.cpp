// Spelling, chat chunks, and addresses.
#include <gtest/gtest.h>

#include "links/chat_chunk.h"
#include "links/link_address.h"
#include "links/prompt_text.h"
#include "links/spelling.h"
#include "recorder/recording_platform.h"

namespace brenvo::links {
namespace {

using Texts = std::vector<std::string>;

Texts Spelled(std::string_view call) {
  Texts names;
  SpellCall(call, [&](std::string_view name) { names.emplace_back(name); });
  return names;
}

TEST(SpellCall, NamesAFileForEachCharacter) {
  EXPECT_EQ(Spelled("I4L"), (Texts{"\\I.wav", "\\4.wav", "\\L.wav"}));
}

TEST(SpellCall, NamesTheStrokeForASlash) {
  EXPECT_EQ(Spelled("F/I"), (Texts{"\\F.wav", "\\stroke.wav", "\\I.wav"}));
}

TEST(SpellCall, EndsAtADash) {
  EXPECT_EQ(Spelled("I4-1"), (Texts{"\\I.wav", "\\4.wav"}));
  EXPECT_EQ(Spelled("-I4"), Texts{});
}

TEST(SpellCall, NamesAFileForColonsBlanksAndSignsToo) {
  EXPECT_EQ(Spelled("I: "), (Texts{"\\I.wav", "\\:.wav", "\\ .wav"}));
  EXPECT_EQ(Spelled("Ø"), Texts{"\\Ø.wav"});
}

TEST(ChatChunk, OfAPersonalMessageEndsItsSpeakerAtTheSecondStar) {
  const ChatChunk chunk = SplitChatChunk("<*I2ABC*> ciao <a>");
  EXPECT_TRUE(chunk.Personal);
  EXPECT_EQ(chunk.Speaker, "<*I2ABC*");
  EXPECT_EQ(chunk.Words, "> ciao <a>");
}

TEST(ChatChunk, OfPublicTalkEndsItsSpeakerAtTheBracket) {
  const ChatChunk chunk = SplitChatChunk("<I2ABC> ciao *> a tutti");
  EXPECT_FALSE(chunk.Personal);
  EXPECT_EQ(chunk.Speaker, "<I2ABC>");
  EXPECT_EQ(chunk.Words, " ciao *> a tutti");
}

TEST(ChatChunk, WithAnOpenPersonalSpeakerIsPersonalAndUncoloured) {
  const ChatChunk chunk = SplitChatChunk("<*I2ABC> ciao");
  EXPECT_TRUE(chunk.Personal);
  EXPECT_EQ(chunk.Speaker, "");
  EXPECT_EQ(chunk.Words, "<*I2ABC> ciao");
}

TEST(ChatChunk, WithAnOpenSpeakerIsPublicAndUncoloured) {
  const ChatChunk chunk = SplitChatChunk("<I2ABC ciao");
  EXPECT_FALSE(chunk.Personal);
  EXPECT_EQ(chunk.Speaker, "");
  EXPECT_EQ(chunk.Words, "<I2ABC ciao");
}

TEST(ChatChunk, OfAnythingElseIsPublicAndUncoloured) {
  for (std::string_view text : {"", "ciao", " <I2ABC> ciao", "*** I2ABC <x>"}) {
    const ChatChunk chunk = SplitChatChunk(text);
    EXPECT_FALSE(chunk.Personal);
    EXPECT_EQ(chunk.Speaker, "");
    EXPECT_EQ(chunk.Words, text);
  }
}

TEST(ChatChunk, OfThreeSignsIsAPersonalMessageOfNobody) {
  const ChatChunk chunk = SplitChatChunk("<*>");
  EXPECT_TRUE(chunk.Personal);
  EXPECT_EQ(chunk.Speaker, "<*");
  EXPECT_EQ(chunk.Words, ">");
}

TEST(Prompt, HasNoTelnetOptionsAndNoControls) {
  EXPECT_EQ(PromptText("ÿû\x01ÿý\x18login: \x1B", 100), "login: ");
  EXPECT_EQ(PromptText("ÿûÿ", 100), "");
  EXPECT_EQ(PromptText("caffè ÿ", 100), "caffè ");
}

TEST(Prompt, ThatIsLongShowsItsEnd) { EXPECT_EQ(PromptText("abcdef", 3), "def"); }

class Address : public testing::Test {
 protected:
  Texts ConnectedTo(std::string_view address) {
    auto socket = machine.MakeTcpClient("X");
    ConnectTo(*socket, address);
    return machine.TakeLines();
  }
  recorder::RecordingPlatform machine;
};

TEST_F(Address, WithAColonNamesThePort) {
  EXPECT_EQ(ConnectedTo("dxc.example.org:7300"), Texts{"connect X \"dxc.example.org\" 7300"});
}

TEST_F(Address, WithoutAColonConnectsToTheTelnetPort) {
  EXPECT_EQ(ConnectedTo("dxc.example.org"), Texts{"connect X \"dxc.example.org\" 23"});
}

TEST_F(Address, WithSomethingElseBehindTheColonHasNoPort) {
  EXPECT_EQ(ConnectedTo("host:"), Texts{"connect X \"host\" 23"});
  EXPECT_EQ(ConnectedTo("host:abc"), Texts{"connect X \"host\" 23"});
  EXPECT_EQ(ConnectedTo("host:7300:8000"), Texts{"connect X \"host\" 7300"});
}

TEST_F(Address, BeyondThePortsIsAnError) {
  EXPECT_THROW(ConnectedTo("host:65536"), std::out_of_range);
  EXPECT_THROW(ConnectedTo("host:-1"), std::out_of_range);
}

}  // namespace
}  // namespace brenvo::links
