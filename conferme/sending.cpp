#include "conferme/sending.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <span>
#include <stdexcept>
#include <utility>

#include "adif/export_keys.h"
#include "base/text.h"
#include "contact_state.h"
#include "core/history.h"
#include "core/quoted.h"
#include "core/rows_beside.h"
#include "core/stations.h"
#include "core/transaction.h"
#include "platform/device_error.h"

namespace brenvo::conferme {
namespace {

constexpr std::string_view kProgram = "tqsl", kPackage = "trustedqsl";
constexpr std::string_view kFile = "\\LoTW.adi";
constexpr int kLimit = 10 * 60 * 1000;  // LoTW takes its time
constexpr std::size_t kTogether = 1000;

struct EndFacts {
  int status;
  bool sent;
  std::string_view told;
};
constexpr EndFacts kEnds[] = {
    {0, true, "firmati e inviati"},
    {1, false, "annullato"},
    {2, false, "LoTW li ha rifiutati"},
    {3, false, "LoTW ha risposto altro da quello che tqsl aspettava"},
    {4, false, "errore di tqsl"},
    {5, false, "errore della libreria di tqsl"},
    {6, false, "tqsl non apre il file"},
    {7, false, "tqsl non scrive il file"},
    {8, true, "LoTW li aveva già, o sono fuori dalle date del certificato"},
    {9, true, "inviati; alcuni LoTW li aveva già, o sono fuori dalle date del certificato"},
    {10, false, "tqsl non capisce i suoi argomenti"},
    {11, false, "LoTW non si raggiunge"},
};

// The last line that tqsl has written, "Final Status: ...", on one line of a screen.
std::string LastWords(std::string_view output) {
  constexpr std::string_view kStatus = "Final Status: ";
  constexpr std::size_t kLongest = 120;
  const std::size_t at = output.rfind(kStatus);
  if (at == output.npos) return {};
  std::string_view words = output.substr(at + kStatus.size());
  words = words.substr(0, words.find_first_of("\r\n"));
  std::string line = base::Left(base::ValidUtf8(words), kLongest);
  std::ranges::replace_if(
      line, [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
  return base::Trim(line);
}

constexpr std::string_view kSeen = "DataQso,Call,Banda,Modo,Propagazione";

// Of what a service looks at when it gives a contact its partner: another imprint is another
// contact to it.
std::string ImprintOf(engine::Recordset& row, std::size_t first) {
  std::uint64_t hash = 14695981039346656037U;
  const auto add = [&](std::string_view text) {
    for (const char c : text) hash = (hash ^ static_cast<unsigned char>(c)) * 1099511628211U;
    hash = (hash ^ 0xFF) * 1099511628211U;
  };
  constexpr std::size_t kColumns = 5;
  for (std::size_t i = 0; i < kColumns; ++i) {
    add(base::UpperAscii(base::Trim(row.Field(first + i).Text())));
  }
  return fmt::format("{:016x}", hash);
}

struct SentBefore {
  std::vector<std::int64_t> changed;
  std::map<std::int64_t, std::string> refused;  // as they stand, with the service's words
};
SentBefore LookAtSent(core::Session& session, Service service) {
  SentBefore before;
  const ServiceFacts& facts = FactsOf(service);
  std::vector<std::int64_t> others;  // than they were when they were sent
  const auto rows = session.Db.OpenSnapshot(
      fmt::format("select LogInviati.QsoNr,Impronta,Esito,{} from LogInviati,Log where "
                  "LogInviati.QsoNr=Log.QsoNr and Servizio={} order by LogInviati.QsoNr",
                  kSeen, core::Quoted(facts.name)));
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::int64_t key = rows->Field(std::size_t{0}).Integer();
    const std::string words = base::Trim(rows->Field(2).Text());
    const bool same = base::Trim(rows->Field(1).Text()) == ImprintOf(*rows, 3);
    if (same && !words.empty()) before.refused.emplace(key, words);
    if (!same && words.empty()) others.push_back(key);
  }
  rows->Close();
  for (std::size_t from = 0; from < others.size(); from += kTogether) {
    const auto block = std::span(others).subspan(from, std::min(kTogether, others.size() - from));
    // The operator may have said since that it is not to be sent, or taken the sending back.
    core::SeeRowsBeside(session.Db, "LogAdif", "Campo,Valore", block,
                        [&](std::size_t place, engine::Recordset& row) {
                          if (base::SameText(base::Trim(row.Field(1).Text()), facts.sent) &&
                              base::SameText(base::Trim(row.Field(2).Text()), "Y")) {
                            before.changed.push_back(block[place]);
                          }
                        });
  }
  return before;
}

// That these have been sent as they stand, with what the service has said against them, if so.
// Within a transaction.
void StoreSent(core::Session& session, Service service, std::span<const std::int64_t> keys,
               const std::function<std::string(std::int64_t key)>& words) {
  const std::string_view name = FactsOf(service).name;
  session.Db.Execute(fmt::format("delete * from LogInviati where Servizio={} and QsoNr in ({})",
                                 core::Quoted(name), fmt::join(keys, ",")));
  const auto rows = session.Db.OpenAppender("LogInviati");
  core::SeeRowsBeside(session.Db, "Log", kSeen, keys,
                      [&](std::size_t place, engine::Recordset& row) {
                        rows->Append({keys[place], name, ImprintOf(row, 1), words(keys[place])});
                      });
}

}  // namespace

std::vector<std::int64_t> UnsentTo(core::Session& session, Service service) {
  std::vector<std::int64_t> keys;
  const SentBefore before = LookAtSent(session, service);
  const auto rows = session.Db.OpenSnapshot(fmt::format(
      "select QsoNr from Log where QsoNr not in (select QsoNr from LogAdif where Campo={} and "
      "Valore in ('Y','N','I')) order by QsoNr",
      core::Quoted(FactsOf(service).sent)));
  for (; !rows->EOF_(); rows->MoveNext()) {
    const std::int64_t key = rows->Field(std::size_t{0}).Integer();
    if (!before.refused.contains(key)) keys.push_back(key);
  }
  keys.insert(keys.end(), before.changed.begin(), before.changed.end());
  std::ranges::sort(keys);
  return keys;
}

std::int64_t ChangedSince(core::Session& session, Service service) {
  return std::ssize(LookAtSent(session, service).changed);
}

std::vector<Refusal> RefusalsOf(core::Session& session, Service service) {
  std::vector<Refusal> refusals;
  for (auto& [key, words] : LookAtSent(session, service).refused) refusals.push_back({key, words});
  return refusals;
}

void KeepRefusals(core::Session& session, Service service, const std::vector<Refusal>& refusals) {
  std::vector<std::int64_t> keys;
  std::map<std::int64_t, std::string> words;
  for (const Refusal& each : refusals) words[each.qsoNr] = each.words;
  for (const auto& [key, told] : words) keys.push_back(key);
  core::Transaction transaction(session.Db);
  for (std::size_t from = 0; from < keys.size(); from += kTogether) {
    const auto block = std::span(keys).subspan(from, std::min(kTogether, keys.size() - from));
    StoreSent(session, service, block, [&](std::int64_t key) { return words.at(key); });
  }
  transaction.Commit();
}

void ForgetRefusal(core::Session& session, Service service, std::int64_t qsoNr) {
  session.Db.Execute(fmt::format("delete * from LogInviati where QsoNr={} and Servizio={}", qsoNr,
                                 core::Quoted(FactsOf(service).name)));
}

std::vector<std::pair<core::StationRow, std::vector<std::int64_t>>> ByStation(
    core::Session& session, const std::vector<std::int64_t>& keys) {
  std::map<std::int64_t, std::int64_t> stationOf;
  const auto rows = session.Db.OpenSnapshot("select QsoNr,Stazione from LogOrigine");
  for (; !rows->EOF_(); rows->MoveNext()) {
    stationOf[rows->Field(std::size_t{0}).Integer()] = rows->Field(1).Integer();
  }
  rows->Close();
  const core::StationRow current = core::CurrentStationRow(session.Db);
  std::map<std::int64_t, std::vector<std::int64_t>> byStation;
  for (const std::int64_t key : keys) {
    const auto station = stationOf.find(key);
    byStation[station == stationOf.end() ? current.Stazione : station->second].push_back(key);
  }
  std::vector<std::pair<core::StationRow, std::vector<std::int64_t>>> stations;
  for (auto& [number, ofStation] : byStation) {
    stations.emplace_back(core::FindStation(session.Db, number).value_or(current),
                          std::move(ofStation));
  }
  return stations;
}

std::int64_t MarkSent(core::Session& session, Service service,
                      const std::vector<std::int64_t>& keys) {
  const ServiceFacts& facts = FactsOf(service);
  const std::string day = DayText(session.Now());
  std::int64_t changed = 0;
  session.Contacts.ChangeMany(
      fmt::format("Inviati a {}", facts.name), {core::ContactTable::kLog}, [&] {
        core::Transaction transaction(session);
        ContactWriter writer(session);
        for (std::size_t from = 0; from < keys.size(); from += kTogether) {
          const auto block = std::span(keys).subspan(from, std::min(kTogether, keys.size() - from));
          std::vector<ContactState> states = StatesOf(session, block);
          for (std::size_t i = 0; i < block.size(); ++i) {
            if (!states[i].exists) continue;
            // One that was sent before and has changed since bears the new day.
            bool told = writer.SetField(block[i], states[i], facts.sent, "Y");
            told = writer.SetField(block[i], states[i], facts.sentDay, day) || told;
            if (told) ++changed;
          }
          writer.Write();
          StoreSent(session, service, block, [](std::int64_t) { return std::string(); });
        }
        transaction.Commit();
        return changed > 0;
      });
  return changed;
}

SigningEnd MeaningOf(const platform::ProgramEnd& end) {
  SigningEnd meaning;
  const auto known = std::ranges::find(kEnds, end.status, &EndFacts::status);
  if (known != std::end(kEnds)) {
    meaning.sent = known->sent;
    meaning.told = known->told;
  } else if (end.status == platform::ProgramEnd::kStopped) {
    meaning.told = "tqsl non ha finito in tempo";
  } else {
    meaning.told = fmt::format("tqsl è finito con {}", end.status);
  }
  if (const std::string words = LastWords(end.output); !words.empty() && !meaning.sent) {
    meaning.told += fmt::format(" ({})", words);
  }
  return meaning;
}

Signing::Signing(core::Session& session) : session_(session), tqsl_(session.Machine.MakeProcess()) {
  tqsl_->OnEnd = [this](const platform::ProgramEnd& end) { Ended(end); };
}

void Signing::Send(std::function<void(const std::string& told)> tell) {
  if (IsAtWork()) return;
  tell_ = std::move(tell);
  told_.clear();
  for (auto& [station, keys] : ByStation(session_, UnsentTo(session_, Service::kLotw))) {
    runs_.push_back({base::Trim(station.Nome), std::move(keys)});
  }
  if (runs_.empty()) return tell_("Nessun Qso da inviare a LoTW");
  StartNext();
}

void Signing::StartNext() {
  const Run& run = runs_.front();
  const auto fail = [&](const std::string& why) {
    runs_.clear();
    tell_(told_ + (told_.empty() ? "" : "; ") + why);
  };
  try {
    const auto file = session_.File(kFile);
    const auto counts =
        adif::ExportKeys(session_, run.keys, file, [](std::int64_t) { return true; });
    if (!counts) return fail("Il file per LoTW non è stato scritto");
    tqsl_->Start({std::string(kProgram),
                  {"-d", "-u", "-a", "compliant", "-x", "-l", run.location, file.string()},
                  kLimit});
  } catch (const platform::DeviceError&) {
    fail(fmt::format("Manca {}: installare il pacchetto {}", kProgram, kPackage));
  } catch (const engine::DatabaseError&) {
    runs_.clear();
    throw;
  } catch (const std::runtime_error& failure) {
    fail(failure.what());
  }
}

void Signing::Ended(const platform::ProgramEnd& end) {
  if (runs_.empty()) return;
  const Run run = std::move(runs_.front());
  runs_.pop_front();
  const SigningEnd meaning = MeaningOf(end);
  if (meaning.sent) MarkSent(session_, Service::kLotw, run.keys);
  told_ += fmt::format("{}{} Qso da \"{}\": {}", told_.empty() ? "" : "; ", run.keys.size(),
                       run.location, meaning.told);
  if (runs_.empty() || !meaning.sent) {
    runs_.clear();
    tell_(told_);
    return;
  }
  StartNext();
}

}  // namespace brenvo::conferme
