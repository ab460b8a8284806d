#include "rig/bands.h"

#include <fmt/format.h>

#include <algorithm>
#include <cmath>

#include "base/number.h"
#include "base/text.h"
#include "core/texts.h"

namespace brenvo::rig {
namespace {

constexpr double kHighest = 1e12;  // Hz
constexpr std::size_t kMostTransverters = 50;

bool Holds(const Band& band, base::Hz frequency) {
  const base::Khz khz = base::ToKhz(frequency);
  return khz >= band.from && khz <= band.to;
}

std::vector<std::string> Parts(std::string_view text, char between) {
  std::vector<std::string> parts;
  for (std::size_t at = 0; at <= text.size();) {
    const std::size_t end = std::min(text.find(between, at), text.size());
    parts.push_back(base::Trim(text.substr(at, end - at)));
    at = end + 1;
  }
  return parts;
}

bool IsNumber(std::string_view text) {
  return !text.empty() && text.find_first_not_of("0123456789.") == text.npos &&
         text.find_first_of("0123456789") != text.npos;
}

}  // namespace

Bands Bands::Read(core::Session& session) {
  std::vector<Band> all;
  const auto rows = session.Db.OpenSnapshot("select Banda,FrequenzaI,FrequenzaF from UserRTX");
  for (; !rows->EOF_(); rows->MoveNext()) {
    all.push_back({core::FieldText(*rows, "Banda"),
                   base::Khz(base::Val(core::FieldText(*rows, "FrequenzaI"))),
                   base::Khz(base::Val(core::FieldText(*rows, "FrequenzaF")))});
  }
  return Bands(std::move(all));
}

const Band* Bands::At(base::Hz frequency) const {
  const auto at =
      std::ranges::find_if(all_, [&](const Band& each) { return Holds(each, frequency); });
  return at == all_.end() ? nullptr : &*at;
}

const Band* Bands::Find(std::string_view banda) const {
  const std::string wanted = base::Trim(banda);
  const auto at = std::ranges::find_if(
      all_, [&](const Band& each) { return base::SameText(base::Trim(each.banda), wanted); });
  return at == all_.end() ? nullptr : &*at;
}

std::vector<Transverter> ReadTransverters(std::string_view text) {
  std::vector<Transverter> all;
  for (const std::string& part : Parts(text, ',')) {
    const std::vector<std::string> cells = Parts(part, ':');
    if (cells.size() != 3 || cells[0].empty() || all.size() >= kMostTransverters) continue;
    const double adds = base::Val(cells[1]);
    if (std::fabs(adds) > kHighest / 1e6) continue;
    all.push_back({cells[0], base::Mhz(adds), cells[2] == "Y"});
  }
  return all;
}

std::string TextOf(const std::vector<Transverter>& transverters) {
  std::string text;
  for (const Transverter& each : transverters) {
    text += fmt::format("{}{}:{}:{}", text.empty() ? "" : ", ", each.banda,
                        base::PlainNumber(each.adds.Value()), each.inUse ? "Y" : "N");
  }
  return text;
}

base::Hz OnAir(base::Hz rig, const std::vector<Transverter>& transverters, const Bands& bands) {
  for (const Transverter& each : transverters) {
    const Band* const band = bands.Find(each.banda);
    if (!each.inUse || band == nullptr) continue;
    const base::Hz air = rig + base::ToHz(each.adds);
    if (Holds(*band, air)) return air;
  }
  return rig;
}

base::Hz OnRig(base::Hz air, const std::vector<Transverter>& transverters, const Bands& bands) {
  for (const Transverter& each : transverters) {
    const Band* const band = bands.Find(each.banda);
    if (each.inUse && band != nullptr && Holds(*band, air)) return air - base::ToHz(each.adds);
  }
  return air;
}

std::optional<base::Hz> ReadFrequency(std::string_view text, const Bands& bands) {
  std::string digits = base::Trim(text);
  std::replace(digits.begin(), digits.end(), ',', '.');
  if (!IsNumber(digits)) return std::nullopt;
  const auto dots = std::count(digits.begin(), digits.end(), '.');
  base::Hz frequency;
  if (dots > 1) {
    std::erase(digits, '.');
    frequency = base::Hz(base::Val(digits));
  } else {
    const base::Hz asMhz = base::ToHz(base::Mhz(base::Val(digits)));
    const base::Hz asKhz = base::ToHz(base::Khz(base::Val(digits)));
    const bool mhzFirst = dots == 1;
    const base::Hz first = mhzFirst ? asMhz : asKhz, second = mhzFirst ? asKhz : asMhz;
    frequency = bands.At(first) != nullptr ? first : bands.At(second) != nullptr ? second : asKhz;
  }
  frequency = base::Hz(std::round(frequency.Value()));
  if (frequency.Value() <= 0 || frequency.Value() > kHighest) return std::nullopt;
  return frequency;
}

std::string FrequencyText(base::Hz frequency) {
  const auto hz = static_cast<long long>(std::clamp(frequency.Value(), 0.0, kHighest));
  return fmt::format("{}.{:03}.{:03}", hz / 1000000, hz / 1000 % 1000, hz % 1000);
}

}  // namespace brenvo::rig
