#include "forms/window_list.h"
#include "tests/forms/sample_window.h"

namespace brenvo::forms {
namespace {

struct Life : testing::Test {
  SilentHost host;
  WindowList windows{host};
  SampleWindow* made = nullptr;
  bool failsToLoad = false;
  Life() {
    windows.Register("Sample", [this] {
      auto window = std::make_unique<SampleWindow>(host);
      window->failsToLoad = failsToLoad;
      made = window.get();
      return window;
    });
  }
};

TEST_F(Life, ASingleInstanceIsLoadedOnce) {
  Window* first = windows.LoadSingle("Sample");
  EXPECT_EQ(windows.LoadSingle("Sample"), first);
  EXPECT_NE(windows.LoadNew("Sample"), first);
  EXPECT_EQ(windows.InstanceName(*made), "Sample#2");
  EXPECT_EQ(windows.FindInstance("Sample#2"), made);
}

// Windows that live at one of two addresses, so that a new one takes the place of one that went.
class AtOnePlace : public Window {
 public:
  using Window::Window;
  static void* operator new(std::size_t size) {
    EXPECT_LE(size, sizeof places_[0].bytes);
    Place& place = places_[0].taken ? places_[1] : places_[0];
    place.taken = true;
    return place.bytes;
  }
  static void operator delete(void* bytes) {
    for (Place& place : places_) place.taken = place.taken && place.bytes != bytes;
  }

 private:
  struct Place {
    alignas(Window) unsigned char bytes[sizeof(Window)];
    bool taken;
  };
  static inline Place places_[2];
};

TEST_F(Life, ASingleInstanceIsNotMistakenForAWindowThatTookItsPlaceInMemory) {
  for (const char* name : {"A", "B"}) {
    windows.Register(name, [this, name] {
      return std::make_unique<AtOnePlace>(host, name, name, base::Twips(1), base::Twips(1));
    });
  }
  const Window* first = nullptr;
  windows.RunEvent([&] {
    first = windows.LoadSingle("A");
    windows.Unload(*windows.Find("A"));
  });
  ASSERT_EQ(windows.LoadNew("B"), first);
  EXPECT_EQ(windows.LoadSingle("A")->Name(), "A");
}

TEST_F(Life, ANameThatNobodyRegisteredIsNoWindow) { EXPECT_EQ(windows.LoadNew("X"), nullptr); }

TEST_F(Life, AWindowMayRefuseToClose) {
  windows.LoadNew("Sample");
  made->refuses = true;
  EXPECT_FALSE(made->Close());
  EXPECT_TRUE(made->Loaded());
  made->refuses = false;
  EXPECT_TRUE(made->Close());
  EXPECT_TRUE(windows.Loaded().empty());
}

TEST_F(Life, AModalWindowActivatesBeforeItWaitsAndTheOneBehindComesBack) {
  Window* behind = windows.LoadSingle("Sample");
  SampleWindow* first = made;
  windows.Show(*behind);
  Window* dialog = windows.LoadNew("Sample");
  host.duringModal = [](Window& window) { window.Hide(); };
  windows.ShowModal(*dialog);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "activate"}));
  EXPECT_EQ(first->life, (std::vector<std::string>{"load", "activate", "activate"}));
  EXPECT_TRUE(dialog->Loaded());
  EXPECT_FALSE(dialog->Visible());
}

TEST_F(Life, ADialogThatIsGoneWhenItsWaitEndsCanStillBeReadInTheEvent) {
  Window* dialog = windows.LoadNew("Sample");
  SampleWindow* answering = made;
  host.duringModal = [this](Window& window) {
    windows.RunEvent([&] {
      static_cast<SampleWindow&>(window).Text.SetText("answer");
      window.Close();
    });
  };
  windows.ShowModal(*dialog);
  EXPECT_FALSE(answering->Loaded());
  EXPECT_EQ(answering->Text.Text(), "answer");
  EXPECT_EQ(answering->life.back(), "unload");
}

TEST_F(Life, AWindowThatIsShownBehindADialogLeavesTheDialogActive) {
  Window* other = windows.LoadNew("Sample");
  SampleWindow* behind = made;
  Window* dialog = windows.LoadNew("Sample");
  host.duringModal = [&](Window& window) {
    windows.Show(*other);
    windows.Activated(*other);
    windows.Activated(window);
    window.Hide();
  };
  windows.ShowModal(*dialog);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "activate"}));
  EXPECT_EQ(behind->life, (std::vector<std::string>{"load"}));
  EXPECT_TRUE(other->Visible());
  windows.Activated(*other);
  EXPECT_EQ(behind->life, (std::vector<std::string>{"load", "activate"}));
}

TEST_F(Life, AFailureEndsTheEventAndIsTold) {
  windows.RunEvent([] { throw std::runtime_error("rotto"); });
  EXPECT_EQ(host.told, (std::vector<std::string>{"failure rotto"}));
}

TEST_F(Life, TheEndOfTheProgramIsNoFailureOfAnEvent) {
  EXPECT_THROW(windows.RunEvent([] { throw forms::ProgramEnded{}; }), forms::ProgramEnded);
  EXPECT_TRUE(host.told.empty());
}

TEST_F(Life, AWindowThatFailsToLoadIsGone) {
  failsToLoad = true;
  windows.RunEvent([&] { windows.LoadNew("Sample"); });
  EXPECT_TRUE(windows.Loaded().empty());
  EXPECT_EQ(host.told, (std::vector<std::string>{"forget Sample", "failure no"}));
}

TEST_F(Life, AWindowThatClosesItselfInItsEventLivesToTheEventsEnd) {
  windows.LoadNew("Sample");
  made->Key.OnClick = [this] {
    made->Close();
    made->life.push_back("after");
    EXPECT_EQ(made->life.back(), "after");
  };
  windows.RunEvent([this] { made->Key.Press(); });
  EXPECT_TRUE(windows.Loaded().empty());
}

TEST_F(Life, AWindowIsLoadedBeforeItIsFoundAndItsNumberCountsItsOwnKind) {
  windows.Register("Other", [this] {
    return std::make_unique<Window>(host, "Other", "Other", base::Twips(1), base::Twips(1));
  });
  Window* other = windows.LoadNew("Other");
  Window* first = windows.LoadNew("Sample");
  EXPECT_EQ(made->life, std::vector<std::string>{"load"});
  Window* second = windows.LoadNew("Sample");
  EXPECT_EQ(windows.InstanceName(*other), "Other");
  EXPECT_EQ(windows.InstanceName(*first), "Sample");
  EXPECT_EQ(windows.InstanceName(*second), "Sample#2");
  EXPECT_EQ(windows.Find("Sample"), first);
  EXPECT_EQ(windows.FindInstance("Sample"), first);
  EXPECT_EQ(windows.FindInstance("Sample#3"), nullptr);
  EXPECT_EQ(windows.Find("sample"), nullptr);
  EXPECT_TRUE(windows.IsLoaded(second));
  second->Close();
  EXPECT_FALSE(windows.IsLoaded(second));
  EXPECT_FALSE(windows.IsLoaded(nullptr));
}

TEST_F(Life, AClosedWindowIsBuriedBehindTheOutermostEventAndNotBefore) {
  struct Mourned : Window {
    bool& gone;
    Mourned(WindowHost& itsHost, bool& itsGone)
        : Window(itsHost, "M", "M", base::Twips(1), base::Twips(1)), gone(itsGone) {}
    ~Mourned() override { gone = true; }
  };
  bool gone = false;
  Window& window = windows.Adopt(std::make_unique<Mourned>(host, gone));
  windows.RunEvent([&] {
    windows.RunEvent([&] { window.Close(); });
    EXPECT_FALSE(gone);
  });
  EXPECT_TRUE(gone);
  gone = false;
  Window& next = windows.Adopt(std::make_unique<Mourned>(host, gone));
  windows.RunEvent([&] { next.Close(); });
  EXPECT_TRUE(gone);
}

TEST_F(Life, AllWindowsButTheFirstAreClosedUntilOneRefuses) {
  windows.LoadNew("Sample");
  SampleWindow* first = made;
  windows.LoadNew("Sample");
  SampleWindow* second = made;
  windows.LoadNew("Sample");
  second->refuses = true;
  EXPECT_FALSE(windows.UnloadAllButFirst());
  EXPECT_EQ(windows.Loaded().size(), 3u);
  EXPECT_TRUE(second->Visible());
  second->refuses = false;
  EXPECT_TRUE(windows.UnloadAllButFirst());
  EXPECT_EQ(windows.Loaded(), std::vector<Window*>{first});
}

TEST_F(Life, WhereAWindowLiesIsKeptAndToldOnce) {
  windows.LoadNew("Sample");
  int shown = 0;
  const Subscription screen = made->Shown.Subscribe([&] { ++shown; });
  const Bounds bounds{base::Twips(10), base::Twips(20), base::Twips(3000), base::Twips(2500)};
  made->Move(bounds);
  made->Move(bounds);
  EXPECT_EQ(shown, 1);
  EXPECT_EQ(made->ScaleHeight(), base::Twips(2500));
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize"}));
  made->Moved(bounds, WindowState::kMaximised);
  made->Moved(bounds, WindowState::kMaximised);
  made->Moved(bounds, WindowState::kMinimised);
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize", "resize"}));
  made->SetScale(base::Twips(2900), base::Twips(2400));
  made->SetScale(base::Twips(2900), base::Twips(2400));
  EXPECT_EQ(made->life.size(), 4u);
  EXPECT_EQ(shown, 1);
  made->SetCaption("Altro");
  made->SetCaption("Altro");
  EXPECT_EQ(shown, 2);
}

TEST_F(Life, OnlyAChangeOfSizeRunsResize) {
  windows.LoadNew("Sample");
  made->Move({base::Twips(10), base::Twips(10), base::Twips(3000), base::Twips(2000)});
  made->Move({base::Twips(10), base::Twips(10), base::Twips(4000), base::Twips(2000)});
  EXPECT_EQ(made->life, (std::vector<std::string>{"load", "resize"}));
  EXPECT_EQ(made->ScaleWidth(), base::Twips(4000));
}

}  // namespace
}  // namespace brenvo::forms
