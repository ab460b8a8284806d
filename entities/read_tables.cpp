#include "entities/read_tables.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>

#include "base/encoding.h"
#include "base/system_reason.h"
#include "table_text.h"

namespace brenvo::entities {
namespace {

// The first line that says something.
std::string_view FirstLine(std::string_view text) {
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  if (first == std::string_view::npos) return {};
  text = text.substr(first);
  return text.substr(0, text.find('\n'));
}

std::size_t Count(std::string_view text, char c) {
  return static_cast<std::size_t>(std::count(text.begin(), text.end(), c));
}

Table ReadAny(std::string_view text, std::string_view file, const KnownEntities& known) {
  const std::string_view first = FirstLine(text);
  if (first.empty()) throw TableError("è vuoto");
  if (first.starts_with('<')) return ReadExceptions(text);
  if (first.starts_with("\x1f\x8b")) throw TableError("è compresso: va prima estratto");
  if (first.starts_with("Tipo,Dxcc")) return ReadOwnTable(text, file);
  if (text.find('\0') != std::string_view::npos) throw TableError("non è un testo");
  if (Count(first, '|') >= 5) return ReadBarTable(text);
  if (Count(first, ':') >= 8) return ReadCtyDat(text, known);
  if (Count(first, ',') >= 9) return ReadCtyCsv(text);
  throw TableError(fmt::format(
      "riga 1: \"{}\" non comincia nessuna tabella nota (cty.dat, cty.csv, cty.xml, tabella |)",
      Shown(first)));
}

}  // namespace

Table ReadTable(std::string_view text, std::string_view file, const KnownEntities& known) {
  if (text.size() > kLargestTable) {
    throw TableError(fmt::format("{}: è più grande di {} MB", file, kLargestTable >> 20));
  }
  try {
    Table table = ReadAny(base::WithoutByteOrderMark(text), file, known);
    table.file = file;
    if (table.rules.empty()) throw TableError("nessuna regola");
    return table;
  } catch (const TableError& fault) {
    const std::string_view what = fault.what();
    if (what.starts_with(file)) throw;
    throw TableError(fmt::format("{}: {}", file, what));
  }
}

Table ReadTableFile(const std::filesystem::path& path, const KnownEntities& known) {
  const std::string name = path.filename().string();
  std::error_code error;
  const auto size = std::filesystem::file_size(path, error);
  std::ifstream in(path, std::ios::binary);
  if (error || !in) throw TableError(fmt::format("{}: non si apre", name));
  if (size > kLargestTable) {
    throw TableError(fmt::format("{}: è più grande di {} MB", name, kLargestTable >> 20));
  }
  std::string text(static_cast<std::size_t>(size), '\0');
  in.read(text.data(), static_cast<std::streamsize>(text.size()));
  if (in.bad() || static_cast<std::uintmax_t>(in.gcount()) != size) {
    throw TableError(fmt::format("{}: non si legge", name));
  }
  return ReadTable(text, name, known);
}

}  // namespace brenvo::entities
