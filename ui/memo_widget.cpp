#include "memo_widget.h"

#include <QPlainTextEdit>
#include <utility>

#include "base/text.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

// The document knows line ends without returns.
QString Shown(std::string_view text) { return ToQt(text).remove(QLatin1Char('\r')); }
std::string Held(QString shown) {
  return FromQt(shown.replace(QLatin1Char('\n'), QLatin1String("\r\n")));
}

class Memo : public QPlainTextEdit {
 public:
  Memo(forms::TextField& field, ViewContext& context, QWidget* parent)
      : QPlainTextEdit(parent), field_(field), context_(context) {
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { TellText(); });
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { TellSelection(); });
    connect(this, &QPlainTextEdit::cursorPositionChanged, this, [this] { TellSelection(); });
  }

  void Follow() {
    const bool wasFollowing = std::exchange(following_, true);
    setReadOnly(field_.ReadOnly);
    if (const QString shown = Shown(field_.Text()); toPlainText() != shown) setPlainText(shown);
    // The caret is the toolkit's; what the field selects, all of it at each arrival, is shown.
    if (field_.SelLength() > 0) {
      QTextCursor cursor = textCursor();
      cursor.setPosition(Place(field_.SelStart()));
      cursor.setPosition(Place(field_.SelStart() + field_.SelLength()), QTextCursor::KeepAnchor);
      setTextCursor(cursor);
    }
    following_ = wasFollowing;
  }

  QSize sizeHint() const override { return {QPlainTextEdit::sizeHint().width(), Height()}; }
  QSize minimumSizeHint() const override {
    return {QPlainTextEdit::minimumSizeHint().width(), Height()};
  }

 private:
  static constexpr int kLines = 3;

  int Height() const {
    const int around = 2 * (frameWidth() + static_cast<int>(document()->documentMargin()));
    return fontMetrics().lineSpacing() * kLines + around;
  }
  int Place(std::size_t characters) const {
    return static_cast<int>(Shown(base::Left(field_.Text(), characters)).size());
  }
  std::size_t Character(int place) const { return base::Len(Held(toPlainText().left(place))); }

  void TellText() {
    if (following_ || !context_.Alive()) return;
    const std::string text = Held(toPlainText());
    context_.Run([this, &text] { field_.EditText(text); });
    if (!context_.Alive()) return;
    Follow();
    TellSelection();
  }

  void TellSelection() {
    if (following_ || !context_.Alive()) return;
    // The caret moves before the change that moved it is told.
    if (Held(toPlainText()) != field_.Text()) return;
    const QTextCursor cursor = textCursor();
    const std::size_t start = Character(cursor.selectionStart());
    following_ = true;
    field_.Select(start, Character(cursor.selectionEnd()) - start);
    following_ = false;
  }

  forms::TextField& field_;
  ViewContext& context_;
  bool following_ = false;
};

}  // namespace

QWidget* MakeMemo(forms::TextField& field, ViewContext& context, QWidget* parent) {
  auto* memo = new Memo(field, context, parent);
  auto* binding = new FieldBinding(field, *memo, context);
  binding->Watch(*memo->viewport());
  binding->WatchDoubleClicks();
  binding->OnShow = [memo] { memo->Follow(); };
  binding->Show();
  return memo;
}

}  // namespace brenvo::ui
