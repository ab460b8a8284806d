#include "recorder/recording_host.h"

#include <gmock/gmock.h>

#include <memory>
#include <vector>

#include "forms/picture_box.h"
#include "forms/text_field.h"
#include "forms/window_list.h"
#include "recorder/refused.h"

namespace brenvo::recorder {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class Form : public forms::Window {
 public:
  Form(forms::WindowHost& host, std::string name)
      : forms::Window(host, name, name, base::Twips(3000), base::Twips(1500)) {}
  void Load() override {
    Picture.Draw({base::Twips(15), base::Twips(30), base::Twips(105), base::kDarkGreen});
  }
  forms::TextField Call{*this, "Call"};
  forms::PictureBox Picture{*this, "Picture"};
};

class Host : public testing::Test {
 protected:
  Form& Loaded(const std::string& name) {
    return static_cast<Form&>(windows.Adopt(std::make_unique<Form>(host, name)));
  }
  std::vector<std::string> lines;
  RecordingHost host{[this](std::string line) { lines.push_back(line); }};
  forms::WindowList windows{host};
};

TEST_F(Host, MovingTheFocusIsALineAndTheFieldsEvent) {
  Form& form = Loaded("LogForm");
  form.Call.SetText("I3XYZ");
  host.MoveFocus(form.Call);
  EXPECT_THAT(lines, ElementsAre("focus LogForm.Call"));
  EXPECT_EQ(form.Call.SelText(), "I3XYZ");
}

TEST_F(Host, AFurtherWindowIsCalledByItsInstanceName) {
  host.NameOf = [&](const forms::Window& window) { return windows.InstanceName(window); };
  Loaded("LogForm");
  host.MoveFocus(Loaded("LogForm").Call);
  EXPECT_THAT(lines, ElementsAre("focus LogForm#2.Call"));
}

TEST_F(Host, ADialogIsUsedUntilItHides) {
  Form& form = Loaded("StatSel");
  bool used = false;
  host.InModal = [&](forms::Window& window) {
    used = true;
    EXPECT_EQ(&window, &form);
    EXPECT_EQ(host.Modal(), &form);
    window.Hide();
  };
  windows.ShowModal(form);
  EXPECT_TRUE(used);
  EXPECT_EQ(host.Modal(), nullptr);
}

TEST_F(Host, ADialogMayUnloadItself) {
  Form& form = Loaded("Help");
  host.InModal = [&](forms::Window& window) { windows.Unload(window); };
  windows.RunEvent([&] { windows.ShowModal(form); });
  EXPECT_EQ(windows.Find("Help"), nullptr);
  EXPECT_THAT(lines, ElementsAre("circle 15 30 105 0 128 0"));
}

TEST_F(Host, ADialogThatNobodyUsesIsRefused) {
  Form& form = Loaded("StatSel");
  EXPECT_THROW(windows.ShowModal(form), Refused);
  host.InModal = [](forms::Window&) {};
  EXPECT_THROW(windows.ShowModal(form), Refused);
  EXPECT_EQ(host.Modal(), nullptr);
}

TEST_F(Host, CirclesAreWrittenOnceTheirWindowIsShown) {
  Form& form = Loaded("MappaSquare");
  EXPECT_THAT(lines, IsEmpty());
  windows.Show(form);
  windows.Show(form);
  form.Picture.Draw({base::Twips(1), base::Twips(2), base::Twips(3), base::kDarkRed});
  EXPECT_THAT(lines, ElementsAre("circle 15 30 105 0 128 0", "circle 1 2 3 128 0 0"));
}

TEST_F(Host, AFailureIsALine) {
  windows.RunEvent([] { throw std::runtime_error("Divisione per zero"); });
  EXPECT_THAT(lines, ElementsAre("error \"Divisione per zero\""));
}

TEST_F(Host, TheEndOfTheProgramLeavesEveryHandler) {
  EXPECT_THROW(windows.RunEvent([&] { host.EndProgram(); }), forms::ProgramEnded);
  EXPECT_THAT(lines, ElementsAre("end-program"));
}

TEST_F(Host, TheWindowShownLastIsInFront) {
  Form& first = Loaded("A");
  Form& second = Loaded("B");
  windows.Show(first);
  windows.Show(second);
  EXPECT_EQ(host.Front(), &second);
  windows.Show(first);
  EXPECT_EQ(host.Front(), &first);
  windows.Unload(first);
  EXPECT_EQ(host.Front(), &second);
  EXPECT_EQ(host.FindShown("A"), nullptr);
}

TEST_F(Host, TheBusyPointerGoesWithItsOwner) {
  {
    const forms::BusyPointer busy(host);
    EXPECT_TRUE(host.Busy());
  }
  EXPECT_FALSE(host.Busy());
}

}  // namespace
}  // namespace brenvo::recorder
