#include "log/corrispondente.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <exception>

#include "base/number.h"
#include "base/text.h"
#include "core/call_forms.h"
#include "core/entry.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/open_in_log.h"
#include "core/places.h"
#include "core/shared_windows.h"
#include "core/station_notes.h"
#include "core/texts.h"
#include "earlier_contacts.h"
#include "geo/locator.h"
#include "geo/sun.h"
#include "worked/load_rules.h"

namespace brenvo::log {
namespace {

constexpr std::string_view kOthers = "Altri";

std::string TextOf(Worked square) {
  switch (square) {
    case Worked::kNo:
      break;
    case Worked::kWorked:
      return "Worked";
    case Worked::kConfirmed:
      return "Conf";
  }
  return {};
}

std::string SunText(const geo::Position& place, base::DateTime utc) {
  const geo::SunTimes sun = geo::SunOn(place, utc);
  if (!sun.rise || !sun.set) return sun.isUpAtNoon ? "non tramonta" : "non sorge";
  return fmt::format("{}-{}", core::HourMinute(*sun.rise), core::HourMinute(*sun.set));
}

}  // namespace

// What both threads see, one after the other.
struct Corrispondente::Answer {
  std::string call;
  std::unique_ptr<engine::Reader> reader;
  std::shared_ptr<const worked::Rules> rules;
  std::vector<EarlierContact> contacts;
  std::exception_ptr failure;
};

Corrispondente::Corrispondente(core::Session& session)
    : core::TableWindow(session, "Corrispondente", "Corrispondente", base::Twips(12000),
                        base::Twips(9000)),
      timer_(session.Machine.MakeTimer()) {
  ShowCommands({&cmApri, &cmUpdate});
  DefaultCommand = &cmApri;
  CallQso.Filter = core::UpperKey;
  CallQso.OnChange = [this] { AskSoon(); };
  for (forms::TextField* field : {&Nomi, &Luoghi, &Locatori, &Entita, &Direzione, &Sole}) {
    field->ReadOnly = true;
  }
  timer_->OnTick = [this] {
    session_.Windows.RunEvent([this] { asked_ == nullptr ? Ask() : LookForAnswer(); });
  };
  calls_ = session.CallTyped.Subscribe([this](const core::TypedCall& typed) {
    const bool moved = typed_ != typed.locator;
    typed_ = typed.locator;
    CallQso.SetText(typed.call);
    if (moved && !call_.empty()) ShowPlace();
  });
  contacts_ = session.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kLog && Concerns(change)) AskSoon();
  });
  closing_ = session.Closing.Subscribe([this] { StopAsking(); });
}

Corrispondente::~Corrispondente() = default;

void Corrispondente::Load() {
  core::TableWindow::Load();
  rules_ = worked::LoadRules(session_, [this](const std::string& failure) { Say(failure); });
  std::vector<forms::DataGrid::ColumnOf> columns;
  const auto head = [&](std::string_view heading) {
    forms::DataGrid::ColumnOf& column = columns.emplace_back();
    column.heading = heading;
    column.field = columns.size() - 1;
  };
  head("Banda");
  for (const std::string& group : rules_->Groups()) {
    if (!group.empty()) head(group);
  }
  head(kOthers);
  Matrice.SetSource(&bands_);
  Matrice.SetColumnsOf(std::move(columns));
  ShowTable(rows_, {"Data", "Ora", "Call", "Banda", "Modo", "Qrk dato", "Qrk ricevuto", "Qra",
                    "Qth", "Locator", "Conf"});
  if (core::LogWindow* log = session_.Opened.CurrentLogForm) CallQso.SetText(log->ShownCall());
}

void Corrispondente::Unload() {
  StopAsking();
  calls_ = {};
  contacts_ = {};
  core::TableWindow::Unload();
}

void Corrispondente::StopAsking() {
  timer_->SetEnabled(false);
  work_.reset();  // waits until it has ended: the database is about to be closed
  asked_.reset();
  due_ = false;
}

bool Corrispondente::Concerns(const core::ContactsChanged& change) const {
  const auto* const one = std::get_if<core::OneContact>(&change.which);
  if (one == nullptr) return true;
  return std::ranges::any_of(std::array{&one->before, &one->after}, [&](const auto* side) {
    return *side && core::BaseCall((*side)->contact.Call) == call_;
  });
}

// Whoever types does not wait for an answer that is still on its way: it is passed over.
void Corrispondente::AskSoon() {
  due_ = asked_ != nullptr;
  if (due_) return;
  timer_->SetEnabled(false);  // the pause begins anew at each keystroke
  timer_->SetInterval(kPause);
  timer_->SetEnabled(true);
}

void Corrispondente::Ask() {
  timer_->SetEnabled(false);
  call_ = core::BaseCall(CallQso.Text());
  auto answer = std::make_shared<Answer>();
  answer->call = call_;
  answer->rules = rules_;
  if (call_.empty()) {
    Show(*answer);
    return;
  }
  answer->reader = session_.Db.OpenReader();
  asked_ = answer;
  work_ = session_.Machine.RunInBackground([answer](const std::stop_token&) {
    try {
      answer->contacts = ReadEarlierContacts(*answer->reader, answer->call, *answer->rules);
    } catch (...) {
      answer->failure = std::current_exception();
    }
    answer->reader.reset();
  });
  timer_->SetInterval(kBetweenLooks);
  timer_->SetEnabled(true);
}

void Corrispondente::LookForAnswer() {
  if (!work_->HasEnded()) return;
  timer_->SetEnabled(false);
  timer_->SetInterval(kPause);
  work_.reset();
  const std::shared_ptr<Answer> answer = std::exchange(asked_, nullptr);
  if (due_) {
    AskSoon();
    return;
  }
  if (answer->failure) std::rethrow_exception(answer->failure);
  Show(*answer);
}

void Corrispondente::Show(const Answer& answer) {
  std::vector<core::MemoryRows::Row> rows, bands;
  shown_.clear();
  for (const EarlierContact& each : answer.contacts) {
    rows.push_back({each.when ? base::DateText(*each.when) : "",
                    each.when ? core::HourMinute(*each.when) : "", each.call, each.banda, each.modo,
                    each.qrkDato, each.qrkRicevuto, each.qra, each.qth, each.locator,
                    each.confirmed ? "Sì" : ""});
    shown_.push_back({each.qsoNr, each.when, each.call, each.country});
  }
  for (const BandRow& band : BandsOf(answer.contacts, *rules_)) {
    core::MemoryRows::Row& row = bands.emplace_back(core::MemoryRows::Row{band.banda});
    for (std::size_t group = 1; group < band.byGroup.size(); ++group) {
      row.push_back(TextOf(band.byGroup[group]));
    }
    row.push_back(TextOf(band.byGroup.front()));
  }
  rows_.SetRows(std::move(rows));
  bands_.SetRows(std::move(bands));
  Matrice.ContentChanged();
  Nomi.SetText(TextsOf(answer.contacts, &EarlierContact::qra));
  Luoghi.SetText(TextsOf(answer.contacts, &EarlierContact::qth));
  told_ = PlacesToldOf(answer);
  std::string locators = LocatorsOf(answer.contacts);
  if (locators.empty()) {
    for (const core::PlaceOfCall& each : told_) {
      locators += fmt::format("{}{} ({})", locators.empty() ? "" : ", ", each.locator,
                              each.seen ? "da altri, " + base::DateText(*each.seen) : "da altri");
    }
  }
  Locatori.SetText(locators);
  // What is being written about a station stays while its contacts are stored.
  if (answer.call != noted_) Nota.SetText(core::StationNote(session_.Db, answer.call));
  noted_ = answer.call;
  place_ = PlaceOf(answer);
  ShowPlace();
  ShowRows(std::nullopt);
  if (answer.call.empty()) {
    Say("");
  } else if (answer.contacts.empty()) {
    Say(answer.call + ": nessun Qso");
  } else {
    Say(fmt::format("{}: {} Qso{}", answer.call, answer.contacts.size(),
                    answer.contacts.size() == kMostEarlier ? ", gli ultimi" : ""));
  }
}

void Corrispondente::RowChosen() {
  const auto key = ChosenKey();
  if (const Shown* const row = key ? &shown_.at(static_cast<std::size_t>(*key)) : nullptr;
      row != nullptr && row->when) {
    Entita.SetText(core::WhyCountry(session_, row->qsoNr, row->call,
                                    core::LogTimes(session_).ToUtc(*row->when), row->country));
    return;
  }
  const std::string call = base::Trim(CallQso.Text());
  const entities::Answer today = session_.ByDate.Of(call, session_.Machine.GetClock().UtcNow());
  Entita.SetText(today.reason == entities::Reason::kUnknown ? std::string()
                                                            : entities::Explanation(call, today));
}

// What the files of others tell where the log knows nothing.
std::vector<core::PlaceOfCall> Corrispondente::PlacesToldOf(const Answer& answer) {
  if (answer.call.empty()) return {};
  for (const std::string& call : {base::UpperAscii(base::Trim(CallQso.Text())), answer.call}) {
    const auto known = core::FindKnownCall(session_.Db, call);
    if (known && !known->places.empty()) return known->places;
  }
  return {};
}

std::string Corrispondente::PlaceOf(const Answer& answer) {
  for (const EarlierContact& each : answer.contacts) {
    if (geo::IsValidLocator(each.locator)) return each.locator;
  }
  if (!told_.empty()) return told_.front().locator;
  return answer.call.empty() ? std::string() : core::LocatorOfCall(session_, CallQso.Text());
}

void Corrispondente::ShowPlace() {
  const std::string& locator = geo::IsValidLocator(typed_) ? typed_ : place_;
  const std::string& own = session_.Station.MyLocator;
  if (locator.empty() || !geo::IsValidLocator(own)) {
    Direzione.SetText("");
    Sole.SetText("");
    return;
  }
  Direzione.SetText(locator.substr(0, 6) == own.substr(0, 6)
                        ? locator
                        : fmt::format("{}   {}", locator, geo::PositionLine(own, locator)));
  const base::DateTime utc = session_.Machine.GetClock().UtcNow();
  Sole.SetText(fmt::format("qui {}   là {}", SunText(geo::LocatorToRadians(own), utc),
                           SunText(geo::LocatorToRadians(locator), utc)));
}

void Corrispondente::StoreNote() {
  core::StoreStationNote(session_.Db, call_, Nota.Text());
  Say(base::Trim(Nota.Text()).empty() ? "Nota tolta: " + call_ : "Nota salvata: " + call_);
}

void Corrispondente::OpenChosen() {
  if (const auto key = ChosenKey()) {
    core::OpenInLog(session_, shown_[static_cast<std::size_t>(*key)].qsoNr);
  }
}

}  // namespace brenvo::log
