#include "rig/mode_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <system_error>

#include "base/csv.h"
#include "base/number.h"
#include "base/system_reason.h"
#include "base/text.h"

namespace brenvo::rig {
namespace {

constexpr std::string_view kNote = "Nota", kFrom = "Dal rtx", kTo = "Al rtx", kExample = "Esempio";
constexpr const char* kHeadings[] = {"Regola", "Modo", "Diventa", "Da kHz", "A kHz"};

struct Line {
  std::string where;
  ModeRule rule;
};
struct Lines {
  std::vector<Line> rules, examples;
};

[[noreturn]] void Refuse(const std::string& where, const std::string& what) {
  throw std::runtime_error(where + ": " + what);
}

std::optional<base::Khz> KhzOf(const std::string& where, const std::string& cell) {
  const std::string text = base::Trim(cell);
  if (text.empty()) return std::nullopt;
  if (text.find_first_not_of("0123456789.") != text.npos) {
    Refuse(where, fmt::format("\"{}\" non è una frequenza in kHz", text));
  }
  return base::Khz(base::Val(text));
}

bool IsAlike(const ModeRule& a, const ModeRule& b) {
  return a.toRig == b.toRig && base::SameText(a.mode, b.mode) && a.from == b.from && a.to == b.to;
}

Lines LinesOf(std::string_view file, std::string_view text) {
  base::CsvTable table;
  try {
    table = base::ParseCsv(text);
  } catch (const std::runtime_error& failure) {
    // "line 12: ...", in words that the operator does not read.
    const std::string line = base::PlainNumber(base::Val(failure.what() + sizeof "line"));
    Refuse(fmt::format("{}, riga {}", file, line),
           "non sono cinque celle, con una virgola tra l'una e l'altra");
  }
  if (!std::ranges::equal(table.Headings, kHeadings)) {
    Refuse(fmt::format("{}, riga 1", file), "le colonne sono Regola,Modo,Diventa,Da kHz,A kHz");
  }
  Lines lines;
  for (const base::CsvTable::Row& row : table.Rows) {
    Line line{fmt::format("{}, riga {}", file, row.Line), {}};
    const std::string what = base::Trim(row.Cells[0]);
    if (base::SameText(what, kNote)) continue;
    std::string mode = base::Trim(row.Cells[1]);
    line.rule.becomes = base::Trim(row.Cells[2]);
    line.rule.from = KhzOf(line.where, row.Cells[3]);
    line.rule.to = KhzOf(line.where, row.Cells[4]);
    const auto takes = [&](std::string_view way, const std::string& words) {
      return base::SameText(base::Left(words, way.size()), way);
    };
    if (base::SameText(what, kExample)) {
      line.rule.toRig = takes(kTo, mode);
      if (!line.rule.toRig && !takes(kFrom, mode)) {
        Refuse(line.where, "un esempio comincia con Dal rtx o Al rtx");
      }
      line.rule.mode = base::Trim(mode.substr(line.rule.toRig ? kTo.size() : kFrom.size()));
      lines.examples.push_back(std::move(line));
      continue;
    }
    line.rule.toRig = base::SameText(what, kTo);
    if (!line.rule.toRig && !base::SameText(what, kFrom)) {
      Refuse(line.where, fmt::format("la regola \"{}\" non esiste", what));
    }
    if (mode.empty()) Refuse(line.where, "manca il modo");
    line.rule.mode = std::move(mode);
    if (std::ranges::any_of(lines.rules,
                            [&](const Line& each) { return IsAlike(each.rule, line.rule); })) {
      Refuse(line.where, fmt::format("{} {} è già scritto", what, line.rule.mode));
    }
    lines.rules.push_back(std::move(line));
  }
  return lines;
}

std::string NameOf(const std::filesystem::path& file) {
  const auto name = file.filename().u8string();
  return {name.begin(), name.end()};
}

// Nothing for a file that is not there.
std::optional<std::string> TextOf(const std::filesystem::path& file) {
  std::error_code error;
  if (file.empty() || (!std::filesystem::exists(file, error) && !error)) return std::nullopt;
  std::ifstream in(file, std::ios::binary);
  if (!in) {
    Refuse(NameOf(file), "non si legge: " + base::ReasonText({errno, std::generic_category()}));
  }
  return std::string(std::istreambuf_iterator<char>(in), {});
}

std::string CellOf(const std::optional<base::Khz>& limit) {
  return limit ? base::PlainNumber(limit->Value()) : std::string();
}

}  // namespace

ModeTable ModeTable::Read(const std::filesystem::path& ours, const std::filesystem::path& own) {
  const auto delivered = TextOf(ours);
  if (!delivered) Refuse(NameOf(ours), "non c'è");
  Lines lines = LinesOf(NameOf(ours), *delivered);
  ModeTable table;
  const auto tryExamples = [&](const Lines& with) {
    for (const Line& example : with.examples) {
      const ModeRule& said = example.rule;
      const base::Hz at = base::ToHz(said.from.value_or(base::Khz(0)));
      const std::string given = table.Find(said.toRig, said.mode, at);
      if (given != said.becomes) {
        Refuse(example.where,
               fmt::format("l'esempio dice \"{}\", le regole danno \"{}\"", said.becomes, given));
      }
    }
  };
  for (const Line& each : lines.rules) table.rules_.push_back(each.rule);
  tryExamples(lines);
  const auto text = TextOf(own);
  if (!text) return table;
  const Lines his = LinesOf(NameOf(own), *text);
  std::vector<ModeRule> first;
  for (const Line& each : his.rules) {
    const auto alike = std::ranges::find_if(
        table.rules_, [&](const ModeRule& rule) { return IsAlike(rule, each.rule); });
    if (alike == table.rules_.end()) {
      first.push_back(each.rule);
    } else {
      *alike = each.rule;
    }
  }
  table.rules_.insert(table.rules_.begin(), first.begin(), first.end());
  tryExamples(his);
  return table;
}

std::string ModeTable::Find(bool toRig, std::string_view mode, base::Hz at) const {
  const base::Khz khz = base::ToKhz(at);
  const std::string wanted = base::Trim(mode);
  for (const ModeRule& rule : rules_) {
    if (rule.toRig == toRig && base::SameText(rule.mode, wanted) &&
        (!rule.from || khz >= *rule.from) && (!rule.to || khz <= *rule.to)) {
      return rule.becomes;
    }
  }
  return {};
}

std::string ModeTable::ToLog(std::string_view mode, base::Hz at) const {
  return Find(false, mode, at);
}

std::string ModeTable::ToRig(std::string_view modo, base::Hz at) const {
  return Find(true, modo, at);
}

ModeTable LoadModes(core::Session& session, const std::function<void(const std::string&)>& tell) {
  const auto ours = session.File(kDeliveredModes), own = session.File(kOwnModes);
  for (const auto& each : {own, std::filesystem::path()}) {
    try {
      return ModeTable::Read(ours, each);
    } catch (const std::runtime_error& failure) {
      tell(failure.what());
    }
  }
  return {};
}

void StoreOwnMode(core::Session& session, const ModeRule& rule) {
  const std::filesystem::path file = session.File(kOwnModes);
  const std::vector<std::string> cells = {std::string(rule.toRig ? kTo : kFrom), rule.mode,
                                          rule.becomes, CellOf(rule.from), CellOf(rule.to)};
  std::string text;
  bool placed = false;
  const auto before = TextOf(file);
  if (before) {
    const std::string name = NameOf(file);
    static_cast<void>(LinesOf(name, *before));  // what cannot be understood is not written over
    const base::CsvTable table = base::ParseCsv(*before);
    text = base::CsvLine(table.Headings);
    for (const base::CsvTable::Row& row : table.Rows) {
      const bool isRule = base::SameText(base::Trim(row.Cells[0]), cells[0]) &&
                          base::SameText(base::Trim(row.Cells[1]), cells[1]) &&
                          KhzOf(name, row.Cells[3]) == rule.from &&
                          KhzOf(name, row.Cells[4]) == rule.to;
      text += base::CsvLine(isRule ? cells : row.Cells);
      placed = placed || isRule;
    }
  } else {
    text = base::CsvLine({std::begin(kHeadings), std::end(kHeadings)});
  }
  if (!placed) text += base::CsvLine(cells);
  const std::filesystem::path next = file.string() + ".tmp";
  std::ofstream out(next, std::ios::binary | std::ios::trunc);
  out << text;
  out.close();
  if (!out) {
    Refuse(NameOf(file), "non si scrive: " + base::ReasonText({errno, std::generic_category()}));
  }
  std::error_code error;
  std::filesystem::rename(next, file, error);
  if (error) Refuse(NameOf(file), "non si scrive: " + base::ReasonText(error));
}

}  // namespace brenvo::rig
