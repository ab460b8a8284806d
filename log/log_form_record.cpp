// A contact between the fields and its row: shown, emptied, validated, stored.
#include <fmt/format.h>

#include <algorithm>
#include <variant>

#include "base/match.h"
#include "base/number.h"
#include "base/text.h"
#include "core/confirmations.h"
#include "core/country_map.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/log_contact.h"
#include "core/log_time.h"
#include "core/places.h"
#include "core/texts.h"
#include "core/writing.h"
#include "geo/locator.h"
#include "log/log_form.h"

namespace brenvo::log {
namespace {

constexpr std::size_t kLongestUnreadable = 30;  // characters of it that are told

}  // namespace

void LogForm::ClearQso() {
  DataQso.SetText(base::DateText(core::ProposedTime(session_)));
  SetTime();
  const bool keepsLink = chosen_.keepsLink;
  for (forms::TextField* field :
       {&CallQso, &Manager, &Qra, &Qth, &Prefisso, &ZonaCQ, &ZonaITU, &Continente,
        static_cast<forms::TextField*>(&Country), static_cast<forms::TextField*>(&Provincia),
        &Locator, &QrkDato, &QrkRicevuto, &Note}) {
    field->SetText("");
  }
  Qrb.SetText("0");
  Propagazione.SetListIndex(-1);
  if (!keepsLink) {
    for (forms::TextField* field : {&Frequenza, &Potenza}) field->SetText("0");
    for (forms::ListField* list : {&Banda, &Modo}) list->SetListIndex(-1);
  }
  for (forms::CheckBox* box : {&QslDaInviare, &QslRicevuta, &QslInviata}) box->SetOn(false);
  QslDi.SetText("");
  PrevCall = PrevCountry = PrevLocator = "";
  PrevBanda = keepsLink ? Banda.Text() : "";
  TellUnreadable("");
  recordCommands_ = false;
  timeOfStart_.clear();
  skipped_.clear();
  asked_ = nullptr;
  PutUsualReports();
  untouched_ = TextsOfRecord();
  FollowRig();
}

// In the order in which a record is shown.
std::vector<LogForm::FieldOfColumn> LogForm::RecordFields() {
  using namespace core::column;
  const auto text = [](std::string_view column, forms::TextField& field, std::size_t code = 0) {
    return FieldOfColumn{core::LogColumnOf(column), &field, code};
  };
  const auto list = [](std::string_view column, forms::ListField& field) {
    return FieldOfColumn{core::LogColumnOf(column), &field};
  };
  const auto box = [](std::string_view column, forms::CheckBox& field) {
    return FieldOfColumn{core::LogColumnOf(column), &field};
  };
  return {list(kBanda, Banda),
          text(kCall, CallQso),
          text(kManager, Manager),
          text(kQra, Qra),
          text(kQth, Qth),
          text(kPrefisso, Prefisso, 5),
          text(kZonaCQ, ZonaCQ),
          text(kZonaITU, ZonaITU),
          text(kContinente, Continente),
          text(kCountry, Country, 5),
          text(kProvincia, Provincia, 3),
          text(kLocator, Locator),
          text(kQrb, Qrb),
          text(kFrequenza, Frequenza),
          text(kPotenza, Potenza),
          list(kModo, Modo),
          list(kPropagazione, Propagazione),
          text(kQrkDato, QrkDato),
          text(kQrkRicevuto, QrkRicevuto),
          box(kQslDaInviare, QslDaInviare),
          box(kQslRicevuta, QslRicevuta),
          box(kQslInviata, QslInviata),
          text(kNote, Note)};
}

struct LogForm::Shown {
  std::optional<base::DateTime> dataQso;
  std::string unreadable;  // columns that another tool has made so, with what they hold
  std::string qsoNr, total;
  // Of each of the record's fields; a box's says by being empty that it is off.
  std::vector<std::string> texts;
};

LogForm::Shown LogForm::ReadRecord() {
  namespace column = core::column;
  engine::Dynaset& row = *DsLog;
  Shown shown;
  shown.qsoNr = core::FieldText(row, column::kQsoNr);
  shown.total = std::to_string(row.RecordCount());
  // What cannot be read is told and shown as nothing: the rest of the contact can be, and the
  // contacts around it.
  const auto unreadable = [&](std::string_view name, const engine::Value& value) {
    shown.unreadable += fmt::format("{}{} '{}'", shown.unreadable.empty() ? "" : ", ", name,
                                    base::Left(base::ValidUtf8(value.Text()), kLongestUnreadable));
  };
  const engine::Value dataQso = row.Field(column::kDataQso);
  shown.dataQso = dataQso.ReadableDate();
  if (!shown.dataQso) unreadable(column::kDataQso, dataQso);
  std::string country;  // as it is shown
  for (const FieldOfColumn& each : record_) {
    const std::string_view name = each.column.name;
    if (each.column.Holds<bool>()) {
      const engine::Value value = row.Field(name);
      const std::optional<bool> read = value.ReadableBool();
      if (!read) unreadable(name, value);
      shown.texts.emplace_back(read.value_or(false) ? "on" : "");
      continue;
    }
    std::string text = core::FieldText(row, name);
    if (name == column::kPrefisso) {
      text = base::PadRight(text, each.code);
    } else if (name == column::kCountry) {
      text = country = core::FindCountryText(session_, text);
    } else if (name == column::kProvincia) {
      const std::string stored = core::FieldText(row, column::kCountry);
      text = country.empty() ? "" : core::FindProvinceText(session_, stored, text);
    } else if (name == column::kQrb) {
      text = base::PlainNumber(base::Val(text));
    } else if (name == column::kFrequenza) {
      text = base::FormatNumber(base::Val(text), "#####.000");
    }
    shown.texts.push_back(std::move(text));
  }
  return shown;
}

void LogForm::ShowText(std::string_view name, forms::TextField& field, const std::string& text) {
  namespace column = core::column;
  if (name == column::kLocator) PrevLocator = text;
  if (name == column::kCall || name == column::kCountry || name == column::kLocator) {
    // A lookup that a stored text makes fail is told, and the record is shown all the same.
    session_.Windows.RunEvent([&] { field.SetText(text); });
  } else {
    field.SetText(text);
  }
  if (name == column::kCall) PrevCall = text;
  if (name == column::kCountry && !text.empty()) PrevCountry = text;
}

void LogForm::ShowQso() {
  Shown shown;
  try {
    shown = ReadRecord();
  } catch (const engine::DatabaseError& failure) {
    session_.EndWith(failure, "Get Qso");
  }
  QsoNr.SetText(shown.qsoNr);
  QsoTotali.SetText(shown.total);
  DataQso.SetText(shown.dataQso ? base::DateText(*shown.dataQso) : "");
  Qtr.SetText(shown.dataQso ? base::Left(base::TimeText(*shown.dataQso), 5) : Qtr.EmptyText());
  TellUnreadable(shown.unreadable);
  for (std::size_t i = 0; i < record_.size(); ++i) {
    const std::string_view name = record_[i].column.name;
    const std::string& text = shown.texts[i];
    std::visit(base::Match{[&](forms::TextField* field) { ShowText(name, *field, text); },
                           [&](forms::ListField* list) {
                             if (list == &Banda) {
                               core::SelectListEntry(*list, text,
                                                     std::max<std::size_t>(5, base::Len(text)));
                               PrevBanda = list->Text();
                             } else {
                               list->SetText(text);
                             }
                           },
                           [&](forms::CheckBox* box) { box->SetOn(!text.empty()); }},
               record_[i].field);
  }
  const std::string givers =
      QslRicevuta.IsOn()
          ? core::GiversOfBox(session_.Db, static_cast<std::int64_t>(base::Val(shown.qsoNr)))
          : std::string();
  QslDi.SetText(givers.empty() ? "" : "da " + givers);
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

// Exactly midnight counts as no time: the operator enters 00:01.
bool LogForm::HasTime() const {
  const auto time = base::ParseTime(Qtr.Text());
  return time && *time != base::DateTime();
}

bool LogForm::ValidateQso() {
  if (!core::IsValidDate(session_, DataQso.Text())) return false;
  if (!HasTime()) return false;
  if (core::IsEmptyField(CallQso.Text())) return false;
  if (!core::IsEmptyField(Locator.Text()) && !geo::IsValidLocator(Locator.Text())) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, "", "Locator non valido");
    return false;
  }
  return true;
}

// The seconds that an import brought stay as long as the minute that they belong to.
base::DateTime LogForm::TimeToStore() const {
  const base::DateTime typed = *base::ParseTime(Qtr.Text());
  const engine::Value stored = DsLog->Field(core::column::kDataQso);
  const auto* at = std::get_if<base::DateTime>(&stored.Get());
  const bool unchanged =
      at != nullptr && base::Left(base::TimeText(*at), 5) == base::Left(base::TimeText(typed), 5);
  return unchanged ? at->TimePart() : typed;
}

void LogForm::StoreQso(engine::EditableRecordset& row) {
  row.Set(core::column::kDataQso, base::ParseDate(DataQso.Text())->DatePart() + TimeToStore());
  for (const FieldOfColumn& each : record_) {
    const std::string_view name = each.column.name;
    std::visit(base::Match{[&](forms::TextField* field) {
                             if (each.column.Holds<double>()) {
                               core::SetNumber(row, name, field->Text());
                             } else if (each.code > 0) {
                               row.Set(name, base::Trim(base::Left(field->Text(), each.code)));
                             } else {
                               row.Set(name, field->Text());
                             }
                           },
                           [&](forms::ListField* list) { row.Set(name, list->Text()); },
                           [&](forms::CheckBox* box) { row.Set(name, box->IsOn()); }},
               each.field);
  }
}

}  // namespace brenvo::log
