#include <QLineEdit>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTextBlock>

#include "forms/rich_text.h"
#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo {
namespace {

class TextAreaForm : public Window {
 public:
  explicit TextAreaForm(WindowHost& host)
      : Window(host, "TextAreaForm", "", Twips(9000), Twips(6000)) {
    Received.SetText("prima\r\n");
  }
  RichText Received{*this, "Received"};
  TextField Sended{*this, "Sended"};
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
  EXPECT_EQ(area.toPlainText(), "prima\nDX de I2ABC\nfine");
}

TEST_F(RichTextWidget, ErasesInTheMidstOfLinesWithCarriageReturns) {
  form.Received.Append("seconda\r\nterza\r\n");
  form.Received.Erase(7, 9);
  EXPECT_EQ(form.Received.Text(), "prima\r\nterza\r\n");
  EXPECT_EQ(area.toPlainText(), "prima\nterza\n");
}

TEST_F(RichTextWidget, PaintsThePieceThatTheFieldPaints) {
  form.Received.Append("DX de");
  form.Received.Select(7, 2);
  form.Received.SetSelColour(kRed);
  EXPECT_EQ(ColourAt(6), QColor(255, 0, 0));
  EXPECT_EQ(ColourAt(7), QColor(255, 0, 0));
  EXPECT_NE(ColourAt(9), QColor(255, 0, 0));
}

TEST_F(RichTextWidget, AppendsInTheColourThatIsTold) {
  form.Received.Append("<*I2ABC", kDarkRed);
  EXPECT_EQ(ColourAt(7), QColor(128, 0, 0));
}

TEST_F(RichTextWidget, TheOperatorsSelectionIsToldInCharacters) {
  form.Received.SetText("\U0001F4E1 a\r\nIK1ABC JN45\r\n");
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
  QScrollBar& bar = *area.verticalScrollBar();
  EXPECT_EQ(bar.value(), bar.maximum());
  bar.setValue(3);
  form.Received.Append("riga\r\n");
  EXPECT_EQ(bar.value(), 3);
}

TEST_F(RichTextWidget, KeepsTheLinesInSightWhenTheOldestMakeRoom) {
  form.Received.SetText("");
  for (int i = 0; i < 200; ++i) form.Received.Append("riga\r\n");
  QScrollBar& bar = *area.verticalScrollBar();
  bar.setValue(100);
  form.Received.Erase(0, 60);  // ten lines
  EXPECT_EQ(bar.value(), 90);
  form.Received.Append("riga\r\n");
  EXPECT_EQ(bar.value(), 90);
  form.Received.Erase(0, 600);
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
  form.Received.Append("<*I2ABC", kDarkRed);
  EXPECT_GT(ColourAt(7).lightness(), 128);
  EXPECT_GT(ColourAt(7).red(), ColourAt(7).green());
}

}  // namespace
}  // namespace brenvo
