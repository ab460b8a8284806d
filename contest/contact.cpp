#include "contest/contact.h"

#include <fmt/format.h>

#include <algorithm>
#include <stdexcept>

#include "base/text.h"

namespace brenvo {
namespace {

constexpr std::string_view kDuplicateMark = "Qso doppio";
constexpr std::string_view kExchangeMark = "[Exc=";

// Where the columns stand in a result; asked once, not at each row.
class Places {
 public:
  explicit Places(const std::vector<std::string>& columns) : columns_(columns) {}
  std::size_t Of(std::string_view name) const {
    const auto at = std::find(columns_.begin(), columns_.end(), name);
    if (at == columns_.end()) {
      throw DatabaseError(DatabaseError::kItemNotFound,
                          "Colonna non trovata: " + std::string(name));
    }
    return static_cast<std::size_t>(at - columns_.begin());
  }

 private:
  const std::vector<std::string>& columns_;
};

}  // namespace

std::string OfContest(std::string_view date, std::string_view band) {
  return fmt::format(" WHERE DateValue(DataContest)=DateValue('{}') AND Banda='{}'", date, band);
}

std::vector<Contact> ReadContacts(Database& database, std::string_view date,
                                  std::string_view band) {
  const auto rows = database.OpenSnapshot("SELECT * FROM [Contest Qso]" + OfContest(date, band));
  const Places places(rows->Columns());
  const std::size_t progrDato = places.Of("ProgrDato"), progrRicevuto = places.Of("ProgrRicevuto"),
                    giorno = places.Of("Giorno"), qtr = places.Of("Qtr"), call = places.Of("Call"),
                    qrkDato = places.Of("QrkDato"), qrkRicevuto = places.Of("QrkRicevuto"),
                    locator = places.Of("Locator"), modo = places.Of("Modo"),
                    qrb = places.Of("Qrb"), punti = places.Of("Punti"), note = places.Of("Note"),
                    qsl = places.Of("Qsl");
  std::vector<Contact> contacts;
  for (; !rows->EOF_(); rows->MoveNext()) {
    Contact& contact = contacts.emplace_back();
    contact.ProgrDato = rows->Field(progrDato).Integer();
    contact.ProgrRicevuto = rows->Field(progrRicevuto).Integer();
    contact.Giorno = rows->Field(giorno).Integer();
    contact.Qtr = rows->Field(qtr).Date();
    contact.Call = rows->Field(call).Text();
    contact.QrkDato = rows->Field(qrkDato).Text();
    contact.QrkRicevuto = rows->Field(qrkRicevuto).Text();
    contact.Locator = rows->Field(locator).Text();
    contact.Modo = rows->Field(modo).Text();
    contact.Qrb = rows->Field(qrb).Number();
    contact.Punti = rows->Field(punti).Number();
    if (const Value text = rows->Field(note); !text.IsNull()) contact.Note = text.Text();
    contact.Qsl = rows->Field(qsl).Bool();
  }
  return contacts;
}

std::string MarkDuplicate(std::string_view note, std::string_view serial) {
  return fmt::format("{} ({}) {}", kDuplicateMark, serial, Trim(note));
}

std::string MarkExchange(std::string_view note, std::string_view exchange) {
  return fmt::format("{}{}]{}", kExchangeMark, exchange, note);
}

bool IsDuplicate(const Contact& contact) {
  return contact.Note && contact.Note->find(kDuplicateMark) != std::string::npos;
}

std::optional<std::string> ExchangeOf(const Contact& contact) {
  if (!contact.Note) throw std::runtime_error("La nota del qso con " + contact.Call + " manca");
  const std::string& note = *contact.Note;
  const auto mark = note.find(kExchangeMark);
  const auto end = note.find(']');
  if (mark == std::string::npos || end == std::string::npos) return std::nullopt;
  const auto start = mark + kExchangeMark.size();
  return end < start ? std::string() : note.substr(start, end - start);
}

}  // namespace brenvo
