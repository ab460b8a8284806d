#include "earlier_contacts.h"

#include <fmt/format.h>

#include <algorithm>
#include <unordered_map>

#include "base/number.h"
#include "base/text.h"
#include "core/call_forms.h"
#include "core/quoted.h"

namespace brenvo::log {
namespace {

// A contact is looked at when its base call is the one; the pattern lets through a little more.
std::string SelectOf(std::string_view call) {
  return fmt::format(
      "select QsoNr,DataQso,Call,Banda,Modo,QrkDato,QrkRicevuto,Qra,Qth,Locator,Country,"
      "QslRicevuta from "
      "Log where Call like {} order by DataQso desc,QsoNr desc",
      core::Quoted(fmt::format("*{}*", call)));
}

// Metres; 0 for a name that is no wave length.
double WaveOf(std::string_view banda) {
  const std::string name = base::UpperAscii(base::Trim(banda));
  const double length = base::Val(name);
  if (name.ends_with("MM")) return length / 1000;
  if (name.ends_with("CM")) return length / 100;
  return name.ends_with("M") ? length : 0;
}

void AddKeptServices(engine::Reader& reader, const worked::Rules& rules,
                     std::vector<EarlierContact>& contacts) {
  const worked::ServiceSet counting = rules.CountingFor(worked::Kind::kCall);
  for (EarlierContact& contact : contacts) {
    if (contact.confirmed) continue;
    reader.ForEach(fmt::format("select Campo,Valore from LogAdif where QsoNr={}", contact.qsoNr),
                   [&](engine::Reader::Row& row) {
                     const std::string field(row.Text(0));
                     contact.confirmed = (rules.ByField(field, row.Text(1)) & counting) != 0;
                     return !contact.confirmed;
                   });
  }
}

}  // namespace

std::vector<EarlierContact> ReadEarlierContacts(engine::Reader& reader, std::string_view call,
                                                const worked::Rules& rules) {
  std::vector<EarlierContact> contacts;
  if (call.empty()) return contacts;
  const bool cardCounts = (rules.ByCard() & rules.CountingFor(worked::Kind::kCall)) != 0;
  reader.ForEach(SelectOf(call), [&](engine::Reader::Row& row) {
    EarlierContact contact;
    contact.call = base::Trim(row.Text(2));
    if (core::BaseCall(contact.call) != call) return true;
    contact.qsoNr = row.Integer(0);
    contact.when = row.Date(1);
    std::size_t column = 3;
    for (std::string EarlierContact::*each :
         {&EarlierContact::banda, &EarlierContact::modo, &EarlierContact::qrkDato,
          &EarlierContact::qrkRicevuto, &EarlierContact::qra, &EarlierContact::qth,
          &EarlierContact::locator, &EarlierContact::country}) {
      contact.*each = base::Trim(row.Text(column++));
    }
    contact.confirmed = cardCounts && row.Bool(column);
    contacts.push_back(std::move(contact));
    return contacts.size() < kMostEarlier;
  });
  AddKeptServices(reader, rules, contacts);
  return contacts;
}

std::vector<BandRow> BandsOf(const std::vector<EarlierContact>& contacts,
                             const worked::Rules& rules) {
  std::vector<BandRow> bands;
  for (const EarlierContact& contact : contacts) {
    if (contact.banda.empty()) continue;
    auto row = std::ranges::find(bands, contact.banda, &BandRow::banda);
    if (row == bands.end()) {
      row = bands.insert(bands.end(),
                         {contact.banda, std::vector(rules.Groups().size(), Worked::kNo)});
    }
    Worked& square = row->byGroup[rules.MeaningOf(contact.modo).group];
    square = std::max(square, contact.confirmed ? Worked::kConfirmed : Worked::kWorked);
  }
  std::ranges::sort(bands, [](const BandRow& a, const BandRow& b) {
    const double left = WaveOf(a.banda), right = WaveOf(b.banda);
    return left != right ? left > right : a.banda < b.banda;
  });
  return bands;
}

std::string TextsOf(const std::vector<EarlierContact>& contacts, std::string EarlierContact::*of) {
  std::vector<std::string_view> met;
  std::string texts;
  for (const EarlierContact& contact : contacts) {
    const std::string& text = contact.*of;
    if (text.empty() || std::ranges::find(met, text) != met.end()) continue;
    met.push_back(text);
    texts += (texts.empty() ? "" : ", ") + text;
  }
  return texts;
}

std::string LocatorsOf(const std::vector<EarlierContact>& contacts) {
  struct Given {
    std::string_view locator;
    std::optional<base::DateTime> first, last;
  };
  std::vector<Given> all;
  for (const EarlierContact& contact : contacts) {
    if (contact.locator.empty()) continue;
    auto at = std::ranges::find(all, contact.locator, &Given::locator);
    if (at == all.end()) at = all.insert(all.end(), {contact.locator, {}, {}});
    if (!contact.when) continue;
    at->first = contact.when;
    if (!at->last) at->last = contact.when;
  }
  std::string texts;
  for (const auto& [locator, first, last] : all) {
    if (!texts.empty()) texts += ", ";
    texts += locator;
    if (!first) continue;
    const std::string from = base::DateText(*first), to = base::DateText(*last);
    texts += from == to ? fmt::format(" ({})", from) : fmt::format(" ({} - {})", from, to);
  }
  return texts;
}

}  // namespace brenvo::log
