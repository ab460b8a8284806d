// A contact with the columns of Log as plain values.
#pragma once

#include <string>
#include <string_view>
#include <variant>
#include <vector>

#include "base/date.h"
#include "engine/recordset.h"

namespace brenvo::adif {

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

struct ContactColumn {
  std::string_view column;  // of Log
  std::string_view field;   // of a log file: its exact value under this program's own name
  std::variant<base::DateTime LogContact::*, std::string LogContact::*, double LogContact::*,
               bool LogContact::*>
      member;
};
// In the order of the table, QsoNr left out.
const std::vector<ContactColumn>& ContactColumns();

// The value of a column as text that SetColumnText takes back.
std::string ColumnText(const LogContact& contact, const ContactColumn& column);
// A text that is no value of the column leaves it as it was.
void SetColumnText(LogContact& contact, const ContactColumn& column, std::string_view text);
bool IsColumnEmpty(const LogContact& contact, const ContactColumn& column);

// The first column that cannot hold the contact's value: a date before the year 100 or a number too
// large. Null when the contact can be stored.
const ContactColumn* ColumnTooSmall(const LogContact& contact);

LogContact ReadContact(engine::Recordset& row);
// In the order of ContactColumns.
std::vector<engine::Value> RowOf(const LogContact& contact);
// Between Edit and Update.
void WriteColumn(engine::EditableRecordset& row, const LogContact& contact,
                 const ContactColumn& column);

}  // namespace brenvo::adif
