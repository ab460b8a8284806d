#include "rich_text_widget.h"

#include <algorithm>
#include <memory>
#include <numeric>
#include <QApplication>
#include <QFontDatabase>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QTextBlock>
#include <QTimer>

#include "base/text.h"
#include "text_widgets.h"
#include "ui/text.h"
#include "widget_watch.h"

namespace brenvo::ui {
namespace {

// Laying out a paragraph takes as long as it is, each time that something is added to it: a longer
// line goes on in a paragraph of its own.
constexpr int kLongestParagraph = 1000;
// What is added to the document at a time; the operator's keys and clicks come in between.
constexpr std::size_t kSlice = 4096;

// The document holds no carriage returns, counts a character beyond the basic plane twice and
// breaks lines that are too long, so each character of the field carries its width in the document.
//
// A line may bring thousands of changes before the screen has its turn. The document takes them
// over in its own time: of the characters that it shows, `gone_` ones from `from_` on are no longer
// in the field, and behind the others stands in the field what the document does not show yet.
class Area : public QPlainTextEdit {
 public:
  Area(forms::RichText& field, ViewContext& context, QWidget* parent)
      : QPlainTextEdit(parent), field_(field), context_(context) {
    setReadOnly(true);
    setUndoRedoEnabled(false);
    setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    const auto fit = [this] { setFont(TerminalFont(QApplication::font())); };
    fit();
    FollowLetters(*this, fit);
    connect(this, &QPlainTextEdit::selectionChanged, this, [this] { TellSelection(); });
    edited_ =
        context.Follow(field.Edited, [this](const forms::RichText::Edit& edit) { Take(edit); });
    recoloured_ =
        context.Follow(field.Recoloured, [this](std::size_t start, std::size_t length,
                                                base::Colour) { TakeColours(start, length); });
    turn_.setSingleShot(true);
    turn_.setInterval(0);
    connect(&turn_, &QTimer::timeout, this, [this] { CatchUp(); });
    CatchUp();
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

  // Where a shown character stands in the document, and back. These count what is shown.
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

  // The shown characters that are still in the field, and the place there of one of those shown.
  std::size_t Kept() const { return widths_.size() - gone_; }
  std::size_t InField(std::size_t shown) const {
    return shown <= from_ ? shown : std::max(from_, shown - std::min(shown, gone_));
  }
  std::size_t Shown(std::size_t inField) const {
    return inField < from_ ? inField : inField + gone_;
  }

  QTextCharFormat FormatOf(base::Colour colour) const {
    QTextCharFormat format;
    // Black is the paper's ink, whatever colour the desktop gives it.
    if (colour == base::kBlack) return format;
    QColor ink(colour.red, colour.green, colour.blue);
    // A dark colour is read on dark paper only when it is brightened.
    if (palette().color(QPalette::Base).lightnessF() < 0.5F) {
      ink.setHslF(ink.hslHueF(), ink.hslSaturationF(), (1 + ink.lightnessF()) / 2);
    }
    format.setForeground(ink);
    return format;
  }

  void Take(const forms::RichText::Edit& edit) {
    turn_.start();
    if (gone_ == 0) from_ = edit.start;
    if (edit.start >= Kept()) return;
    if (edit.start == from_) gone_ += std::min(edit.removed, Kept() - from_);
    const bool inserts = !edit.inserted.empty();
    if (edit.start == from_ && !(inserts && edit.start < Kept())) return;
    // Anything else than the oldest going and something coming behind: from there on anew.
    from_ = std::min(from_, edit.start);
    gone_ = widths_.size() - from_;
  }

  void TakeColours(std::size_t start, std::size_t length) {
    turn_.start();
    const std::size_t end = std::min(start + length, Kept());
    if (start >= end) return;
    staleFrom_ = std::min(staleFrom_, Shown(start));
    staleTo_ = std::max(staleTo_, Shown(end - 1) + 1);
  }

  void CatchUp() {
    if (!context_.Alive()) return;
    QScrollBar* const bar = verticalScrollBar();
    const bool atEnd = bar->value() >= bar->maximum() - 1;
    const QTextCursor top = cursorForPosition(QPoint(0, 0));
    telling_ = false;
    QTextCursor cursor(document());
    cursor.beginEditBlock();
    DropGone(cursor);
    PaintStale(cursor);
    cursor.setPosition(Place(widths_.size()));
    for (const forms::RichText::Run& run : field_.Runs(widths_.size(), kSlice)) Append(cursor, run);
    cursor.endEditBlock();
    telling_ = true;
    // Who reads further up keeps his lines, also when the oldest make room for new ones.
    bar->setValue(atEnd ? bar->maximum() : LineOf(top));
    if (widths_.size() < field_.Length()) turn_.start();
  }

  void DropGone(QTextCursor& cursor) {
    const std::size_t behind = from_ + gone_;
    for (std::size_t* end : {&staleFrom_, &staleTo_}) {
      if (*end != kNothing) *end = *end >= behind ? *end - gone_ : std::min(*end, from_);
    }
    if (gone_ == 0) return;
    cursor.setPosition(Place(from_));
    cursor.setPosition(Place(behind), QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    const auto first = widths_.begin() + static_cast<std::ptrdiff_t>(from_);
    widths_.erase(first, first + static_cast<std::ptrdiff_t>(gone_));
    gone_ = 0;
  }

  void PaintStale(QTextCursor& cursor) {
    if (staleFrom_ < staleTo_) {
      std::size_t at = staleFrom_;
      for (const forms::RichText::Run& run : field_.Runs(at, staleTo_ - at)) {
        cursor.setPosition(Place(at));
        at += base::Len(run.text);
        cursor.setPosition(Place(at), QTextCursor::KeepAnchor);
        cursor.setCharFormat(FormatOf(run.colour));
      }
    }
    staleFrom_ = kNothing;
    staleTo_ = 0;
  }

  void Append(QTextCursor& cursor, const forms::RichText::Run& run) {
    QString shown;
    int inParagraph = cursor.positionInBlock();
    for (const char32_t c : ToQt(run.text).toStdU32String()) {
      const qsizetype before = shown.size();
      if (c == '\n' || c == '\t' || c >= 32) {
        shown += QString::fromUcs4(&c, 1);
      } else if (c != '\r') {
        shown += ' ';  // controls take a place and show nothing
      }
      inParagraph = c == '\n' ? 0 : inParagraph + static_cast<int>(shown.size() - before);
      if (inParagraph >= kLongestParagraph) {
        shown += '\n';
        inParagraph = 0;
      }
      widths_.push_back(static_cast<unsigned char>(shown.size() - before));
    }
    cursor.insertText(shown, FormatOf(run.colour));
  }

  static int LineOf(const QTextCursor& at) {
    const QTextLine within = at.block().layout()->lineForTextPosition(at.positionInBlock());
    return at.block().firstLineNumber() + (within.isValid() ? within.lineNumber() : 0);
  }

  void TellSelection() {
    if (!telling_ || !context_.Alive()) return;
    const QTextCursor cursor = textCursor();
    const std::size_t start = InField(Character(cursor.selectionStart()));
    field_.Select(start, InField(Character(cursor.selectionEnd())) - start);
  }

  forms::RichText& field_;
  ViewContext& context_;
  forms::Subscription edited_, recoloured_;
  std::vector<unsigned char> widths_;
  std::size_t from_ = 0, gone_ = 0;
  // Shown characters that may have another colour in the field.
  static constexpr std::size_t kNothing = forms::RichText::npos;
  std::size_t staleFrom_ = kNothing, staleTo_ = 0;
  QTimer turn_;
  bool telling_ = true;
};

}  // namespace

QFont TerminalFont(const QFont& font) {
  QFont fixed(QStringLiteral("Courier New"));
  fixed.setStyleHint(QFont::TypeWriter);
  fixed.setFixedPitch(true);
  fixed.setPointSizeF(font.pointSizeF());
  return fixed;
}

QWidget* MakeRichTextWidget(forms::RichText& field, ViewContext& context, QWidget* parent) {
  auto* area = new Area(field, context, parent);
  auto* binding = new FieldBinding(field, *area, context);
  binding->Watch(*area->viewport());
  binding->WatchDoubleClicks();
  auto tell = std::make_shared<Coalesced>(*area, [area] { area->TellShownSelection(); });
  binding->OnShow = [tell] { tell->Ask(); };
  binding->Show();
  return area;
}

}  // namespace brenvo::ui
