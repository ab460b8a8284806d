// What counts as what: which modes are one group, which contacts go by satellite, and what confirms
// a contact for what. All of it is read from tables (data/rules/Lavorati.csv says how).
#pragma once

#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace brenvo::worked {

// What can be new in a contact.
enum class Kind : std::uint8_t {
  kCall,
  kPrefisso,
  kCountry,
  kZonaCQ,
  kZonaITU,
  kContinente,
  kProvincia,  // of a country
  kSquare,     // the first four characters of the locator
  kSquare6,
};
inline constexpr std::size_t kKinds = 9;
// The word for it in the rules: "Zona CQ".
std::string_view NameOf(Kind kind);

// A group of modes, and a set of services, by their places in Groups() and Services().
using Group = std::uint8_t;
inline constexpr Group kNoGroup = 0;
using ServiceSet = std::uint8_t;
inline constexpr ServiceSet kAllServices = 0xFF;

struct ModeMeaning {
  Group group = kNoGroup;
  bool satellite = false;  // the mode itself stands in the note: "[AO-7/B/SSB]"
  friend bool operator==(const ModeMeaning&, const ModeMeaning&) = default;
};

// Names compare as the database compares: the case of ASCII letters and trailing blanks aside.
class Rules {
 public:
  static constexpr std::size_t kMostGroups = 7, kMostServices = 8;

  // Nothing is in a group, by satellite or confirmed.
  Rules();

  // The names of the groups; the first one is empty, of the modes that are in none.
  const std::vector<std::string>& Groups() const { return groups_; }
  std::optional<Group> FindGroup(std::string_view name) const;
  ModeMeaning MeaningOf(std::string_view mode) const;
  bool IsSatellite(std::string_view propagation) const;

  // The country that the provinces of this one count for: mostly itself.
  std::string_view CountryOfProvinces(std::string_view country) const;

  const std::vector<std::string>& Services() const { return serviceNames_; }
  // The services that confirm a contact by the column QslRicevuta...
  ServiceSet ByCard() const { return byCard_; }
  // ...and by a field that is kept of it in LogAdif.
  ServiceSet ByField(std::string_view field, std::string_view value) const;
  // Fields that confirm with some value, each once, in capitals.
  const std::vector<std::string>& Fields() const { return fieldNames_; }
  // The services that count as a confirmation for this.
  ServiceSet CountingFor(Kind kind) const { return counting_[static_cast<std::size_t>(kind)]; }

 private:
  friend class RulesReader;
  struct Confirming {
    std::string field, value;
    ServiceSet service;
  };

  std::vector<std::string> groups_;
  std::unordered_map<std::string, ModeMeaning> modes_;               // in capitals
  std::vector<std::pair<std::string, ModeMeaning>> modeBeginnings_;  // the longest first
  std::vector<std::string> satellitePropagations_;
  std::unordered_map<std::string, std::string> countriesOfProvinces_;
  std::vector<std::string> serviceNames_, fieldNames_;
  ServiceSet byCard_ = 0;
  std::vector<Confirming> confirming_;
  std::array<ServiceSet, kKinds> counting_{};
};

// The files of an application directory: ours, replaced by each delivery, and the operator's own.
inline constexpr std::string_view kDeliveredRules = "Lavorati.csv",
                                  kOwnRules = "Lavorati propri.csv";

// The rules of a text, and of a second one whose rows take the place of those of the same name in
// the first. Throws std::runtime_error, with the file, the line's number and what is wrong with it,
// in Italian, for the first row that cannot be understood and the first example that does not hold.
Rules ParseRules(std::string_view delivered, std::string_view own = "");

// The same of files; there may be no own one. One that cannot be read is an error too.
Rules ReadRules(const std::filesystem::path& delivered, const std::filesystem::path& own);

}  // namespace brenvo::worked
