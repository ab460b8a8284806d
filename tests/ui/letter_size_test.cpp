// The size of all letters, and where windows are brought back to.
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QWheelEvent>

#include "recorder/memory_settings.h"
#include "tests/ui/screen.h"
#include "ui/letter_size.h"
#include "ui/screen_place.h"

namespace brenvo::ui {
namespace {

class LetterSizeForm : public forms::Window {
 public:
  explicit LetterSizeForm(forms::WindowHost& host)
      : forms::Window(host, "LetterSizeForm", "", base::Twips(6000), base::Twips(3000)) {}
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 10}};
};

class Letters : public ScreenTest {
 protected:
  static void RollWithCtrl(QWidget& widget, int by) {
    const QPointF at = widget.rect().center();
    QWheelEvent wheel(at, widget.mapToGlobal(at), {}, {0, by}, Qt::NoButton, Qt::ControlModifier,
                      Qt::NoScrollPhase, false);
    qApp->notify(&widget, &wheel);
  }
  static double Points() { return QApplication::font().pointSizeF(); }
  recorder::MemorySettings settings;
};

TEST_F(Letters, GrowAndShrinkWithCtrlAndTheWheelAndAreRemembered) {
  const double before = Points();
  {
    LetterSize letters(settings);
    EXPECT_EQ(Points(), before);
    RollWithCtrl(host.Main(), 240);
    EXPECT_EQ(Points(), before + 2);
    RollWithCtrl(host.Main(), -120);
    EXPECT_EQ(Points(), before + 1);
  }
  EXPECT_EQ(Points(), before);
  {
    LetterSize letters(settings);
    EXPECT_EQ(Points(), before + 1);
    letters.Grow(1000);
    EXPECT_EQ(Points(), LetterSize::kLargest);
    letters.Grow(-1000);
    EXPECT_EQ(Points(), LetterSize::kSmallest);
  }
  EXPECT_EQ(Points(), before);
}

TEST_F(Letters, OpenWindowsAndTheirFieldsGrowWithThem) {
  LetterSize letters(settings);
  Open<LetterSizeForm>();
  auto* line = Find<QLineEdit>("CallQso");
  const int width = line->minimumWidth();
  ASSERT_GT(width, 0);
  letters.Grow(8);
  for (int turn = 0; turn < 3; ++turn) Settle();
  EXPECT_GT(line->minimumWidth(), width * 5 / 4);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    Settle();
    return line->visibleRegion().boundingRect().width() == line->width();
  }));
}

TEST_F(Letters, AWindowStaysInReachWhenTheMainFrameBecomesSmaller) {
  host.Main().resize(1200, 800);
  Settle();
  Open<LetterSizeForm>();
  auto* child = Find<QMdiSubWindow>("LetterSizeForm");
  child->move(900, 600);
  Settle();
  host.Main().resize(600, 400);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    Settle();
    return host.Map().viewport()->rect().contains(child->geometry().topLeft()) &&
           child->geometry().left() < 560;
  }));
}

TEST(ScreenPlace, IsOnTheScreenThatShowsMostOfIt) {
  const QRect left(0, 0, 1920, 1080), right(1920, 0, 1280, 1024);
  EXPECT_EQ(ScreenOf({100, 100, 500, 400}, {left, right}, left), left);
  EXPECT_EQ(ScreenOf({1900, 100, 500, 400}, {left, right}, left), right);
}

TEST(ScreenPlace, OutsideAllScreensIsBroughtBackToTheUsualOne) {
  const QRect only(0, 0, 1280, 800);
  const QRect place(2500, 300, 500, 400);
  const QRect screen = ScreenOf(place, {only}, only);
  EXPECT_EQ(screen, only);
  EXPECT_EQ(Within(place, screen), QRect(780, 300, 500, 400));
  EXPECT_EQ(Within({-900, -50, 2000, 300}, only), QRect(0, 0, 1280, 300));
}

TEST(ScreenPlace, IsInReachAsLongAsItsTitleIs) {
  const QRect room(0, 0, 800, 600);
  EXPECT_TRUE(IsInReach({700, 10, 300, 200}, room));
  EXPECT_FALSE(IsInReach({780, 10, 300, 200}, room));
  EXPECT_FALSE(IsInReach({100, -30, 300, 200}, room));
  EXPECT_FALSE(IsInReach({100, 595, 300, 200}, room));
}

}  // namespace
}  // namespace brenvo::ui
