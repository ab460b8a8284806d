// The small routines that all windows share.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>

#include "core/places.h"
#include "core/session.h"
#include "core/station_profile.h"
#include "engine/recordset.h"
#include "forms/list_field.h"

namespace brenvo::core {

// Blanks alone are empty.
bool IsEmptyField(std::string_view value);
// True when the text converts to a date; otherwise shows "Data errata".
bool IsValidDate(Session& session, std::string_view text);
// The column's value as text, empty for Null.
std::string FieldText(engine::Recordset& record, std::string_view column);

// Keystroke filters; 0 swallows the key.
char32_t DigitsOnlyKey(char32_t key);  // digits and backspace
char32_t NumericKey(char32_t key);     // the same, "-", "." and ","
char32_t UpperKey(char32_t key);

// Each empties the list and fills it.
void LoadBands(Session& session, forms::ListField& list);
void LoadModes(Session& session, forms::ListField& list);
void LoadPropagations(Session& session, forms::ListField& list);
void LoadBaudRates(forms::ListField& list);
void LoadComPorts(forms::ListField& list);
// Code in six characters, then the description.
void LoadCountries(Session& session, forms::ListField& list);
// Code in four characters, then the description.
void LoadProvinces(Session& session, forms::ListField& list, std::string_view country);
// "ALL": type in six characters, then the note; "TIPO": the types; else the notes of that type.
void LoadNotes(Session& session, forms::ListField& list, std::string_view kind);
// As a contact's and a selection's lists offer them: code in five characters, then the description.
void LoadCountryChoices(Session& session, forms::ListField& list);
void LoadProvinceChoices(Session& session, forms::ListField& list, std::string_view country);
// One column of a SELECT, an entry a row.
void LoadFrom(Session& session, forms::ListField& list, std::string_view select,
              std::string_view column);

// Asks the notes dialog, and puts what is picked there behind the field's text.
void AppendPickedNote(Session& session, forms::TextField& note);

// The entry whose first `width` characters are `code` padded to them: becomes the current entry,
// or is marked where the list's Tag is "MULTI". None: no entry is current.
void SelectListEntry(forms::ListField& list, std::string_view code, std::size_t width);

// Place and size by section `key` of the settings store; what is not stored stays.
void RestoreWindow(Session& session, forms::Window& window, std::string_view key);
// Only of a window that is neither minimised nor maximised.
void SaveWindow(Session& session, const forms::Window& window, std::string_view key);

// Whether the database has the table: one that was delivered earlier may lack it.
bool HasTable(Session& session, std::string_view name);

// "hh:nn" of a time.
std::string HourMinute(base::DateTime time);
// "Sì" and "No" for a yes/no column's text, as grids show it.
std::string YesNo(const std::string& text);

// A typed value that its column cannot hold, in words for the operator.
class RefusedValue : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};
// The number that `typed` begins with, into a column of the record being written. RefusedValue when
// the column cannot hold it; the record is dropped then.
void SetNumber(engine::EditableRecordset& row, std::string_view column, std::string_view typed);
// Runs `body`; a RefusedValue is told and gives false.
template <class Body>
bool TryValues(Session& session, Body body) {
  try {
    body();
    return true;
  } catch (const RefusedValue& refused) {
    session.Messages().Show(platform::MessageIcon::kExclamation, "", refused.what());
    return false;
  }
}

// Runs `body`, telling a RefusedValue; a DatabaseError 3022 shows `repeated` with the critical icon
// and gives false, any other one ends the program under `operation`.
template <class Body>
bool TryWrite(Session& session, std::string_view operation, std::string_view repeated, Body body) {
  try {
    return TryValues(session, body);
  } catch (const engine::DatabaseError& failure) {
    if (failure.Number != engine::DatabaseError::kDuplicateKey) session.EndWith(failure, operation);
    session.Messages().Show(platform::MessageIcon::kCritical, "", repeated);
    return false;
  }
}

}  // namespace brenvo::core
