#include <QClipboard>
#include <QPlainTextEdit>

#include "forms/text_field.h"
#include "tests/ui/screen.h"

namespace brenvo::ui {
namespace {

// As much of the contest's window as it takes to have its layout.
class MemoForm : public forms::Window {
 public:
  explicit MemoForm(forms::WindowHost& host)
      : forms::Window(host, "Contest", "", base::Twips(9000), base::Twips(6000)) {
    Note.SetText("prima\r\nseconda");
    Note.OnChange = [this] { changes.push_back(Note.Text()); };
  }
  forms::TextField Note{*this, "Note"};
  forms::TextField CallContest{*this, "CallContest"};
  Told changes;
};

class MemoWidget : public ScreenTest {
 protected:
  MemoForm& form = Open<MemoForm>();
  QPlainTextEdit& memo = *Find<QPlainTextEdit>("Note");
  void CaretTo(QTextCursor::MoveOperation where) {
    memo.moveCursor(where);
    Settle();
  }
};

TEST_F(MemoWidget, ShowsTheFieldsLinesAndRoomForThree) {
  EXPECT_EQ(memo.toPlainText(), "prima\nseconda");
  EXPECT_GE(memo.viewport()->height(), 3 * memo.fontMetrics().lineSpacing());
  form.Note.SetText("altra\r\n");
  EXPECT_EQ(memo.toPlainText(), "altra\n");
}

TEST_F(MemoWidget, ArrivingSelectsAllAndTypingReplacesIt) {
  EXPECT_EQ(form.Note.SelLength(), 14u);
  EXPECT_EQ(memo.textCursor().selectedText().size(), 13);
  QTest::keyClicks(&memo, "x");
  EXPECT_EQ(form.Note.Text(), "x");
}

TEST_F(MemoWidget, EnterBeginsALineAndTheCaretStaysWhereOneTypes) {
  CaretTo(QTextCursor::Start);
  QTest::keyClicks(&memo, "a");
  QTest::keyClick(&memo, Qt::Key_Return);
  QTest::keyClicks(&memo, "b");
  EXPECT_EQ(form.changes.back(), "a\r\nbprima\r\nseconda");
  EXPECT_EQ(form.changes.size(), 3u);
  EXPECT_EQ(form.Note.SelStart(), 4u);
}

TEST_F(MemoWidget, PastedLinesEndAsTheFieldsDo) {
  CaretTo(QTextCursor::End);
  QApplication::clipboard()->setText("\nuno\ndue");
  memo.paste();
  EXPECT_EQ(form.Note.Text(), "prima\r\nseconda\r\nuno\r\ndue");
}

TEST_F(MemoWidget, TabLeadsOn) {
  QTest::keyClick(&memo, Qt::Key_Tab);
  Settle();
  EXPECT_FALSE(memo.hasFocus());
  EXPECT_EQ(form.Note.Text(), "prima\r\nseconda");
}

}  // namespace
}  // namespace brenvo::ui
