// What a file tells of the countries of the DXCC list by date, whatever its format.
#pragma once

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"

namespace brenvo::entities {

// Times from one to another in UTC, both included; open where nothing was told.
struct Span {
  std::int64_t from = std::numeric_limits<std::int64_t>::min();  // as DateTime::Seconds
  std::int64_t to = std::numeric_limits<std::int64_t>::max();

  bool Holds(std::int64_t second) const { return second >= from && second <= to; }
  bool HasFrom() const { return from != std::numeric_limits<std::int64_t>::min(); }
  bool HasTo() const { return to != std::numeric_limits<std::int64_t>::max(); }
  bool IsOpen() const { return !HasFrom() && !HasTo(); }
  friend bool operator==(const Span&, const Span&) = default;
};
// From the first second of a day to the last one of another.
Span DaysFrom(std::optional<base::DateTime> first, std::optional<base::DateTime> last);
// "dal 01/05 al 28/05/2024", "dal 16/11/2001", "fino al 02/10/1990"; empty when it is open.
std::string SpanText(const Span& span);

// A country of the DXCC list.
struct Entity {
  int number = 0;       // the standard's; above 0
  std::string country;  // code of table Country; empty where it has none
  std::string name;
  std::string continent;  // "EU"; empty when there are several
  int cq = 0, itu = 0;    // 0 when there are several
  Span valid;
  // Only calls that a file lists count within it; nothing when all do.
  std::optional<Span> listedOnly;
};

enum class RuleKind : std::uint8_t {
  kPrefix,   // of the call, or of the part of it that tells the place
  kCall,     // this very call
  kInvalid,  // this call counts for nothing
  kZone,     // this call is in that CQ zone
};

// In a text "%" is any letter, "#" any digit, "?" either, "[A-F]" one of these. A prefix with such
// a sign at its end, or with a stroke, is the whole call; "SV/A" is any call of "SV" with "/A".
struct Rule {
  RuleKind kind = RuleKind::kPrefix;
  std::string text;
  int entity = 0;         // number; 0: counts for no country
  int cq = 0, itu = 0;    // 0: the entity's
  std::string continent;  // empty: the entity's
  std::string area;       // of a European award, within the entity: "IT9"
  Span when;
  bool deletedEntity = false;  // told of an entity that is no more: weaker than its like
  std::int64_t line = 0;       // of the file
};

struct Table {
  std::string file;     // its name, without the way to it
  std::string version;  // as it says of itself; may be empty
  std::string format;   // for the operator: "cty.dat"
  std::vector<Entity> entities;
  std::vector<Rule> rules;
  // Lines that were passed over, "riga 12: ..."; at most some, and how many there were.
  std::vector<std::string> faults;
  std::int64_t faultCount = 0;
};

inline constexpr std::size_t kLongestCall = 24;

}  // namespace brenvo::entities
