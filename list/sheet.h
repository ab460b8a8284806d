// Chosen contacts with chosen columns, as files and on paper.
#pragma once

#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include "base/date.h"
#include "contact_columns.h"
#include "platform/printer.h"

namespace brenvo::list {

struct Sheet {
  std::string title;
  std::vector<ContactColumn> columns;
  std::vector<std::int64_t> keys;  // in their order
  ContactCells& cells;
};

// So many rows are done; false stops.
using SheetProgress = std::function<bool(std::int64_t done)>;

// The headings, then a line a contact, as comma-separated text (base/csv.h) in UTF-8; a number or a
// date as the list shows it. The file takes the place of an older one only when it is whole; false
// when it was stopped. std::runtime_error with an Italian text when it cannot be written.
bool WriteCsv(const Sheet& sheet, const std::filesystem::path& file, const SheetProgress& progress);

// The same as a spreadsheet (Office Open XML): numbers and dates are such there. It says that it
// was made at that time. A sheet has no more than kMostSheetRows rows; more contacts are an error
// too.
inline constexpr std::int64_t kMostSheetRows = 1048576;
bool WriteXlsx(const Sheet& sheet, base::DateTime made, const std::filesystem::path& file,
               const SheetProgress& progress);

// On pages that lie, headings on each; what is wider than its column ends in "...". False when it
// was stopped: the document is then not ended. DeviceError as the printer has it.
bool PrintSheet(const Sheet& sheet, platform::Printer& printer, const SheetProgress& progress);

}  // namespace brenvo::list
