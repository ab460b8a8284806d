// Who a call was on a day.
#pragma once

#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>

#include "base/date.h"
#include "entities/table.h"

namespace brenvo::entities {

enum class Reason : std::uint8_t {
  kUnknown,    // no rule of that day fits
  kCall,       // the call itself is listed
  kPrefix,     // by its prefix, or the part that tells the place
  kInvalid,    // listed as counting for nothing
  kMobile,     // at sea or in the air
  kNotThen,    // what its prefix is today did not exist, or no more
  kNotListed,  // its country counts listed calls alone, and it is none
};

// The texts live as long as the resolver.
struct Answer {
  int entity = 0;                // 0: counts for no country
  const Entity* what = nullptr;  // null exactly when that is 0
  int cq = 0, itu = 0;           // 0: not known
  std::string_view continent;    // empty: not known
  std::string_view area;         // of a European award: "IT9"; empty elsewhere
  Reason reason = Reason::kUnknown;
  std::string_view rule;  // the text that fitted: "GB6WW", "IK%"; empty without one
  Span when;              // of that rule; of the country for kNotThen
  std::string_view file;  // that says so
  // Of kNotThen and kNotListed: the country that it would be.
  const Entity* would = nullptr;
};

// Holds what was given to it in its own form; about 50 bytes a rule.
class Resolver {
 public:
  // The table whose rules count most first; of what a country is the last one that tells it knows
  // best. Rules of a country that none tells are left out.
  explicit Resolver(std::span<const Table* const> tables);
  ~Resolver();
  Resolver(Resolver&&) noexcept;
  Resolver& operator=(Resolver&&) noexcept;

  // Whatever the call's case; what is no call is kUnknown.
  Answer Resolve(std::string_view call, base::DateTime utc) const;
  // As if no rule named this very call, nor the call within it.
  Answer ResolveByPrefix(std::string_view call, base::DateTime utc) const;
  // Null when no table tells of it.
  const Entity* Find(int number) const;
  const Entity* FindCountry(std::string_view code) const;

 private:
  class Work;
  std::unique_ptr<const Work> work_;
};

// "GB6WW: Scozia dal 01/05 al 28/05/2024", "K0ABC/MM: in mare non conta per nessun country".
std::string Explanation(std::string_view call, const Answer& answer);

}  // namespace brenvo::entities
