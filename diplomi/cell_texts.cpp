#include "cell_texts.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/text.h"
#include "conferme/services.h"
#include "core/rows_beside.h"

namespace brenvo::diplomi {
namespace {

// What is kept of one contact: the fields of log files, and its own two boxes.
struct Kept {
  std::map<std::string, std::string> fields;
  bool toSend = false, sent = false;
};

Kept KeptOf(core::Session& session, std::int64_t key) {
  Kept kept;
  const std::int64_t keys[] = {key};
  core::SeeRowsBeside(session.Db, "LogAdif", "Campo,Valore", keys,
                      [&](std::size_t, engine::Recordset& row) {
                        kept.fields[base::UpperAscii(base::Trim(row.Field(1).Text()))] =
                            base::Trim(row.Field(2).Text());
                      });
  core::SeeRowsBeside(session.Db, "Log", "QslDaInviare,QslInviata", keys,
                      [&](std::size_t, engine::Recordset& row) {
                        kept.toSend = row.Field(1).ReadableBool().value_or(false);
                        kept.sent = row.Field(2).ReadableBool().value_or(false);
                      });
  return kept;
}

// "20010203" as the station writes days; the text itself where it is none.
std::string DayText(const std::string& text) {
  if (text.size() != 8) return text;
  const auto day =
      base::ParseIso(text.substr(0, 4) + "-" + text.substr(4, 2) + "-" + text.substr(6, 2));
  return day ? base::DateText(*day) : text;
}

// Empty where no day was told.
std::string WhenText(const engine::Value& value) {
  const auto when = value.IsNull() ? std::nullopt : value.ReadableDate();
  return when ? base::DateTimeText(*when) : std::string();
}

std::string FieldOf(const Kept& kept, std::string_view field) {
  const auto at = kept.fields.find(std::string(field));
  return field.empty() || at == kept.fields.end() ? std::string() : at->second;
}

// How the service could confirm it.
std::string WayOf(const Counting& counting, const Kept& kept) {
  const auto service = conferme::ServiceNamed(counting.service);
  std::string text;
  if (!service) {
    if (!base::SameText(counting.service, "Cartolina")) return counting.service;
    return kept.sent     ? "la cartolina è andata, si aspetta la risposta"
           : kept.toSend ? "la cartolina è da inviare"
                         : "si può chiedere la cartolina";
  }
  const conferme::ServiceFacts& facts = conferme::FactsOf(*service);
  const std::string received = FieldOf(kept, facts.received);
  const bool confirmed = base::SameText(received, facts.value) || base::SameText(received, "V");
  if (confirmed && counting.ofRecord) {
    text = fmt::format("{} ha confermato, ma il suo record non dice questo", facts.name);
  } else if (confirmed && !counting.field.empty()) {
    text = fmt::format("{} ha confermato, ma vale solo con {} = {}", facts.name, counting.field,
                       counting.value);
  } else if (base::SameText(FieldOf(kept, facts.sent), "Y")) {
    const std::string day = FieldOf(kept, facts.sentDay);
    text = fmt::format("a {} è inviato{}, si aspetta il corrispondente", facts.name,
                       day.empty() ? "" : " il " + DayText(day));
  } else {
    text = fmt::format("si può inviare a {}", facts.name);
  }
  return text;
}

}  // namespace

std::vector<ShownContact> ShownContacts(core::Session& session,
                                        const std::vector<std::int64_t>& keys) {
  std::vector<ShownContact> shown(keys.size());
  std::vector<std::int64_t> stored;
  std::vector<std::size_t> places;
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i] > 0) {
      // Each stands there once: of two alike the second is filled in below.
      if (std::ranges::find(stored, keys[i]) == stored.end()) {
        stored.push_back(keys[i]);
        places.push_back(i);
      }
      continue;
    }
    const auto row = session.Db.OpenSnapshot(
        fmt::format("select Call,Quando,Banda,Modo from ConfermeRecord where Numero={}", -keys[i]));
    if (row->EOF_()) continue;
    shown[i] = {true, base::Trim(row->Field(std::size_t{0}).Text()), WhenText(row->Field(1)),
                base::Trim(row->Field(2).Text()), base::Trim(row->Field(3).Text())};
  }
  core::SeeRowsBeside(session.Db, "Log", "Call,DataQso,Banda,Modo", stored,
                      [&](std::size_t place, engine::Recordset& row) {
                        shown[places[place]] = {
                            true, base::Trim(row.Field(1).Text()), WhenText(row.Field(2)),
                            base::Trim(row.Field(3).Text()), base::Trim(row.Field(4).Text())};
                      });
  for (std::size_t i = 0; i < keys.size(); ++i) {
    if (keys[i] <= 0 || shown[i].exists) continue;
    const auto first = std::ranges::find(keys, keys[i]);
    shown[i] = shown[static_cast<std::size_t>(first - keys.begin())];
  }
  return shown;
}

std::string TextOf(const ShownContact& contact) {
  std::string text = contact.call;
  for (const std::string* each : {&contact.when, &contact.band, &contact.mode}) {
    if (!each->empty()) text += " " + *each;
  }
  return text;
}

std::string TextOf(const Award& award, State state, int by) {
  std::string text(NameOf(state));
  if (by >= 0 && by < std::ssize(award.counting)) {
    const std::string& service = award.counting[static_cast<std::size_t>(by)].service;
    // The service has confirmed it; the credit is the sponsor's.
    text +=
        state == State::kCredited ? fmt::format(" (confermato da {})", service) : " da " + service;
  }
  return text;
}

std::string ExplainCell(core::Session& session, const Award& award, const Unit& unit,
                        std::string_view band, const Cell& cell) {
  std::string text = unit.code;
  if (!unit.name.empty()) text += " " + unit.name;
  if (unit.former) text += " (soppresso)";
  text += band.empty() ? ": " : fmt::format(" in {}: ", band);
  if (cell.state == State::kNone) return text + "da lavorare";
  const ShownContact contact = ShownContacts(session, {cell.key}).front();
  text += TextOf(award, cell.state, cell.by);
  if (cell.key < 0) {
    return text + fmt::format(", senza un Qso nel log ({})", TextOf(contact));
  }
  text += fmt::format(" con {} (Qso {})", TextOf(contact), cell.key);
  if (cell.state == State::kCredited) return text;
  if (cell.state == State::kConfirmed) {
    const bool credits = !award.creditAll.empty() || !award.creditBand.empty();
    return credits ? text + "; va nella lista per la domanda" : text;
  }
  const Kept kept = KeptOf(session, cell.key);
  std::string ways;
  for (const Counting& each : award.counting) {
    if (!ways.empty()) ways += "; ";
    ways += WayOf(each, kept);
  }
  return text + ". Per alzarla: " + ways;
}

}  // namespace brenvo::diplomi
