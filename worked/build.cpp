#include "build.h"

#include <fmt/format.h>

#include <algorithm>
#include <string>
#include <utility>

#include "folding.h"

namespace brenvo::worked {
namespace {

constexpr std::string_view kLogColumns =
    "QsoNr,Call,Prefisso,Country,Continente,Provincia,Locator,Banda,Modo,Propagazione,[Zona CQ],"
    "[Zona ITU],QslRicevuta,Note";
// In the order of these.
enum LogColumn : std::size_t {
  kQsoNr,
  kCall,
  kPrefisso,
  kCountry,
  kContinente,
  kProvincia,
  kLocator,
  kBanda,
  kModo,
  kPropagazione,
  kZonaCQ,
  kZonaITU,
  kQslRicevuta,
  kNote
};

// One row in so many looks whether to go on.
constexpr unsigned kRowsBetweenLooks = 1024;

class Builder {
 public:
  Builder(engine::Reader& reader, std::shared_ptr<const Rules> rules, const std::stop_token& stop)
      : reader_(reader), rules_(std::move(rules)), stop_(stop) {}

  std::optional<Built> Run() {
    std::int64_t contacts = 0;
    const bool whole =
        Each("select count(*) from Log", [&](auto& row) { contacts = row.Integer(0); }) &&
        NoteKept() && ReadOrigins();
    if (!whole) return std::nullopt;
    Built built{WorkedIndex(rules_, contacts / 2), {}, {}, {}};
    built.kept = std::move(kept_);
    if (!ReadLog(built)) return std::nullopt;
    built.index.Shrink();
    return built;
  }

 private:
  // False when it was stopped.
  template <class See>
  bool Each(const std::string& select, const See& see) {
    return reader_.ForEach(select, [&](engine::Reader::Row& row) {
      see(row);
      return ++rows_ % kRowsBetweenLooks != 0 || !stop_.stop_requested();
    });
  }
  bool HasTable(const char* name) {
    try {
      reader_.ForEach(fmt::format("select QsoNr from {} where QsoNr=0", name),
                      [](auto&) { return false; });
      return true;
    } catch (const engine::DatabaseError& failure) {
      if (failure.Number != engine::DatabaseError::kUnknownTable) throw;
      return false;  // of a file that an earlier version made
    }
  }

  bool NoteKept() {
    std::vector<std::uint64_t> fields;
    for (const std::string& field : rules_->Fields()) fields.push_back(KeyOf(field, 0));
    if (fields.empty() || !HasTable("LogAdif")) return true;
    const bool whole = Each("select QsoNr,Campo,Valore from LogAdif", [&](auto& row) {
      const std::string_view field = row.Text(1);
      if (std::ranges::find(fields, KeyOf(field, 0)) == fields.end()) return;
      kept_.Note(row.Integer(0), rules_->ByField(field, row.Text(2)));
    });
    kept_.Settle();
    return whole;
  }

  bool ReadOrigins() {
    hasOrigins_ = HasTable("LogOrigine");
    return !hasOrigins_ || Each("select QsoNr from LogOrigine order by QsoNr",
                                [&](auto& row) { origins_.push_back(row.Integer(0)); });
  }

  bool ReadLog(Built& built) {
    const ServiceSet byCard = rules_->ByCard();
    Contact contact;
    auto origin = origins_.begin();
    WorkedIndex::Filler filler(built.index);
    const bool whole =
        Each(fmt::format("select {} from Log order by QsoNr", kLogColumns), [&](auto& row) {
          const std::int64_t number = row.Integer(kQsoNr);
          contact.Call = row.Text(kCall);
          contact.Prefisso = row.Text(kPrefisso);
          contact.Country = row.Text(kCountry);
          contact.Continente = row.Text(kContinente);
          contact.Provincia = row.Text(kProvincia);
          contact.Locator = row.Text(kLocator);
          contact.Banda = row.Text(kBanda);
          contact.Modo = row.Text(kModo);
          contact.Propagazione = row.Text(kPropagazione);
          contact.Note = row.Text(kNote);
          contact.ZonaCQ = row.Number(kZonaCQ);
          contact.ZonaITU = row.Number(kZonaITU);
          contact.confirmedBy = built.kept.Of(number);
          if (row.Bool(kQslRicevuta)) contact.confirmedBy |= byCard;
          filler.Add(contact);
          for (; origin != origins_.end() && *origin < number; ++origin) {
            built.withoutContact.push_back(*origin);
          }
          if (origin != origins_.end() && *origin == number) {
            ++origin;
          } else if (hasOrigins_) {
            built.withoutOrigin.push_back(number);
          }
        });
    built.withoutContact.insert(built.withoutContact.end(), origin, origins_.end());
    return whole;
  }

  engine::Reader& reader_;
  std::shared_ptr<const Rules> rules_;
  std::stop_token stop_;
  unsigned rows_ = 0;
  KeptServices kept_;
  bool hasOrigins_ = false;
  std::vector<std::int64_t> origins_;
};

}  // namespace

std::optional<Built> BuildIndex(engine::Reader& reader, std::shared_ptr<const Rules> rules,
                                const std::stop_token& stop) {
  return Builder(reader, std::move(rules), stop).Run();
}

ServiceSet ReadKeptServices(engine::Database& database, const Rules& rules, std::int64_t qsoNr) {
  ServiceSet services = 0;
  try {
    const auto rows = database.OpenSnapshot(
        fmt::format("select Campo,Valore from LogAdif where QsoNr={}", qsoNr));
    for (; !rows->EOF_(); rows->MoveNext()) {
      services |= rules.ByField(rows->Field(0).Text(), rows->Field(1).Text());
    }
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kUnknownTable) throw;
  }
  return services;
}

Contact ContactOf(const core::LogContact& contact, ServiceSet kept, const Rules& rules) {
  Contact seen;
  seen.Call = contact.Call;
  seen.Prefisso = contact.Prefisso;
  seen.Country = contact.Country;
  seen.Continente = contact.Continente;
  seen.Provincia = contact.Provincia;
  seen.Locator = contact.Locator;
  seen.Banda = contact.Banda;
  seen.Modo = contact.Modo;
  seen.Propagazione = contact.Propagazione;
  seen.Note = contact.Note;
  seen.ZonaCQ = contact.ZonaCQ;
  seen.ZonaITU = contact.ZonaITU;
  seen.confirmedBy = kept;
  if (contact.QslRicevuta) seen.confirmedBy |= rules.ByCard();
  return seen;
}

}  // namespace brenvo::worked
