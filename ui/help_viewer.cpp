#include "ui/help_viewer.h"

#include <QApplication>
#include <QFile>
#include <QListWidget>
#include <QPointer>
#include <QSplitter>
#include <QTextBrowser>
#include <QTextDocument>
#include <QVBoxLayout>
#include <algorithm>
#include <stdexcept>

#include "ui/icons.h"
#include "ui/text.h"

namespace brenvo {

HelpViewer::HelpViewer(std::vector<HelpPage> pages, QWidget* parent)
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
  text_->document()->setDocumentMargin(14);
  split->setStretchFactor(0, 0);
  split->setStretchFactor(1, 1);
  split->setSizes({230, 630});
  auto* column = new QVBoxLayout(this);
  column->setContentsMargins(0, 0, 0, 0);
  column->addWidget(split);
  for (const HelpPage& page : pages_) contents_->addItem(ToQt(page.title));
  connect(contents_, &QListWidget::currentRowChanged, this, [this](int row) {
    if (row < 0) return;
    const HelpPage& page = pages_[static_cast<std::size_t>(row)];
    text_->setMarkdown("# " + ToQt(page.title) + "\n\n" + ToQt(page.text));
  });
}

void HelpViewer::ShowTopic(int topic) {
  const auto at = std::find_if(pages_.begin(), pages_.end(),
                               [&](const HelpPage& page) { return page.topic == topic; });
  contents_->setCurrentRow(at == pages_.end() ? 0 : static_cast<int>(at - pages_.begin()));
}

void ShowHelp(const std::filesystem::path& path, int topic) {
  static QPointer<HelpViewer> open;
  QWidget* const parent = QApplication::activeWindow();
  if (open == nullptr || (open != parent && open->parentWidget() != parent)) {
    QFile file(PathToQt(path));
    if (!file.open(QIODevice::ReadOnly)) {
      throw std::runtime_error(FromQt(QStringLiteral("Manca il file di aiuto %1")
                                          .arg(PathToQt(path.filename()))));
    }
    delete open;
    open = new HelpViewer(ParseHelp(file.readAll().toStdString()), parent);
  }
  open->ShowTopic(topic);
  open->show();
  open->raise();
  open->activateWindow();
}

}  // namespace brenvo
