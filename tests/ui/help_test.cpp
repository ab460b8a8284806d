#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QTemporaryDir>
#include <QTextBlock>
#include <QTextBrowser>

#include "frame/help_file.h"
#include "tests/ui/screen.h"
#include "ui/help_viewer.h"

namespace brenvo::ui {
namespace {

TEST(HelpFile, PagesBeginAtTheirHeadings) {
  const auto pages =
      frame::ParseHelp("prima\r\n@ 1 Il primo giorno\r\nTesto\r\n\r\n@ 100 Log\nF2 *inserisce*\n");
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].topic, 1);
  EXPECT_EQ(pages[0].title, "Il primo giorno");
  EXPECT_EQ(pages[0].text, "Testo\n\n");
  EXPECT_EQ(pages[1].topic, 100);
  EXPECT_EQ(pages[1].text, "F2 *inserisce*\n");
}

TEST(HelpFile, ALineWithAnAtSignAloneIsText) {
  const auto pages = frame::ParseHelp("@ 1 Uno\n@ senza numero\n@home\n");
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(pages[0].text, "@ senza numero\n@home\n");
}

TEST(HelpFile, AnEmptyFileHasNoPages) { EXPECT_TRUE(frame::ParseHelp("").empty()); }

TEST(HelpViewerTest, OpensAtItsTopicAndAtTheFirstPageOtherwise) {
  HelpViewer viewer({{1, "Il primo giorno", "Testo"}, {100, "Log", "**F2** inserisce"}}, nullptr);
  auto* text = viewer.findChild<QTextBrowser*>();
  viewer.ShowTopic(100);
  EXPECT_EQ(text->toPlainText(), "Log\nF2 inserisce");
  viewer.ShowTopic(999);
  EXPECT_EQ(text->toPlainText(), "Il primo giorno\nTesto");
  EXPECT_EQ(viewer.findChild<QListWidget*>()->currentRow(), 0);
}

class HelpSearch : public ::testing::Test {
 protected:
  HelpSearch() {
    viewer.ShowTopic(1);
    viewer.show();
    viewer.activateWindow();
    QTest::qWait(1);
  }
  QStringList Listed() const {
    const auto* contents = viewer.findChild<QListWidget*>();
    QStringList titles;
    for (int row = 0; row < contents->count(); ++row) {
      if (!contents->item(row)->isHidden()) titles += contents->item(row)->text();
    }
    return titles;
  }
  QString Page() const { return viewer.findChild<QTextBrowser*>()->toPlainText(); }
  HelpViewer viewer{{{1, "Uno", "Il **pri**mo giorno"},
                     {100, "Log", "Un giorno, due giorni. E l'ultimo."},
                     {200, "Mappe", "Niente"}},
                    nullptr};
};

TEST_F(HelpSearch, CtrlFSeeksInAllPagesAndLeavesThoseThatHoldIt) {
  QTest::keyClick(&viewer, Qt::Key_F, Qt::ControlModifier);
  ASSERT_NE(QApplication::focusWidget(), nullptr);
  ASSERT_EQ(QApplication::focusWidget()->objectName(), "Cerca");
  QTest::keyClicks(QApplication::focusWidget(), "GIORN");
  EXPECT_EQ(Listed(), QStringList({"Uno", "Log"}));
  EXPECT_EQ(viewer.findChild<QLabel*>("Trovate")->text(), "2 pagine");
  EXPECT_EQ(viewer.findChild<QTextBrowser*>()->extraSelections().size(), 1);
  QTest::keyClicks(QApplication::focusWidget(), "I");
  EXPECT_EQ(Listed(), QStringList({"Log"}));
  EXPECT_TRUE(Page().startsWith("Log"));
  QTest::keyClicks(QApplication::focusWidget(), "x");
  EXPECT_EQ(viewer.findChild<QLabel*>("Trovate")->text(), "Non trovato");
}

TEST_F(HelpSearch, EnterGoesFromPlaceToPlaceThroughThePages) {
  auto* line = viewer.findChild<QLineEdit*>("Cerca");
  line->setText("giorn");
  auto* text = viewer.findChild<QTextBrowser*>();
  QStringList pages;
  QList<int> places;
  for (int i = 0; i < 4; ++i) {
    QTest::keyClick(line, Qt::Key_Return);
    pages += Page().section('\n', 0, 0);
    places += text->textCursor().selectionStart();
  }
  EXPECT_EQ(pages, QStringList({"Uno", "Log", "Log", "Uno"}));
  EXPECT_LT(places[1], places[2]);
  EXPECT_TRUE(viewer.isVisible());
}

TEST_F(HelpSearch, WordsThatAreMarkedInPartAreFound) {
  viewer.findChild<QLineEdit*>("Cerca")->setText("primo");
  EXPECT_EQ(Listed(), QStringList({"Uno"}));
}

TEST_F(HelpSearch, ATopicThatIsAskedForIsShownWhateverWasSought) {
  viewer.findChild<QLineEdit*>("Cerca")->setText("giorni");
  viewer.ShowTopic(200);
  EXPECT_TRUE(Page().startsWith("Mappe"));
  EXPECT_EQ(Listed().size(), 3);
}

// Columns of black and white, one pixel each: grey where every pixel has its share, stripes where
// some are left out.
TEST(HelpViewerTest, APictureThatIsMadeSmallerLosesNoPixels) {
  QTemporaryDir directory;
  QImage wide(2400, 200, QImage::Format_RGB32);
  for (int x = 0; x < wide.width(); ++x) {
    for (int y = 0; y < wide.height(); ++y) {
      wide.setPixelColor(x, y, x % 2 == 0 ? Qt::black : Qt::white);
    }
  }
  ASSERT_TRUE(wide.save(directory.filePath(QStringLiteral("wide.png"))));
  HelpViewer viewer({{1, "Uno", "![Una finestra](wide.png)"}}, nullptr, directory.path());
  viewer.ShowTopic(1);
  viewer.show();
  QTest::qWait(1);
  auto* text = viewer.findChild<QTextBrowser*>();
  const auto shown =
      text->document()->resource(QTextDocument::ImageResource, QUrl("wide.png")).value<QImage>();
  ASSERT_LT(shown.width(), 2400);
  EXPECT_EQ(shown.devicePixelRatio(), text->devicePixelRatioF());
  for (int x = 5; x < shown.width() - 5; ++x) {
    const int grey = shown.pixelColor(x, shown.height() / 2).red();
    ASSERT_GT(grey, 60) << x;
    ASSERT_LT(grey, 195) << x;
  }
}

TEST(HelpViewerTest, APictureFillsThePageAndNoMore) {
  QTemporaryDir directory;
  QImage wide(3000, 1500, QImage::Format_RGB32);
  wide.fill(Qt::blue);
  ASSERT_TRUE(wide.save(directory.filePath(QStringLiteral("wide.png"))));
  HelpViewer viewer({{1, "Uno", "![Una finestra](wide.png)"}}, nullptr, directory.path());
  viewer.ShowTopic(1);
  viewer.show();
  QTest::qWait(1);
  auto* text = viewer.findChild<QTextBrowser*>();
  double width = 0;
  for (QTextBlock block = text->document()->begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextCharFormat format = at.fragment().charFormat();
      if (format.isImageFormat()) width = format.toImageFormat().width();
    }
  }
  EXPECT_GT(width, text->viewport()->width() - 60);
  EXPECT_LE(width, text->viewport()->width());
}

TEST(HelpViewerTest, AMissingFileIsAFailure) {
  EXPECT_THROW(ShowHelp("/nowhere/Brenvo.HLP", 1), std::runtime_error);
}

}  // namespace
}  // namespace brenvo::ui
