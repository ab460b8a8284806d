#include "core/contact_origin.h"

#include <fmt/format.h>

#include <map>
#include <vector>

#include "base/text.h"
#include "base/uuid.h"
#include "core/stations.h"
#include "core/transaction.h"

namespace brenvo::core {
namespace {

constexpr std::string_view kWithout = " from Log where QsoNr not in (Select QsoNr from LogOrigine)";
constexpr std::int64_t kPerTransaction = 20000;

struct Nameless {
  std::int64_t qsoNr = 0;
  base::DateTime time;
  std::string call, band, mode;
};

// The next ones behind `from`, in the order of their numbers.
std::vector<Nameless> NextNameless(engine::Database& database, std::int64_t from) {
  const auto rows = database.OpenSnapshot(fmt::format(
      "Select QsoNr,DataQso,Call,Banda,Modo{} and QsoNr>{} Order By QsoNr", kWithout, from));
  std::vector<Nameless> next;
  for (; !rows->EOF_() && std::ssize(next) < kPerTransaction; rows->MoveNext()) {
    next.push_back({rows->Field(std::size_t{0}).Integer(),
                    rows->Field(1).ReadableDate().value_or(base::DateTime()), rows->Field(2).Text(),
                    rows->Field(3).Text(), rows->Field(4).Text()});
  }
  return next;
}

// What the stations say, asked once each.
class Stations {
 public:
  explicit Stations(engine::Database& database) : database_(database) {}
  std::int64_t At(base::DateTime time) {
    const auto [at, isNew] = byDay_.try_emplace(time.DatePart());
    if (isNew) at->second = StationAt(database_, time);
    return at->second;
  }
  const std::string& CallOf(std::int64_t station) {
    const auto [at, isNew] = calls_.try_emplace(station);
    if (isNew) at->second = FindStation(database_, station).value_or(StationRow()).Call;
    return at->second;
  }

 private:
  engine::Database& database_;
  std::map<base::DateTime, std::int64_t> byDay_;
  std::map<std::int64_t, std::string> calls_;
};

}  // namespace

std::optional<ContactOrigin> OriginOf(engine::Database& database, std::int64_t qsoNr) {
  const auto row = database.OpenSnapshot("Select Uuid,Stazione from LogOrigine where QsoNr=" +
                                         std::to_string(qsoNr));
  if (row->EOF_()) return std::nullopt;
  return ContactOrigin{row->Field(std::size_t{0}).Text(), row->Field(1).Integer()};
}

std::string DerivedName(std::string_view ownCall, std::string_view call, base::DateTime time,
                        std::string_view band, std::string_view mode) {
  std::string text;
  for (const std::string_view part : {ownCall, call, band, mode}) {
    text += base::Upper(base::Trim(part)) + "\n";
  }
  return base::NameUuid(text + base::IsoText(time));
}

std::int64_t ContactsWithoutOrigin(engine::Database& database) {
  return database.OpenSnapshot(fmt::format("Select Count(*){}", kWithout))
      ->Field(std::size_t{0})
      .Integer();
}

std::int64_t AdoptContacts(engine::Database& database,
                           const std::function<void(std::int64_t done)>& tell) {
  Stations stations(database);
  std::int64_t done = 0, last = 0;
  for (;;) {
    const std::vector<Nameless> next = NextNameless(database, last);
    if (next.empty()) return done;
    Transaction transaction(database);
    const auto origins = database.OpenAppender("LogOrigine");
    for (const Nameless& each : next) {
      const std::int64_t station = stations.At(each.time);
      origins->Append(
          {each.qsoNr,
           DerivedName(stations.CallOf(station), each.call, each.time, each.band, each.mode),
           station});
      if (++done % 1000 == 0) tell(done);
    }
    transaction.Commit();
    last = next.back().qsoNr;
  }
}

}  // namespace brenvo::core
