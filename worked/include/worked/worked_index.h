// What has been worked and confirmed, in memory: an answer without a database, for whatever asks
// many times a second.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

#include "worked/rules.h"

namespace brenvo::worked {

// What is looked at of a contact, as it is stored. The texts are somebody else's.
struct Contact {
  std::string_view Call, Prefisso, Country, Continente, Provincia, Locator, Banda, Modo,
      Propagazione, Note;
  double ZonaCQ = 0, ZonaITU = 0;  // whole numbers; 0 is none
  ServiceSet confirmedBy = 0;
};

// What is asked about. A text that is empty, a zone 0, or a locator too short is never worked.
// Texts compare as the database compares: the case of ASCII letters and trailing blanks aside.
class Subject {
 public:
  static Subject Call(std::string_view call) { return {Kind::kCall, call}; }
  static Subject Prefisso(std::string_view prefix) { return {Kind::kPrefisso, prefix}; }
  static Subject Country(std::string_view code) { return {Kind::kCountry, code}; }
  static Subject ZonaCQ(double zone) { return {Kind::kZonaCQ, {}, {}, zone}; }
  static Subject ZonaITU(double zone) { return {Kind::kZonaITU, {}, {}, zone}; }
  static Subject Continente(std::string_view code) { return {Kind::kContinente, code}; }
  static Subject Provincia(std::string_view country, std::string_view code) {
    return {Kind::kProvincia, code, country};
  }
  // Of a whole locator too.
  static Subject Square(std::string_view locator) { return {Kind::kSquare, locator}; }
  static Subject Square6(std::string_view locator) { return {Kind::kSquare6, locator}; }

 private:
  friend class WorkedIndex;
  Subject(Kind kindOf, std::string_view textOf, std::string_view countryOf = {}, double zoneOf = 0)
      : kind(kindOf), text(textOf), country(countryOf), zone(zoneOf) {}
  Kind kind;
  std::string_view text, country;
  double zone;
};

// Which contacts count. Without a value: all.
struct Filter {
  std::optional<std::string_view> band = std::nullopt;  // as it is stored: " 20 m"
  std::optional<Group> group = std::nullopt;
  std::optional<bool> satellite = std::nullopt;
  ServiceSet services = kAllServices;  // of those that the rules let count
};

enum class State { kNew, kWorked, kConfirmed };

struct Answer {
  State state = State::kNew;
  ServiceSet confirmedBy = 0;
  std::int64_t contacts = 0;
  friend bool operator==(const Answer&, const Answer&) = default;
};

// Exact: each contact that is added can be taken away again. Only one thread at a time may use it.
class WorkedIndex {
  // Under what a contact is counted, and as what.
  struct Keys {
    std::array<std::uint64_t, kKinds> keys;
    std::size_t count = 0;
    std::uint32_t slot = 0;
    bool whole = false;
  };

 public:
  // Room for so many subjects is made at once.
  explicit WorkedIndex(std::shared_ptr<const Rules> rules, std::int64_t subjects = 0);
  ~WorkedIndex();
  WorkedIndex(WorkedIndex&& other) noexcept;
  WorkedIndex& operator=(WorkedIndex&& other) noexcept;

  const Rules& TheRules() const { return *rules_; }

  void Add(const Contact& contact);
  // Many contacts one after the other. Each is counted when the next one comes, or when the Filler
  // goes: what memory it needs is brought near while the next one is read.
  class Filler {
   public:
    explicit Filler(WorkedIndex& index) : index_(index) {}
    ~Filler() { index_.Count(last_); }
    Filler(const Filler&) = delete;
    Filler& operator=(const Filler&) = delete;
    void Add(const Contact& contact);

   private:
    WorkedIndex& index_;
    Keys last_;
  };

  // False, and nothing is changed, when there is no such contact: whoever keeps the index has then
  // missed something.
  [[nodiscard]] bool Remove(const Contact& contact);

  Answer Ask(const Subject& subject, const Filter& filter = {}) const;
  std::int64_t Contacts() const { return contacts_; }

  // Gives back the memory that was taken for contacts to come.
  void Shrink();
  // What the index takes, in bytes.
  std::size_t Bytes() const;
  // Whether both give the same answers to every question.
  friend bool operator==(const WorkedIndex& a, const WorkedIndex& b);

 private:
  struct Tables;
  Keys KeysOf(const Contact& contact);
  std::uint32_t SlotOf(const Contact& contact);
  void Count(const Keys& keys);

  std::shared_ptr<const Rules> rules_;
  std::unique_ptr<Tables> tables_;
  std::int64_t contacts_ = 0;
};

}  // namespace brenvo::worked
