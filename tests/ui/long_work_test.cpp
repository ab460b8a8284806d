// What the operator sees of long work.
#include <QLabel>
#include <QProgressBar>

#include "tests/ui/screen.h"
#include "ui/qt_progress.h"

namespace brenvo::ui {
namespace {

class LongWork : public ScreenTest {
 protected:
  // Paints that a widget of the main frame gets.
  class Paints : public QObject {
   public:
    explicit Paints(QWidget& widget) { widget.installEventFilter(this); }
    bool eventFilter(QObject*, QEvent* event) override {
      count += event->type() == QEvent::Paint;
      return false;
    }
    int count = 0;
  };
  LongWork() {
    label.setGeometry(0, 0, 100, 30);
    label.show();
    Settle();
  }
  QLabel label{QStringLiteral("x"), &host.Main()};
  Paints paints{label};
};

TEST_F(LongWork, WhatHasClosedIsGoneAndThePointerBusyBeforeItBegins) {
  QWidget dialog(&host.Main(), Qt::Dialog);
  dialog.show();
  Settle();
  dialog.hide();
  label.update();
  host.SetBusy(true);
  const int before = paints.count;
  {
    const QtProgress progress(gate, "Lavoro", 0);
    EXPECT_GT(paints.count, before);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
  }
  host.SetBusy(false);
}

TEST_F(LongWork, ABarComesWhenItTakesLongAndTheWindowsBehindItPaintAfterwards) {
  host.SetBusy(true);
  {
    QtProgress progress(gate, "Lavoro", 100);
    EXPECT_TRUE(progress.Advance(1));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    QTest::qSleep(1010);
    EXPECT_TRUE(progress.Advance(25));
    QWidget* const bar = QApplication::activeModalWidget();
    ASSERT_NE(bar, nullptr);
    EXPECT_EQ(bar->findChild<QProgressBar*>()->value(), 250);
    // Its button has an arrow over it.
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    const int before = paints.count;
    label.update();
    QTest::qSleep(60);
    EXPECT_TRUE(progress.Advance(99));
    EXPECT_EQ(bar->findChild<QProgressBar*>()->value(), 990);
    EXPECT_EQ(paints.count, before);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
  }
  EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
  const int before = paints.count;
  Settle();
  EXPECT_GT(paints.count, before);
  host.SetBusy(false);
}

TEST_F(LongWork, EscStopsItAlsoWhereNobodyKnowsHowLongItTakes) {
  QtProgress progress(gate, "Lavoro", 0);
  QTest::qSleep(1010);
  EXPECT_TRUE(progress.Advance(0));
  QWidget* const bar = QApplication::activeModalWidget();
  ASSERT_NE(bar, nullptr);
  EXPECT_EQ(bar->findChild<QProgressBar*>()->maximum(), 0);
  QTest::keyClick(bar, Qt::Key_Escape);
  EXPECT_FALSE(progress.Advance(0));
  EXPECT_FALSE(progress.Advance(0));
}

}  // namespace
}  // namespace brenvo::ui
