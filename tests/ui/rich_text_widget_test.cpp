#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextBlock>
#include <random>

#include "forms/rich_text.h"
#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

class TextAreaForm : public forms::Window {
 public:
  explicit TextAreaForm(forms::WindowHost& host)
      : forms::Window(host, "TextAreaForm", "", base::Twips(9000), base::Twips(6000)) {
    Received.SetText("prima\r\n");
  }
  forms::RichText Received{*this, "Received"};
  forms::TextField Sended{*this, "Sended"};
};

class RichTextWidget : public ScreenTest {
 protected:
  TextAreaForm& form = Open<TextAreaForm>();
  QPlainTextEdit& area = *Find<QPlainTextEdit>("Received");
  // The colour of the character at a place of the document.
  QColor ColourAt(int place) {
    QTextCursor cursor(area.document());
    cursor.setPosition(place + 1);
    return cursor.charFormat().foreground().color();
  }
};

TEST_F(RichTextWidget, ShowsWhatStoodThereBefore) { EXPECT_EQ(area.toPlainText(), "prima\n"); }

TEST_F(RichTextWidget, FollowsAppendedPiecesAndLineEndsThatComeApart) {
  form.Received.Append("DX de I2");
  form.Received.Append("ABC\r");
  form.Received.Append("\nfine");
  Settle();
  EXPECT_EQ(area.toPlainText(), "prima\nDX de I2ABC\nfine");
}

TEST_F(RichTextWidget, ErasesInTheMidstOfLinesWithCarriageReturns) {
  form.Received.Append("seconda\r\nterza\r\n");
  form.Received.Erase(7, 9);
  Settle();
  EXPECT_EQ(form.Received.Text(), "prima\r\nterza\r\n");
  EXPECT_EQ(area.toPlainText(), "prima\nterza\n");
}

TEST_F(RichTextWidget, PaintsThePieceThatTheFieldPaints) {
  form.Received.Append("DX de");
  form.Received.Select(7, 2);
  form.Received.SetSelColour(base::kRed);
  Settle();
  EXPECT_EQ(ColourAt(6), QColor(255, 0, 0));
  EXPECT_EQ(ColourAt(7), QColor(255, 0, 0));
  EXPECT_NE(ColourAt(9), QColor(255, 0, 0));
}

TEST_F(RichTextWidget, AppendsInTheColourThatIsTold) {
  form.Received.Append("<*I2ABC", base::kDarkRed);
  Settle();
  EXPECT_EQ(ColourAt(7), QColor(128, 0, 0));
}

TEST_F(RichTextWidget, TheOperatorsSelectionIsToldInCharacters) {
  form.Received.SetText("\U0001F4E1 a\r\nIK1ABC JN45\r\n");
  Settle();
  QTextCursor cursor(area.document()->findBlockByNumber(1));
  cursor.movePosition(QTextCursor::NextWord, QTextCursor::KeepAnchor);
  area.setTextCursor(cursor);
  EXPECT_EQ(form.Received.SelText(), "IK1ABC ");
}

TEST_F(RichTextWidget, ASelectionThatIsStillSeenCountsAfterTheLogicHasAppended) {
  area.setTextCursor([&] {
    QTextCursor cursor(area.document());
    cursor.movePosition(QTextCursor::EndOfLine, QTextCursor::KeepAnchor);
    return cursor;
  }());
  form.Received.Append("altro\r\n");
  Settle();
  EXPECT_EQ(form.Received.SelText(), "prima");
}

TEST_F(RichTextWidget, KeepsItsEndInSightUnlessTheOperatorHasScrolledBack) {
  for (int i = 0; i < 200; ++i) form.Received.Append("riga\r\n");
  Settle();
  QScrollBar& bar = *area.verticalScrollBar();
  EXPECT_EQ(bar.value(), bar.maximum());
  bar.setValue(3);
  form.Received.Append("riga\r\n");
  Settle();
  EXPECT_EQ(bar.value(), 3);
}

TEST_F(RichTextWidget, KeepsTheLinesInSightWhenTheOldestMakeRoom) {
  form.Received.SetText("");
  for (int i = 0; i < 200; ++i) form.Received.Append("riga\r\n");
  Settle();
  QScrollBar& bar = *area.verticalScrollBar();
  bar.setValue(100);
  form.Received.Erase(0, 60);  // ten lines
  Settle();
  EXPECT_EQ(bar.value(), 90);
  form.Received.Append("riga\r\n");
  Settle();
  EXPECT_EQ(bar.value(), 90);
  form.Received.Erase(0, 600);
  Settle();
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(RichTextWidget, WhatIsTypedInItGoesOnInTheLineOfItsWindow) {
  windows.RunEvent([&] { form.Sended.SetText("sh"); });
  area.setFocus();
  Settle();
  QTest::keyClicks(&area, "/");
  EXPECT_EQ(QApplication::focusWidget(), Find<QLineEdit>("Sended"));
  QTest::keyClicks(QApplication::focusWidget(), "dx");
  EXPECT_EQ(form.Sended.Text(), "sh/dx");
}

TEST_F(RichTextWidget, KeysThatWriteNothingStayInIt) {
  area.setFocus();
  QTest::keyClick(&area, Qt::Key_A, Qt::ControlModifier);
  QTest::keyClick(&area, Qt::Key_PageDown);
  Settle();
  EXPECT_EQ(QApplication::focusWidget(), &area);
  EXPECT_EQ(form.Received.SelText(), form.Received.Text());
}

TEST_F(RichTextWidget, DarkColoursAreBrightenedOnADarkDesktop) {
  QPalette dark = area.palette();
  dark.setColor(QPalette::Base, QColor(30, 32, 35));
  area.setPalette(dark);
  form.Received.Append("<*I2ABC", base::kDarkRed);
  Settle();
  EXPECT_GT(ColourAt(7).lightness(), 128);
  EXPECT_GT(ColourAt(7).red(), ColourAt(7).green());
}

TEST_F(RichTextWidget, SelectsWhatTheFieldHoldsAlsoWhileItHasNotCaughtUp) {
  form.Received.SetText("prima\r\nIK1ABC\r\n");
  Settle();
  form.Received.Erase(0, 7);
  form.Received.Append("altro");
  QTextCursor cursor(area.document()->findBlockByNumber(1));
  cursor.movePosition(QTextCursor::EndOfBlock, QTextCursor::KeepAnchor);
  area.setTextCursor(cursor);
  EXPECT_EQ(form.Received.SelText(), "IK1ABC");
}

// What comes is laid out in pieces, however it comes: the work that a key may have to wait for.
class RichTextFlood : public RichTextWidget {
 protected:
  RichTextFlood() {
    form.Received.SetText("");
    Settle();
    QObject::connect(area.document(), &QTextDocument::contentsChange, &area,
                     [this](int, int, int added) {
                       ++changes;
                       most = std::max(most, added);
                     });
  }
  // One turn of the toolkit, in which a key would be taken.
  static void Turn() { QCoreApplication::processEvents(); }
  void SettleFlood() {
    for (int turn = 0; turn < 100; ++turn) Settle();
  }
  int Longest() const {
    int longest = 0;
    for (QTextBlock block = area.document()->begin(); block.isValid(); block = block.next()) {
      longest = std::max(longest, block.length());
    }
    return longest;
  }
  QString WithoutBreaks() const { return area.toPlainText().remove('\n'); }

  int changes = 0, most = 0;
};

TEST_F(RichTextFlood, ALineThatNeverEndsIsLaidOutInShortParagraphsAndSmallPieces) {
  const std::string line(100000, 'x');
  form.Received.Append(line);
  EXPECT_EQ(changes, 0);
  SettleFlood();
  EXPECT_EQ(WithoutBreaks().toStdString(), line);
  EXPECT_LE(Longest(), 1001);
  EXPECT_LE(most, 4200);
  // It goes on, and the oldest goes.
  form.Received.Erase(1, 90000);
  form.Received.Append("fine");
  SettleFlood();
  EXPECT_EQ(WithoutBreaks().toStdString(), form.Received.Text());
  EXPECT_LE(Longest(), 2001);
}

TEST_F(RichTextFlood, ThousandsOfCharactersOneByOneAreOneChangeOnTheScreen) {
  for (int i = 0; i < 4000; ++i) {
    form.Received.Append("x");
    if (form.Received.Length() > 3000) form.Received.Erase(1, 1000);
  }
  Turn();
  Turn();
  EXPECT_LE(changes, 2);
  SettleFlood();
  EXPECT_EQ(WithoutBreaks().toStdString(), form.Received.Text());
}

TEST_F(RichTextFlood, WhateverComesTogetherTheScreenEndsAsTheField) {
  std::mt19937 random(1);
  const auto pick = [&](std::size_t below) { return random() % std::max<std::size_t>(below, 1); };
  for (int round = 0; round < 400; ++round) {
    for (std::size_t changesNow = pick(6); changesNow > 0; --changesNow) {
      forms::RichText& field = form.Received;
      switch (pick(7)) {
        case 0:
          field.Erase(1, pick(field.Length()));
          break;
        case 1:
          field.Erase(pick(field.Length()), pick(50));
          break;
        case 2:
          field.CutPlain(pick(field.Length() + 1));
          break;
        case 3:
          field.Select(pick(field.Length()), pick(20));
          field.SetSelColour(pick(2) == 0 ? base::kRed : base::kBlack);
          break;
        case 4:
          field.SetText("anew\r\n");
          break;
        default:
          field.Append(std::string(pick(1500), static_cast<char>('a' + pick(26))) + "\r\n",
                       pick(2) == 0 ? base::kDarkRed : base::kBlack);
      }
    }
    if (pick(3) != 0) {
      Turn();
      continue;
    }
    Settle();
    std::string shown, kept;
    for (const char c : WithoutBreaks().toStdString()) shown += c;
    for (const char c : form.Received.Text()) {
      if (c != '\r' && c != '\n') kept += c;
    }
    ASSERT_EQ(shown, kept) << round;
    int at = 0;
    for (const forms::RichText::Run& run : form.Received.Runs()) {
      for (const char c : run.text) {
        if (c == '\r' || c == '\n') continue;
        while (area.document()->characterAt(at) == QChar::ParagraphSeparator) ++at;
        const bool red = ColourAt(at).red() > 100;
        ASSERT_EQ(red, run.colour != base::kBlack) << round << ' ' << at;
        ++at;
      }
    }
  }
}

}  // namespace
}  // namespace brenvo::ui
