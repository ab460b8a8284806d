// Lists filled from the station's tables.
#pragma once

#include <string_view>

#include "core/session.h"
#include "forms/list_field.h"
#include "forms/text_field.h"

namespace brenvo::core {

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

}  // namespace brenvo::core
