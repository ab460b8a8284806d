// The clocks of the main frame.
#include "tests/core/core_station.h"

namespace brenvo::frame {
namespace {

class Clocks : public core::CoreStation {
 protected:
  std::string Text() { return frame->Orologi.Text(); }
  void Choose(const core::Choice& choice, std::string_view value) {
    EXPECT_EQ(session.Choices.Set(choice, value), "");
  }
};

TEST_F(Clocks, ShowBothTimesAndGoOn) {
  EXPECT_EQ(Text(), "UTC 03:05:06   locale 04:05:06");
  machine.Advance(1000);
  EXPECT_EQ(Text(), "UTC 03:05:07   locale 04:05:07");
}

TEST_F(Clocks, AChoiceIsFollowedAtOnce) {
  Choose(core::choice::kSeconds, "No");
  EXPECT_EQ(Text(), "UTC 03:05   locale 04:05");
  Choose(core::choice::kZone, "UTC");
  EXPECT_EQ(Text(), "UTC 03:05   locale 03:05");
  Choose(core::choice::kClocks, "No");
  EXPECT_EQ(Text(), "");
  machine.Advance(1000);
  EXPECT_EQ(Text(), "");
}

TEST_F(Clocks, LeaveTheStatusPanelAlone) {
  frame->StatusBar1.SetPanel(1, "detto");
  machine.Advance(1000);
  EXPECT_EQ(frame->StatusBar1.Panel(1), "detto");
  EXPECT_EQ(frame->StatusBar1.Panels(), 1);
}

}  // namespace
}  // namespace brenvo::frame
