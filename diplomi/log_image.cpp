#include "diplomi/log_image.h"

#include <algorithm>
#include <limits>

#include "base/text.h"
#include "core/wpx_prefix.h"

namespace brenvo::diplomi {
namespace {

constexpr std::size_t kSide = 18 * 10;  // squares in one direction

char Upper(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

std::string_view Trimmed(std::string_view text) {
  while (!text.empty() && text.front() == ' ') text.remove_prefix(1);
  while (!text.empty() && text.back() == ' ') text.remove_suffix(1);
  return text;
}

template <class Small>
Small Fitting(std::uint32_t number) {
  return number <= std::numeric_limits<Small>::max() ? static_cast<Small>(number) : Small(0);
}

// What stands behind the call's last stroke: "MM".
std::string_view SuffixOf(std::string_view call) {
  const std::size_t stroke = call.rfind('/');
  return stroke == std::string_view::npos ? std::string_view() : call.substr(stroke + 1);
}

// Of a call of letters and digits alone, the prefix is what stands up to its last digit: calls that
// begin alike have the same one, as long as no digit follows.
std::string_view PrefixKey(std::string_view call) {
  const auto isLetter = [](char c) { return Upper(c) >= 'A' && Upper(c) <= 'Z'; };
  const auto isPlain = [&](char c) { return isLetter(c) || (c >= '0' && c <= '9'); };
  const std::size_t digit = call.find_last_of("0123456789");
  if (digit == std::string_view::npos || digit == 0 || !std::ranges::all_of(call, isPlain)) {
    return call;
  }
  const std::string_view key = call.substr(0, digit + 1);
  return std::ranges::any_of(key, isLetter) ? key : call;
}

}  // namespace

std::uint32_t Words::Of(std::string_view text) {
  if (text.empty()) return 0;
  if (const auto at = written_.find(text); at != written_.end()) return at->second;
  const std::string plain = base::UpperAscii(base::Trim(text));
  std::uint32_t number = 0;
  if (!plain.empty()) {
    if (const auto at = written_.find(plain); at != written_.end()) {
      number = at->second;
    } else {
      number = Count();
      texts_.push_back(plain);
      written_.emplace(plain, number);
    }
  }
  written_.emplace(text, number);
  return number;
}

std::uint32_t Words::Find(std::string_view text) const {
  const auto at = written_.find(base::UpperAscii(base::Trim(text)));
  return at == written_.end() ? 0 : at->second;
}

std::uint16_t SquareNumber(std::string_view locator) {
  locator = Trimmed(locator);
  if (locator.size() < 4) return 0;
  const char a = Upper(locator[0]), b = Upper(locator[1]), c = locator[2], d = locator[3];
  if (a < 'A' || a > 'R' || b < 'A' || b > 'R' || c < '0' || c > '9' || d < '0' || d > '9') {
    return 0;
  }
  const auto at = [](char letter, char digit) {
    return static_cast<std::size_t>(letter - 'A') * 10 + static_cast<std::size_t>(digit - '0');
  };
  return static_cast<std::uint16_t>(1 + at(a, c) * kSide + at(b, d));
}

std::string SquareText(std::uint16_t number) {
  if (number == 0) return {};
  const std::size_t east = (number - 1U) / kSide, north = (number - 1U) % kSide;
  return {static_cast<char>('A' + east / 10), static_cast<char>('A' + north / 10),
          static_cast<char>('0' + east % 10), static_cast<char>('0' + north % 10)};
}

LogImage::LogImage(std::vector<std::string> fields) : fields_(std::move(fields)) {}

std::optional<std::uint16_t> LogImage::FieldAt(std::string_view field) const {
  const auto at = std::ranges::find_if(
      fields_, [&](const std::string& each) { return base::SameText(each, field); });
  if (at == fields_.end()) return std::nullopt;
  return static_cast<std::uint16_t>(at - fields_.begin());
}

std::uint16_t LogImage::StationNumber(std::int64_t station) {
  // As few as a station has places; the last one mostly comes again.
  for (std::size_t i = stations_.size(); i-- > 0;) {
    if (stations_[i] == station) return static_cast<std::uint16_t>(i);
  }
  if (stations_.size() >= std::numeric_limits<std::uint16_t>::max()) return 0;
  stations_.push_back(station);
  return static_cast<std::uint16_t>(stations_.size() - 1);
}

void LogImage::Add(const SeenContact& contact) {
  ImageRow& row = rows_.emplace_back();
  row.key = contact.key;
  row.seconds = contact.utc.Seconds();
  row.country = Fitting<std::uint16_t>(countries.Of(contact.country));
  row.continent = Fitting<std::uint16_t>(continents.Of(contact.continent));
  row.area = Fitting<std::uint16_t>(areas.Of(contact.area));
  row.province = Fitting<std::uint16_t>(provinces.Of(contact.province));
  row.propagation = Fitting<std::uint16_t>(propagations.Of(contact.propagation));
  row.band = Fitting<std::uint8_t>(bands.Of(contact.band));
  row.zone = contact.zoneCq >= 1 && contact.zoneCq <= 40 ? static_cast<std::uint8_t>(contact.zoneCq)
                                                         : std::uint8_t{0};
  row.square = SquareNumber(contact.locator);
  const std::string_view call = Trimmed(contact.call);
  row.suffix = Fitting<std::uint16_t>(suffixes.Of(SuffixOf(call)));
  const std::string_view key = PrefixKey(call);
  auto known = prefixOfCall_.find(key);
  if (known == prefixOfCall_.end()) {
    known = prefixOfCall_.emplace(key, prefixes.Of(core::WpxPrefix(call))).first;
  }
  row.prefix = known->second;
  row.group = contact.group;
  row.satellite = contact.satellite;
  row.station = StationNumber(contact.station);
  row.services = contact.services;
  row.beside = static_cast<std::uint32_t>(beside_.size());
  const std::size_t besides = std::min<std::size_t>(contact.beside.size(), 255);
  row.besides = static_cast<std::uint8_t>(besides);
  beside_.insert(beside_.end(), contact.beside.begin(),
                 contact.beside.begin() + static_cast<std::ptrdiff_t>(besides));
}

bool LogImage::Remove(std::int64_t key) {
  const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(sorted_);
  auto at = std::lower_bound(rows_.begin(), end, key, [](const ImageRow& row, std::int64_t value) {
    return row.key < value;
  });
  if (at != end && at->key == key) {
    --sorted_;
  } else {
    at = std::find_if(end, rows_.end(), [&](const ImageRow& row) { return row.key == key; });
    if (at == rows_.end()) return false;
  }
  rows_.erase(at);
  return true;
}

void LogImage::RemoveCredits() {
  const auto end = rows_.begin() + static_cast<std::ptrdiff_t>(sorted_);
  const auto isCredit = [](const ImageRow& row) { return row.key < 0; };
  const auto before = std::count_if(rows_.begin(), end, isCredit);
  std::erase_if(rows_, isCredit);
  sorted_ -= static_cast<std::size_t>(before);
}

void LogImage::Settle() {
  if (!std::ranges::is_sorted(rows_, {}, &ImageRow::key)) {
    std::ranges::sort(rows_, {}, &ImageRow::key);
  }
  sorted_ = rows_.size();
}

std::size_t LogImage::Bytes() const {
  return rows_.capacity() * sizeof(ImageRow) + beside_.capacity() * sizeof(Beside);
}

}  // namespace brenvo::diplomi
