#include "tools/manual/page_to_html.h"
#include "tests/support/places.h"

#include <gtest/gtest.h>

#include <fstream>
#include <QGuiApplication>
#include <sstream>

namespace brenvo::manual {
namespace {

TEST(PageToHtml, LinesOfAParagraphRunTogether) {
  EXPECT_EQ(PageToHtml("Uno\ndue\n\nTre\n"), "<p>Uno due</p>\n<p>Tre</p>\n");
}

TEST(PageToHtml, MarksWithinALineBecomeTags) {
  EXPECT_EQ(PageToHtml("Il **log** e *il* `IK3*` < & >"),
            "<p>Il <strong>log</strong> e <em>il</em> <code>IK3*</code> &lt; &amp; &gt;</p>\n");
}

TEST(PageToHtml, AMarkWithoutItsFellowIsAWord) {
  EXPECT_EQ(PageToHtml("5 * 3 e `x"), "<p>5 * 3 e `x</p>\n");
}

TEST(PageToHtml, ATableHasAHeading) {
  EXPECT_EQ(PageToHtml("| Tasto | Comando |\n|---|---|\n| F2 | Inserisce |\n"),
            "<table>\n<tr><th>Tasto</th><th>Comando</th></tr>\n"
            "<tr><td>F2</td><td>Inserisce</td></tr>\n</table>\n");
}

TEST(PageToHtml, AnEntryOfAListGoesOnInTheLinesBelow) {
  EXPECT_EQ(PageToHtml("1. Aprire\n   il log\n2. Scrivere\n"),
            "<ol>\n<li>Aprire il log</li>\n<li>Scrivere</li>\n</ol>\n");
}

TEST(PageToHtml, AListWithoutNumbersHasNone) {
  EXPECT_EQ(PageToHtml("- **Uno**: il primo\n  di tutti\n- due\n"),
            "<ul>\n<li><strong>Uno</strong>: il primo di tutti</li>\n<li>due</li>\n</ul>\n");
}

TEST(PageToHtml, FileNamesWithAsterisksAreWords) {
  EXPECT_EQ(PageToHtml("*.html, *.mnu, *.rpt"), "<p>*.html, *.mnu, *.rpt</p>\n");
}

TEST(PageToHtml, AListThatFollowsATableBeginsAnew) {
  EXPECT_EQ(PageToHtml("1. a\n\n| T |\n|---|\n| **x** |\n\n1. b\n\nc\n"),
            "<ol>\n<li>a</li>\n</ol>\n<table>\n<tr><th>T</th></tr>\n"
            "<tr><td><strong>x</strong></td></tr>\n</table>\n<ol>\n<li>b</li>\n</ol>\n<p>c</p>\n");
}

TEST(PageToHtml, APictureStandsByItself) {
  EXPECT_EQ(PageToHtml("![Log](manuale/LogForm.png)\n\nTesto"),
            "<p><img src=\"manuale/LogForm.png\" alt=\"Log\"></p>\n<p>Testo</p>\n");
}

TEST(ManualToHtml, ThePagesAreReachedByTheirNumbers) {
  const std::string html = ManualToHtml({{1, "Primo giorno", "a"}, {100, "Log", "b"}}, "Manuale");
  EXPECT_NE(html.find("<a href=\"#t100\">Log</a>"), std::string::npos);
  EXPECT_NE(html.find("<h2 id=\"t100\">Log</h2>\n<p>b</p>"), std::string::npos);
}

TEST(ManualToHtml, NothingOfTheDeliveredManualIsLeftUnread) {
  std::ifstream file(SourceDir() / "data/Brenvo.HLP");
  std::stringstream text;
  text << file.rdbuf();
  const std::string html = ManualToHtml(frame::ParseHelp(text.str()), "Manuale");
  for (const char* left : {"**", "![", "](", "|---", "\n@ "}) {
    EXPECT_EQ(html.find(left), std::string::npos) << left;
  }
}

}  // namespace
}  // namespace brenvo::manual

int main(int argc, char** argv) {
  qputenv("QT_QPA_PLATFORM", "offscreen");
  const QGuiApplication application(argc, argv);
  testing::InitGoogleTest(&argc, argv);
  return RUN_ALL_TESTS();
}
