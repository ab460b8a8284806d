// The log as awards look at it: what counts of each contact, in 48 bytes each.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/date.h"
#include "worked/rules.h"

namespace brenvo::diplomi {

struct TextHash {
  using is_transparent = void;
  std::size_t operator()(std::string_view text) const {
    return std::hash<std::string_view>()(text);
  }
};
using NumbersOfTexts = std::unordered_map<std::string, std::uint32_t, TextHash, std::equal_to<>>;

// Texts by small numbers, and back; 0 is the empty one. Letters of ASCII and blanks around do not
// count: they are kept in capitals.
class Words {
 public:
  Words() : texts_(1) {}
  std::uint32_t Of(std::string_view text);
  // 0 where it was never given.
  std::uint32_t Find(std::string_view text) const;
  const std::string& Text(std::uint32_t number) const { return texts_[number]; }
  std::uint32_t Count() const { return static_cast<std::uint32_t>(texts_.size()); }

 private:
  // As it was written, so that a text that comes again costs one search.
  NumbersOfTexts written_;
  std::vector<std::string> texts_;
};

// 0 where the text does not begin with a square; else from 1 on, in the order of the squares.
std::uint16_t SquareNumber(std::string_view locator);
// "JN65"; empty for 0.
std::string SquareText(std::uint16_t number);

// What stands beside a contact.
struct Beside {
  // A field by its place among those that are wanted, or what the record of a service tells.
  std::uint16_t what = 0;
  std::uint32_t text = 0;  // of LogImage::texts
};
// Behind all fields: the locator and the IOTA that the record of service n tells.
inline constexpr std::uint16_t kRecordLocator = 0x100, kRecordIota = 0x200;

// A contact as it is read; the texts are somebody else's.
struct SeenContact {
  std::int64_t key = 0;
  base::DateTime utc;
  std::string_view call, country, continent, area, province, locator, band, propagation;
  double zoneCq = 0;
  worked::Group group = worked::kNoGroup;
  bool satellite = false;
  std::int64_t station = 0;
  worked::ServiceSet services = 0;
  std::span<const Beside> beside;
};

struct ImageRow {
  std::int64_t key = 0;      // of the log; below 0: a credit without a contact
  std::int64_t seconds = 0;  // UTC
  std::uint32_t prefix = 0, beside = 0;
  std::uint16_t country = 0, continent = 0, area = 0, province = 0, propagation = 0, suffix = 0,
                station = 0, square = 0;
  std::uint8_t band = 0, zone = 0, group = 0, besides = 0;
  worked::ServiceSet services = 0;
  bool satellite = false;
};
static_assert(sizeof(ImageRow) <= 48);

class LogImage {
 public:
  // What is wanted beside contacts: fields of LogAdif, and "Note" for references in the notes.
  explicit LogImage(std::vector<std::string> fields = {});

  const std::vector<std::string>& Fields() const { return fields_; }
  // Its place; nothing for one that is not wanted.
  std::optional<std::uint16_t> FieldAt(std::string_view field) const;

  void Reserve(std::size_t contacts) { rows_.reserve(contacts); }
  // More than 255 things beside one contact, and more words than numbers, are left out.
  void Add(const SeenContact& contact);
  // False when there is none.
  bool Remove(std::int64_t key);
  // Credits without a contact go, to be read again.
  void RemoveCredits();

  std::span<const ImageRow> Rows() const { return rows_; }
  std::span<const Beside> BesideOf(const ImageRow& row) const {
    return std::span(beside_).subspan(row.beside, row.besides);
  }
  // Contacts that have come since it was read and stand behind the others.
  std::size_t Behind() const { return rows_.size() - sorted_; }

  // The numbers of a row's texts.
  Words prefixes, countries, continents, areas, provinces, bands, propagations, suffixes, texts;
  // The station of a number.
  std::int64_t Station(std::uint16_t number) const { return stations_[number]; }
  std::size_t StationCount() const { return stations_.size(); }
  // No contact is to be put in order any more: what comes stands behind.
  void Settle();
  // Bytes that it holds.
  std::size_t Bytes() const;

 private:
  std::uint16_t StationNumber(std::int64_t station);

  std::vector<std::string> fields_;
  std::vector<ImageRow> rows_;
  std::size_t sorted_ = 0;  // so many at the front are in the order of their keys
  std::vector<Beside> beside_;
  std::vector<std::int64_t> stations_{0};
  // Calls follow one another without order, but their prefixes repeat.
  NumbersOfTexts prefixOfCall_;
};

}  // namespace brenvo::diplomi
