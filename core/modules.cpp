#include "core/modules.h"

#include <fmt/format.h>

#include "base/number.h"
#include "base/text.h"
#include "core/shared_windows.h"

namespace brenvo::core {

bool IsEmptyField(std::string_view value) {
  return value.find_first_not_of(' ') == std::string_view::npos;
}

bool IsValidDate(Session& session, std::string_view text) {
  if (base::ParseDate(text)) return true;
  session.Messages().Show(platform::MessageIcon::kExclamation, "", "Data errata");
  return false;
}

std::string FieldText(engine::Recordset& record, std::string_view column) {
  return record.Field(column).Text();
}

char32_t DigitsOnlyKey(char32_t key) {
  return (key >= '0' && key <= '9') || key == forms::kBackspace ? key : 0;
}

char32_t NumericKey(char32_t key) {
  return key == '-' || key == '.' || key == ',' ? key : DigitsOnlyKey(key);
}

char32_t UpperKey(char32_t key) { return base::UpperChar(key); }

void SetNumber(engine::EditableRecordset& row, std::string_view column, std::string_view typed) {
  try {
    row.Set(column, base::Val(typed));
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kConversion) throw;
    // Left as it is, the half written record would be read as if it were stored.
    row.CancelUpdate();
    throw RefusedValue(
        fmt::format("Il valore '{}' non è adatto alla colonna '{}'", base::Trim(typed), column));
  }
}

void LoadFrom(Session& session, forms::ListField& list, std::string_view select,
              std::string_view column) {
  std::vector<std::string> items;
  const auto rows = session.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) items.push_back(FieldText(*rows, column));
  list.SetItems(std::move(items));
}

void LoadBands(Session& session, forms::ListField& list) {
  LoadFrom(session, list, "Select Banda from UserRTX Order By Frequenza", "Banda");
}

void LoadModes(Session& session, forms::ListField& list) {
  LoadFrom(session, list, "select Modo from Modi order by Codice", "Modo");
}

void LoadPropagations(Session& session, forms::ListField& list) {
  LoadFrom(session, list, "select Propagazione from Propagazione order by Codice", "Propagazione");
}

void LoadBaudRates(forms::ListField& list) {
  list.SetItems({"300", "1200", "2400", "4800", "9600", "19200"});
}

void LoadComPorts(forms::ListField& list) { list.SetItems({"COM1", "COM2", "COM3", "COM4"}); }

void LoadCountries(Session& session, forms::ListField& list) {
  std::vector<std::string> items;
  engine::Table& countries = *session.Tables.TbCountry;
  countries.MoveFirst();
  for (; !countries.EOF_(); countries.MoveNext()) {
    items.push_back(base::PadRight(FieldText(countries, "Country"), 6) +
                    FieldText(countries, "Descrizione"));
  }
  list.SetItems(std::move(items));
}

void LoadProvinces(Session& session, forms::ListField& list, std::string_view country) {
  std::vector<std::string> items;
  const auto rows = session.Db.OpenSnapshot(
      fmt::format("Select * from Provincie Where Country='{}'", base::Trim(country)));
  for (; !rows->EOF_(); rows->MoveNext()) {
    items.push_back(base::PadRight(FieldText(*rows, "Provincia"), 4) +
                    FieldText(*rows, "Descrizione"));
  }
  list.SetItems(std::move(items));
}

void LoadCountryChoices(Session& session, forms::ListField& list) {
  LoadFrom(session, list, "select left(Country+space(5),5)+Descrizione as Campo from Country",
           "Campo");
}

void LoadProvinceChoices(Session& session, forms::ListField& list, std::string_view country) {
  LoadFrom(session, list,
           fmt::format("Select left(Provincia+space(5),5)+Descrizione as Campo from Provincie "
                       "where Country='{}'",
                       country),
           "Campo");
}

void LoadNotes(Session& session, forms::ListField& list, std::string_view kind) {
  std::string select = "Select * from NoteHelp";
  if (kind == "TIPO") {
    select = "Select TipoNota from NoteHelp Group By TipoNota";
  } else if (kind != "ALL") {
    select = fmt::format("Select * from NoteHelp Where TipoNota='{}'", kind);
  }
  std::vector<std::string> items;
  const auto rows = session.Db.OpenSnapshot(select);
  for (; !rows->EOF_(); rows->MoveNext()) {
    if (kind == "ALL") {
      items.push_back(base::PadRight(FieldText(*rows, "TipoNota"), 6) + FieldText(*rows, "Nota"));
    } else if (kind == "TIPO") {
      items.push_back(base::PadRight(FieldText(*rows, "TipoNota"), 6));
    } else {
      items.push_back(FieldText(*rows, "Nota"));
    }
  }
  list.SetItems(std::move(items));
}

void AppendPickedNote(Session& session, forms::TextField& note) {
  auto* help = static_cast<NotePicker*>(session.Windows.LoadNew("Help"));
  if (help == nullptr) return;
  session.Windows.ShowModal(*help);
  if (!help->NoteChoice) return;
  note.SetText(note.Text() + *help->NoteChoice);
  // Who goes on typing does so behind the note.
  note.Select(base::Len(note.Text()), 0);
}

void SelectListEntry(forms::ListField& list, std::string_view code, std::size_t width) {
  const std::string wanted = base::PadRight(code, width);
  for (std::size_t i = 0; i < list.Items().size(); ++i) {
    if (base::PadRight(list.Items()[i], width) != wanted) continue;
    if (list.Tag == "MULTI") {
      list.SetSelected(static_cast<int>(i), true);
    } else {
      list.SetListIndex(static_cast<int>(i));
    }
    return;
  }
  list.SetListIndex(-1);
}

void RestoreWindow(Session& session, forms::Window& window, std::string_view key) {
  const auto read = [&](std::string_view name, base::Twips current) {
    const std::string stored =
        session.GetSetting(key, name, base::PlainNumber(static_cast<double>(current.Value())));
    const double twips = base::Val(stored);
    return twips > -1e6 && twips < 1e6 ? base::Twips(static_cast<int>(twips)) : current;
  };
  window.Move({read("X", window.GetBounds().left), read("Y", window.GetBounds().top),
               read("W", window.Width()), read("H", window.Height())});
}

void SaveWindow(Session& session, const forms::Window& window, std::string_view key) {
  if (window.State() != forms::WindowState::kNormal) return;
  const auto write = [&](std::string_view name, base::Twips value) {
    session.SaveSetting(key, name, std::to_string(value.Value()));
  };
  write("X", window.GetBounds().left);
  write("Y", window.GetBounds().top);
  write("W", window.Width());
  write("H", window.Height());
}

bool HasTable(Session& session, std::string_view name) {
  try {
    session.Db.OpenTable(name);
    return true;
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kUnknownTable) throw;
    return false;
  }
}

std::string HourMinute(base::DateTime time) {
  return fmt::format("{:02}:{:02}", time.Hour(), time.Minute());
}

std::string YesNo(const std::string& text) { return text.empty() || text == "0" ? "No" : "Sì"; }

}  // namespace brenvo::core
