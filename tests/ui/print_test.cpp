// Printing as the operator meets it: the choice, the preview, the file, and what goes wrong.
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPrinterInfo>
#include <QPushButton>
#include <QTemporaryDir>

#include "platform/device_error.h"
#include "tests/ui/screen.h"
#include "ui/print_choice.h"
#include "ui/print_preview.h"
#include "ui/qt_printer.h"
#include "ui/qt_progress.h"
#include "ui/text.h"

namespace brenvo::ui {
namespace {

using ::testing::HasSubstr;

class Printing : public ScreenTest {
 protected:
  QTemporaryDir directory;
  QtPrinter printer{ChooseTarget, [](const forms::Window&) { return QPixmap(); }};

  void DrawPages(int pages) {
    for (int page = 1; page <= pages; ++page) {
      if (page > 1) printer.NewPage();
      printer.SetFont("Times New Roman", 12, true);
      printer.Text(base::Mm(20), base::Mm(30), "Foglio " + std::to_string(page));
      printer.Box(base::Mm(10), base::Mm(50), base::Mm(10.0 + 10 * page), base::Mm(60), true);
    }
  }
  static void Click(QWidget& box, const char* caption) {
    for (auto* button : box.findChildren<QPushButton*>()) {
      if (button->text() == QString::fromUtf8(caption)) return button->click();
    }
    ADD_FAILURE() << caption;
  }
  static QString PlaceOf(QWidget& preview) {
    for (const auto* label : preview.findChildren<QLabel*>()) {
      if (label->text().startsWith("Pagina")) return label->text();
    }
    return {};
  }
  // What the preview shows, as an image.
  static QImage SheetOf(QWidget& preview) {
    for (const auto* label : preview.findChildren<QLabel*>()) {
      if (!label->pixmap().isNull()) return label->pixmap().toImage();
    }
    return {};
  }
  static int InkOf(const QImage& image) {
    int ink = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) ink += qGray(image.pixel(x, y)) < 128;
    }
    return ink;
  }
  QByteArray Bytes(const QString& name) {
    QFile file(name);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }
  static std::string FailureOf(const std::function<void()>& work) {
    try {
      work();
    } catch (const platform::DeviceError& failure) {
      return failure.what();
    }
    return "none";
  }
};

TEST_F(Printing, PagesAreDrawnInMillimetresWhateverTheDevice) {
  using Kind = PageOperation::Kind;
  for (const double dots : {4.0, 10.0}) {
    QImage page(qRound(60 * dots), qRound(40 * dots), QImage::Format_RGB32);
    page.fill(Qt::white);
    const auto ink = [&](double x, double y) {
      return qGray(page.pixel(qRound(x * dots), qRound(y * dots))) < 128;
    };
    QPainter painter(&page);
    PagePainter drawn(painter, dots);
    drawn.Draw({Kind::kFilledBox, {24, 13}, {27, 16}, {}, 0, false, {}});
    drawn.Draw({Kind::kFont, {}, {}, "Times New Roman", 10, true, {}});
    drawn.Draw({Kind::kTextRight, {50, 30}, {}, "0000", 0, false, {}});
    EXPECT_TRUE(ink(25.5, 14.5));
    EXPECT_FALSE(ink(23.5, 14.5));
    EXPECT_FALSE(ink(27.5, 14.5));
    int left = page.width(), right = 0;
    for (int x = 0; x < page.width(); ++x) {
      for (int y = qRound(28 * dots); y < page.height(); ++y) {
        if (qGray(page.pixel(x, y)) > 128) continue;
        left = std::min(left, x);
        right = std::max(right, x);
      }
    }
    // Four figures of ten points are seven millimetres wide.
    EXPECT_NEAR(right / dots, 50, 0.5);
    EXPECT_NEAR((right - left) / dots, 7, 0.7);
  }
}

TEST_F(Printing, ACancelledChoiceIsToldAndPrintsNothing) {
  WhenModal([](QWidget& box) { Click(box, "A&nnulla"); });
  EXPECT_EQ(FailureOf([&] { DrawPages(1); }), "Stampa annullata");
  printer.EndDocument();
}

TEST_F(Printing, EscCancelsTheChoice) {
  WhenModal([](QWidget& box) { QTest::keyClick(&box, Qt::Key_Escape); });
  EXPECT_EQ(FailureOf([&] { DrawPages(1); }), "Stampa annullata");
}

TEST_F(Printing, WithoutAPrinterThatIsToldAndThePdfOffered) {
  if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there is a printer here";
  WhenModal([](QWidget& box) { Click(box, "&Stampante..."); });
  EXPECT_EQ(FailureOf([&] { DrawPages(1); }),
            "Nessuna stampante è installata su questo computer: si può scrivere un file PDF");
}

TEST_F(Printing, ThePreviewShowsPageAfterPage) {
  bool seen = false;
  WhenModal([&](QWidget& choice) {
    WhenModal([&](QWidget& preview) {
      seen = true;
      EXPECT_EQ(preview.windowTitle(), "Anteprima di stampa");
      EXPECT_EQ(PlaceOf(preview), "Pagina 1 di 3");
      EXPECT_LT(SheetOf(preview).height(), preview.height());
      const int first = InkOf(SheetOf(preview));
      EXPECT_GT(first, 100);
      QTest::keyClick(&preview, Qt::Key_PageDown);
      EXPECT_EQ(PlaceOf(preview), "Pagina 2 di 3");
      EXPECT_GT(InkOf(SheetOf(preview)), first);
      QTest::keyClick(&preview, Qt::Key_End);
      EXPECT_EQ(PlaceOf(preview), "Pagina 3 di 3");
      QTest::keyClick(&preview, Qt::Key_PageDown);
      EXPECT_EQ(PlaceOf(preview), "Pagina 3 di 3");
      const int width = SheetOf(preview).width();
      QTest::keyClick(&preview, Qt::Key_Plus);
      EXPECT_GT(SheetOf(preview).width(), width);
      QTest::keyClick(&preview, Qt::Key_Home);
      EXPECT_EQ(PlaceOf(preview), "Pagina 1 di 3");
      QTest::keyClick(&preview, Qt::Key_Escape);
    });
    Click(choice, "&Anteprima");
  });
  DrawPages(3);
  printer.EndDocument();
  EXPECT_TRUE(seen);
}

TEST_F(Printing, ThePointerIsAnArrowWhileADialogStandsInLongWork) {
  host.SetBusy(true);
  WhenModal([](QWidget& box) {
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
    Click(box, "A&nnulla");
  });
  FailureOf([&] { DrawPages(1); });
  EXPECT_NE(QApplication::overrideCursor(), nullptr);
  host.SetBusy(false);
}

TEST_F(Printing, WhatThePreviewShowsGoesIntoAPdf) {
  const QString file = directory.filePath("pagine.pdf");
  PageSpool pages;
  const auto paper = NewPrinter(false)->pageLayout();
  PrintPreview preview(
      pages, paper, ChoosePrinter,
      [&](bool landscape) { return PaperTarget::Pdf(file, landscape); }, nullptr);
  pages.Add({PageOperation::Kind::kText, {20, 30}, {}, "Perché no?", 0, false, {}});
  pages.NewPage();
  pages.Add({PageOperation::Kind::kBox, {20, 30}, {40, 50}, {}, 0, false, {}});
  Click(preview, "File &PDF...");
  EXPECT_EQ(preview.result(), QDialog::Accepted);
  EXPECT_THAT(Bytes(file).toStdString(), HasSubstr("/Count 2"));
}

TEST_F(Printing, AFailureInThePreviewKeepsItsPages) {
  PageSpool pages;
  PrintPreview preview(
      pages, NewPrinter(false)->pageLayout(), ChoosePrinter,
      [&](bool landscape) { return PaperTarget::Pdf("/nessuna/cartella.pdf", landscape); },
      nullptr);
  QString told;
  WhenModal([&](QWidget& box) {
    told = qobject_cast<QMessageBox*>(&box)->text();
    QTest::keyClick(&box, Qt::Key_Escape);
  });
  preview.show();
  Click(preview, "File &PDF...");
  EXPECT_EQ(told, "Il file /nessuna/cartella.pdf non si può scrivere");
  EXPECT_TRUE(preview.isVisible());
}

TEST_F(Printing, APictureFillsAPageOfItsOwnThatLiesOrStandsAsItDoes) {
  std::vector<PageOperation> drawn;
  std::vector<bool> landscapes;
  struct Target : PageTarget {
    Target(std::vector<PageOperation>& all, bool lying) : drawn(all), landscape(lying) {}
    QSizeF PageSize() const override { return landscape ? QSizeF(280, 200) : QSizeF(200, 280); }
    void Draw(const PageOperation& operation) override { drawn.push_back(operation); }
    void NewPage() override {}
    void End() override {}
    void Abandon() override {}
    std::vector<PageOperation>& drawn;
    bool landscape;
  };
  QtPrinter kept{[&](bool landscape) -> std::unique_ptr<PageTarget> {
                   landscapes.push_back(landscape);
                   return std::make_unique<Target>(drawn, landscape);
                 },
                 [](const forms::Window&) { return QPixmap(); }};
  kept.PrintImage(QImage(1000, 500, QImage::Format_RGB32));
  EXPECT_EQ(drawn.back().to, QPointF(280, 140));
  kept.PrintImage(QImage(500, 1000, QImage::Format_RGB32));
  EXPECT_EQ(drawn.back().to, QPointF(140, 280));
  EXPECT_EQ(landscapes, (std::vector<bool>{true, false}));
}

TEST_F(Printing, AFileThatCannotBeWrittenIsNamed) {
  QtPrinter unwritable{
      [](bool landscape) { return PaperTarget::Pdf("/nessuna/cartella.pdf", landscape); },
      [](const forms::Window&) { return QPixmap(); }};
  EXPECT_EQ(FailureOf([&] { unwritable.Text(base::Mm(0), base::Mm(0), "x"); }),
            "Il file /nessuna/cartella.pdf non si può scrivere");
}

TEST_F(Printing, AFullDiskIsToldAtTheEnd) {
  if (!QFile::exists("/dev/full")) GTEST_SKIP();
  QtPrinter full{[](bool landscape) { return PaperTarget::Pdf("/dev/full", landscape); },
                 [](const forms::Window&) { return QPixmap(); }};
  full.Text(base::Mm(20), base::Mm(20), "x");
  EXPECT_EQ(FailureOf([&] { full.EndDocument(); }), "Il file /dev/full non si può scrivere");
  full.Abandon();
  EXPECT_TRUE(QFile::exists("/dev/full"));
}

TEST_F(Printing, ADocumentThatIsGivenUpLeavesNoFile) {
  const QString file = directory.filePath("meta.pdf");
  QtPrinter half{[&](bool landscape) { return PaperTarget::Pdf(file, landscape); },
                 [](const forms::Window&) { return QPixmap(); }};
  half.Text(base::Mm(20), base::Mm(20), "x");
  half.Abandon();
  EXPECT_FALSE(QFile::exists(file));
  half.Text(base::Mm(20), base::Mm(20), "x");
  half.EndDocument();
  EXPECT_THAT(Bytes(file).toStdString(), HasSubstr("%%EOF"));
}

TEST_F(Printing, LongWorkCanBeStoppedAndDevicesWaitForIt) {
  int device = 0;
  QObject guard;
  {
    QtProgress progress(gate, "Stampa", 1000);
    EXPECT_TRUE(progress.Advance(1));
    gate.RunDevice(guard, [&] { ++device; });
    QTest::qWait(1050);
    EXPECT_TRUE(progress.Advance(500));
    auto* bar = QApplication::activeModalWidget();
    ASSERT_NE(bar, nullptr);
    QTest::keyClick(bar, Qt::Key_Return);
    QTest::keyClick(bar, Qt::Key_Space);
    EXPECT_TRUE(progress.Advance(550));
    Click(*bar, "Interrompi");
    EXPECT_FALSE(progress.Advance(600));
    EXPECT_EQ(device, 0);
  }
  Settle();
  EXPECT_EQ(device, 1);
}

}  // namespace
}  // namespace brenvo::ui
