// Pages on the screen before they go on paper.
#pragma once

#include <functional>
#include <QDialog>
#include <QLabel>
#include <QPageLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QTemporaryFile>
#include <vector>

#include "ui/page_target.h"

namespace brenvo::ui {

// A document's pages in a file of their own, however many they are.
class PageSpool {
 public:
  // DeviceError when there is no room for it.
  PageSpool();
  void Add(const PageOperation& operation);
  void NewPage();
  int Pages() const { return static_cast<int>(starts_.size()); }
  // Draws one page, counted from 0.
  void Paint(int page, PagePainter& painter);
  // All of them; the target's document ends.
  void Replay(PageTarget& target);

 private:
  template <class Take>
  void Read(int page, Take take);

  QTemporaryFile file_;
  QDataStream stream_;
  std::vector<qint64> starts_;
  qint64 end_ = 0;
};

// The preview's object name.
inline constexpr const char* kPreviewName = "PrintPreview";

// Shows a spooled document page by page; PgUp and PgDn turn it, + and - change its size.
class PrintPreview : public QDialog {
 public:
  // Opens a target of its own for what the operator wants on paper; null when he gives it up.
  using Opener = std::function<std::unique_ptr<PageTarget>(bool landscape)>;
  PrintPreview(PageSpool& pages, const QPageLayout& paper, Opener openPrinter, Opener openPdf,
               QWidget* parent);

  void Turn(int page);
  void SetZoom(double zoom);  // 1 is the paper's true size

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void ShowPage();
  double WholePageZoom() const;
  void Send(const Opener& open);

  PageSpool& pages_;
  QPageLayout paper_;
  Opener openPrinter_, openPdf_;
  QScrollArea* view_;
  QLabel* sheet_;
  QLabel* place_;
  std::vector<QPushButton*> back_, forward_;
  int page_ = 0;
  double zoom_ = 0;  // 0 shows the whole page
};

// Collects a document and shows it when it ends.
class PreviewTarget : public PageTarget {
 public:
  using Show = std::function<void(PageSpool& pages, const QPageLayout& paper)>;
  PreviewTarget(const QPageLayout& paper, Show show);
  QSizeF PageSize() const override;
  void Draw(const PageOperation& operation) override { pages_.Add(operation); }
  void NewPage() override { pages_.NewPage(); }
  void End() override { show_(pages_, paper_); }
  void Abandon() override {}

 private:
  QPageLayout paper_;
  Show show_;
  PageSpool pages_;
};

}  // namespace brenvo::ui
