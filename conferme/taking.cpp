#include "conferme/taking.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <charconv>
#include <set>
#include <sstream>
#include <tuple>

#include "adif/station_tables.h"
#include "base/number.h"
#include "base/text.h"
#include "contact_state.h"
#include "core/history.h"
#include "core/own_values.h"
#include "core/preferences.h"
#include "core/quoted.h"
#include "core/transaction.h"
#include "credits.h"

namespace brenvo::conferme {
namespace {

constexpr std::size_t kTogether = 1000;  // contacts that are read at once
constexpr std::string_view kDoubtful = "D", kNobody = "N", kIgnored = "I", kCredit = "C";
constexpr std::string_view kAccepted = "Y";

bool IsConfirmed(const ContactState& state, const ServiceFacts& facts) {
  const auto at = state.fields.find(std::string(facts.received));
  if (at == state.fields.end()) return false;
  return base::SameText(at->second, facts.value) ||
         (facts.value == "Y" && base::SameText(at->second, "V"));
}

class Taker {
 public:
  Taker(core::Session& session, std::ostream& told)
      : session_(session), told_(told), tables_(session), writer_(session) {
    for (const ServiceFacts& facts : Services()) {
      givesBox_[static_cast<std::size_t>(facts.service)] = GivesBox(session, facts.service);
    }
  }

  // True when the contact learns something.
  bool Take(std::int64_t key, ContactState& state, const ReportRecord& record, bool byHand) {
    const ServiceFacts& facts = FactsOf(record.service);
    bool changed = false;
    const auto set = [&](std::string_view field, std::string_view value) {
      changed = writer_.SetField(key, state, field, value) || changed;
    };
    const auto setMissing = [&](std::string_view field, std::string_view value) {
      if (!field.empty() && !state.fields.contains(std::string(field))) set(field, value);
    };
    if (!record.credits.empty()) {
      const auto at = state.fields.find(std::string(kCreditField));
      const std::string before = at == state.fields.end() ? std::string() : at->second;
      const std::string merged = MergeCredits(before, record.credits);
      if (merged != before) set(kCreditField, merged);
    }
    if (record.credit) return changed;
    if (record.service == Service::kLotw) {
      set(facts.sent, "Y");
      setMissing(kAcceptedField, kAccepted);
    }
    if (!record.confirmed) return changed;
    if (!IsConfirmed(state, facts)) set(facts.received, facts.value);
    setMissing(facts.day, DayText(record.day.value_or(session_.Now())));
    if (record.authentic) setMissing("EQSL_AG", "Y");
    core::Confirmation confirmation{std::string(facts.name),
                                    record.id,
                                    record.locator,
                                    record.state,
                                    record.iota,
                                    record.partnerMode,
                                    record.zoneCq,
                                    record.zoneItu,
                                    record.inferred,
                                    byHand,
                                    false};
    if (const auto present = state.told.find(confirmation.service); present != state.told.end()) {
      confirmation.gaveBox = present->second.gaveBox;
      confirmation.byHand = confirmation.byHand || present->second.byHand;
    }
    if (!state.box && givesBox_[static_cast<std::size_t>(record.service)]) {
      confirmation.gaveBox = state.box = true;
      writer_.SetColumn(key, "QslRicevuta", true);
    }
    changed = writer_.Store(key, state, confirmation) || changed;
    if (!record.iota.empty()) setMissing("IOTA", record.iota);
    return FillColumns(key, state, record) || changed;
  }

  // What has been taken since goes into the tables.
  void Write() { writer_.Write(); }

  std::int64_t filled = 0, conflicts = 0;

 private:
  std::string Named(std::int64_t key, const ContactState& state) const {
    return fmt::format("Qso {} {} {} {}", key, state.call, base::DateTimeText(state.when),
                       base::Trim(state.band));
  }
  void SayConflict(std::int64_t key, const ContactState& state, const ReportRecord& record,
                   std::string_view what, std::string_view here, std::string_view there) {
    ++conflicts;
    told_ << fmt::format("In contrasto, {}: {} {}, {} dice {}\r\n", Named(key, state), what, here,
                         FactsOf(record.service).name, there);
  }

  bool FillColumns(std::int64_t key, ContactState& state, const ReportRecord& record) {
    std::vector<std::string> said;
    const auto fill = [&](std::string_view column, const engine::Value& value) {
      writer_.SetColumn(key, column, value);
    };
    const std::string place(FirstPlace(record.locator));
    if (!place.empty() && state.locator.empty()) {
      state.locator = place;
      fill("Locator", place);
      said.push_back("Locator " + place);
      if (const double distance = tables_.Distance(place); state.distance == 0 && distance > 0) {
        state.distance = distance;
        fill("Qrb", distance);
      }
    } else if (!place.empty() && !AgreeOnPlace(state.locator, place)) {
      SayConflict(key, state, record, "Locator", state.locator, place);
    }
    struct Zone {
      std::string_view column, inferred;
      double& here;
      int there;
    };
    for (const Zone& zone : {Zone{"Zona CQ", "CQ", state.zoneCq, record.zoneCq},
                             Zone{"Zona ITU", "ITU", state.zoneItu, record.zoneItu}}) {
      if (zone.there == 0) continue;
      const bool inferred = IsInferred(record.inferred, zone.inferred);
      if (zone.here == 0) {
        zone.here = zone.there;
        fill(zone.column, zone.there);
        said.push_back(fmt::format("{} {}{}", zone.column, zone.there,
                                   inferred ? " (dedotta dal country)" : ""));
      } else if (zone.here != zone.there && !inferred) {
        SayConflict(key, state, record, zone.column, base::PlainNumber(zone.here),
                    std::to_string(zone.there));
      }
    }
    if (!record.state.empty() && state.province.empty() &&
        tables_.IsProvince(state.country, record.state)) {
      state.province = record.state;
      fill("Provincia", record.state);
      said.push_back("Provincia " + record.state);
    }
    if (said.empty()) return false;
    filled += std::ssize(said);
    told_ << fmt::format("Riempito, {}: {} da {}\r\n", Named(key, state), fmt::join(said, ", "),
                         FactsOf(record.service).name);
    return true;
  }

  core::Session& session_;
  std::ostream& told_;
  adif::StationTables tables_;
  ContactWriter writer_;
  bool givesBox_[8] = {};
};

// The records that have no contact, as the table holds them.
class OpenTable {
 public:
  explicit OpenTable(core::Session& session) : session_(session) {
    const auto rows = session.Db.OpenSnapshot(
        "select Numero,Servizio,Record,Stato,Motivo,Candidati from "
        "ConfermeRecord");
    for (; !rows->EOF_(); rows->MoveNext()) {
      known_[Settled::KeyOf(base::Trim(rows->Field(1).Text()), base::Trim(rows->Field(2).Text()))] =
          {rows->Field(std::size_t{0}).Integer(), rows->Field(3).Text(), rows->Field(4).Text(),
           rows->Field(5).Text()};
    }
  }
  // True when it was not there, or was there otherwise.
  bool Keep(const ReportRecord& record, std::string_view state, const Match& match) {
    const std::string candidates = fmt::format("{}", fmt::join(match.candidates, " "));
    const auto at = known_.find(KeyOf(record));
    if (at != known_.end()) {
      const Known& known = at->second;
      if (known.state == state && known.why == match.why && known.candidates == candidates) {
        return false;
      }
      Drop(at->second.number);
    }
    if (rows_ == nullptr) rows_ = session_.Db.OpenTable("ConfermeRecord");
    rows_->AddNew();
    rows_->Set("Servizio", FactsOf(record.service).name);
    rows_->Set("Record", record.id);
    rows_->Set("Stato", state);
    rows_->Set("Motivo", match.why);
    rows_->Set("Candidati", candidates);
    rows_->Set("Call", record.call);
    if (record.hasDay) rows_->Set("Quando", record.when);
    rows_->Set("Banda", record.band);
    rows_->Set("Modo", record.submode.empty() ? record.mode : record.submode);
    rows_->Set("Gruppo", record.modeGroup);
    if (record.dxcc != 0) rows_->Set("Dxcc", record.dxcc);
    rows_->Set("Crediti", record.credits);
    rows_->Set("Contenuto", TextOfRecord(record));
    rows_->Update();
    return true;
  }
  bool Forget(const ReportRecord& record) {
    const auto at = known_.find(KeyOf(record));
    if (at == known_.end()) return false;
    Drop(at->second.number);
    return true;
  }

 private:
  struct Known {
    std::int64_t number;
    std::string state, why, candidates;
  };
  static std::string KeyOf(const ReportRecord& record) {
    return Settled::KeyOf(FactsOf(record.service).name, record.id);
  }
  void Drop(std::int64_t number) {
    session_.Db.Execute(fmt::format("delete * from ConfermeRecord where Numero={}", number));
  }
  core::Session& session_;
  std::map<std::string, Known> known_;
  std::unique_ptr<engine::Table> rows_;
};

std::string Told(const ReportRecord& record) {
  std::string told = record.call;
  for (const std::string& each :
       {record.hasDay ? base::DateTimeText(record.when) : std::string("senza data"), record.band,
        record.submode.empty() ? record.mode : record.submode}) {
    if (!each.empty()) told += " " + each;
  }
  return told;
}

void TakeMatched(core::Session& session, const Report& report, const MatchedReport& matched,
                 std::ostream& told, TakenCounts& counts) {
  struct Taken {
    std::int64_t key;
    std::size_t record;
  };
  std::vector<Taken> taken;
  for (std::size_t i = 0; i < matched.matches.size(); ++i) {
    const Match& match = matched.matches[i];
    if (match.outcome == Outcome::kMatched || match.outcome == Outcome::kKnown) {
      taken.push_back({match.key, i});
    }
  }
  counts.matched = std::ssize(taken);
  std::ranges::sort(taken, {}, [&](const Taken& each) {
    return std::tuple(each.key, report.records[each.record].service,
                      std::string_view(report.records[each.record].id));
  });
  Taker taker(session, told);
  for (std::size_t from = 0; from < taken.size();) {
    std::vector<std::int64_t> keys;
    std::size_t to = from;
    for (; to < taken.size(); ++to) {
      if (!keys.empty() && keys.back() == taken[to].key) continue;
      if (keys.size() == kTogether) break;
      keys.push_back(taken[to].key);
    }
    std::vector<ContactState> states = StatesOf(session, keys);
    std::size_t at = 0;
    bool changed = false;
    for (; from < to; ++from) {
      if (keys[at] != taken[from].key) {
        ++at;
        changed = false;
      }
      if (!states[at].exists) continue;
      const ReportRecord& record = report.records[taken[from].record];
      if (matched.matches[taken[from].record].otherMode) {
        told << fmt::format("Modo diverso, Qso {}: {} dice {}\r\n", keys[at],
                            FactsOf(record.service).name, Told(record));
      }
      const bool learnt = taker.Take(keys[at], states[at], record, false);
      if (learnt && !changed) ++counts.changed;
      changed = changed || learnt;
    }
    taker.Write();
  }
  counts.filled = taker.filled;
  counts.conflicts = taker.conflicts;
}

// True when a row has changed.
bool TakeOpen(core::Session& session, const Report& report, const MatchedReport& matched,
              std::ostream& told, TakenCounts& counts) {
  OpenTable open(session);
  bool changed = false;
  for (std::size_t i = 0; i < matched.matches.size(); ++i) {
    const Match& match = matched.matches[i];
    const ReportRecord& record = report.records[i];
    switch (match.outcome) {
      case Outcome::kMatched:
      case Outcome::kKnown:
        changed = open.Forget(record) || changed;
        continue;
      case Outcome::kIgnored:
        ++counts.ignored;
        continue;
      case Outcome::kDoubtful:
        ++counts.doubtful;
        told << fmt::format("Dubbio, {}: {}; Qso {}\r\n", Told(record), match.why,
                            fmt::join(match.candidates, ", "));
        changed = open.Keep(record, kDoubtful, match) || changed;
        continue;
      case Outcome::kNone:
        // That a service has a contact which is not in the log needs no answer.
        if (!record.confirmed && !record.credit) continue;
        ++(record.credit ? counts.credits : counts.unmatched);
        told << fmt::format("{}, {}\r\n", record.credit ? "Credito senza contatto" : "Non nel log",
                            Told(record));
        changed = open.Keep(record, record.credit ? kCredit : kNobody, match) || changed;
    }
  }
  return changed;
}

std::vector<std::int64_t> Numbers(std::string_view text) {
  std::vector<std::int64_t> numbers;
  const char* at = text.data();
  const char* const end = at + text.size();
  while (at != end) {
    std::int64_t number = 0;
    const auto [next, error] = std::from_chars(at, end, number);
    if (error == std::errc()) numbers.push_back(number);
    at = error == std::errc() ? next : at + 1;
  }
  return numbers;
}

}  // namespace

TakenCounts TakeReport(core::Session& session, std::string_view title, const Report& report,
                       const MatchedReport& matched, std::ostream& told, const Mark& mark) {
  TakenCounts counts;
  session.Contacts.ChangeMany(title, {core::ContactTable::kLog}, [&] {
    core::Transaction transaction(session);
    TakeMatched(session, report, matched, told, counts);
    bool further = TakeOpen(session, report, matched, told, counts);
    if (!mark.value.empty() && core::OwnValue(session.Db, mark.name) != mark.value) {
      session.Contacts.Past().KeepValue(mark.name);
      core::StoreOwnValue(session.Db, mark.name, mark.value);
      further = true;
    }
    if (counts.changed > 0 || further) transaction.Commit();
    return counts.changed > 0;
  });
  return counts;
}

std::vector<OpenRecord> OpenRecords(core::Session& session) {
  std::vector<OpenRecord> open;
  const auto rows = session.Db.OpenSnapshot(
      "select Numero,Stato,Motivo,Candidati,Contenuto from ConfermeRecord order by Numero");
  for (; !rows->EOF_(); rows->MoveNext()) {
    auto record = RecordOfText(rows->Field(4).Text());
    if (!record) continue;
    open.push_back({rows->Field(std::size_t{0}).Integer(), base::Trim(rows->Field(1).Text()),
                    rows->Field(2).Text(), Numbers(rows->Field(3).Text()), std::move(*record)});
  }
  return open;
}

bool MatchByHand(core::Session& session, std::int64_t number, std::int64_t qsoNr) {
  const auto row = session.Db.OpenSnapshot(
      fmt::format("select Contenuto from ConfermeRecord where Numero={}", number));
  if (row->EOF_()) return false;
  const auto record = RecordOfText(row->Field(std::size_t{0}).Text());
  row->Close();
  if (!record) return false;
  bool matched = false;
  session.Contacts.ChangeMany("Conferme: abbinato a mano", {core::ContactTable::kLog}, [&] {
    core::Transaction transaction(session);
    const std::int64_t keys[] = {qsoNr};
    ContactState state = std::move(StatesOf(session, keys).front());
    const bool taken =
        !record->credit && state.told.contains(std::string(FactsOf(record->service).name));
    if (!state.exists || taken) return false;
    std::ostringstream ignored;
    Taker taker(session, ignored);
    taker.Take(qsoNr, state, *record, true);
    taker.Write();
    session.Db.Execute(fmt::format("delete * from ConfermeRecord where Numero={}", number));
    transaction.Commit();
    matched = true;
    return true;
  });
  return matched;
}

void Ignore(core::Session& session, const std::vector<std::int64_t>& numbers, bool ignore) {
  core::Transaction transaction(session.Db);
  for (const std::int64_t number : numbers) {
    session.Db.Execute(
        ignore ? fmt::format("update ConfermeRecord set Stato='I' where Numero={}", number)
               : fmt::format("update ConfermeRecord set Stato='N' where Numero={} and Stato='I'",
                             number));
  }
  transaction.Commit();
}

bool GivesBox(core::Session& session, Service service) {
  switch (service) {
    case Service::kLotw:
      return session.Choices.Get<core::choice::kLotwGivesBox>();
    case Service::kEqsl:
      return session.Choices.Get<core::choice::kEqslGivesBox>();
    case Service::kQrz:
      return session.Choices.Get<core::choice::kQrzGivesBox>();
    case Service::kClubLog:
      return session.Choices.Get<core::choice::kClubLogGivesBox>();
  }
  return false;
}

std::int64_t FollowBoxChoice(core::Session& session, Service service) {
  const ServiceFacts& facts = FactsOf(service);
  const bool gives = GivesBox(session, service);
  std::vector<std::int64_t> keys;
  const auto rows = session.Db.OpenSnapshot(fmt::format(
      "select LogConferme.QsoNr from LogConferme,Log where LogConferme.QsoNr=Log.QsoNr and "
      "Servizio={} and {} order by LogConferme.QsoNr",
      core::Quoted(facts.name), gives ? "not QslRicevuta" : "Spunta"));
  for (; !rows->EOF_(); rows->MoveNext()) keys.push_back(rows->Field(std::size_t{0}).Integer());
  rows->Close();
  std::int64_t changed = 0;
  const std::string title = fmt::format("Conferme di {}: {}", facts.name,
                                        gives ? "segnano Qsl ricevuta" : "non segnano più");
  session.Contacts.ChangeMany(title, {core::ContactTable::kLog}, [&] {
    core::Transaction transaction(session);
    ContactWriter writer(session);
    for (std::size_t from = 0; from < keys.size(); from += kTogether) {
      const auto block = std::span(keys).subspan(from, std::min(kTogether, keys.size() - from));
      std::vector<ContactState> states = StatesOf(session, block);
      const std::vector<bool> ofServices = core::BoxesOfServices(session.Db, block);
      for (std::size_t i = 0; i < block.size(); ++i) {
        ContactState& state = states[i];
        const auto mine = state.told.find(std::string(facts.name));
        if (mine == state.told.end()) continue;
        core::Confirmation told = mine->second;
        told.gaveBox = gives;
        // A card that has come since keeps the box.
        bool box = gives || !ofServices[i];
        writer.Store(block[i], state, told);
        if (!gives) {
          // Another service that ticks has given it as well, from now on it alone.
          for (const ServiceFacts& other : Services()) {
            const auto also = state.told.find(std::string(other.name));
            if (box || also == state.told.end() || other.service == service ||
                !GivesBox(session, other.service)) {
              continue;
            }
            core::Confirmation given = also->second;
            given.gaveBox = box = true;
            writer.Store(block[i], state, given);
          }
        }
        if (box != state.box) writer.SetColumn(block[i], "QslRicevuta", box);
        ++changed;
      }
      writer.Write();
    }
    transaction.Commit();
    return changed > 0;
  });
  return changed;
}

}  // namespace brenvo::conferme
