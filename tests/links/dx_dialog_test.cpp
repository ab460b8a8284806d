#include "links/dx_dialog.h"

#include "tests/links/links_station.h"

namespace brenvo::links {
namespace {

class DxTest : public LinksTest {
 protected:
  // The result that these fields give; "stays" when the dialog is still there.
  std::string Sent(std::string_view frequency, std::string_view call, std::string_view note) {
    auto& dialog = Open<DxDialog>("DX");
    dialog.Frequenza.SetText(frequency);
    dialog.CallQso.SetText(call);
    dialog.Note.SetText(note);
    dialog.cmInvia.Press();
    const std::string result = dialog.Visible() ? "stays" + dialog.Tag : dialog.Tag;
    Event([&] { dialog.Close(); });
    return result;
  }
};

TEST_F(DxTest, GivesTheCommandForTheCluster) {
  EXPECT_EQ(Sent("14195", "VP8ORK", "up 2"), "DX 14195 VP8ORK up 2");
  EXPECT_EQ(Sent("14195", "VP8ORK", ""), "DX 14195 VP8ORK");
}

TEST_F(DxTest, ANoteOfOnlyBlanksIsNone) {
  EXPECT_EQ(Sent("14195", "VP8ORK", "   "), "DX 14195 VP8ORK");
}

TEST_F(DxTest, TrimsTheNoteAndNothingElse) {
  EXPECT_EQ(Sent(" 14195", "VP8ORK ", "  up 2 "), "DX  14195 VP8ORK  up 2");
}

TEST_F(DxTest, StaysWhileFrequencyOrCallIsBlank) {
  EXPECT_EQ(Sent("", "VP8ORK", "x"), "stays");
  EXPECT_EQ(Sent("14195", "  ", "x"), "stays");
}

TEST_F(DxTest, DoesNotCheckTheFrequency) { EXPECT_EQ(Sent("abc", "X", ""), "DX abc X"); }

TEST_F(DxTest, CancelSaysSo) {
  auto& dialog = Open<DxDialog>("DX");
  dialog.cmCancel.Press();
  EXPECT_EQ(dialog.Tag, "CANCEL");
  EXPECT_FALSE(dialog.Visible());
}

TEST_F(DxTest, ClosedByItsFrameItSaysNothing) {
  auto& dialog = Open<DxDialog>("DX");
  dialog.Frequenza.SetText("14195");
  dialog.CallQso.SetText("VP8ORK");
  Event([&] {
    dialog.Close();
    EXPECT_EQ(dialog.Tag, "");
  });
}

TEST_F(DxTest, FiltersWhatIsTyped) {
  auto& dialog = Open<DxDialog>("DX");
  for (char32_t key : U"1a4,.-") {
    if (key != 0) dialog.Frequenza.TypeKey(key);
  }
  for (char32_t key : U"vp8/ork") {
    if (key != 0) dialog.CallQso.TypeKey(key);
  }
  dialog.Note.TypeKey(U'a');
  EXPECT_EQ(dialog.Frequenza.Text(), "14,.-");
  EXPECT_EQ(dialog.CallQso.Text(), "VP8/ORK");
  EXPECT_EQ(dialog.Note.Text(), "a");
}

}  // namespace
}  // namespace brenvo::links
