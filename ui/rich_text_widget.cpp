#include "ui/rich_text_widget.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <QCoreApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>

#include "ui/text.h"
#include "ui/text_widgets.h"

namespace brenvo {
namespace {

// The document holds no carriage returns and counts a character beyond the basic plane twice, so
// each character of the field carries its width in the document.
class Area : public QPlainTextEdit {
 public:
  Area(RichText& field, ViewContext& context, QWidget* parent)
      : QPlainTextEdit(parent), field_(field), context_(context) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    QFont fixed(QStringLiteral("Courier New"));
    fixed.setStyleHint(QFont::TypeWriter);
    fixed.setFixedPitch(true);
    fixed.setPointSizeF(font().pointSizeF());
    setFont(fixed);
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { TellSelection(); });
    edited_ = context.Follow(field.Edited, [this](const RichText::Edit& edit) { Apply(edit); });
    recoloured_ = context.Follow(field.Recoloured,
                                 [this](std::size_t start, std::size_t length, Colour colour) {
                                   Recolour(start, length, colour);
                                 });
    Apply({0, 0, field_.Runs()});
  }
  // What the logic does to the text moves the field's own selection. What the operator sees
  // selected counts again when that is over.
  void TellShownSelection() {
    if (textCursor().hasSelection()) TellSelection();
  }

 protected:
  // Who has clicked on what is received and types on means the line below.
  void keyPressEvent(QKeyEvent* event) override {
    QLineEdit* const line = CharactersOf(*event).isEmpty() ? nullptr : OnlyLine();
    if (line == nullptr) {
      QPlainTextEdit::keyPressEvent(event);
      return;
    }
    line->setFocus(Qt::OtherFocusReason);
    // A line selects what it holds when the keyboard comes; what is half typed there stays.
    QKeyEvent end(QEvent::KeyPress, Qt::Key_End, Qt::NoModifier);
    QCoreApplication::sendEvent(line, &end);
    QCoreApplication::sendEvent(line, event);
  }

 private:
  // The one line of the window that takes texts; null where there is none, or more.
  QLineEdit* OnlyLine() const {
    const QWidget* outer = parentWidget();
    while (!outer->isWindow() && qobject_cast<const QMdiSubWindow*>(outer) == nullptr) {
      outer = outer->parentWidget();
    }
    const auto lines = outer->findChildren<QLineEdit*>();
    return lines.size() == 1 ? lines.front() : nullptr;
  }

  int Place(std::size_t character) const {
    const auto end =
        widths_.begin() + static_cast<std::ptrdiff_t>(std::min(character, widths_.size()));
    return std::accumulate(widths_.begin(), end, 0);
  }

  std::size_t Character(int place) const {
    // The first of those that share the place: a selection up to a line's end has no return in it.
    std::size_t at = 0;
    for (int sum = 0; at < widths_.size() && sum < place; ++at) sum += widths_[at];
    return at;
  }

  QTextCharFormat FormatOf(Colour colour) const {
    QTextCharFormat format;
    // Black is the paper's ink, whatever colour the desktop gives it.
    if (colour == kBlack) return format;
    QColor ink(colour.red, colour.green, colour.blue);
    // A dark colour is read on dark paper only when it is brightened.
    if (palette().color(QPalette::Base).lightnessF() < 0.5F) {
      ink.setHslF(ink.hslHueF(), ink.hslSaturationF(), (1 + ink.lightnessF()) / 2);
    }
    format.setForeground(ink);
    return format;
  }

  void Apply(const RichText::Edit& edit) {
    QScrollBar* const bar = verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum() - 1;
    const QTextCursor top = cursorForPosition(QPoint(0, 0));
    telling_ = false;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    cursor.setPosition(Place(edit.start));
    cursor.setPosition(Place(edit.start + edit.removed), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    const auto first = widths_.begin() + static_cast<std::ptrdiff_t>(edit.start);
    auto into = widths_.erase(first, first + static_cast<std::ptrdiff_t>(edit.removed));
    for (const RichText::Run& run : edit.inserted) {
      QString shown;
      std::vector<unsigned char> widths;
      for (const char32_t c : ToQt(run.text).toStdU32String()) {
        const qsizetype before = shown.size();
        if (c == '\n' || c == '\t' || c >= 32) {
          shown += QString::fromUcs4(&c, 1);
        } else if (c != '\r') {
          shown += ' ';  // controls take a place and show nothing
        }
        widths.push_back(static_cast<unsigned char>(shown.size() - before));
      }
      cursor.insertText(shown, FormatOf(run.colour));
      into = widths_.insert(into, widths.begin(), widths.end()) +
             static_cast<std::ptrdiff_t>(widths.size());
    }
    cursor.endEditBlock();
    telling_ = true;
    // Who reads further up keeps his lines, also when the oldest make room for new ones.
    bar->setValue(atEnd ? bar->maximum() : LineOf(top));
  }

  static int LineOf(const QTextCursor& at) {
    const QTextLine within = at.block().layout()->lineForTextPosition(at.positionInBlock());
    return at.block().firstLineNumber() + (within.isValid() ? within.lineNumber() : 0);
  }

  void Recolour(std::size_t start, std::size_t length, Colour colour) {
    QTextCursor cursor(document());
    cursor.setPosition(Place(start));
    cursor.setPosition(Place(start + length), QTextCursor::KeepAnchor);
    cursor.setCharFormat(FormatOf(colour));
  }

  void TellSelection() {
    if (!telling_ || !context_.Alive()) return;
    const QTextCursor cursor = textCursor();
    const std::size_t start = Character(cursor.selectionStart());
    field_.Select(start, Character(cursor.selectionEnd()) - start);
  }

  RichText& field_;
  ViewContext& context_;
  Subscription edited_, recoloured_;
  std::vector<unsigned char> widths_;
  bool telling_ = true;
};

}  // namespace

QWidget* MakeRichTextWidget(RichText& field, ViewContext& context, QWidget* parent) {
  auto* area = new Area(field, context, parent);
  auto* binding = new FieldBinding(field, *area, context);
  binding->Watch(*area->viewport());
  binding->WatchDoubleClicks();
  auto tell = std::make_shared<Coalesced>(*area, [area] { area->TellShownSelection(); });
  binding->OnShow = [tell] { tell->Ask(); };
  binding->Show();
  return area;
}

}  // namespace brenvo
