// What an operator does to a window, on fields of any kind.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string_view>

#include "forms/field.h"
#include "forms/window.h"

namespace brenvo::drive {

// All of them throw Refused when the field is of no fitting kind, is disabled where an operator
// would act on it, or has no such entry, row or column.

// A text into a text field; the entry of a list (equal, else equal but for blanks around it); on,
// off, grey; a number. The field's change event, and a list's click event.
void SetValue(forms::Field& field, std::string_view value);
// Focus, then character by character, each an event of its own for `runEvent` where there is one.
void TypeText(forms::Field& field, std::string_view text,
              const std::function<void(const std::function<void()>&)>& runEvent = {});
// "backspace", "enter", "escape", "menu" (the key that does as the right button), or one
// character; on a grid, for the current cell. Enter and Esc that the field has no use for
// press the dialog's default and cancel commands.
void PressKey(forms::Field& field, std::string_view key);
void Press(forms::Field& field);
// Entry n of a list, of an array of entries, of an option group; row n and column m of a grid.
void ClickAt(forms::Field& field, std::optional<std::int64_t> n, std::optional<std::int64_t> m);
void DoubleClickAt(forms::Field& field, std::optional<std::int64_t> n,
                   std::optional<std::int64_t> m);
void ClickHeading(forms::Field& field, std::int64_t column);
// On a table that the operator arranges (forms::GridArranger), a column by its heading, with or
// without the sign of its order: a click on the heading, with Shift for `add`; a filter under it,
// emptied, then typed as by TypeText; the column put where another one stands, drawn to twips. The
// mark of a row is set, or taken away.
void SortTable(forms::Field& field, std::string_view heading, bool add);
void FilterTable(forms::Field& field, std::string_view heading, std::string_view text,
                 const std::function<void(const std::function<void()>&)>& runEvent = {});
void MoveTableColumn(forms::Field& field, std::string_view heading, std::string_view where);
void DrawColumn(forms::Field& field, std::string_view heading, std::int64_t twips);
void ToggleMark(forms::Field& field, std::int64_t row);
// A check box, option or toggle; pressed until it shows `state`, not at all when it does already.
void Tick(forms::Field& field, std::string_view state);
void TickEntry(forms::Field& field, std::int64_t entry, std::string_view state);
// Turned over a character of the text by one, "up" or "down".
void TurnWheel(forms::Field& field, std::int64_t character, std::string_view way);
void SelectText(forms::Field& field, std::int64_t start, std::int64_t length);
void EditGridCell(forms::Field& field, std::int64_t row, std::int64_t column,
                  std::string_view text);
void RemoveGridRow(forms::Field& field, std::int64_t row);

}  // namespace brenvo::drive
