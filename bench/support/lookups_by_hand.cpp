#include "bench/support/lookups_by_hand.h"

#include <fmt/format.h>

#include <array>
#include <utility>
#include <vector>

namespace brenvo::bench {

LookupsByHand::LookupsByHand(sqlite3* file, std::string band, std::string qsoNr)
    : file_(file),
      band_(std::move(band)),
      qsoNr_(std::move(qsoNr)),
      callStatus_(StatusOf("\"Call\"")),
      squareStatus_(StatusOf("substr(\"Locator\", 1, 4)")),
      countryStatus_(StatusOf("\"Country\"")),
      provinces_(file,
                 "SELECT substr(\"Provincia\" || '     ', 1, 5) || \"Descrizione\" FROM "
                 "\"Provincie\" WHERE rtrim(\"Country\") COLLATE NOCASE = ? ORDER BY rowid"),
      known_(file,
             "SELECT \"Qra\",\"Qth\",\"Locator\",\"Qrb\" FROM \"Log\" WHERE rtrim(\"Call\") "
             "COLLATE NOCASE = ? ORDER BY rowid LIMIT 1"),
      prefix_(file,
              "SELECT \"Prefisso\",\"Country\",\"Zona CQ\",\"Zona ITU\",\"Continente\" FROM "
              "\"Prefissi\" WHERE rtrim(\"Prefisso\") COLLATE NOCASE = ? ORDER BY \"Zona CQ\" "
              "LIMIT 1"),
      country_(file,
               "SELECT \"Country\",\"Descrizione\" FROM \"Country\" WHERE rtrim(\"Country\") "
               "COLLATE NOCASE = ?"),
      province_(file,
                "SELECT \"Provincia\",\"Descrizione\" FROM \"Provincie\" WHERE rtrim(\"Country\") "
                "COLLATE NOCASE = ? AND rtrim(\"Provincia\") COLLATE NOCASE = ?") {}

LookupsByHand::Pair LookupsByHand::StatusOf(std::string_view key) const {
  const auto sql = [&](std::string_view more) {
    return fmt::format(
        "SELECT \"Call\" FROM \"Log\" WHERE rtrim({}) COLLATE NOCASE = ?1 {} AND rtrim(\"Banda\") "
        "COLLATE NOCASE = ?2 AND \"QsoNr\" <> CAST(?3 AS INTEGER)",
        key, more);
  };
  return {Hand(file_, sql("AND \"QslRicevuta\" = -1")), Hand(file_, sql(""))};
}

std::string LookupsByHand::Status(Pair& pair, std::string_view key, std::string_view subject) {
  for (const auto& [hand, word] : {std::pair{&pair.confirmed, "Conf"}, {&pair.worked, "Worked"}}) {
    if (!hand->Finds({key, band_, qsoNr_})) continue;
    hand->Done();
    return fmt::format("{} {}", subject, word);
  }
  return fmt::format("New {}", subject);
}

std::string LookupsByHand::Country(std::string_view code) {
  std::vector<std::string> provinces;
  provinces_.Ask({code});
  while (provinces_.Step()) provinces.push_back(provinces_.Cell(0));
  provinces_.Done();
  return Status(countryStatus_, code, "Country");
}

std::string LookupsByHand::CallLeft(std::string_view call, std::string_view prefix,
                                    bool countryShown) {
  if (known_.Finds({call})) {
    const std::array<std::string, 4> row = {known_.Cell(0), known_.Cell(1), known_.Cell(2),
                                            known_.Cell(3)};
    known_.Done();
    if (row[2].size() == 6) Square(row[2]);
  }
  if (countryShown) Country("");
  std::string code;
  for (int resolvedThenRead = 0; resolvedThenRead < 2; ++resolvedThenRead) {
    if (!prefix_.Finds({prefix})) return "";
    code = prefix_.Cell(1);
    prefix_.Done();
  }
  if (country_.Finds({code})) {
    const std::string shown = country_.Cell(0) + country_.Cell(1);
    country_.Done();
  }
  return Country(code);
}

void LookupsByHand::Shown(std::string_view call, std::string_view country,
                          std::string_view province, std::string_view locator) {
  if (country_.Finds({country})) country_.Done();
  if (province_.Finds({country, province})) province_.Done();
  Call(call);
  Country(country);
  if (locator.size() == 6) Square(locator);
}

}  // namespace brenvo::bench
