// The rules of an award, as a file tells them.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/date.h"
#include "base/json_fields.h"

namespace brenvo::diplomi {

// What is counted.
enum class UnitKind : std::uint8_t {
  kCountry,     // of the DXCC list, on its days
  kWaeCountry,  // of Europe, and the award's own areas
  kCqZone,
  kContinent,
  kPrefix,    // as the WPX counts it
  kProvince,  // of the award's countries
  kSquare,    // the first four characters of a locator
  kField,     // the first two
  kReference  // that a field or the note tells
};

enum class Satellite : std::uint8_t { kNo, kOnly, kAny };

// A service whose confirmations count.
struct Counting {
  std::string service;       // as the rules of what is confirmed name it: "LoTW"
  std::string field, value;  // only where the contact keeps this: "EQSL_AG", "Y"; may be empty
  // It confirms the locator or the reference that its record tells, not what the log says.
  bool ofRecord = false;
};

// A part of a country that counts for itself.
struct Area {
  std::string area;     // as the tables of countries by date call it: "IT9"
  std::string country;  // of which it is a part
  std::string code, name;
};

enum class LevelOf : std::uint8_t { kAll, kBand, kSlots };

// What is to be reached.
struct Goal {
  std::string name;
  LevelOf of = LevelOf::kAll;
  std::vector<int> counts;         // ascending; none where only the sum is told
  std::vector<std::string> bands;  // of kBand and kSlots; empty: all of the award
};

struct ExampleRecord {
  std::string service, locator, iota;
};
struct ExampleContact {
  int line = 0;
  base::DateTime utc;
  std::string call, country, continent, area, province, locator, band, mode, propagation, note;
  int zoneCq = 0;
  int station = 1;
  std::vector<std::string> services;  // that confirm it
  std::map<std::string, std::string> fields;
  std::vector<ExampleRecord> records;
};
struct ExampleUnit {
  int line = 0;
  std::string unit, band, state;  // no band: all together
};
struct Example {
  int line = 0;
  std::string mode;                   // the group that is chosen; empty for all
  std::vector<std::string> stations;  // their locators, from 1; the first one is chosen
  std::vector<ExampleContact> contacts;
  std::vector<ExampleUnit> units;  // all that count
  int worked = 0, confirmed = 0, credited = 0;
};

struct Award {
  std::string file;  // its name without ".json"
  std::string name, sponsor, page;
  std::vector<std::string> open;  // what the rules as known leave open
  UnitKind unit = UnitKind::kCountry;
  std::vector<std::string> countries;       // of kProvince
  std::map<std::string, std::string> same;  // a code that counts as another one
  std::vector<std::string> former;          // codes that count apart, as those that are no more
  std::vector<Area> areas;                  // of kWaeCountry
  std::vector<std::string> fields;          // of kReference: "IOTA", "Note"
  std::string pattern;                      // of kReference: L a letter, N a digit
  std::string list;                         // of kReference: a file with its references; may lack
  std::vector<std::string> bands;           // as the log calls them, without blanks; empty: all
  std::vector<std::string> modes;           // groups that can be counted alone
  Satellite satellite = Satellite::kAny;
  std::vector<Counting> counting;  // the first one that confirms is told
  std::vector<std::string> creditAll, creditBand, creditMode;  // as CREDIT_GRANTED names them
  std::optional<base::DateTime> from, to;                      // the first and the last day, UTC
  std::vector<std::string> notPropagation;                     // as the log calls them
  std::vector<std::string> notSuffix;                          // "MM"
  int ownWithinKm = 0;                                         // all own places; 0: wherever
  bool ownCountry = false;                                     // all own places in one country
  std::vector<Goal> goals;
  std::vector<Example> examples;

  bool IsComplete() const { return open.empty(); }
};

using AwardFault = base::FieldFault;

struct ReadAward {
  Award award;  // as far as it was understood
  std::vector<AwardFault> faults;
};

// Bounds of a file: bytes, things within one another, values in all.
inline constexpr std::size_t kMostAwardBytes = 1 << 20;
inline constexpr int kMostAwardDepth = 12;
inline constexpr std::size_t kMostAwardValues = 50000;

// Of any bytes. An award with faults is not to be used.
ReadAward ReadAwardText(std::string_view bytes);

// A reference and its name.
struct ListedReference {
  std::string reference, name;
  friend bool operator==(const ListedReference&, const ListedReference&) = default;
};
inline constexpr std::size_t kMostReferences = 200'000;
// A table of references, with the columns Riferimento and Nome (base/csv.h). Throws
// std::runtime_error with the line, in Italian.
std::vector<ListedReference> ReadReferences(std::string_view text);

// The pieces of a text that the pattern fits (L a letter, N a digit, anything else itself), in
// capitals; "*" at its end is any further letters and digits. Without a pattern, the pieces between
// commas and semicolons.
std::vector<std::string> ReferencesIn(std::string_view text, std::string_view pattern);

}  // namespace brenvo::diplomi
