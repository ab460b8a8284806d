#include "conferme/sending.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>
#include <stdexcept>
#include <utility>

#include "adif/export_keys.h"
#include "base/text.h"
#include "contact_state.h"
#include "core/history.h"
#include "core/quoted.h"
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

}  // namespace

std::vector<std::int64_t> UnsentTo(core::Session& session, Service service) {
  std::vector<std::int64_t> keys;
  const auto rows = session.Db.OpenSnapshot(fmt::format(
      "select QsoNr from Log where QsoNr not in (select QsoNr from LogAdif where Campo={} and "
      "Valore in ('Y','N','I')) order by QsoNr",
      core::Quoted(FactsOf(service).sent)));
  for (; !rows->EOF_(); rows->MoveNext()) keys.push_back(rows->Field(std::size_t{0}).Integer());
  return keys;
}

std::int64_t MarkSent(core::Session& session, Service service,
                      const std::vector<std::int64_t>& keys) {
  const ServiceFacts& facts = FactsOf(service);
  const base::DateTime now = session.Now();
  const std::string day = fmt::format("{:04}{:02}{:02}", now.Year(), now.Month(), now.Day());
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
            if (!writer.SetField(block[i], states[i], facts.sent, "Y")) continue;
            writer.SetField(block[i], states[i], facts.sentDay, day);
            ++changed;
          }
        }
        if (changed > 0) transaction.Commit();
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
  std::map<std::int64_t, std::int64_t> stationOf;
  const auto rows = session_.Db.OpenSnapshot("select QsoNr,Stazione from LogOrigine");
  for (; !rows->EOF_(); rows->MoveNext()) {
    stationOf[rows->Field(std::size_t{0}).Integer()] = rows->Field(1).Integer();
  }
  rows->Close();
  const core::StationRow current = core::CurrentStationRow(session_.Db);
  std::map<std::int64_t, std::vector<std::int64_t>> byStation;
  for (const std::int64_t key : UnsentTo(session_, Service::kLotw)) {
    const auto station = stationOf.find(key);
    byStation[station == stationOf.end() ? current.Stazione : station->second].push_back(key);
  }
  for (auto& [number, keys] : byStation) {
    const core::StationRow station = core::FindStation(session_.Db, number).value_or(current);
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
