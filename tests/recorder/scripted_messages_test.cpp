#include "recorder/scripted_messages.h"

#include <gmock/gmock.h>

#include <vector>

#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Messages : public testing::Test {
 protected:
  std::vector<std::string> lines;
  ScriptedMessages messages{[this](std::string line) { lines.push_back(line); }};
};

TEST_F(Messages, ABoxIsALineWithIconTitleAndText) {
  messages.Show(platform::MessageIcon::kCritical, "Insert Qso", " 3021 - No current record.");
  messages.Show(platform::MessageIcon::kExclamation, "", "Locator non valido");
  messages.Show(platform::MessageIcon::kInformation, "a", "b");
  messages.Show(platform::MessageIcon::kNone, "a", "b");
  EXPECT_THAT(lines, ElementsAre("message critical \"Insert Qso\" \" 3021 - No current record.\"",
                                 "message exclamation \"\" \"Locator non valido\"",
                                 "message information \"a\" \"b\"", "message none \"a\" \"b\""));
}

TEST_F(Messages, QuestionsTakeTheirAnswersInOrder) {
  messages.QueueAnswer(true);
  messages.QueueAnswer(false);
  EXPECT_TRUE(messages.AskYesNo("T", "Confermi l'operazione ?"));
  EXPECT_FALSE(messages.AskYesNo("T", "?"));
  EXPECT_THAT(lines, ElementsAre("question \"T\" \"Confermi l'operazione ?\" yes",
                                 "question \"T\" \"?\" no"));
}

TEST_F(Messages, AnUnansweredQuestionIsRefused) {
  try {
    messages.AskYesNo("T", "x");
    FAIL();
  } catch (const Refused& refused) {
    EXPECT_EQ(refused.reason, "nobody answers the question \"T\" \"x\"");
  }
  EXPECT_EQ(messages.Unanswered(), "question \"T\" \"x\"");
  EXPECT_THAT(lines, IsEmpty());
}

TEST_F(Messages, AnswersThatNothingAskedForAreCounted) {
  messages.QueueAnswer(true);
  messages.QueueAnswer(true);
  messages.AskYesNo("T", "x");
  EXPECT_EQ(messages.UnusedAnswers(), 1u);
}

TEST(Picks, ComeInOrderAndMayBeCancelled) {
  ScriptedPicks picks;
  picks.Queue("/a/CQ.wav");
  picks.Queue(std::nullopt);
  EXPECT_EQ(picks.Next("File", "*.wav"), std::filesystem::path("/a/CQ.wav"));
  EXPECT_EQ(picks.Unused(), 1u);
  EXPECT_EQ(picks.Next("File", "*.wav"), std::nullopt);
  EXPECT_THROW(picks.Next("File", "*.wav"), Refused);
}

}  // namespace
}  // namespace brenvo::recorder
