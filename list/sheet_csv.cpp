#include <fstream>

#include "base/csv.h"
#include "base/text.h"
#include "replacing_file.h"
#include "sheet.h"

namespace brenvo::list {

bool WriteCsv(const Sheet& sheet, const std::filesystem::path& file,
              const SheetProgress& progress) {
  ReplacingFile replacing(file);
  std::ofstream out(replacing.Unfinished(), std::ios::binary | std::ios::trunc);
  if (!out) replacing.Fail();
  std::vector<std::string> cells;
  for (const ContactColumn& column : sheet.columns) cells.push_back(column.heading);
  out << base::CsvLine(cells);
  std::int64_t done = 0;
  for (const std::int64_t key : sheet.keys) {
    if (!progress(done++)) return false;
    cells.clear();
    for (const ContactColumn& column : sheet.columns)
      cells.push_back(base::Trim(sheet.cells.Text(key, column)));
    out << base::CsvLine(cells);
  }
  out.close();
  if (!out) replacing.Fail();
  replacing.Replace();
  return true;
}

}  // namespace brenvo::list
