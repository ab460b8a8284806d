// A contact of the table Log: its columns as data, and its values as plain ones. Whoever shows,
// stores, brings or carries away contacts goes by this list.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/date.h"
#include "engine/recordset.h"

namespace brenvo::core {

// The names of the columns, as statements write them (with blanks: in brackets).
namespace column {
inline constexpr std::string_view kQsoNr = "QsoNr", kDataQso = "DataQso", kCall = "Call",
                                  kManager = "Manager", kQra = "Qra", kQth = "Qth",
                                  kPrefisso = "Prefisso", kZonaCQ = "Zona CQ",
                                  kZonaITU = "Zona ITU", kContinente = "Continente",
                                  kCountry = "Country", kProvincia = "Provincia",
                                  kLocator = "Locator", kQrb = "Qrb", kBanda = "Banda",
                                  kFrequenza = "Frequenza", kPotenza = "Potenza", kModo = "Modo",
                                  kPropagazione = "Propagazione", kQrkDato = "QrkDato",
                                  kQrkRicevuto = "QrkRicevuto", kQslDaInviare = "QslDaInviare",
                                  kQslRicevuta = "QslRicevuta", kQslInviata = "QslInviata",
                                  kNote = "Note";
}  // namespace column

// Null is the same as empty or 0 here.
struct LogContact {
  base::DateTime DataQso;
  std::string Call, Manager, Qra, Qth, Prefisso, Continente, Country, Provincia, Locator, Banda,
      Modo, Propagazione, QrkDato, QrkRicevuto, Note;
  double ZonaCQ = 0, ZonaITU = 0, Qrb = 0, Potenza = 0;  // whole numbers
  double Frequenza = 0;                                  // MHz
  bool QslDaInviare = false, QslRicevuta = false, QslInviata = false;
  friend bool operator==(const LogContact&, const LogContact&) = default;
};

struct LogColumn {
  std::string_view name;
  std::variant<base::DateTime LogContact::*, std::string LogContact::*, double LogContact::*,
               bool LogContact::*>
      member;

  template <class Kind>
  bool Holds() const {
    return std::holds_alternative<Kind LogContact::*>(member);
  }
};
// In the order of the table, QsoNr left out.
std::span<const LogColumn> LogColumns();
// One of LogColumns, by its exact name.
const LogColumn& LogColumnOf(std::string_view name);

// The value of a column as text that SetColumnText takes back.
std::string ColumnText(const LogContact& contact, const LogColumn& column);
// A text that is no value of the column leaves it as it was.
void SetColumnText(LogContact& contact, const LogColumn& column, std::string_view text);
bool IsColumnEmpty(const LogContact& contact, const LogColumn& column);

// The first column that cannot hold the contact's value: a date before the year 100 or a number too
// large. Null when the contact can be stored.
const LogColumn* ColumnTooSmall(const LogContact& contact);

// A row that holds all columns in the order of the table, QsoNr first.
LogContact ReadContact(engine::Recordset& row);
LogContact ContactOf(std::span<const engine::Value> row);
// In the order of LogColumns.
std::vector<engine::Value> RowOf(const LogContact& contact);
// Between Edit and Update.
void WriteColumn(engine::EditableRecordset& row, const LogContact& contact,
                 const LogColumn& column);

}  // namespace brenvo::core
