#include "contact_intake.h"

#include <fmt/format.h>

#include <algorithm>
#include <fstream>
#include <iterator>

#include "adif/adif_writer.h"
#include "adif/store_record.h"
#include "base/text.h"
#include "core/files.h"
#include "core/quoted.h"
#include "core/shared_windows.h"
#include "core/stations.h"
#include "geo/locator.h"
#include "logged_contact.h"

namespace brenvo::digital {
namespace {

// What other programs send in one moment is not more than this; the rest of a flood is refused.
constexpr std::size_t kMostHeld = 50, kMostWaiting = 1000;

std::string CallOf(const adif::AdifRecord& record) {
  const std::string* const call = record.Find("CALL");
  return call == nullptr ? "?" : *call;
}

void Set(adif::AdifRecord& record, std::string_view name, std::string value) {
  for (adif::AdifField& field : record.fields) {
    if (field.name == name) {
      field.value = std::move(value);
      return;
    }
  }
  record.fields.push_back({std::string(name), std::move(value)});
}

void ShowInOpenLogs(core::Session& session) {
  const std::vector<forms::Window*> open = session.Windows.Loaded();
  for (forms::Window* window : open) {
    if (auto* const log = dynamic_cast<core::LogWindow*>(window)) log->TakeNewContacts();
  }
}

bool IsPlaceOf(std::string_view told, std::string_view whole) {
  return whole.size() >= told.size() && base::SameText(whole.substr(0, told.size()), told);
}

}  // namespace

ContactIntake::ContactIntake(core::Session& session,
                             std::function<void(const std::string& text)> tell)
    : session_(session),
      tell_(std::move(tell)),
      holding_(session.Machine.MakeTimer()),
      retrying_(session.Machine.MakeTimer()) {
  holding_->SetInterval(kHold);
  holding_->OnTick = [this] { StoreHeld(); };
  retrying_->SetInterval(kRetry);
  retrying_->OnTick = [this] { TryAgain(); };
  closing_ = session.Closing.Subscribe([this] { StoreHeld(); });
  ReadWaiting();
  retrying_->SetEnabled(!waiting_.empty());
}

ContactIntake::~ContactIntake() { StoreHeld(); }

void ContactIntake::TakeLogged(const QsoLogged& logged, bool isJtdx) {
  adif::AdifRecord record = RecordOf(logged, isJtdx, core::LocalTime(session_));
  if (NamesOf(record).empty()) {
    Refuse(record, "senza nominativo o senza ora");
    return;
  }
  const bool again = std::any_of(held_.begin(), held_.end(),
                                 [&](const auto& each) { return IsSameContact(each, record); });
  if (again) return;
  if (held_.size() >= kMostHeld) StoreHeld();
  held_.push_back(std::move(record));
  // From the last one on: a burst is stored when it is over.
  holding_->SetEnabled(false);
  holding_->SetEnabled(true);
}

bool ContactIntake::TakeAdif(std::string_view text) {
  const std::vector<adif::AdifRecord> records = RecordsIn(text);
  for (const adif::AdifRecord& record : records) TakeRecord(record);
  return !records.empty();
}

void ContactIntake::TakeRecord(const adif::AdifRecord& record) {
  const auto held = std::find_if(held_.begin(), held_.end(),
                                 [&](const auto& each) { return IsSameContact(each, record); });
  if (held == held_.end()) {
    Store(record);
    return;
  }
  const adif::AdifRecord both = Merged(record, *held);
  held_.erase(held);
  Store(both);
}

void ContactIntake::StoreHeld() {
  holding_->SetEnabled(false);
  for (const adif::AdifRecord& each : std::exchange(held_, {})) Store(each);
}

void ContactIntake::Store(const adif::AdifRecord& record) {
  std::string reason;
  if (!TryStore(record, reason)) Wait(record, reason);
}

bool ContactIntake::TryStore(const adif::AdifRecord& record, std::string& reason) {
  if (!session_.IsOpen()) {
    reason = "il database è chiuso";
    return false;
  }
  try {
    StoreNow(WithOwnPlace(record));
    return true;
  } catch (const std::exception& failure) {
    reason = core::FailureText(failure);
    return false;
  }
}

void ContactIntake::StoreNow(const adif::AdifRecord& record) {
  using Kind = adif::StoredRecord::Kind;
  const std::vector<std::string> names = NamesOf(record);
  for (const std::string& name : names) {
    const auto known =
        session_.Db.OpenSnapshot("Select QsoNr from LogOrigine where Uuid=" + core::Quoted(name));
    if (known->EOF_()) continue;
    const std::int64_t qsoNr = known->Field(std::size_t{0}).Integer();
    const bool isThere =
        !session_.Db.OpenSnapshot(fmt::format("Select QsoNr from Log where QsoNr={}", qsoNr))
             ->EOF_();
    if (!isThere) {
      tell_(fmt::format("{} era già registrato, ed è stato cancellato", CallOf(record)));
      return;
    }
    const adif::StoredRecord same = adif::CompleteFromRecord(session_, record, qsoNr);
    tell_(fmt::format("{} è già nel log, Qso {}{}", CallOf(record), qsoNr,
                      same.completed ? ": completato" : ""));
    return;
  }
  if (Divert && Divert(record)) return;
  const adif::StoredRecord stored =
      adif::StoreRecord(session_, record, names.empty() ? "" : names.front());
  switch (stored.kind) {
    case Kind::kNew:
      ShowInOpenLogs(session_);
      tell_(fmt::format("Registrato {}, {} {}, Qso {}", stored.contact.Call,
                        base::Trim(stored.contact.Banda), stored.contact.Modo, stored.qsoNr));
      break;
    case Kind::kRepeated:
      tell_(fmt::format("{} è già nel log, Qso {}{}", stored.contact.Call, stored.qsoNr,
                        stored.completed ? ": completato" : ""));
      break;
    case Kind::kRefused:
      Refuse(record, stored.refusal);
      break;
  }
}

// A square that the station's own locator lies in is that place; from another place the distance
// is its own.
adif::AdifRecord ContactIntake::WithOwnPlace(const adif::AdifRecord& record) {
  adif::AdifRecord placed = record;
  // Who operates under the station's own call is nobody else.
  std::erase_if(placed.fields, [&](const adif::AdifField& field) {
    const std::string* const station = record.Find("STATION_CALLSIGN");
    return field.name == "OPERATOR" && station != nullptr && base::SameText(field.value, *station);
  });
  const std::string* const told = record.Find("MY_GRIDSQUARE");
  if (told == nullptr) return placed;
  const core::StationRow station = core::CurrentStationRow(session_.Db);
  const std::string* const call = record.Find("STATION_CALLSIGN");
  const bool isOwnCall = call == nullptr || base::SameText(*call, station.Call);
  const std::string& own = session_.Station.MyLocator;
  if (isOwnCall && IsPlaceOf(*told, station.Locator)) {
    Set(placed, "MY_GRIDSQUARE", base::UpperAscii(station.Locator));
    return placed;
  }
  const std::string* const there = record.Find("GRIDSQUARE");
  if (there == nullptr || record.Find("DISTANCE") != nullptr || IsPlaceOf(*told, own)) {
    return placed;
  }
  const auto whole = [](std::string_view locator) {
    std::string text = base::UpperAscii(locator.substr(0, 6));
    if (text.size() == 4) text += "MM";
    return text;
  };
  const std::string from = whole(*told), to = whole(*there);
  if (!geo::IsValidLocator(from) || !geo::IsValidLocator(to)) return placed;
  int distance = 1;  // the same place by rounding
  try {
    distance = geo::QrbKm(from, to);
  } catch (const std::domain_error&) {
  }
  Set(placed, "DISTANCE", std::to_string(distance));
  return placed;
}

void ContactIntake::Wait(const adif::AdifRecord& record, const std::string& reason) {
  const auto same = std::find_if(waiting_.begin(), waiting_.end(), [&](const auto& each) {
    return IsSameContact(each.record, record);
  });
  if (same != waiting_.end()) {
    same->record = Merged(same->record, record);
    same->reason = reason;
  } else if (waiting_.size() < kMostWaiting) {
    waiting_.push_back({record, reason});
  } else {
    Refuse(record, reason);
    return;
  }
  WriteWaiting();
  retrying_->SetEnabled(true);
  tell_(fmt::format("{} non è registrato, e aspetta: {}", CallOf(record), reason));
}

void ContactIntake::TryAgain() {
  bool any = false;
  while (!waiting_.empty()) {
    std::string reason;
    // One that fails stands for all: each attempt may take its time.
    if (!TryStore(waiting_.front().record, reason)) {
      waiting_.front().reason = reason;
      break;
    }
    waiting_.erase(waiting_.begin());
    any = true;
  }
  if (any) WriteWaiting();
  retrying_->SetEnabled(!waiting_.empty());
}

void ContactIntake::Refuse(const adif::AdifRecord& record, const std::string& reason) {
  std::ofstream file(core::FileIn(session_.AppPath, kRefusedFile),
                     std::ios::binary | std::ios::app);
  file << adif::AdifLine(record.fields);
  file.flush();
  tell_(fmt::format("{} non si può registrare: {}{}", CallOf(record), reason,
                    file ? fmt::format(" (è in {})", kRefusedFile) : ""));
}

void ContactIntake::ReadWaiting() {
  std::ifstream file(core::FileIn(session_.AppPath, kWaitingFile), std::ios::binary);
  if (!file) return;
  adif::AdifReader reader([&](char* buffer, std::size_t size) {
    file.read(buffer, static_cast<std::streamsize>(size));
    return static_cast<std::size_t>(file.gcount());
  });
  adif::AdifRecord record;
  while (reader.Next(record) && waiting_.size() < kMostWaiting) {
    if (record.fault.empty()) waiting_.push_back({record, "dall'ultima volta"});
  }
}

// Whole or not at all: what waits is nowhere else.
void ContactIntake::WriteWaiting() {
  const std::filesystem::path path = core::FileIn(session_.AppPath, kWaitingFile);
  std::error_code error;
  if (waiting_.empty()) {
    std::filesystem::remove(path, error);
    return;
  }
  std::filesystem::path unfinished = path;
  unfinished += ".new";
  {
    std::ofstream file(unfinished, std::ios::binary);
    file << adif::AdifHeader({});
    for (const WaitingContact& each : waiting_) file << adif::AdifLine(each.record.fields);
    file.flush();
    if (!file) error = std::make_error_code(std::errc::io_error);
  }
  if (!error) std::filesystem::rename(unfinished, path, error);
  if (error) {
    tell_(fmt::format("{} non si scrive: i Qso in attesa sono solo nella memoria", kWaitingFile));
  }
}

}  // namespace brenvo::digital
