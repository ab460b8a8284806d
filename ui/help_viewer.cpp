#include "help_viewer.h"

#include <algorithm>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
#include <QShortcut>
#include <QSplitter>
#include <QTextBlock>
#include <QTextBrowser>
#include <QTextDocument>
#include <QUrl>
#include <QVBoxLayout>
#include <stdexcept>

#include "ui/icons.h"
#include "ui/text.h"

namespace brenvo::ui {

namespace {

constexpr int kMargin = 14;
constexpr const char* kWholeManual = "Manuale.html";

}  // namespace

HelpViewer::HelpViewer(std::vector<frame::HelpPage> pages, QWidget* parent,
                       const QString& directory)
    : QDialog(parent), pages_(std::move(pages)) {
  setObjectName(QStringLiteral("HelpViewer"));
  setAttribute(Qt::WA_DeleteOnClose);
  setWindowFlags(Qt::Window);
  setWindowTitle(QStringLiteral("Aiuto"));
  setWindowIcon(ProgramIcon());
  resize(860, 620);
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  MakeSearch();
  auto* split = new QSplitter(this);
  contents_ = new QListWidget(split);
  text_ = new QTextBrowser(split);
  text_->setOpenExternalLinks(true);
  text_->document()->setDocumentMargin(kMargin);
  text_->setSearchPaths({directory});
  text_->viewport()->installEventFilter(this);
  split->setStretchFactor(0, 0);
  split->setStretchFactor(1, 1);
  split->setSizes({230, 630});
  column->addWidget(split, 1);
  const QString whole = QDir(directory).filePath(QLatin1String(kWholeManual));
  if (!directory.isEmpty() && QFile::exists(whole)) {
    auto* print = new QPushButton(QStringLiteral("Apri tutto il manuale nel &browser"), this);
    print->setAutoDefault(false);
    column->addWidget(print, 0, Qt::AlignRight);
    connect(print, &QPushButton::clicked, this,
            [whole] { QDesktopServices::openUrl(QUrl::fromLocalFile(whole)); });
  }
  for (const frame::HelpPage& page : pages_) contents_->addItem(ToQt(page.title));
  connect(contents_, &QListWidget::currentRowChanged, this, [this](int row) { ShowPage(row); });
  contents_->setFocus();
}

void HelpViewer::MakeSearch() {
  auto* line = new QHBoxLayout;
  line->setContentsMargins(kMargin / 2, kMargin / 2, kMargin / 2, 0);
  search_ = new QLineEdit(this);
  search_->setObjectName(QStringLiteral("Cerca"));
  search_->setPlaceholderText(QStringLiteral("Cerca in tutto il manuale (Ctrl+F)"));
  search_->setClearButtonEnabled(true);
  found_ = new QLabel(this);
  found_->setObjectName(QStringLiteral("Trovate"));
  line->addWidget(search_, 1);
  line->addWidget(found_);
  static_cast<QVBoxLayout*>(layout())->addLayout(line);
  connect(search_, &QLineEdit::textChanged, this, [this] { Seek(); });
  connect(search_, &QLineEdit::returnPressed, this, [this] { SeekNext(); });
  connect(new QShortcut(QKeySequence::Find, this), &QShortcut::activated, this, [this] {
    search_->setFocus(Qt::ShortcutFocusReason);
    search_->selectAll();
  });
  connect(new QShortcut(QKeySequence(Qt::Key_F3), this), &QShortcut::activated, this,
          [this] { SeekNext(); });
}

void HelpViewer::ShowPage(int row) {
  if (row < 0) return;
  const frame::HelpPage& page = pages_[static_cast<std::size_t>(row)];
  pictures_.clear();
  text_->setMarkdown("# " + ToQt(page.title) + "\n\n" + ToQt(page.text));
  FitPictures();
  MarkFound();
}

bool HelpViewer::Holds(int row) {
  if (words_.empty()) {
    // What is read, not how it is written.
    QTextDocument page;
    for (const frame::HelpPage& each : pages_) {
      page.setMarkdown("# " + ToQt(each.title) + "\n\n" + ToQt(each.text));
      words_.push_back(page.toPlainText());
    }
  }
  return words_[static_cast<std::size_t>(row)].contains(sought_, Qt::CaseInsensitive);
}

void HelpViewer::Seek() {
  sought_ = search_->text().trimmed();
  int pages = 0, first = -1;
  for (int row = 0; row < contents_->count(); ++row) {
    const bool holds = sought_.isEmpty() || Holds(row);
    contents_->item(row)->setHidden(!holds);
    if (!holds) continue;
    ++pages;
    if (first < 0) first = row;
  }
  found_->setText(sought_.isEmpty() ? QString()
                  : pages == 0      ? QStringLiteral("Non trovato")
                  : pages == 1      ? QStringLiteral("1 pagina")
                                    : QStringLiteral("%1 pagine").arg(pages));
  const QListWidgetItem* now = contents_->currentItem();
  if (first >= 0 && (now == nullptr || now->isHidden())) {
    contents_->setCurrentRow(first);
  } else {
    MarkFound();
  }
}

void HelpViewer::SeekNext() {
  if (sought_.isEmpty() || text_->find(sought_)) return;
  const int count = contents_->count();
  for (int step = 1; step <= count; ++step) {
    const int row = (contents_->currentRow() + step) % count;
    if (contents_->item(row)->isHidden()) continue;
    contents_->setCurrentRow(row);
    text_->moveCursor(QTextCursor::Start);
    text_->find(sought_);
    return;
  }
}

void HelpViewer::MarkFound() {
  QList<QTextEdit::ExtraSelection> marks;
  if (!sought_.isEmpty()) {
    QTextCharFormat mark;
    mark.setBackground(QColor(255, 221, 102));
    mark.setForeground(Qt::black);
    for (QTextCursor at = text_->document()->find(sought_); !at.isNull();
         at = text_->document()->find(sought_, at)) {
      marks.push_back({at, mark});
    }
  }
  text_->setExtraSelections(marks);
  if (!marks.isEmpty()) {
    QTextCursor first = marks.front().cursor;
    first.clearSelection();
    first.setPosition(marks.front().cursor.selectionStart());
    text_->setTextCursor(first);
  }
}

// The page has another width; its text must not change while it is being laid out.
bool HelpViewer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) {
    QMetaObject::invokeMethod(
        this, [this] { FitPictures(); }, Qt::QueuedConnection);
  }
  return QDialog::eventFilter(watched, event);
}

const QImage& HelpViewer::PictureOf(const QString& name) {
  const auto known = pictures_.find(name);
  if (known != pictures_.end()) return known->second;
  return pictures_[name] =
             text_->document()->resource(QTextDocument::ImageResource, QUrl(name)).value<QImage>();
}

// A picture is as large as it is, but no wider than the page; the document would make it smaller by
// leaving pixels out.
void HelpViewer::FitPictures() {
  const int room = text_->viewport()->width() - 2 * kMargin;
  const double dense = text_->devicePixelRatioF();
  QTextDocument& document = *text_->document();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment piece = at.fragment();
      if (!piece.charFormat().isImageFormat()) continue;
      QTextImageFormat format = piece.charFormat().toImageFormat();
      const QImage& picture = PictureOf(format.name());
      const int width = std::min(picture.width(), room);
      if (picture.isNull() || width <= 0 || format.width() == width) continue;
      const QSize shown(width, qRound(1.0 * picture.height() * width / picture.width()));
      QImage fitted = picture;
      if (shown * dense != picture.size()) {
        fitted = picture.scaled(shown * dense, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
      }
      fitted.setDevicePixelRatio(dense);
      document.addResource(QTextDocument::ImageResource, QUrl(format.name()), fitted);
      format.setWidth(shown.width());
      format.setHeight(shown.height());
      QTextCursor cursor(&document);
      cursor.setPosition(piece.position());
      cursor.setPosition(piece.position() + piece.length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
      break;  // the block's pieces have changed
    }
  }
}

void HelpViewer::ShowTopic(int topic) {
  // All pages are there for who asks for one.
  search_->clear();
  const auto at = std::find_if(pages_.begin(), pages_.end(),
                               [&](const frame::HelpPage& page) { return page.topic == topic; });
  contents_->setCurrentRow(at == pages_.end() ? 0 : static_cast<int>(at - pages_.begin()));
}

void ShowHelp(const std::filesystem::path& path, int topic) {
  static QPointer<HelpViewer> open;
  QWidget* const parent = QApplication::activeWindow();
  if (open == nullptr || (open != parent && open->parentWidget() != parent)) {
    QFile file(PathToQt(path));
    if (!file.open(QIODevice::ReadOnly)) {
      throw std::runtime_error(
          FromQt(QStringLiteral("Manca il file di aiuto %1").arg(PathToQt(path.filename()))));
    }
    delete open;
    open = new HelpViewer(frame::ParseHelp(file.readAll().toStdString()), parent,
                          PathToQt(path.parent_path()));
  }
  open->ShowTopic(topic);
  open->show();
  open->raise();
  open->activateWindow();
}

}  // namespace brenvo::ui
