#include "score.h"

#include "base/text.h"

namespace brenvo::contest {

bool DistinctTexts::Add(std::string_view text) {
  std::string key = base::RTrim(text);
  for (char& c : key) {
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  }
  if (!keys_.insert(std::move(key)).second) return false;
  texts_.emplace_back(text);
  return true;
}

std::string SquareOf(const ScoredContact& contact) { return base::Left(contact.Locator, 4); }

void Tally::Add(const ScoredContact& contact, const CountryOfCall& countryOf) {
  TotaleQrb += contact.Qrb;
  TotalePunti += contact.Punti;
  ++TotaleQso;
  if (!IsDuplicate(contact)) ++QsoValidi;
  if (contact.Qrb > MaxQrb) {
    MaxQrb = contact.Qrb;
    ProgrMaxQrb = contact.ProgrDato;
    CallMaxQrb = contact.Call;
    LocatorMaxQrb = contact.Locator;
  }
  Squares.Add(SquareOf(contact));
  if (const std::string country = countryOf(contact.Call); !country.empty()) {
    Countries.Add(country);
  }
  if (const auto exchange = ExchangeOf(contact)) Exchanges.Add(*exchange);
}

std::int64_t MultiplierOf(const Tally& tally, const MultiplierSwitches& switches) {
  std::size_t sum = 0;
  if (switches.Square) sum += tally.Squares.Count();
  if (switches.Country) sum += tally.Countries.Count();
  if (switches.Exch) sum += tally.Exchanges.Count();
  return sum == 0 ? 1 : static_cast<std::int64_t>(sum);
}

double ScoreOf(const Tally& tally, const MultiplierSwitches& switches) {
  return static_cast<double>(MultiplierOf(tally, switches)) * tally.TotalePunti;
}

}  // namespace brenvo::contest
