#include <QListWidget>
#include <QTextBrowser>
#include <filesystem>

#include "tests/ui/screen.h"
#include "ui/help_file.h"
#include "ui/help_viewer.h"

namespace brenvo {
namespace {

TEST(HelpFile, PagesBeginAtTheirHeadings) {
  const auto pages = ParseHelp("prima\r\n@ 1 Il primo giorno\r\nTesto\r\n\r\n@ 100 Log\nF2 *inserisce*\n");
  ASSERT_EQ(pages.size(), 2u);
  EXPECT_EQ(pages[0].topic, 1);
  EXPECT_EQ(pages[0].title, "Il primo giorno");
  EXPECT_EQ(pages[0].text, "Testo\n\n");
  EXPECT_EQ(pages[1].topic, 100);
  EXPECT_EQ(pages[1].text, "F2 *inserisce*\n");
}

TEST(HelpFile, ALineWithAnAtSignAloneIsText) {
  const auto pages = ParseHelp("@ 1 Uno\n@ senza numero\n@home\n");
  ASSERT_EQ(pages.size(), 1u);
  EXPECT_EQ(pages[0].text, "@ senza numero\n@home\n");
}

TEST(HelpFile, AnEmptyFileHasNoPages) { EXPECT_TRUE(ParseHelp("").empty()); }

TEST(HelpViewerTest, OpensAtItsTopicAndAtTheFirstPageOtherwise) {
  HelpViewer viewer({{1, "Il primo giorno", "Testo"}, {100, "Log", "**F2** inserisce"}}, nullptr);
  auto* text = viewer.findChild<QTextBrowser*>();
  viewer.ShowTopic(100);
  EXPECT_EQ(text->toPlainText(), "Log\nF2 inserisce");
  viewer.ShowTopic(999);
  EXPECT_EQ(text->toPlainText(), "Il primo giorno\nTesto");
  EXPECT_EQ(viewer.findChild<QListWidget*>()->currentRow(), 0);
}

TEST(HelpViewerTest, AMissingFileIsAFailure) {
  EXPECT_THROW(ShowHelp("/nowhere/Brenvo.HLP", 1), std::runtime_error);
}

TEST(HelpViewerTest, TheDeliveredHelpHasAPageForEveryTopicThatIsAskedFor) {
  QFile file(QStringLiteral(SOURCE_DIR "/data/Brenvo.HLP"));
  ASSERT_TRUE(file.open(QIODevice::ReadOnly));
  const auto pages = ParseHelp(file.readAll().toStdString());
  for (const int topic : {100, 110, 200}) {
    EXPECT_TRUE(std::any_of(pages.begin(), pages.end(),
                            [&](const HelpPage& page) { return page.topic == topic; }))
        << topic;
  }
}

}  // namespace
}  // namespace brenvo
