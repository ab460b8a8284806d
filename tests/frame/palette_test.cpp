#include "frame/palette.h"

#include <gmock/gmock.h>

#include "station/station.h"
#include "tests/support/station.h"

namespace brenvo::frame {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using Texts = std::vector<std::string>;

class PaletteTest : public StationTest {
 protected:
  PaletteTest() : StationTest(false) {
    frame = station::StartStation(session);
    Lines();
  }
  Texts Found(std::string_view text) {
    Texts words;
    for (const KnownCommand& each : CommandsFor(session, text)) words.push_back(each.words);
    return words;
  }
};

TEST_F(PaletteTest, HoldsTheMenusCommandsWithTheirWayAndTheirKeys) {
  const Texts all = Found("");
  EXPECT_EQ(all.front(), "Log (Ctrl+L)");
  EXPECT_THAT(all, Contains("Statistiche > Square"));
  EXPECT_THAT(all, Contains("Utility > Preferenze... (Ctrl+,)"));
  EXPECT_THAT(all, Not(Contains(HasSubstr("Comandi..."))));
}

TEST_F(PaletteTest, HoldsWhatAnOpenWindowCanDoNow) {
  EXPECT_THAT(Found("log inserisci"), IsEmpty());
  Event([&] { frame->FindCommand("cmLog")->Press(); });
  EXPECT_THAT(Found("log inserisci"), ElementsAre("Log > Inserisci (F2)"));
  forms::Window& log = *session.Windows.Find("LogForm");
  log.FindCommand("cmInsert")->SetEnabled(false);
  EXPECT_THAT(Found("log inserisci"), IsEmpty());
}

TEST_F(PaletteTest, TheNearestComesFirst) {
  const Texts found = Found("squ");
  ASSERT_FALSE(found.empty());
  EXPECT_EQ(found[0], "Statistiche > Square");
  EXPECT_EQ(Found("band work")[0], "Statistiche > Worked by Band (Ctrl+B)")
      << testing::PrintToString(found);
}

TEST_F(PaletteTest, CaseAndAccentsDoNotMatterAndLettersAreEnough) {
  EXPECT_THAT(Found("PRÈFERENZE"), ElementsAre("Utility > Preferenze... (Ctrl+,)"));
  EXPECT_THAT(Found("prfrz"), Contains("Utility > Preferenze... (Ctrl+,)"));
  EXPECT_THAT(Found("qqqq"), IsEmpty());
}

TEST_F(PaletteTest, EnterPressesTheFirstHitWhenTheDialogIsGone) {
  InDialogs([&](forms::Window& window) {
    auto& palette = static_cast<Palette&>(window);
    EXPECT_EQ(palette.Comandi.ListIndex(), 0);
    Event([&] { palette.Cerca.SetText("prefer"); });
    EXPECT_EQ(palette.Comandi.Text(), "Utility > Preferenze... (Ctrl+,)");
    Event([&] { palette.DefaultCommand->Press(); });
    EXPECT_EQ(session.Windows.Find("Preferenze"), nullptr);
  });
  Event([&] { frame->cmPalette.Press(); });
  EXPECT_NE(session.Windows.Find("Preferenze"), nullptr);
  EXPECT_EQ(session.Windows.Find("Palette"), nullptr);
}

TEST_F(PaletteTest, WithoutAHitNothingIsPressedAndEscLeaves) {
  InDialogs([&](forms::Window& window) {
    auto& palette = static_cast<Palette&>(window);
    Event([&] { palette.Cerca.SetText("qqqq"); });
    Event([&] { palette.cmEsegui.Press(); });
    EXPECT_TRUE(palette.Visible());
    Event([&] { palette.CancelCommand->Press(); });
  });
  Event([&] { frame->cmPalette.Press(); });
  EXPECT_EQ(session.Windows.Loaded().size(), 1u);
}

TEST_F(PaletteTest, ACommandOfAWindowBehindBringsItToTheFront) {
  Event([&] { frame->FindCommand("cmLog")->Press(); });
  Event([&] { frame->FindCommand("cmPreferenze")->Press(); });
  ASSERT_EQ(machine.Host().Front()->Name(), "Preferenze");
  const auto hits = CommandsFor(session, "log > griglia");
  ASSERT_FALSE(hits.empty());
  Event([&] { PressCommand(session, hits.front()); });
  EXPECT_EQ(machine.Host().Front()->Name(), "LogForm");
}

}  // namespace
}  // namespace brenvo::frame
