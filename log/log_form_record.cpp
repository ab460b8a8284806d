// A contact between the fields and its row: shown, emptied, validated, stored.
#include <fmt/format.h>

#include <algorithm>
#include <variant>

#include "base/number.h"
#include "base/text.h"
#include "core/country_map.h"
#include "core/locator.h"
#include "core/modules.h"
#include "log/log_form.h"

namespace brenvo::log {
namespace {

constexpr std::size_t kLongestUnreadable = 30;  // characters of it that are told

}  // namespace

void LogForm::ClearQso() {
  DataQso.SetText(base::DateText(session_.Now()));
  SetTime();
  for (forms::TextField* field :
       {&CallQso, &Manager, &Qra, &Qth, &Prefisso, &ZonaCQ, &ZonaITU, &Continente,
        static_cast<forms::TextField*>(&Country), static_cast<forms::TextField*>(&Provincia),
        &Locator, &QrkDato, &QrkRicevuto, &Note}) {
    field->SetText("");
  }
  for (forms::TextField* field : {&Qrb, &Frequenza, &Potenza}) field->SetText("0");
  for (forms::ListField* list : {&Banda, &Modo, &Propagazione}) list->SetListIndex(-1);
  for (forms::CheckBox* box : {&QslDaInviare, &QslRicevuta, &QslInviata}) box->SetOn(false);
  PrevCall = PrevCountry = PrevLocator = PrevBanda = "";
  TellUnreadable("");
  recordCommands_ = false;
}

struct LogForm::Shown {
  std::optional<base::DateTime> dataQso;
  std::string unreadable;  // columns that another tool has made so, with what they hold
  std::string qsoNr, total, banda, call, manager, qra, qth, prefisso, zonaCq, zonaItu, continente,
      country, provincia, locator, qrb, frequenza, potenza, modo, propagazione, qrkDato,
      qrkRicevuto, note;
  bool qslDaInviare = false, qslRicevuta = false, qslInviata = false;
};

LogForm::Shown LogForm::ReadRecord() {
  engine::Dynaset& row = *DsLog;
  const auto text = [&](std::string_view column) { return core::FieldText(row, column); };
  const auto number = [&](std::string_view column) {
    return base::PlainNumber(base::Val(row.Field(column).Text()));
  };
  Shown shown;
  shown.qsoNr = text("QsoNr");
  shown.total = std::to_string(row.RecordCount());
  // What cannot be read is told and shown as nothing: the rest of the contact can be, and the
  // contacts around it.
  const auto unreadable = [&](std::string_view column, const engine::Value& value) {
    shown.unreadable += fmt::format("{}{} '{}'", shown.unreadable.empty() ? "" : ", ", column,
                                    base::Left(base::ValidUtf8(value.Text()), kLongestUnreadable));
  };
  const auto yes = [&](std::string_view column) {
    const engine::Value value = row.Field(column);
    const std::optional<bool> read = value.ReadableBool();
    if (!read) unreadable(column, value);
    return read.value_or(false);
  };
  const engine::Value dataQso = row.Field("DataQso");
  shown.dataQso = dataQso.ReadableDate();
  if (!shown.dataQso) unreadable("DataQso", dataQso);
  shown.banda = text("Banda");
  shown.call = text("Call");
  shown.manager = text("Manager");
  shown.qra = text("Qra");
  shown.qth = text("Qth");
  shown.prefisso = base::PadRight(text("Prefisso"), 5);
  shown.zonaCq = text("Zona CQ");
  shown.zonaItu = text("Zona ITU");
  shown.continente = text("Continente");
  shown.country = core::FindCountryText(session_, text("Country"));
  if (!shown.country.empty()) {
    shown.provincia = core::FindProvinceText(session_, text("Country"), text("Provincia"));
  }
  shown.locator = text("Locator");
  shown.qrb = number("Qrb");
  shown.frequenza = base::FormatNumber(base::Val(text("Frequenza")), "#####.000");
  shown.potenza = text("Potenza");
  shown.modo = text("Modo");
  shown.propagazione = text("Propagazione");
  shown.qrkDato = text("QrkDato");
  shown.qrkRicevuto = text("QrkRicevuto");
  shown.qslDaInviare = yes("QslDaInviare");
  shown.qslRicevuta = yes("QslRicevuta");
  shown.qslInviata = yes("QslInviata");
  shown.note = text("Note");
  return shown;
}

void LogForm::ShowQso() {
  Shown shown;
  try {
    shown = ReadRecord();
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, "Get Qso");
  }
  // A lookup that a stored text makes fail is told, and the record is shown all the same.
  const auto assign = [this](forms::TextField& field, const std::string& text) {
    session_.Windows.RunEvent([&] { field.SetText(text); });
  };
  QsoNr.SetText(shown.qsoNr);
  QsoTotali.SetText(shown.total);
  DataQso.SetText(shown.dataQso ? base::DateText(*shown.dataQso) : "");
  Qtr.SetText(shown.dataQso ? base::Left(base::TimeText(*shown.dataQso), 5) : Qtr.EmptyText());
  TellUnreadable(shown.unreadable);
  core::SelectListEntry(Banda, shown.banda, std::max<std::size_t>(5, base::Len(shown.banda)));
  assign(CallQso, shown.call);
  Manager.SetText(shown.manager);
  Qra.SetText(shown.qra);
  Qth.SetText(shown.qth);
  PrevCall = shown.call;
  PrevBanda = Banda.Text();
  Prefisso.SetText(shown.prefisso);
  ZonaCQ.SetText(shown.zonaCq);
  ZonaITU.SetText(shown.zonaItu);
  Continente.SetText(shown.continente);
  assign(Country, shown.country);
  if (!shown.country.empty()) PrevCountry = shown.country;
  Provincia.SetText(shown.provincia);
  PrevLocator = shown.locator;
  assign(Locator, shown.locator);
  Qrb.SetText(shown.qrb);
  Frequenza.SetText(shown.frequenza);
  Potenza.SetText(shown.potenza);
  Modo.SetText(shown.modo);
  Propagazione.SetText(shown.propagazione);
  QrkDato.SetText(shown.qrkDato);
  QrkRicevuto.SetText(shown.qrkRicevuto);
  QslDaInviare.SetOn(shown.qslDaInviare);
  QslRicevuta.SetOn(shown.qslRicevuta);
  QslInviata.SetOn(shown.qslInviata);
  Note.SetText(shown.note);
  if (cmMappa.Down() && !Country.Text().empty()) core::ShowCountryMap(session_, Country.Text());
}

void LogForm::TellUnreadable(const std::string& columns) {
  if (!columns.empty()) {
    StatusBar1.SetPanel(1, "Non leggibile nel database: " + columns);
  } else if (toldUnreadable_) {
    StatusBar1.SetPanel(1, "");
  }
  toldUnreadable_ = !columns.empty();
}

bool LogForm::ValidateQso() {
  if (!core::IsValidDate(session_, DataQso.Text())) return false;
  // Exactly midnight counts as no time: the operator enters 00:01.
  const auto time = base::ParseTime(Qtr.Text());
  if (!time || *time == base::DateTime()) return false;
  if (core::IsEmptyField(CallQso.Text())) return false;
  if (!core::IsEmptyField(Locator.Text()) && !core::IsValidLocator(Locator.Text())) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, "", "Locator non valido");
    return false;
  }
  return true;
}

// The seconds that an import brought stay as long as the minute that they belong to.
base::DateTime LogForm::TimeToStore() const {
  const base::DateTime typed = *base::ParseTime(Qtr.Text());
  const engine::Value stored = DsLog->Field("DataQso");
  const auto* at = std::get_if<base::DateTime>(&stored.Get());
  const bool unchanged =
      at != nullptr && base::Left(base::TimeText(*at), 5) == base::Left(base::TimeText(typed), 5);
  return unchanged ? at->TimePart() : typed;
}

void LogForm::StoreQso() {
  engine::Dynaset& row = *DsLog;
  row.Set("DataQso", base::ParseDate(DataQso.Text())->DatePart() + TimeToStore());
  row.Set("Call", CallQso.Text());
  row.Set("Manager", Manager.Text());
  row.Set("Qra", Qra.Text());
  row.Set("Qth", Qth.Text());
  row.Set("Prefisso", base::Trim(base::Left(Prefisso.Text(), 5)));
  core::SetNumber(row, "Zona CQ", ZonaCQ.Text());
  core::SetNumber(row, "Zona ITU", ZonaITU.Text());
  row.Set("Continente", Continente.Text());
  row.Set("Country", base::Trim(base::Left(Country.Text(), 5)));
  row.Set("Provincia", base::Trim(base::Left(Provincia.Text(), 3)));
  row.Set("Locator", Locator.Text());
  core::SetNumber(row, "Qrb", Qrb.Text());
  row.Set("Banda", Banda.Text());
  core::SetNumber(row, "Frequenza", Frequenza.Text());
  core::SetNumber(row, "Potenza", Potenza.Text());
  row.Set("Modo", Modo.Text());
  row.Set("Propagazione", Propagazione.Text());
  row.Set("QrkDato", QrkDato.Text());
  row.Set("QrkRicevuto", QrkRicevuto.Text());
  row.Set("QslDaInviare", QslDaInviare.IsOn());
  row.Set("QslRicevuta", QslRicevuta.IsOn());
  row.Set("QslInviata", QslInviata.IsOn());
  row.Set("Note", Note.Text());
}

}  // namespace brenvo::log
