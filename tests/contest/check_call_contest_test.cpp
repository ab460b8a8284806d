#include <gtest/gtest.h>

#include "tests/contest/contest_station.h"

namespace brenvo::contest {
namespace {

class CheckCallTest : public ContestLogStation {
 protected:
  CheckCallContest& OpenCheck(ContestQso& log) {
    Press(log, "cmCheckCall");
    return static_cast<CheckCallContest&>(*session.Windows.Find("CheckCallContest"));
  }
};

TEST_F(CheckCallTest, ItTellsTheSerialOfACallThatIsInTheLog) {
  Add(4, "IK3ABC");
  CheckCallContest& check = OpenCheck(OpenLog());
  check.CallContest.SetText(" IK3ABC ");
  Press(check, "cmCheck");
  EXPECT_EQ(check.Status.Text(), "Doppio (4)");
  check.CallContest.SetText("IK3DEF");
  Press(check, "cmCheck");
  EXPECT_EQ(check.Status.Text(), "OK");
}

TEST_F(CheckCallTest, BothButtonsOnlyCloseIt) {
  ContestQso& log = OpenLog();
  for (const char* command : {"cmOk", "cmCancel"}) {
    CheckCallContest& check = OpenCheck(log);
    check.CallContest.SetText("IK3ABC");
    Press(check, command);
    EXPECT_EQ(session.Windows.Find("CheckCallContest"), nullptr) << command;
  }
  EXPECT_EQ(Rows("select count(*) from [Contest Qso]"), Texts{"0"});
}

TEST_F(CheckCallTest, ItFollowsTheLogThatAsksForIt) {
  Add(4, "IK3ABC");
  ContestForm& contest = OpenContest();
  Store(contest, kDate, " 70cm");
  Press(contest, "cmQso");
  auto& other = *static_cast<ContestQso*>(machine.Host().Front());
  CheckCallContest& elsewhere = OpenCheck(other);
  EXPECT_EQ(elsewhere.Banda, " 70cm");
  elsewhere.CallContest.SetText("IK3ABC");
  Press(elsewhere, "cmCheck");
  EXPECT_EQ(elsewhere.Status.Text(), "OK");
  Store(contest, kDate, kBand);
  Press(contest, "cmQso");
  auto& log = *static_cast<ContestQso*>(machine.Host().Front());
  CheckCallContest& here = OpenCheck(log);
  EXPECT_EQ(here.Banda, kBand);
  here.CallContest.SetText("IK3ABC");
  Press(here, "cmCheck");
  EXPECT_EQ(here.Status.Text(), "Doppio (4)");
}

TEST_F(CheckCallTest, HintsFollowThePointer) {
  CheckCallContest& check = OpenCheck(OpenLog());
  const std::pair<forms::Field*, std::string_view> hints[] = {
      {&check.cmCancel, "Chiude il check call"},
      {&check.cmCheck, "Controlla call doppi"},
      {&check.cmOk, "Inserisce il Call nel Contest"},
      {&check.Panel3D1, ""}};
  for (const auto& [field, text] : hints) {
    field->Hover();
    EXPECT_EQ(check.StatusBar1.Panel(1), text);
  }
}

TEST_F(CheckCallTest, ItsPanelDragsTheWindow) {
  CheckCallContest& check = OpenCheck(OpenLog());
  const forms::Bounds before = check.GetBounds();
  check.Panel3D1.OnPointerMove(base::Twips(500), base::Twips(500));
  EXPECT_EQ(check.GetBounds(), before);
  check.Panel3D1.OnPointerDown(base::Twips(100), base::Twips(100));
  check.cmOk.Hover();
  check.Panel3D1.OnPointerMove(base::Twips(250), base::Twips(70));
  EXPECT_EQ(check.StatusBar1.Panel(1), "");
  EXPECT_EQ(check.GetBounds().left, before.left + base::Twips(150));
  EXPECT_EQ(check.GetBounds().top, before.top - base::Twips(30));
  check.Panel3D1.OnPointerUp();
  const forms::Bounds dropped = check.GetBounds();
  check.Panel3D1.OnPointerMove(base::Twips(0), base::Twips(0));
  EXPECT_EQ(check.GetBounds(), dropped);
}

TEST_F(CheckCallTest, CallsAreUpperCasedWhileTyping) {
  CheckCallContest& check = OpenCheck(OpenLog());
  check.CallContest.TypeKey('i');
  EXPECT_EQ(check.CallContest.Text(), "I");
}

TEST_F(CheckCallTest, ItClosesWithTheLog) {
  ContestQso& log = OpenLog();
  OpenCheck(log);
  log.Close();
  EXPECT_EQ(session.Windows.Find("CheckCallContest"), nullptr);
}

}  // namespace
}  // namespace brenvo::contest
