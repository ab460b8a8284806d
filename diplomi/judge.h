// What one contact brings to an award.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "diplomi/count.h"

namespace brenvo::diplomi {

// The award's rules, translated to the numbers of one image.
class Judge {
 public:
  Judge(const Award& award, const LogImage& log, const World& world,
        std::span<const OwnPlace> places, const worked::Rules& rules, const Choice& choice);

  struct Brought {
    std::size_t unit = 0;
    std::size_t column = 0;  // 0: all bands
    State state = State::kNone;
    std::int8_t by = -1;
  };
  // Calls `see` for each cell that it fills, with its highest state there.
  template <class See>
  void Of(const ImageRow& row, const See& see) {
    brought_.clear();
    if (!Counts(row)) return;
    Bring(row);
    for (const Brought& each : brought_) see(each);
  }

  // Grows while contacts are seen, where units are what was worked.
  const std::vector<Unit>& Units() const { return units_; }
  const std::vector<std::string>& Bands() const { return columns_; }
  const std::vector<std::int64_t>& Stations() const { return together_; }
  const LeftOut& Left() const { return left_; }

 private:
  struct Credit {
    bool all = false, band = false, mode = false;
  };
  using UnitList = std::vector<std::size_t>;

  void FindBands(const World& world);
  void FindUnits(const World& world);
  void FindCountries(const World& world, bool european);
  void FindStations(std::span<const OwnPlace> places, const Choice& choice);
  void FindServices(const worked::Rules& rules);

  bool Counts(const ImageRow& row);
  void Bring(const ImageRow& row);
  void Add(const UnitList& units, const ImageRow& row, State all, State onBand, std::int8_t by);
  // Of what the log says of it.
  void UnitsOf(const ImageRow& row, UnitList& units);
  // Of what the record of the service tells.
  void UnitsOfRecord(const ImageRow& row, std::size_t service, UnitList& units);
  void AddUnits(std::string_view text, UnitList& units);
  void AddReferences(std::uint32_t text, UnitList& units);
  Credit CreditOf(const ImageRow& row);
  bool Keeps(const ImageRow& row, const Counting& counting, std::uint16_t field) const;
  std::size_t NewUnit(std::string code, std::string name, bool former);
  std::string Renamed(std::string_view code) const;

  const Award& award_;
  const LogImage& log_;
  std::vector<Unit> units_;
  std::unordered_map<std::string, std::size_t> byCode_;
  std::vector<std::string> columns_;
  std::vector<Brought> brought_;
  LeftOut left_;

  // By the image's numbers; -1 for none.
  std::vector<int> columnOfBand_, unitOfCountry_, unitOfArea_, unitOfContinent_, unitOfProvince_,
      unitOfPrefix_, unitOfSquare_;
  std::vector<entities::Span> daysOfCountry_;
  std::vector<std::uint32_t> countryOfArea_;  // the number of the country of which it is a part
  std::vector<bool> provinceCountry_, propagationOut_, suffixOut_, stationIn_;
  bool anyStation_ = true, anyCredit_ = true;
  std::vector<std::int64_t> together_;
  std::optional<worked::Group> group_;
  bool noGroup_ = false;  // the mode that is chosen is none
  std::int64_t from_ = 0, to_ = 0;

  struct Service {
    worked::ServiceSet bit = 0;
    std::size_t number = 0;
    std::optional<std::uint16_t> field;
  };
  std::vector<Service> services_;  // of award_.counting
  worked::ServiceSet counting_ = 0;
  std::optional<std::uint16_t> creditField_, squaresField_;
  std::vector<std::uint16_t> referenceFields_;
  std::unordered_map<std::uint32_t, Credit> credits_;
  std::unordered_map<std::uint32_t, UnitList> references_;
  bool onlyListed_ = false;
  UnitList logged_, recorded_;
};

inline constexpr std::string_view kCreditField = "CREDIT_GRANTED", kSquaresField = "VUCC_GRIDS",
                                  kNoteField = "Note";

}  // namespace brenvo::diplomi
