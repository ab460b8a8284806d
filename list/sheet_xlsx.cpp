#include <fmt/format.h>
#include <xlsxwriter.h>

#include <algorithm>
#include <ctime>
#include <fstream>
#include <memory>

#include "base/number.h"
#include "base/text.h"
#include "replacing_file.h"
#include "sheet.h"

namespace brenvo::list {
namespace {

constexpr std::size_t kLongestCell = 32767;  // characters
constexpr int kFirstYear = 1900;             // of a spreadsheet's calendar
constexpr double kColumnWidth = 12, kDateWidth = 17;

// Closes the book, however its writing ends.
class Book {
 public:
  explicit Book(const std::filesystem::path& file) : directory_(file.parent_path().string()) {
    lxw_workbook_options options{};
    options.constant_memory = LXW_TRUE;  // a row at a time
    // What it keeps beside the file while it writes lies where the file will.
    options.tmpdir = directory_.empty() ? nullptr : directory_.data();
    book_ = workbook_new_opt(file.string().c_str(), &options);
  }
  ~Book() {
    if (book_ != nullptr) workbook_close(book_);
  }
  Book(const Book&) = delete;
  Book& operator=(const Book&) = delete;
  lxw_workbook* Get() const { return book_; }
  bool Close() { return workbook_close(std::exchange(book_, nullptr)) == LXW_NO_ERROR; }

 private:
  std::string directory_;
  lxw_workbook* book_ = nullptr;
};

std::string CellText(std::string_view text) {
  return base::Left(base::ValidUtf8(text), kLongestCell);
}

lxw_datetime Moment(base::DateTime date) {
  return {date.Year(), date.Month(),  date.Day(),
          date.Hour(), date.Minute(), static_cast<double>(date.Second())};
}

class Writer {
 public:
  Writer(const Sheet& sheet, lxw_workbook* book, base::DateTime made)
      : sheet_(sheet), page_(workbook_add_worksheet(book, "Elenco")) {
    bold_ = workbook_add_format(book);
    format_set_bold(bold_);
    date_ = workbook_add_format(book);
    format_set_num_format(date_, "dd/mm/yyyy hh:mm");
    title_ = CellText(sheet.title);
    lxw_doc_properties properties{};
    properties.title = title_.data();
    std::tm time{};
    time.tm_year = made.Year() - 1900;
    time.tm_mon = made.Month() - 1;
    time.tm_mday = made.Day();
    time.tm_hour = made.Hour();
    time.tm_min = made.Minute();
    time.tm_sec = made.Second();
    properties.created = std::mktime(&time);
    workbook_set_properties(book, &properties);
  }

  bool Write(const SheetProgress& progress) {
    const auto columns = static_cast<lxw_col_t>(sheet_.columns.size());
    for (lxw_col_t i = 0; i < columns; ++i) {
      const ContactColumn& column = sheet_.columns[i];
      Check(worksheet_set_column(page_, i, i,
                                 column.kind == core::ColumnKind::kDate ? kDateWidth : kColumnWidth,
                                 nullptr));
      Check(worksheet_write_string(page_, 0, i, CellText(column.heading).c_str(), bold_));
    }
    worksheet_freeze_panes(page_, 1, 0);
    lxw_row_t row = 0;
    for (const std::int64_t key : sheet_.keys) {
      if (!progress(row)) return false;
      ++row;
      for (lxw_col_t i = 0; i < columns; ++i) WriteCell(row, i, key, sheet_.columns[i]);
    }
    return true;
  }

 private:
  static void Check(lxw_error error) {
    if (error != LXW_NO_ERROR) throw std::runtime_error(lxw_strerror(error));
  }

  void WriteCell(lxw_row_t row, lxw_col_t at, std::int64_t key, const ContactColumn& column) {
    const std::string text = sheet_.cells.Text(key, column);
    if (text.empty()) return;
    if (column.kind == core::ColumnKind::kNumber) {
      Check(worksheet_write_number(page_, row, at, base::Val(text), nullptr));
      return;
    }
    if (column.kind == core::ColumnKind::kDate) {
      const core::LogContact* contact = sheet_.cells.Contact(key);
      if (contact != nullptr && contact->DataQso.Year() >= kFirstYear) {
        lxw_datetime moment = Moment(contact->DataQso);
        Check(worksheet_write_datetime(page_, row, at, &moment, date_));
        return;
      }
    }
    Check(worksheet_write_string(page_, row, at, CellText(base::Trim(text)).c_str(), nullptr));
  }

  const Sheet& sheet_;
  lxw_worksheet* page_;
  lxw_format* bold_ = nullptr;
  lxw_format* date_ = nullptr;
  std::string title_;
};

}  // namespace

bool WriteXlsx(const Sheet& sheet, base::DateTime made, const std::filesystem::path& file,
               const SheetProgress& progress) {
  if (std::ssize(sheet.keys) + 1 > kMostSheetRows) {
    throw std::runtime_error(
        fmt::format("Un foglio ha al più {} righe", base::FormatNumber(kMostSheetRows, "#,###")));
  }
  ReplacingFile replacing(file);
  if (!std::ofstream(replacing.Unfinished())) replacing.Fail();
  Book book(replacing.Unfinished());
  if (book.Get() == nullptr) replacing.Fail();
  if (!Writer(sheet, book.Get(), made).Write(progress)) return false;
  if (!book.Close()) replacing.Fail();
  replacing.Replace();
  return true;
}

}  // namespace brenvo::list
