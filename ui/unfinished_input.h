// What is typed but not yet handed to its field: the toolkit keeps a date with half a year, or the
// text of an open cell, until the keyboard goes elsewhere.
#pragma once

namespace brenvo::ui {

// Hands it over as going elsewhere would. A command that runs from a key, a tool bar or a menu
// takes the keyboard from no field, and would work on what stood there before.
void FinishInput();

}  // namespace brenvo::ui
