#include "log/log_search.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/places.h"
#include "core/window_place.h"

namespace brenvo::log {
namespace {

constexpr std::string_view kSettingsKey = "LogSearch";

// The column that an order sorts by, where it is not called as its option.
constexpr std::pair<std::string_view, std::string_view> kOrderColumns[] = {{"Data", "DataQso"},
                                                                           {"Qsl", "QslRicevuta"}};

std::string OrderColumn(std::string_view caption) {
  for (const auto& [option, column] : kOrderColumns) {
    if (option == caption) return std::string(column);
  }
  return std::string(caption);
}

}  // namespace

LogSearch::LogSearch(core::Session& session)
    : forms::Window(session.Host(), "LogSearch", "Log - Ricerca", base::Twips(9000),
                    base::Twips(6000)),
      session_(session) {
  DefaultCommand = &cmSearch;
  CancelCommand = &cmExit;

  CallQso.Filter = core::UpperKey;
  Locator.Filter = core::UpperKey;
  Country.BackspaceClears = true;
  Country.OnChange = [this] { OnCountryChange(); };
  Provincia.BackspaceClears = true;
  Note.OnDoubleClick = [this] { OnNotePick(); };
}

void LogSearch::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  DataQso.SetText(DataQso.EmptyText());
  SortOrder.SetIndex(0);
  core::LoadCountryChoices(session_, Country);
  core::LoadBands(session_, Banda);
  core::LoadModes(session_, Modo);
  core::LoadPropagations(session_, Propagazione);
  Country.SetText("");
}

void LogSearch::Unload() { core::SaveWindow(session_, *this, kSettingsKey); }

void LogSearch::TurnComparison() {
  const std::string& now = cmTipoData.Caption();
  cmTipoData.SetCaption(now == "=" ? ">=" : now == ">=" ? "<=" : "=");
}

void LogSearch::OnCountryChange() {
  const std::string completed = core::FindCountryText(session_, base::Left(Country.Text(), 5));
  if (!completed.empty() && completed != Country.Text()) {
    Country.SetText(completed);  // comes back here as a change of its own
    return;
  }
  core::LoadProvinceChoices(session_, Provincia, base::Left(Country.Text(), 5));
  Provincia.SetText("");
}

void LogSearch::OnNotePick() { core::AppendPickedNote(session_, Note); }

std::string LogSearch::Statement() const {
  std::string where;
  const auto add = [&](std::string_view condition, std::string_view text, std::string_view end) {
    where += fmt::format(" AND {}{}{}", condition, text, end);
  };
  const auto code = [](const forms::TextField& field, std::size_t width) {
    return base::RTrim(base::Left(field.Text(), width));
  };
  const auto filled = [](const forms::TextField& field) {
    return !core::IsEmptyField(field.Text());
  };
  if (filled(DataQso) && DataQso.Text() != DataQso.EmptyText()) {
    add("DateValue(DataQso)" + cmTipoData.Caption() + " cvdate('", DataQso.Text(), "')");
  }
  if (filled(CallQso)) add("Call LIKE '", CallQso.Text(), "'");
  if (filled(Country)) add("Country='", code(Country, 5), "'");
  if (filled(Provincia)) add("Provincia='", code(Provincia, 3), "'");
  if (filled(Locator)) add("Locator LIKE '", Locator.Text(), "'");
  if (filled(Banda)) add("Banda='", code(Banda, 5), "'");
  const std::pair<std::string_view, const forms::CheckBox*> marks[] = {
      {"QsldaInviare=", &QslDaInviare},
      {"QslRicevuta=", &QslRicevuta},
      {"QslInviata=", &QslInviata}};
  for (const auto& [condition, box] : marks) {
    if (box->State() != forms::CheckState::kGrey)
      add(condition, box->IsOn() ? "true" : "false", "");
  }
  if (filled(Modo)) add("Modo='", base::Trim(Modo.Text()), "'");
  if (filled(Propagazione)) add("Propagazione='", base::Trim(Propagazione.Text()), "'");
  if (filled(Note)) add("Note LIKE '*", base::Trim(Note.Text()), "*'");
  if (!where.empty()) where = "WHERE " + base::Mid(where, 6);
  return fmt::format(
      "SELECT * FROM Log {} ORDER BY {}", where,
      OrderColumn(SortOrder.Captions()[static_cast<std::size_t>(SortOrder.Index())]));
}

void LogSearch::Search() {
  const forms::BusyPointer busy(Host());
  const std::string statement = Statement();
  DsSearch = session_.Db.OpenDynaset(statement);
  SearchText = statement;
  Close();
}

void LogSearch::Cancel() {
  SearchText.reset();
  Close();
}

}  // namespace brenvo::log
