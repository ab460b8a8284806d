#include "awards/stat_sel.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/places.h"
#include "core/window_place.h"

namespace brenvo::awards {
namespace {

// What a new statistics selection starts with, besides all propagations.
constexpr std::string_view kUsualBand = "  2 m";
constexpr std::string_view kUsualMode = "SSB";

void MarkAll(forms::ListField& list, bool selected) {
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    list.SetSelected(static_cast<int>(i), selected);
  }
}

// The selected entries as the list of an "in", each as it stands.
std::string SelectedEntries(const forms::ListField& list) {
  std::string entries;
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    if (list.Selected(static_cast<int>(i))) entries += ",'" + list.Items()[i] + "'";
  }
  return entries.empty() ? entries : entries.substr(1);
}

}  // namespace

StatSel::StatSel(core::Session& session)
    : core::SelectionWindow(session.Host(), "StatSel", "Selezione statistiche", base::Twips(8400),
                            base::Twips(6300)),
      session_(session) {
  Modo.Tag = "MULTI";
  OfferElenca(false);
  PopupTarget.SetVisible(false);
  for (forms::Command* layout : {&cmVerticale, &cmOrizzontale}) layout->SetVisible(false);
  DefaultCommand = &cmStat;
  CancelCommand = &cmExit;
  HandleEvents();
}

void StatSel::HandleEvents() {
  Country.BackspaceClears = true;
  Country.OnLeave = [this] { OnCountryLeave(); };
  Note.OnDoubleClick = [this] { OnNotePick(); };
  for (forms::ListField* list : {&Modo, &Propagazione}) {
    list->ContextMenu = &popup;
    list->OnContextMenu = [this, list] { PopupTarget.SetText(list->Name()); };
  }
}

void StatSel::Load() {
  core::RestoreWindow(session_, *this, "StatSel");
  core::LoadBands(session_, Banda);
  core::LoadModes(session_, Modo);
  core::LoadPropagations(session_, Propagazione);
}

void StatSel::Activate() {
  DataQsoI.SetText(DataQsoI.EmptyText());
  DataQsoF.SetText(DataQsoF.EmptyText());
  if (Tag == "COUNTRY" || Tag == "PREFISSO") {
    Country.SetEnabled(false);
    OfferElenca(true);
  } else {
    core::LoadCountryChoices(session_, Country);
    if (Tag == "PROVINCIE") {
      Country.SetEnabled(true);
      OfferElenca(true);
    }
  }
  if (Tag == "PLOG") return;
  core::SelectListEntry(Banda, kUsualBand, base::Len(kUsualBand));
  core::SelectListEntry(Modo, kUsualMode, base::Len(kUsualMode));
  MarkAll(Propagazione, true);
}

// Closed by its frame the dialog ends as by cmExit, and waits for its caller like then.
bool StatSel::QueryUnload() {
  if (!Visible()) return true;
  Cancel();
  return false;
}

void StatSel::OfferElenca(bool offered) {
  Elenca.SetVisible(offered);
  Elenca.SetEnabled(offered);
}

void StatSel::Unload() { core::SaveWindow(session_, *this, "StatSel"); }

void StatSel::SelectAll(bool selected) {
  MarkAll(PopupTarget.Text() == Modo.Name() ? Modo : Propagazione, selected);
}

bool StatSel::CheckSelection() {
  const auto missing = [this](std::string_view word, const forms::TextField& field,
                              std::string_view message) {
    if (Tag != word || !core::IsEmptyField(field.Text())) return false;
    session_.Messages().Show(platform::MessageIcon::kCritical, "", message);
    return true;
  };
  return !missing("PROVINCIE", Country, "Country obbligatorio") &&
         !missing("NOTE", Note, "Note obbligatorio");
}

std::string StatSel::BuildWhere() const {
  std::string where;
  const auto add = [&where](std::string_view condition) {
    where += " AND ";
    where += condition;
  };
  if (DataQsoI.Text() != DataQsoI.EmptyText()) {
    add(fmt::format("DateValue(DataQso)>=DateValue('{}')", DataQsoI.Text()));
  }
  if (DataQsoF.Text() != DataQsoF.EmptyText()) {
    add(fmt::format("DateValue(DataQso)<=DateValue('{}')", DataQsoF.Text()));
  }
  if (!core::IsEmptyField(Country.Text())) {
    const std::string code = base::Trim(base::Left(Country.Text(), 5));
    // Sardinia counts with Italy.
    add(code == "I" ? "(Country='I' OR Country='IS0')" : "Country='" + code + "'");
  }
  if (!core::IsEmptyField(Banda.Text())) add(fmt::format("Banda='{}'", base::RTrim(Banda.Text())));
  if (QslDaInviare.IsOn()) add("QsldaInviare=True");
  if (QslRicevuta.IsOn()) add("QslRicevuta=True");
  if (QslInviata.IsOn()) add("QslInviata=True");
  if (const std::string modes = SelectedEntries(Modo); !modes.empty()) {
    add(fmt::format("Modo in ({})", modes));
  }
  if (const std::string kinds = SelectedEntries(Propagazione); !kinds.empty()) {
    add(fmt::format("Propagazione in ({})", kinds));
  }
  if (!core::IsEmptyField(Note.Text()))
    add(fmt::format("Note LIKE '*{}*'", base::Trim(Note.Text())));
  return where.empty() ? where : "WHERE " + where.substr(std::string_view(" AND ").size());
}

void StatSel::Confirm() {
  if (!CheckSelection()) return;
  Tag = BuildWhere();
  Hide();
}

void StatSel::Cancel() {
  Tag = kCancelled;
  Hide();
}

void StatSel::OfferLayouts() {
  for (forms::Command* layout : {&cmVerticale, &cmOrizzontale}) layout->SetVisible(true);
}

void StatSel::OnCountryLeave() {
  Country.SetText(core::FindCountryText(session_, base::Left(Country.Text(), 5)));
}

void StatSel::OnNotePick() { core::AppendPickedNote(session_, Note); }

}  // namespace brenvo::awards
