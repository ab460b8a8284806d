#include "forms/rich_text.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "base/text.h"
#include "forms/window.h"
#include "recorder/recording_platform.h"

namespace brenvo::forms {
namespace {

class RichTextTest : public testing::Test {
 protected:
  recorder::RecordingPlatform machine;
  Window window{machine.Host(), "W", "", base::Twips(1), base::Twips(1)};
  RichText area{window, "Area"};
};

TEST_F(RichTextTest, FindsWhatWasPutInAfterTheFirstSearch) {
  area.SetText("Alfa Bravo");
  EXPECT_EQ(area.Find("bravo", 0), 5u);
  area.Append(" CHARLIE è QUI");
  EXPECT_EQ(area.Find("charlie È qui", 0), 11u);
  area.Erase(0, 5);
  EXPECT_EQ(area.Find("BRAVO", 0), 0u);
  EXPECT_EQ(area.Find("alfa", 0), RichText::npos);
  area.SetText("Delta");
  EXPECT_EQ(area.Find("delta", 0), 0u);
  EXPECT_EQ(area.Find("bravo", 0), RichText::npos);
}

TEST_F(RichTextTest, FindsWhatStandsAtTheEdges) {
  area.SetText("abcabc");
  EXPECT_EQ(area.Find("ABC", 0), 0u);
  EXPECT_EQ(area.Find("ABC", 1), 3u);
  EXPECT_EQ(area.Find("ABC", 4), RichText::npos);
  EXPECT_EQ(area.Find("abcabc", 0), 0u);
  EXPECT_EQ(area.Find("abcabca", 0), RichText::npos);
  EXPECT_EQ(area.Find("c", 5), 5u);
  EXPECT_EQ(area.Find("", 6), 6u);
  EXPECT_EQ(area.Find("", 7), RichText::npos);
}

TEST_F(RichTextTest, FindsTheSameAsAScanByHand) {
  std::mt19937 random(1);
  const std::u32string letters = U"abABèÈ\u0161\u0160";  // those of one step table slot among them
  const auto text = [&](std::size_t length) {
    std::u32string made;
    for (std::size_t i = 0; i < length; ++i) made += letters[random() % letters.size()];
    return made;
  };
  for (int round = 0; round < 2000; ++round) {
    const std::u32string hay = text(random() % 60);
    const std::u32string needle = text(1 + random() % 5);
    const std::size_t start = random() % 10;
    area.SetText(base::FromCharacters(hay));
    const auto same = [](char32_t a, char32_t b) {
      return base::LowerChar(a) == base::LowerChar(b);
    };
    std::size_t expected = RichText::npos;
    for (std::size_t at = start; at + needle.size() <= hay.size(); ++at) {
      if (std::equal(needle.begin(), needle.end(), hay.begin() + static_cast<long>(at), same)) {
        expected = at;
        break;
      }
    }
    ASSERT_EQ(area.Find(base::FromCharacters(needle), start), expected)
        << base::FromCharacters(hay) << " / " << base::FromCharacters(needle) << " from " << start;
  }
}

TEST_F(RichTextTest, AppendingTakesTheSelectionToTheEnd) {
  area.SetText("abc");
  area.Select(0, 2);
  area.Append("d");
  EXPECT_EQ(area.SelStart(), 4u);
  EXPECT_EQ(area.SelLength(), 0u);
}

TEST_F(RichTextTest, APieceIsReadFromAnyPlace) {
  area.SetText("èàùòì");
  EXPECT_EQ(area.Text(1, 2), "àù");
  EXPECT_EQ(area.Text(4, 9), "ì");
  EXPECT_EQ(area.Text(9, 9), "");
  area.Select(3, 9);
  EXPECT_EQ(area.SelText(), "òì");
  area.Select(9, 1);
  EXPECT_EQ(area.SelStart(), 5u);
  EXPECT_EQ(area.SelLength(), 0u);
}

TEST_F(RichTextTest, ASelectionStaysOnItsCharactersWhereverTheTextChanges) {
  area.SetText("abcdef");
  area.Select(3, 2);
  area.Erase(0, 2);
  EXPECT_EQ(area.SelText(), "de");
  area.Erase(3, 1);
  EXPECT_EQ(area.SelText(), "de");
  area.Erase(0, 2);  // the beginning of it goes
  EXPECT_EQ(area.SelStart(), 0u);
  EXPECT_EQ(area.SelLength(), 0u);
  EXPECT_EQ(area.Text(), "e");
}

TEST_F(RichTextTest, WhatChangesNothingIsToldToNobody) {
  int changes = 0;
  area.OnChange = [&] { ++changes; };
  area.Erase(0, 5);
  area.Append("");
  area.SetText("");
  EXPECT_EQ(changes, 0);
  area.Append("x");
  area.Erase(0, 1);
  EXPECT_EQ(changes, 2);
}

TEST_F(RichTextTest, AnEditIsToldWithItsPlaceItsLengthAndItsColour) {
  std::string told;
  const Subscription edited = area.Edited.Subscribe([&](const RichText::Edit& edit) {
    told += std::to_string(edit.start) + "-" + std::to_string(edit.removed);
    for (const RichText::Run& run : edit.inserted) {
      told += "+" + run.text + (run.colour == base::kRed ? "r" : "");
    }
    told += ";";
  });
  area.SetText("uno");
  area.Append("due", base::kRed);
  area.Erase(1, 1);
  area.SetText("x");
  EXPECT_EQ(told, "0-0+uno;3-0+duer;1-1;0-5+x;");
}

TEST_F(RichTextTest, RunsAreCutToThePieceThatIsAskedFor) {
  area.Append("uno");
  area.Append("due", base::kRed);
  area.Append("tre", base::kBlack);
  ASSERT_EQ(area.Runs(2, 5).size(), 3u);
  EXPECT_EQ(area.Runs(2, 5)[0].text, "o");
  EXPECT_EQ(area.Runs(2, 5)[1].text, "due");
  EXPECT_EQ(area.Runs(2, 5)[2].text, "t");
  EXPECT_EQ(area.Runs(7)[0].text, "re");
  EXPECT_TRUE(area.Runs(9).empty());
  EXPECT_TRUE(area.Runs(12).empty());
}

TEST_F(RichTextTest, CutPlainKeepsTheBeginningWithoutItsColours) {
  area.Append("uno ");
  area.Append("due", base::kRed);
  area.Append(" tre");
  area.CutPlain(6);
  EXPECT_EQ(area.Text(), "uno du");
  ASSERT_EQ(area.Runs().size(), 1u);
  EXPECT_EQ(area.Runs()[0].colour, base::kBlack);
  EXPECT_EQ(area.SelStart(), 0u);
  area.CutPlain(100);
  EXPECT_EQ(area.Text(), "uno du");
}

TEST_F(RichTextTest, CutPlainTellsAScreenOnlyWhatChanged) {
  area.Append("uno ");
  area.Append("due", base::kRed);
  area.Append(" tre");
  std::string told;
  const Subscription edited = area.Edited.Subscribe([&](const RichText::Edit& edit) {
    told += "removed " + std::to_string(edit.removed) + " at " + std::to_string(edit.start) + ";";
    EXPECT_TRUE(edit.inserted.empty());
  });
  const Subscription recoloured =
      area.Recoloured.Subscribe([&](std::size_t start, std::size_t length, base::Colour colour) {
        told += "black " + std::to_string(length) + " at " + std::to_string(start) + ";";
        EXPECT_EQ(colour, base::kBlack);
      });
  area.CutPlain(9);
  EXPECT_EQ(told, "removed 2 at 9;black 5 at 4;");
}

}  // namespace
}  // namespace brenvo::forms
