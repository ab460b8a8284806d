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
