// Prints rows by a layout.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <string>

#include "engine/database.h"
#include "platform/printer.h"
#include "report_layout.h"

namespace brenvo::print {

// The texts of {call} and its like; {pagina} and {pagine} are the engine's own.
using ReportTexts = std::map<std::string, std::string, std::less<>>;

// Prints the staging table and ends the document. Rows are fetched one at a time; columns and
// headings repeat on every page; a text wider than its column ends in "...". An empty table prints
// one page without rows. `advance` is told the rows done and how many there are, all of them before
// the document ends, which may open a preview; by false it stops the report, which is a DeviceError
// and leaves the document unended. LayoutError names a column that the table does not have.
using ReportAdvance = std::function<bool(std::int64_t done, std::int64_t total)>;
void PrintRows(engine::Database& database, const ReportLayout& layout, const ReportTexts& texts,
               platform::Printer& printer, const ReportAdvance& advance);

// How many rows a page holds.
int RowsPerPage(const ReportLayout& layout, base::Mm pageHeight);

}  // namespace brenvo::print
