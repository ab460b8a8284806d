// What a script prints of windows and of the database.
#pragma once

#include <string>
#include <string_view>

#include "engine/recordset.h"
#include "forms/field.h"
#include "forms/window.h"
#include "recorder/line_sink.h"

namespace brenvo {

// `name` is how the script called the field or window. Refused when the field is of no fitting
// kind.

// `get W.F "text"`; on, off, grey; a number.
void PrintField(const LineSink& out, std::string_view name, Field& field);
// The same for Caption, Tag, Left, Top, Width, Height of a window; false when it is none of these.
bool PrintProperty(const LineSink& out, std::string_view name, const Window& window,
                   std::string_view property);
void PrintEnabled(const LineSink& out, std::string_view name, const Field& field);
void PrintGrid(const LineSink& out, std::string_view name, Field& field);
void PrintList(const LineSink& out, std::string_view name, Field& field);
void PrintRuns(const LineSink& out, std::string_view name, Field& field);
void PrintStatus(const LineSink& out, std::string_view name, const Window& window);
// `row`, the cells behind it, each after a tab; `rows N` at the end.
void PrintRows(const LineSink& out, Recordset& rows);

}  // namespace brenvo
