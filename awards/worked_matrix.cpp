#include "awards/worked_matrix.h"

#include <fmt/format.h>

#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "contacts_in_log.h"
#include "core/country_map.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/place_on_day.h"
#include "core/places.h"
#include "core/prefix.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "geo/locator.h"

namespace brenvo::awards {
namespace {

constexpr base::Twips kLabelWidth(2500), kHeadingHeight(310);

constexpr MatrixKind kByBand = {
    .window = "Hrd",
    .caption = "Worked by Band",
    .handle = &core::OpenWindows::Hrd,
    .columnOf = "Banda",
    .filterField = "Modo",
    .filterHead = " and Modo='",
    .unfiltered = "Misto",
    .corner = "Misto",
    .columnWidth = base::Twips(700),
    .centred = false,
    .gridHint = "Doppio click su una cella per visualizzare i Qso corrispondenti",
};
constexpr MatrixKind kByMode = {
    .window = "HrdMode",
    .caption = "Worked by Mode",
    .handle = &core::OpenWindows::HrdMode,
    .columnOf = "Modo",
    .filterField = "Banda",
    .filterHead = " and banda='",
    .unfiltered = std::nullopt,
    .corner = "  2 m",
    .columnWidth = base::Twips(800),
    .centred = true,
    .gridHint =
        "Doppio click su una cella per visualizzare i Qso corrispondenti, bottone destro "
        "per menu Modi",
};

// A level's condition is its head, the key, and its end.
struct LevelText {
  std::string_view head, headForLog, end, label;
};
constexpr LevelText kLevels[] = {
    {},
    {"Call='", "Call='", "'", ""},
    {"Locator like '", "Locator like '", "*'", ""},
    {"Country='", "Country='", "'", ""},
    {"Prefisso='", "Prefisso='", "'", "Prefisso "},
    {"[Zona CQ]=", "[ZOna CQ]=", "", "Zona CQ"},
    {"[Zona ITU]=", "[ZOna ITU]=", "", "Zona ITU"},
    {"Continente='", "Continente='", "'", "Continente "},
};

constexpr std::string_view kModeSection = "HrdMode", kBandKey = "BandaUsata",
                           kModesKey = "ModiUsati", kFirstBand = "  2 m";

}  // namespace

const MatrixKind& WorkedByBand() { return kByBand; }
const MatrixKind& WorkedByMode() { return kByMode; }

WorkedMatrix::WorkedMatrix(core::Session& session, const MatrixKind& kind)
    : core::MatrixWindow(session.Host(), std::string(kind.window), std::string(kind.caption),
                         base::Twips(12600), base::Twips(5250)),
      Filter(*this, std::string(kind.filterField), forms::ListStyle::kDropDown,
             {.caption = kind.filterField, .characters = 9}),
      Grid1(*this, "Grid1", {.hint = kind.gridHint}),
      session_(session),
      kind_(kind) {
  CallQso.Filter = core::UpperKey;
  Locator.Filter = core::UpperKey;
  AutoSearch.SetVisible(false);
  AutoSearch.OnChange = [this] { Search(); };
  Filter.OnChange = [this] {
    FilterChosen();
    ForgetSearch();
    Search();
  };
  DefaultCommand = &cmSearch;
  Grid1.OnDoubleClick = [this] { ShowCellInLog(); };
}

void WorkedMatrix::Load() {
  core::RestoreWindow(session_, *this, kind_.window);
  Grid1.SetRows(kRows);
  Grid1.SetColumns(1);
  MakeColumns();
  Grid1.SetColumnWidth(0, kLabelWidth);
  Grid1.SetCell(0, 0, kind_.corner);
  Grid1.SetRowHeight(0, kHeadingHeight);
  FillFilter();
  session_.Opened.*kind_.handle = this;
  changes_ = session_.Contacts.Subscribe([this](const core::ContactsChanged& change) {
    if (change.table == core::ContactTable::kLog && change.Many()) Renew();
  });
}

void WorkedMatrix::Unload() {
  changes_ = {};
  if (session_.Opened.*kind_.handle == this) session_.Opened.*kind_.handle = nullptr;
  core::SaveWindow(session_, *this, kind_.window);
}

void WorkedMatrix::AddColumn(std::string_view heading) {
  const int column = Grid1.Columns();
  Grid1.SetColumns(column + 1);
  Grid1.SetColumnWidth(column, kind_.columnWidth);
  Grid1.SetCell(0, column, heading);
  Grid1.SetBold(0, column, true);
  if (kind_.centred) Grid1.SetAlignment(0, column, forms::CellAlignment::kCentre);
}

void WorkedMatrix::ForgetSearch() {
  for (std::optional<std::string>* last : {&lastCall_, &lastLocator_}) {
    if (*last != "") last->reset();
  }
}

void WorkedMatrix::Search() {
  const std::string call = CallQso.Text();
  const std::string locator = Locator.Text();
  if (core::IsEmptyField(call) && core::IsEmptyField(locator)) return;
  const forms::BusyPointer busy(Host());
  const bool newCall = call != lastCall_;
  const bool newLocator = locator != lastLocator_;
  if (newCall) {
    for (int row = kCall; row < kRows; ++row) {
      if (row != kSquare) Grid1.ClearRow(row);
    }
    lastCall_ = call;
    ResolveCall(call);
    for (const Level level : {kPrefisso, kZonaCQ, kZonaITU, kContinente}) {
      WriteLabel(level, std::string(kLevels[level].label) + keys_[level]);
    }
  }
  if (newLocator) Grid1.ClearRow(kSquare);
  keys_[kCall] = call;
  keys_[kSquare] = base::Left(locator, 4);
  WriteLabel(kCall, call);
  WriteLabel(kSquare, keys_[kSquare]);
  WriteLabel(kCountry, countryLabel_);
  if (newCall) SearchCallRows();
  if (!keys_[kCountry].empty() && Mappa.IsOn()) core::ShowCountryMap(session_, keys_[kCountry]);
  if (newLocator) {
    lastLocator_ = locator;
    if (!core::IsEmptyField(keys_[kSquare])) SearchRow(kSquare);
  }
  ShowCoordinate();
}

void WorkedMatrix::SearchCallRows() {
  if (!core::IsEmptyField(keys_[kCall])) SearchRow(kCall);
  for (const Level level : {kCountry, kPrefisso, kZonaCQ, kZonaITU}) {
    if (!keys_[level].empty()) SearchRow(level);
  }
  // The continent hangs on the zone.
  if (!keys_[kZonaCQ].empty()) SearchRow(kContinente);
}

void WorkedMatrix::Renew() {
  if (lastCall_.value_or("") != "") SearchCallRows();
  if (lastLocator_.value_or("") != "" && !core::IsEmptyField(keys_[kSquare])) SearchRow(kSquare);
}

void WorkedMatrix::ResolveCall(std::string_view call) {
  for (const Level level : {kCountry, kPrefisso, kZonaCQ, kZonaITU, kContinente}) {
    keys_[level].clear();
  }
  countryLabel_.clear();
  countryLocator_.clear();
  const core::ResolvedPrefix resolved = core::ResolvePrefix(session_, call);
  Avviso.SetText(
      core::OtherOnDay(session_, call, session_.Machine.GetClock().UtcNow(), resolved.Country));
  if (resolved.Prefisso.empty()) return;
  const auto zone = [](const engine::Value& value) {
    return value.IsNull() ? std::string() : base::Str(value.Number());
  };
  keys_[kPrefisso] = resolved.Prefisso;
  keys_[kZonaCQ] = zone(resolved.ZonaCQ);
  keys_[kZonaITU] = zone(resolved.ZonaITU);
  keys_[kContinente] = resolved.Continente.Text();
  keys_[kCountry] = resolved.Country;
  if (const auto country = core::FindCountry(session_, resolved.Country)) {
    countryLabel_ = core::TextOf(*country);
    countryLocator_ = country->Locator;
  }
}

void WorkedMatrix::WriteLabel(Level level, std::string_view label) {
  Grid1.SetCell(level, 0, label);
  Grid1.SetBold(level, 0, true);
  Grid1.SetAlignment(level, 0, forms::CellAlignment::kLeft);
}

void WorkedMatrix::SearchRow(Level level) {
  const std::string filter = FilterClause();
  for (int column = 1; column < Grid1.Columns(); ++column) {
    const std::string condition = ConditionOf(level, Grid1.Cell(0, column));
    const bool confirmed = AnyContact(condition + " and QslRicevuta" + filter);
    // None being confirmed, any that there is is not: told to the index, it leads straight there.
    const bool worked = confirmed || AnyContact(condition + " and QslRicevuta=false" + filter);
    Grid1.SetCell(level, column, confirmed ? "C" : worked ? "W" : "");
    if (kind_.centred) Grid1.SetAlignment(level, column, forms::CellAlignment::kCentre);
  }
}

// One row answers: contacts are not counted, there may be a million.
bool WorkedMatrix::AnyContact(std::string_view condition) {
  return !session_.Db.OpenSnapshot(fmt::format("select Call from Log where {}", condition))->EOF_();
}

std::string WorkedMatrix::ConditionOf(Level level, std::string_view column) const {
  const LevelText& text = kLevels[level];
  return fmt::format("{}{}{} and {}='{}'", text.head, keys_[level], text.end, kind_.columnOf,
                     column);
}

std::string WorkedMatrix::FilterClause() const {
  return IsFiltered() ? fmt::format("{}{}'", kind_.filterHead, Filter.Text()) : std::string();
}

bool WorkedMatrix::IsFiltered() const { return Filter.Text() != kind_.unfiltered; }

// A square alone names no position: the line is empty then too.
void WorkedMatrix::ShowCoordinate() {
  constexpr std::size_t kLocatorLength = 6;
  const std::string target = core::IsEmptyField(Locator.Text()) ? countryLocator_ : Locator.Text();
  const bool known = base::Len(target) >= kLocatorLength &&
                     base::Len(session_.Station.MyLocator) == kLocatorLength;
  Coordinate.SetText(known ? geo::PositionLine(session_.Station.MyLocator, target) : std::string());
}

void WorkedMatrix::ShowCellInLog() {
  OpenLogIfNone(session_);
  const std::int64_t row = Grid1.Row();
  if (row < kCall || row >= kRows) return;
  const std::string& key = keys_[static_cast<std::size_t>(row)];
  if (core::IsEmptyField(key)) return;
  const std::string column =
      fmt::format(" and {}='{}'", kind_.columnOf, Grid1.Cell(0, Grid1.Column()));
  const std::string filter =
      IsFiltered() ? fmt::format(" and {}='{}'", kind_.filterField, Filter.Text()) : std::string();
  const LevelText& text = kLevels[row];
  const bool byBand = kind_.columnOf == "Banda";
  // The band comes first, whichever of the two it is.
  ShowContacts(session_, fmt::format("Select * from Log where {}{}{}{}{}", text.headForLog, key,
                                     text.end, byBand ? column : filter, byBand ? filter : column));
}

void Hrd::MakeColumns() {
  const auto bands = session_.Db.OpenSnapshot("Select Banda from UserRTX Order By Frequenza");
  for (; !bands->EOF_(); bands->MoveNext()) AddColumn(core::FieldText(*bands, "Banda"));
}

void Hrd::FillFilter() {
  core::LoadModes(session_, Modo);
  Modo.AddItem(*kind_.unfiltered);
  Modo.SetListIndex(static_cast<int>(Modo.Items().size()) - 1);
}

HrdMode::HrdMode(core::Session& session) : WorkedMatrix(session, WorkedByMode()) {
  MenuBar = {&cmModi};
  Grid1.ContextMenu = &cmModi;
  Modon.OnPick = [this](int index) { ToggleMode(index); };
}

void HrdMode::FormattoGrid() {
  const std::string used = session_.GetSetting(kModeSection, kModesKey, "");
  std::vector<std::string> shown;
  Modon.Clear();
  const auto modes = session_.Db.OpenSnapshot("Select Modo from Modi Order By Codice");
  for (; !modes->EOF_(); modes->MoveNext()) {
    const std::string mode = core::FieldText(*modes, "Modo");
    // A name counts wherever it stands in the text, so also inside a longer one.
    const bool isUsed = used.find(mode) != std::string::npos;
    Modon.Add(mode, isUsed);
    if (isUsed) shown.push_back(mode);
  }
  // A first column that stays keeps its marks until the next search.
  const bool firstStays = !shown.empty() && Grid1.Cell(0, 1) == shown.front();
  Grid1.SetColumns(firstStays ? 2 : 1);
  for (std::size_t i = firstStays ? 1 : 0; i < shown.size(); ++i) AddColumn(shown[i]);
}

void HrdMode::ToggleMode(int index) {
  const auto& entries = Modon.Entries();
  if (index < 0 || index >= static_cast<int>(entries.size())) return;
  Modon.SetChecked(index, !entries[static_cast<std::size_t>(index)].checked);
  std::string used;
  for (const forms::EntryArray::Entry& entry : entries) {
    if (entry.checked) used += entry.caption + ",";
  }
  session_.SaveSetting(kModeSection, kModesKey, used);
  FormattoGrid();
  ForgetSearch();
}

void HrdMode::FillFilter() {
  core::LoadBands(session_, Banda);
  core::SelectListEntry(Banda, session_.GetSetting(kModeSection, kBandKey, kFirstBand),
                        base::Len(kFirstBand));
}

void HrdMode::FilterChosen() { session_.SaveSetting(kModeSection, kBandKey, Banda.Text()); }

}  // namespace brenvo::awards
