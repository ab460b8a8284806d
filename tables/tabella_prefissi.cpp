#include "tables/tabella_prefissi.h"

#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "core/entry.h"
#include "core/lists.h"
#include "core/texts.h"
#include "core/window_place.h"
#include "core/writing.h"

namespace brenvo::tables {
namespace {

constexpr std::string_view kSettingsKey = "Prefissi";
constexpr std::string_view kRepeated = "Prefisso gia' caricato";
constexpr std::size_t kCountryWidth = 5;

// The grid's columns as statements write them.
constexpr std::string_view kColumns[] = {"Prefisso", "Country", "[Zona CQ]", "[Zona ITU]",
                                         "Continente"};

std::string SelectBy(std::string_view order) {
  return fmt::format(
      "select Prefisso,Country,[Zona CQ],[Zona ITU],Continente from Prefissi order by {}", order);
}

}  // namespace

TabellaPrefissi::TabellaPrefissi(core::Session& session)
    : core::PrefixPicker(session.Host(), "TabellaPrefissi", "Tabella Prefissi", base::Twips(8400),
                         base::Twips(7200)),
      session_(session),
      data1_(session) {
  Codice.Filter = core::UpperKey;
  Continente.Filter = core::UpperKey;
  ZonaCQ.Filter = core::DigitsOnlyKey;
  ZonaITU.Filter = core::DigitsOnlyKey;
  CancelCommand = &cmExit;
  Spread1.SetSource(&data1_);
  Spread1.OnHeading = [this](int column) { SortBy(column); };
  Spread1.OnClick = [this] { OnRowClick(); };
  Spread1.OnDoubleClick = [this] { OnRowPick(); };
  Spread1.OnHover = [this] {
    StatusBar1.SetPanel(1, Tag == kPick ? "Doppio click ritornare il prefisso al Log, Click per "
                                          "richiamare i dati del prefisso"
                                        : "Click per richiamare i dati del prefisso");
  };
}

void TabellaPrefissi::Load() {
  core::RestoreWindow(session_, *this, kSettingsKey);
  data1_.RecordSource = SelectBy("prefisso");
  data1_.Refresh();
  Spread1.SetColumnsOf(
      {data1_.GridColumn("Prefisso", "Prefisso"), data1_.GridColumn("Country", "Country"),
       data1_.GridColumn("Zona CQ", "Zona CQ"), data1_.GridColumn("Zona ITU", "Zona ITU"),
       data1_.GridColumn("Continente", "Continente")});
  core::LoadCountries(session_, Country);
}

void TabellaPrefissi::Unload() {
  core::SaveWindow(session_, *this, kSettingsKey);
  data1_.Close();
}

bool TabellaPrefissi::ValidatePrefix() const {
  for (const forms::TextField* field : {&Codice, &ZonaCQ, &ZonaITU, &Continente}) {
    if (core::IsEmptyField(field->Text())) return false;
  }
  return true;
}

void TabellaPrefissi::Store() {
  engine::Dynaset& row = *data1_.Rows();
  row.Set("Prefisso", Codice.Text());
  row.Set("Country", base::Left(Country.Text(), kCountryWidth));
  core::SetNumber(row, "Zona CQ", ZonaCQ.Text());
  core::SetNumber(row, "Zona ITU", ZonaITU.Text());
  row.Set("Continente", Continente.Text());
  row.Update();
  data1_.RowsWritten();
}

void TabellaPrefissi::Insert() {
  if (!ValidatePrefix()) return;
  core::TryWrite(session_, "Inserimento prefisso", kRepeated, [this] {
    engine::Table& prefissi = *session_.Tables.TbPrefissi;
    prefissi.Seek(">=", {Codice.Text()});
    // Whatever its zones: from this screen a prefix goes in once.
    if (!prefissi.NoMatch() && core::FieldText(prefissi, "Prefisso") == Codice.Text()) {
      session_.Messages().Show(platform::MessageIcon::kCritical, "", kRepeated);
      return;
    }
    data1_.Rows()->AddNew();
    Store();
    Spread1.ContentChanged();
    Avviso.SetText("Prefisso inserito: " + base::Trim(Codice.Text()));
  });
}

void TabellaPrefissi::Update() {
  if (!ValidatePrefix()) return;
  core::TryWrite(session_, "Aggiornamento prefisso", kRepeated, [this] {
    // The index ends with the continent; the country is compared on the row that it leads to.
    engine::Table& prefissi = *session_.Tables.TbPrefissi;
    prefissi.Seek("=", {Codice.Text(), base::Val(ZonaCQ.Text()), base::Val(ZonaITU.Text()),
                        Continente.Text()});
    if (!prefissi.NoMatch() && base::Trim(core::FieldText(prefissi, "Country")) ==
                                   base::Trim(base::Left(Country.Text(), kCountryWidth))) {
      session_.Messages().Show(platform::MessageIcon::kCritical, "", kRepeated);
      return;
    }
    data1_.Rows()->Edit();
    Store();
    Spread1.ContentChanged();
    Avviso.SetText("Prefisso aggiornato: " + base::Trim(Codice.Text()));
  });
}

void TabellaPrefissi::Delete() {
  if (!session_.Messages().AskYesNo("Cancellazione prefisso", "Confermi l'operazione ?")) return;
  const std::string deleted = base::Trim(core::FieldText(*data1_.Rows(), "Prefisso"));
  data1_.Rows()->Delete();
  data1_.RowsWritten();
  Spread1.ContentChanged();
  Avviso.SetText("Prefisso cancellato: " + deleted);
}

void TabellaPrefissi::Find() {
  engine::Dynaset& rows = *data1_.Rows();
  rows.FindFirst("Prefisso='" + Codice.Text() + "'");
  if (rows.NoMatch()) return;
  ShowPrefix();
  // The grid follows: what the other keys work on is what it marks.
  const engine::Bookmark found = rows.GetBookmark();
  for (std::int64_t place = 0; place < rows.TotalRows(); ++place) {
    if (rows.BookmarkAt(place) == found) {
      Spread1.SetCurrent(place + 1, 0);
      break;
    }
  }
}

void TabellaPrefissi::Leave() {
  Chosen.reset();
  Close();
}

void TabellaPrefissi::SortBy(int column) {
  if (column < 0 || column >= static_cast<int>(std::size(kColumns))) return;
  data1_.RecordSource = SelectBy(kColumns[column]);
  data1_.Refresh();
  // The rows stand on the first one again, and so does the mark.
  Spread1.SetCurrent(data1_.AtEnd() ? 0 : 1, column);
}

bool TabellaPrefissi::GoToRow() {
  const std::int64_t row = Spread1.Row();
  if (row < 1 || row >= Spread1.Rows()) return false;
  data1_.Rows()->SetBookmark(data1_.Rows()->BookmarkAt(row - 1));
  return true;
}

void TabellaPrefissi::ShowPrefix() {
  engine::Dynaset& row = *data1_.Rows();
  Codice.SetText(core::FieldText(row, "Prefisso"));
  core::SelectListEntry(Country, core::FieldText(row, "Country"), kCountryWidth);
  ZonaCQ.SetText(core::FieldText(row, "Zona CQ"));
  ZonaITU.SetText(core::FieldText(row, "Zona ITU"));
  Continente.SetText(core::FieldText(row, "Continente"));
}

void TabellaPrefissi::OnRowClick() {
  if (GoToRow()) ShowPrefix();
}

void TabellaPrefissi::OnRowPick() {
  if (Tag != kPick || !GoToRow()) return;
  engine::Dynaset& row = *data1_.Rows();
  Chosen = core::PrefixChoice{core::FieldText(row, "Prefisso"), core::FieldText(row, "Country"),
                              core::FieldText(row, "Zona CQ"), core::FieldText(row, "Zona ITU"),
                              core::FieldText(row, "Continente")};
  Close();
}

}  // namespace brenvo::tables
