#include "contact.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "base/text.h"

namespace brenvo::contest {
namespace {

constexpr std::string_view kDuplicateMark = "Qso doppio";
constexpr std::string_view kExchangeMark = "[Exc=";

// One column of a snapshot's current row. Its place is asked once, not at each row.
class Cell {
 public:
  Cell(engine::Snapshot& rows, std::string_view column)
      : rows_(rows), place_(PlaceOf(rows, column)) {}
  engine::Value operator()() const { return rows_.Field(place_); }

 private:
  static std::size_t PlaceOf(const engine::Snapshot& rows, std::string_view column) {
    const std::vector<std::string>& columns = rows.Columns();
    const auto at = std::find(columns.begin(), columns.end(), column);
    if (at == columns.end()) {
      throw engine::DatabaseError(engine::DatabaseError::kItemNotFound,
                                  "Colonna non trovata: " + std::string(column));
    }
    return static_cast<std::size_t>(at - columns.begin());
  }

  engine::Snapshot& rows_;
  std::size_t place_;
};

class ScoredCells {
 public:
  explicit ScoredCells(engine::Snapshot& rows)
      : progrDato_(rows, "ProgrDato"),
        call_(rows, "Call"),
        locator_(rows, "Locator"),
        qrb_(rows, "Qrb"),
        punti_(rows, "Punti"),
        note_(rows, "Note") {}

  void Read(ScoredContact& contact) const {
    contact.ProgrDato = progrDato_().Integer();
    contact.Call = call_().Text();
    contact.Locator = locator_().Text();
    contact.Qrb = qrb_().Number();
    contact.Punti = punti_().Number();
    if (const engine::Value note = note_(); !note.IsNull()) contact.Note = note.Text();
  }

 private:
  Cell progrDato_, call_, locator_, qrb_, punti_, note_;
};

}  // namespace

std::string OfContest(std::string_view date, std::string_view band) {
  return fmt::format(" WHERE DateValue(DataContest)=DateValue('{}') AND Banda='{}'", date, band);
}

std::vector<Contact> ReadContacts(engine::Database& database, std::string_view date,
                                  std::string_view band) {
  const auto rows = database.OpenSnapshot("SELECT * FROM [Contest Qso]" + OfContest(date, band));
  const ScoredCells scored(*rows);
  const Cell progrRicevuto(*rows, "ProgrRicevuto"), giorno(*rows, "Giorno"), qtr(*rows, "Qtr"),
      qrkDato(*rows, "QrkDato"), qrkRicevuto(*rows, "QrkRicevuto"), modo(*rows, "Modo");
  std::vector<Contact> contacts;
  for (; !rows->EOF_(); rows->MoveNext()) {
    Contact& contact = contacts.emplace_back();
    scored.Read(contact);
    contact.ProgrRicevuto = progrRicevuto().Integer();
    contact.Giorno = giorno().Integer();
    contact.Qtr = qtr().Date();
    contact.QrkDato = qrkDato().Text();
    contact.QrkRicevuto = qrkRicevuto().Text();
    contact.Modo = modo().Text();
  }
  return contacts;
}

std::vector<ScoredContact> ReadScoredContacts(engine::Database& database, std::string_view date,
                                              std::string_view band) {
  const auto rows = database.OpenSnapshot(
      "SELECT ProgrDato,Call,Locator,Qrb,Punti,Note FROM [Contest Qso]" + OfContest(date, band));
  const ScoredCells scored(*rows);
  std::vector<ScoredContact> contacts;
  for (; !rows->EOF_(); rows->MoveNext()) scored.Read(contacts.emplace_back());
  return contacts;
}

std::string MarkDuplicate(std::string_view note, std::string_view serial) {
  return fmt::format("{} ({}) {}", kDuplicateMark, serial, base::Trim(note));
}

std::string MarkExchange(std::string_view note, std::string_view exchange) {
  return fmt::format("{}{}]{}", kExchangeMark, exchange, note);
}

bool IsDuplicate(const ScoredContact& contact) {
  return contact.Note && contact.Note->find(kDuplicateMark) != std::string::npos;
}

std::optional<std::string> ExchangeOf(const ScoredContact& contact) {
  if (!contact.Note) throw std::runtime_error("La nota del qso con " + contact.Call + " manca");
  const std::string& note = *contact.Note;
  const auto mark = note.find(kExchangeMark);
  const auto end = note.find(']');
  if (mark == std::string::npos || end == std::string::npos) return std::nullopt;
  const auto start = mark + kExchangeMark.size();
  return end < start ? std::string() : note.substr(start, end - start);
}

}  // namespace brenvo::contest
