#include <algorithm>

#include "base/text.h"
#include "sheet.h"

namespace brenvo::list {
namespace {

// Millimetres.
constexpr std::string_view kFont = "Times New Roman";
constexpr double kTitleSize = 12, kSize = 9;
constexpr double kTop = 4, kHeadings = 12, kFirstRow = 18, kRowHeight = 4.5, kBelow = 8;
constexpr double kGap = 2, kWidest = 70;
// Rows that the columns are measured by.
constexpr std::size_t kMeasured = 200;

class Pages {
 public:
  Pages(const Sheet& sheet, platform::Printer& printer) : sheet_(sheet), printer_(printer) {
    printer_.SetLandscape(true);
    printer_.SetFont(kFont, kSize, false);
    Measure();
    const double rows = (printer_.PageHeight().Value() - kFirstRow - kBelow) / kRowHeight;
    rowsAPage_ = std::max<std::size_t>(1, static_cast<std::size_t>(std::max(rows, 1.0)));
  }

  bool Print(const SheetProgress& progress) {
    const std::size_t pages =
        std::max<std::size_t>(1, (sheet_.keys.size() + rowsAPage_ - 1) / rowsAPage_);
    for (std::size_t page = 0; page < pages; ++page) {
      if (page > 0) printer_.NewPage();
      Headings(page + 1, pages);
      const std::size_t from = page * rowsAPage_;
      const std::size_t to = std::min(from + rowsAPage_, sheet_.keys.size());
      for (std::size_t row = from; row < to; ++row) {
        if (!progress(static_cast<std::int64_t>(row))) return false;
        Row(kFirstRow + static_cast<double>(row - from) * kRowHeight, sheet_.keys[row]);
      }
    }
    printer_.EndDocument();
    return true;
  }

 private:
  std::string Cell(std::int64_t key, std::size_t column) const {
    return base::Trim(sheet_.cells.Text(key, sheet_.columns[column]));
  }

  // As wide as the first rows need; where all together are wider than the page, each gives its
  // share.
  void Measure() {
    double all = 0;
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i) {
      printer_.SetBold(true);
      double width = printer_.TextWidth(sheet_.columns[i].heading).Value();
      printer_.SetBold(false);
      for (std::size_t row = 0; row < std::min(kMeasured, sheet_.keys.size()); ++row) {
        width = std::max(width, printer_.TextWidth(Cell(sheet_.keys[row], i)).Value());
      }
      widths_.push_back(std::min(width + kGap, kWidest));
      all += widths_.back();
    }
    const double page = printer_.PageWidth().Value();
    if (all <= page) return;
    for (double& width : widths_) width *= page / all;
  }

  std::string Fitted(const std::string& text, double width) {
    const auto fits = [&](const std::string& part) {
      return printer_.TextWidth(part).Value() <= width;
    };
    if (fits(text)) return text;
    for (std::size_t length = base::Len(text); length > 0; --length) {
      const std::string part = base::Left(text, length - 1) + "...";
      if (fits(part)) return part;
    }
    return {};
  }

  void Headings(std::size_t page, std::size_t pages) {
    printer_.SetFont(kFont, kTitleSize, true);
    printer_.Text(base::Mm(0), base::Mm(kTop), sheet_.title);
    printer_.SetFont(kFont, kSize, false);
    printer_.TextRight(printer_.PageWidth(), base::Mm(kTop),
                       std::to_string(page) + " di " + std::to_string(pages));
    printer_.SetBold(true);
    double x = 0;
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i) {
      printer_.Text(base::Mm(x), base::Mm(kHeadings),
                    Fitted(sheet_.columns[i].heading, widths_[i] - kGap / 2));
      x += widths_[i];
    }
    printer_.SetBold(false);
    printer_.Line(base::Mm(0), base::Mm(kFirstRow - 1), base::Mm(x), base::Mm(kFirstRow - 1));
  }

  void Row(double y, std::int64_t key) {
    double x = 0;
    for (std::size_t i = 0; i < sheet_.columns.size(); ++i) {
      const std::string text = Fitted(Cell(key, i), widths_[i] - kGap / 2);
      if (!text.empty()) printer_.Text(base::Mm(x), base::Mm(y), text);
      x += widths_[i];
    }
  }

  const Sheet& sheet_;
  platform::Printer& printer_;
  std::vector<double> widths_;
  std::size_t rowsAPage_ = 1;
};

}  // namespace

bool PrintSheet(const Sheet& sheet, platform::Printer& printer, const SheetProgress& progress) {
  return Pages(sheet, printer).Print(progress);
}

}  // namespace brenvo::list
