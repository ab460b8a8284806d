#include "gara/log_file.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "base/text.h"

namespace brenvo::gara {
namespace {

constexpr BandName kBands[] = {
    {"160 m", "1,8 MHz", "1800", 1.8},     {"80 m", "3,5 MHz", "3500", 3.5},
    {"60 m", "5,3 MHz", "5300", 5.3},      {"40 m", "7 MHz", "7000", 7},
    {"30 m", "10,1 MHz", "10100", 10.1},   {"20 m", "14 MHz", "14000", 14},
    {"17 m", "18 MHz", "18068", 18.068},   {"15 m", "21 MHz", "21000", 21},
    {"12 m", "24 MHz", "24890", 24.89},    {"10 m", "28 MHz", "28000", 28},
    {"6 m", "50 MHz", "50", 50},           {"4 m", "70 MHz", "70", 70},
    {"2 m", "144 MHz", "144", 144},        {"70cm", "432 MHz", "432", 430},
    {"23cm", "1,3 GHz", "1.2G", 1240},     {"13cm", "2,3 GHz", "2.3G", 2300},
    {"9cm", "3,4 GHz", "3.4G", 3400},      {"6cm", "5,7 GHz", "5.7G", 5650},
    {"3cm", "10 GHz", "10G", 10000},       {"24GHz", "24 GHz", "24G", 24000},
    {"47GHz", "47 GHz", "47G", 47000},     {"76GHz", "76 GHz", "75G", 75500},
    {"120GHz", "120 GHz", "122G", 119980}, {"144GHz", "144 GHz", "134G", 142000},
    {"248GHz", "248 GHz", "241G", 241000}};

// What files write beside the names above.
struct BandWord {
  std::string_view word, log;
};
constexpr BandWord kWords[] = {
    {"145MHZ", "2 m"},    {"430MHZ", "70cm"},   {"433MHZ", "70cm"},  {"435MHZ", "70cm"},
    {"1296MHZ", "23cm"},  {"1,2GHZ", "23cm"},   {"1240MHZ", "23cm"}, {"2320MHZ", "13cm"},
    {"3400MHZ", "9cm"},   {"5760MHZ", "6cm"},   {"10368MHZ", "3cm"}, {"10,3GHZ", "3cm"},
    {"2M", "2 m"},        {"6M", "6 m"},        {"4M", "4 m"},       {"75GHZ", "76GHz"},
    {"122GHZ", "120GHz"}, {"134GHZ", "144GHz"}, {"241GHZ", "248GHz"}};

}  // namespace

std::span<const BandName> BandNames() { return kBands; }

const BandName* FindBand(std::string_view log) {
  const auto at = std::ranges::find(kBands, base::Trim(log), &BandName::log);
  return at == std::end(kBands) ? nullptr : at;
}

const BandName* BandOfText(std::string_view text) {
  std::string plain;
  for (const char c : base::UpperAscii(text)) {
    if (c != ' ') plain += c == '.' ? ',' : c;
  }
  if (plain.empty() || plain.size() > 20) return nullptr;
  const auto named = [&](std::string_view name) {
    std::string wanted;
    for (const char c : base::UpperAscii(name)) {
      if (c != ' ') wanted += c == '.' ? ',' : c;
    }
    return wanted == plain;
  };
  for (const BandName& band : kBands) {
    if (named(band.edi) || named(band.log) || named(band.cabrillo)) return &band;
  }
  for (const BandWord& each : kWords) {
    if (each.word == plain || each.word == plain + "MHZ") return FindBand(each.log);
  }
  if (plain.find_first_not_of("0123456789,") != std::string::npos) return nullptr;
  std::ranges::replace(plain, ',', '.');
  const double number = base::Val(plain);
  // Below 30 MHz a frequency is told in kHz, above it in MHz.
  const double mhz = number >= 1800 && number < 30000 ? number / 1000 : number;
  const BandName* best = nullptr;
  for (const BandName& band : kBands) {
    if (band.mhz <= mhz && mhz <= band.mhz * 1.08 + 0.2) best = &band;
  }
  return best;
}

std::string LogFileName(const Rule& rule, const LogHead& head, std::string_view band) {
  const BandName* const known = FindBand(band);
  std::string edi(known == nullptr ? band : known->edi);
  std::erase(edi, ' ');
  std::string name = rule.fileName;
  const auto put = [&](std::string_view what, std::string_view with) {
    for (std::size_t at = name.find(what); at != std::string::npos; at = name.find(what)) {
      name.replace(at, what.size(), with);
    }
  };
  put("{CALL}", base::UpperAscii(head.call));
  put("{BANDA}", edi);
  put("{CATEGORIA}", head.category);
  for (char& c : name) {
    const bool isPlain = (c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') ||
                         (c >= 'a' && c <= 'z') || c == '.' || c == '_' || c == ',' || c == '-';
    if (!isPlain) c = '-';
  }
  return name.empty() || name[0] == '.' ? "log.edi" : name;
}

std::string ReadContestLog::Head(std::string_view name) const {
  for (const auto& [key, value] : head) {
    if (key == name) return value;
  }
  return {};
}

}  // namespace brenvo::gara
