#include "help_viewer.h"

#include <algorithm>
#include <QApplication>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QPointer>
#include <QPushButton>
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
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(split);
  const QString whole = QDir(directory).filePath(QLatin1String(kWholeManual));
  if (!directory.isEmpty() && QFile::exists(whole)) {
    auto* print = new QPushButton(QStringLiteral("Apri tutto il manuale nel &browser"), this);
    print->setAutoDefault(false);
    column->addWidget(print, 0, Qt::AlignRight);
    connect(print, &QPushButton::clicked, this,
            [whole] { QDesktopServices::openUrl(QUrl::fromLocalFile(whole)); });
  }
  for (const frame::HelpPage& page : pages_) contents_->addItem(ToQt(page.title));
  connect(contents_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0) return;
    const frame::HelpPage& page = pages_[static_cast<std::size_t>(row)];
    text_->setMarkdown("# " + ToQt(page.title) + "\n\n" + ToQt(page.text));
    FitPictures();
  });
}

// The page has another width; its text must not change while it is being laid out.
bool HelpViewer::eventFilter(QObject* watched, QEvent* event) {
  if (event->type() == QEvent::Resize) {
    QMetaObject::invokeMethod(
        this, [this] { FitPictures(); }, Qt::QueuedConnection);
  }
  return QDialog::eventFilter(watched, event);
}

// A picture is as large as it is, but no wider than the page.
void HelpViewer::FitPictures() {
  const int room = text_->viewport()->width() - 2 * kMargin;
  QTextDocument& document = *text_->document();
  for (QTextBlock block = document.begin(); block.isValid(); block = block.next()) {
    for (auto at = block.begin(); !at.atEnd(); ++at) {
      const QTextFragment piece = at.fragment();
      if (!piece.charFormat().isImageFormat()) continue;
      QTextImageFormat format = piece.charFormat().toImageFormat();
      const QImage picture =
          document.resource(QTextDocument::ImageResource, QUrl(format.name())).value<QImage>();
      const int width = std::min(picture.width(), room);
      if (picture.isNull() || format.width() == width) continue;
      format.setWidth(width);
      format.setHeight(1.0 * picture.height() * width / picture.width());
      QTextCursor cursor(&document);
      cursor.setPosition(piece.position());
      cursor.setPosition(piece.position() + piece.length(), QTextCursor::KeepAnchor);
      cursor.setCharFormat(format);
      break;  // the block's pieces have changed
    }
  }
}

void HelpViewer::ShowTopic(int topic) {
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
