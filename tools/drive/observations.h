// What a script prints of windows and of the database.
#pragma once

#include <string_view>

#include "engine/recordset.h"
#include "forms/field.h"
#include "forms/window.h"
#include "recorder/line_sink.h"

namespace brenvo::drive {

// `name` is how the script called the field or window. Refused when the field is of no fitting
// kind. Texts stand in double quotes with the escapes of `recorder/quote.h`; numbers are plain.

// `get W.F "text"`; a check box, an option or a toggle `on`, `off`, `grey`; a slider, a gauge or a
// group of options its number; any other field its caption.
void PrintField(const recorder::LineSink& out, std::string_view name, forms::Field& field);
// The same for Caption, Tag, Left, Top, Width, Height (twips) of a window; false when it is none of
// these.
bool PrintProperty(const recorder::LineSink& out, std::string_view name,
                   const forms::Window& window, std::string_view property);
// `enabled W.F yes`, or `no`.
void PrintEnabled(const recorder::LineSink& out, std::string_view name, const forms::Field& field);
// `grid W.G R C`, then R lines of C cells with tabs between, the heading first, "*" before a row
// that is marked.
void PrintGrid(const recorder::LineSink& out, std::string_view name, forms::Field& field);
// `list W.F N`, then N lines of a text, "*" before those that are chosen or checked.
void PrintList(const recorder::LineSink& out, std::string_view name, forms::Field& field);
// `text W.F`, then a line a run of one colour: `#rrggbb "text"`.
void PrintRuns(const recorder::LineSink& out, std::string_view name, forms::Field& field);
// `status W "panel" "panel"`, all panels.
// A line a panel whose words have a weight: "marks LogForm 2 new pale "..."".
void PrintMarks(const recorder::LineSink& out, std::string_view name, const forms::Window& window);
void PrintStatus(const recorder::LineSink& out, std::string_view name, const forms::Window& window);
// A line a row: `row` and its cells, a tab before each, Null as `NULL`; then `rows N`.
void PrintRows(const recorder::LineSink& out, engine::Recordset& rows);

}  // namespace brenvo::drive
