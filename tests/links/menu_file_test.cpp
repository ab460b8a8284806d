#include "links/menu_file.h"

#include <gtest/gtest.h>

#include <fstream>

#include "forms/window.h"
#include "recorder/recording_platform.h"
#include "tests/support/scratch_directory.h"

namespace brenvo::links {
namespace {

using Texts = std::vector<std::string>;

Texts Values(std::string_view text) {
  ListInput input(text);
  Texts values;
  while (!input.AtEnd()) values.push_back(input.Next());
  return values;
}

TEST(ListInput, ValuesArePartedByCommasAndLineEnds) {
  EXPECT_EQ(Values("a,b\r\nc,d\ne\rf"), (Texts{"a", "b", "c", "d", "e", "f"}));
}

TEST(ListInput, BlanksBeforeAValueAreDroppedAndThoseBehindStay) {
  EXPECT_EQ(Values("  a b , c\r\n   d"), (Texts{"a b ", "c", "d"}));
}

TEST(ListInput, AQuotedValueMayHoldCommasBlanksAndLineEnds) {
  EXPECT_EQ(Values("\" a, b \" , \"c\r\nd\"\r\n\"e\""), (Texts{" a, b ", "c\r\nd", "e"}));
}

TEST(ListInput, AnOpenQuoteRunsToTheEnd) { EXPECT_EQ(Values("a,\"b,c\n"), (Texts{"a", "b,c\n"})); }

TEST(ListInput, AQuoteInsideAValueIsACharacter) {
  EXPECT_EQ(Values("sh/dx \"x\",b"), (Texts{"sh/dx \"x\"", "b"}));
}

TEST(ListInput, CommasSideBySideHoldAnEmptyValue) {
  EXPECT_EQ(Values("a,,b\r\n\"\",c"), (Texts{"a", "", "b", "", "c"}));
}

TEST(ListInput, EmptyLinesAtTheEndAreNoValues) {
  EXPECT_EQ(Values("a,b\r\n\r\n  \r\n"), (Texts{"a", "b"}));
}

TEST(ListInput, BehindTheLastValueIsAnError) {
  ListInput input("a");
  input.Next();
  EXPECT_THROW(input.Next(), std::runtime_error);
}

class MenuFile : public testing::Test {
 protected:
  MenuFile() { CMI.Add("-"); }
  Texts Captions() const {
    Texts captions;
    for (const auto& entry : CMI.Entries()) captions.push_back(entry.caption);
    return captions;
  }
  static std::string Pairs(int count) {
    std::string text;
    for (int i = 0; i < count; ++i) {
      text += "\"Voce " + std::to_string(i) + "\",comando " + std::to_string(i) + "\r\n";
    }
    return text;
  }
  recorder::RecordingPlatform machine;
  forms::Window window{machine.Host(), "W", "", base::Twips(100), base::Twips(100)};
  forms::EntryArray CMI{window, "CMI"};
  MenuCommands Comandi;
};

TEST_F(MenuFile, TheFirstPairReplacesTheEntryThatIsThere) {
  FillMenu("Ultimi DX,sh/dx\r\n\"Meteo, sole\",sh/wwv\r\n", CMI, Comandi);
  EXPECT_EQ(Captions(), (Texts{"Ultimi DX", "Meteo, sole"}));
  EXPECT_EQ(Comandi[0], "sh/dx");
  EXPECT_EQ(Comandi[1], "sh/wwv");
}

TEST_F(MenuFile, OfTwelvePairsYieldsElevenEntries) {
  FillMenu(Pairs(12), CMI, Comandi);
  EXPECT_EQ(Captions().size(), 11u);
  EXPECT_EQ(Captions().back(), "Voce 10");
  EXPECT_EQ(Comandi[10], "comando 10");
  EXPECT_EQ(Comandi[11], "");
}

TEST_F(MenuFile, ThatIsEmptyLeavesTheSingleEntryAndNoCommand) {
  FillMenu("", CMI, Comandi);
  EXPECT_EQ(Captions(), Texts{"-"});
  EXPECT_EQ(Comandi, MenuCommands{});
}

TEST_F(MenuFile, APairOnTwoLinesIsAPair) {
  FillMenu("Ultimi DX\r\nsh/dx\r\n", CMI, Comandi);
  EXPECT_EQ(Captions(), Texts{"Ultimi DX"});
  EXPECT_EQ(Comandi[0], "sh/dx");
}

TEST_F(MenuFile, ThatEndsInACaptionKeepsThePairsBeforeIt) {
  EXPECT_THROW(FillMenu("a,b\r\nc,d\r\ne\r\n", CMI, Comandi), std::runtime_error);
  EXPECT_EQ(Captions(), (Texts{"a", "c"}));
  EXPECT_EQ(Comandi[2], "");
}

TEST_F(MenuFile, MayBeWrittenInEitherEncoding) {
  const ScratchDirectory directory;
  for (std::string_view bytes :
       {"Citt\xC3\xA0,x\r\n", "\xEF\xBB\xBF\"Citt\xC3\xA0\",x\r\n", "Citt\xE0,x\r\n"}) {
    std::ofstream(directory.Path() / "tnc.mnu", std::ios::binary) << bytes;
    FillMenuFromFile(directory.Path() / "tnc.mnu", CMI, Comandi);
    EXPECT_EQ(Captions(), Texts{"Città"});
  }
}

TEST_F(MenuFile, ThatIsMissingIsAnError) {
  const ScratchDirectory directory;
  EXPECT_THROW(FillMenuFromFile(directory.Path() / "tnc.mnu", CMI, Comandi), std::runtime_error);
}

}  // namespace
}  // namespace brenvo::links
