#include "core/lists.h"

#include <fmt/format.h>

#include "base/text.h"
#include "core/log_contact.h"
#include "core/shared_windows.h"
#include "core/texts.h"

namespace brenvo::core {

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

}  // namespace brenvo::core
