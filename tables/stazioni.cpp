#include "tables/stazioni.h"

#include <fmt/format.h>

#include <algorithm>
#include <map>

#include "base/number.h"
#include "base/text.h"
#include "core/entry.h"
#include "core/transaction.h"
#include "geo/locator.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kTitle = "Stazioni";

std::string DayText(const std::optional<base::DateTime>& day) {
  return day ? base::DateText(*day) : std::string();
}

std::map<std::int64_t, std::int64_t> ContactsByStation(core::Session& session) {
  std::map<std::int64_t, std::int64_t> counts;
  const auto rows = session.Db.OpenSnapshot(
      "Select Stazione,Count(*) from LogOrigine where QsoNr in (Select QsoNr from Log) Group By "
      "Stazione");
  for (; !rows->EOF_(); rows->MoveNext()) {
    counts[rows->Field(std::size_t{0}).Integer()] = rows->Field(1).Integer();
  }
  return counts;
}

}  // namespace

Stazioni::Stazioni(core::Session& session)
    : core::TableWindow(session, "Stazioni", "Stazioni", base::Twips(13500), base::Twips(7800)) {
  ShowCommands({&cmCorrente, &cmClear, &cmUpdate, &cmDelete});
  DefaultCommand = &cmCorrente;
  Dal.MayBeEmpty = Al.MayBeEmpty = true;
  for (forms::TextField* field : {&CallQso, &Operatore, &Locator, &Provincia, &Country}) {
    field->Filter = core::UpperKey;
  }
  Altezza.Filter = core::DigitsOnlyKey;
  for (const std::string_view kind : core::kStationKinds) Tipo.AddItem(kind);
  changes_ = session.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kLog) contacts_.reset();
  });
}

void Stazioni::Load() {
  core::TableWindow::Load();
  {
    core::Transaction transaction(session_.Db);
    core::CurrentStation(session_.Db);
    transaction.Commit();
  }
  FillTable();
  ShowTable(rows_, {"Corrente", "Nome", "Tipo", "Call", "Operatore", "Locator", "Provincia",
                    "Country", "Altezza", "RTX", "Antenna", "Dal", "Al", "Qso"});
  Renew(core::CurrentStation(session_.Db));
}

void Stazioni::FillTable() {
  stations_ = core::AllStations(session_.Db);
  const std::int64_t current = core::CurrentStation(session_.Db);
  if (!contacts_) contacts_ = ContactsByStation(session_);
  std::vector<core::MemoryRows::Row> rows;
  for (const core::StationRow& each : stations_) {
    rows.push_back({each.Stazione == current ? "Sì" : "", each.Nome, each.Tipo, each.Call,
                    each.Operatore, each.Locator, each.Provincia, each.Country,
                    each.Altezza == 0 ? "" : base::PlainNumber(each.Altezza), each.RTX,
                    each.Antenna, DayText(each.Dal), DayText(each.Al),
                    std::to_string((*contacts_)[each.Stazione])});
  }
  rows_.SetRows(std::move(rows));
}

const core::StationRow* Stazioni::Chosen() {
  const auto key = ChosenKey();
  return key ? &stations_[static_cast<std::size_t>(*key)] : nullptr;
}

void Stazioni::RowChosen() {
  if (const core::StationRow* chosen = Chosen()) ShowStation(*chosen);
}

void Stazioni::ShowStation(const core::StationRow& station) {
  edited_ = station.Stazione;
  Nome.SetText(station.Nome);
  Tipo.SetText(station.Tipo);
  CallQso.SetText(station.Call);
  Operatore.SetText(station.Operatore);
  Locator.SetText(station.Locator);
  Provincia.SetText(station.Provincia);
  Country.SetText(station.Country);
  Altezza.SetText(station.Altezza == 0 ? "" : base::PlainNumber(station.Altezza));
  RTX.SetText(station.RTX);
  Antenna.SetText(station.Antenna);
  Dal.SetText(DayText(station.Dal));
  Al.SetText(DayText(station.Al));
}

void Stazioni::Renew(std::int64_t station) {
  FillTable();
  std::optional<std::int64_t> key;
  for (std::size_t i = 0; i < stations_.size(); ++i) {
    if (stations_[i].Stazione == station) key = static_cast<std::int64_t>(i);
  }
  ShowRows(key);
}

void Stazioni::MakeCurrent() {
  const core::StationRow station = *Chosen();
  core::SetCurrentStation(session_.Db, station.Stazione);
  session_.Contacts.StationChanged();
  session_.Station.CurrentChanged();
  Renew(station.Stazione);
  Say(fmt::format("I prossimi contatti sono di {}", core::TitleOf(station)));
}

void Stazioni::BeginNew() {
  core::StationRow station = core::StationOfProfile(session_.Db);
  station.Nome.clear();
  station.Tipo = core::kStationKinds[1];
  ShowStation(station);
  Say("Nuova stazione: F2 la salva");
}

void Stazioni::Store() {
  core::StationRow station;
  station.Stazione = edited_;
  station.Nome = base::Trim(Nome.Text());
  station.Tipo = Tipo.Text();
  station.Call = base::Trim(CallQso.Text());
  station.Operatore = base::Trim(Operatore.Text());
  station.Locator = base::Trim(Locator.Text());
  station.Provincia = base::Trim(Provincia.Text());
  station.Country = base::Trim(Country.Text());
  station.Altezza = base::Val(Altezza.Text());
  station.RTX = base::Trim(RTX.Text());
  station.Antenna = base::Trim(Antenna.Text());
  station.Dal = base::ParseDate(Dal.Text());
  station.Al = base::ParseDate(Al.Text());
  const auto refuse = [this](std::string_view why, forms::Field& field) {
    Say(why);
    Host().MoveFocus(field);
  };
  if (station.Call.empty()) return refuse("Manca il nominativo", CallQso);
  if (!station.Locator.empty() && !geo::IsValidLocator(station.Locator)) {
    return refuse("Locator non valido", Locator);
  }
  if (station.Dal && station.Al && *station.Al < *station.Dal) {
    return refuse("L'ultimo giorno viene prima del primo", Al);
  }
  if (station.Nome.empty()) station.Nome = station.Call;
  const std::int64_t number = core::StoreStation(session_.Db, station);
  session_.Contacts.StationChanged();
  session_.Station.CurrentChanged();
  Renew(number);
  Say(fmt::format("Salvata: {}", core::TitleOf(station)));
}

void Stazioni::DeleteChosen() {
  const core::StationRow station = *Chosen();
  if (core::HasContacts(session_.Db, station.Stazione)) {
    Say(fmt::format("{} ha contatti e resta", core::TitleOf(station)));
    return;
  }
  if (station.Stazione == core::CurrentStation(session_.Db)) {
    Say(fmt::format("{} è la stazione corrente e resta", core::TitleOf(station)));
    return;
  }
  if (!session_.Messages().AskYesNo(kTitle, "Confermi l'operazione ?")) return;
  core::DeleteStation(session_.Db, station.Stazione);
  Renew(core::CurrentStation(session_.Db));
  Say(fmt::format("Cancellata: {}", core::TitleOf(station)));
}

}  // namespace brenvo::tables
