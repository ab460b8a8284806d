// What looks wrong in a log: contacts come in by date, findings come out.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "checks/check_facts.h"

namespace brenvo::checks {

// What is looked at of a contact, as it is stored. The texts are somebody else's. A date that is
// not known is day zero.
struct CheckedContact {
  std::int64_t qsoNr = 0;
  base::DateTime DataQso;
  std::string_view Call, Qra, Qth, Country, Provincia, Locator, Banda, Modo, Propagazione;
  double Frequenza = 0;  // MHz; 0 is none
  bool QslRicevuta = false;
};

// A contact gets at most one finding of each rule.
struct Finding {
  std::int64_t qsoNr = 0;
  std::string_view rule;  // the name of one of Rules()
  std::string reason;     // for the operator
  friend bool operator==(const Finding&, const Finding&) = default;
};

// Minutes within which a station is not worked again on the same band and in the same kind of mode,
// and from a contact to one with a similar call.
inline constexpr int kRepeatedWithin = 10;
// A call is worked often from so many contacts on.
inline constexpr int kWorkedOften = 5;
// Kilometres beyond which a locator is not that of the same station. A call in more than so many
// places travels, and is left out.
inline constexpr int kFarAway = 300;
inline constexpr std::size_t kMostPlaces = 3;

struct Rule {
  std::string_view name;  // for the operator
  // Why the contact looks wrong by itself; empty when it does not. Null for a rule that goes by the
  // other contacts.
  std::string (*ofOne)(const CheckedContact& contact, const CheckFacts& facts) = nullptr;
};

namespace rule {
inline constexpr std::string_view kRepeated = "Ripetuto", kSimilar = "Call simile",
                                  kMoved = "Altro locator", kLocator = "Locator", kBand = "Banda",
                                  kDate = "Data", kProvince = "Provincia", kCountry = "Country";
}  // namespace rule
std::span<const Rule> Rules();

// Left out: calls with a slash, where place and country are looked at; prefixes of countries that
// share their calls (the United States, Russia, Italy); locators of countries that are small
// islands; similar calls without a second reason.
class LogCheck {
 public:
  // At most so many findings are kept; all of them are counted.
  explicit LogCheck(const CheckFacts& facts, std::size_t mostFindings = 20000);
  ~LogCheck();
  LogCheck(const LogCheck&) = delete;
  LogCheck& operator=(const LogCheck&) = delete;

  // By date, rising. Memory grows with the number of different calls, about 150 bytes each.
  void See(const CheckedContact& contact);
  // Once, behind the last contact: the findings by rule and number.
  std::vector<Finding> Finish();
  std::int64_t Contacts() const;
  // How many findings there are, those that are not kept included.
  std::int64_t Count() const;

 private:
  class Work;
  std::unique_ptr<Work> work_;
};

}  // namespace brenvo::checks
