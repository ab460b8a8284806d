#include "conferme/mode_table.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <vector>

#include "adif/adif_names.h"
#include "base/csv.h"
#include "base/number.h"
#include "base/system_reason.h"
#include "base/text.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kNames[] = {"", "CW", "PHONE", "DATA", "IMAGE"};
constexpr const char* kHeadings[] = {"Regola", "Modo", "Sottomodo", "Vale", "Gruppo"};

std::string Cell(const std::string& text) { return base::UpperAscii(base::Trim(text)); }

// The words in which the rules of what is worked name the same groups.
ModeGroup GroupOfRules(std::string_view name) {
  if (base::SameText(name, "CW")) return ModeGroup::kCw;
  if (base::SameText(name, "Fonia")) return ModeGroup::kPhone;
  if (base::SameText(name, "Digitale")) return ModeGroup::kData;
  if (base::SameText(name, "Immagine")) return ModeGroup::kImage;
  return ModeGroup::kUnknown;
}

}  // namespace

std::string_view NameOf(ModeGroup group) { return kNames[static_cast<std::size_t>(group)]; }

ModeGroup GroupNamed(std::string_view name) {
  const auto at = std::ranges::find_if(kNames + 1, std::end(kNames), [&](std::string_view each) {
    return base::SameText(each, name);
  });
  return at == std::end(kNames) ? ModeGroup::kUnknown
                                : static_cast<ModeGroup>(at - std::begin(kNames));
}

ModeTable ModeTable::Parse(std::string_view text) {
  base::CsvTable table;
  try {
    table = base::ParseCsv(text);
  } catch (const std::runtime_error& failure) {
    // "line 12: ...", in words that the operator does not read.
    throw std::runtime_error(
        fmt::format("{}, riga {}: non sono cinque celle, con una virgola tra l'una e l'altra",
                    kModeRules, base::PlainNumber(base::Val(failure.what() + sizeof "line"))));
  }
  if (!std::ranges::equal(table.Headings, kHeadings)) {
    throw std::runtime_error(
        fmt::format("{}, riga 1: le colonne sono Regola,Modo,Sottomodo,Vale,Gruppo", kModeRules));
  }
  ModeTable modes;
  for (const base::CsvTable::Row& row : table.Rows) {
    const auto fail = [&](const std::string& what) {
      throw std::runtime_error(fmt::format("{}, riga {}: {}", kModeRules, row.Line, what));
    };
    const std::string rule = base::Trim(row.Cells[0]);
    if (base::SameText(rule, "Nota")) continue;
    const std::string mode = Cell(row.Cells[1]), submode = Cell(row.Cells[2]);
    const ServiceMode means{Cell(row.Cells[3]), GroupNamed(base::Trim(row.Cells[4]))};
    if (mode.empty()) fail("manca il modo");
    if (means.group == ModeGroup::kUnknown) fail("il gruppo è CW, PHONE, DATA o IMAGE");
    if (base::SameText(rule, "Modo")) {
      if (!modes.modes_.emplace(std::pair(mode, submode), means).second) {
        fail(fmt::format("il modo {} {} è già scritto", mode, submode));
      }
      if (!submode.empty()) modes.bySubmode_.emplace(submode, means);
    } else if (base::SameText(rule, "Esempio")) {
      const ServiceMode got = modes.Of(mode, submode);
      if (got != means) {
        fail(fmt::format("l'esempio dice \"{} {}\", le regole danno \"{} {}\"", means.mode,
                         NameOf(means.group), got.mode, NameOf(got.group)));
      }
    } else {
      fail(fmt::format("la regola \"{}\" non esiste", rule));
    }
  }
  return modes;
}

ModeTable ModeTable::Read(const std::filesystem::path& file) {
  errno = 0;
  std::ifstream in(file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(in), {}};
  if (!in) {
    throw std::runtime_error(
        fmt::format("{}: {}", kModeRules, base::ReasonText({errno, std::generic_category()})));
  }
  return Parse(text);
}

ServiceMode ModeTable::Of(std::string_view modeTold, std::string_view submodeTold) const {
  const std::string mode = Cell(std::string(adif::AdifWordOf(base::Trim(modeTold))));
  const std::string submode = Cell(std::string(submodeTold));
  if (!submode.empty()) {
    if (const auto at = modes_.find({mode, submode}); at != modes_.end()) return at->second;
    if (const auto at = bySubmode_.find(submode); at != bySubmode_.end()) return at->second;
  }
  // A word that services have a mode of their own for goes before the submode of that name.
  if (const auto at = modes_.find({mode, ""}); at != modes_.end()) return at->second;
  if (const auto at = bySubmode_.find(mode); at != bySubmode_.end()) return at->second;
  return {};
}

ServiceMode ModeTable::Of(std::string_view mode, std::string_view submode,
                          const worked::Rules& rules) const {
  ServiceMode found = Of(mode, submode);
  if (found.group != ModeGroup::kUnknown) return found;
  for (const std::string_view word : {submode, mode}) {
    if (word.empty()) continue;
    found.group = GroupOfRules(rules.Groups()[rules.MeaningOf(word).group]);
    if (found.group != ModeGroup::kUnknown) break;
  }
  return found;
}

}  // namespace brenvo::conferme
