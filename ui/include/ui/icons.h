// Pictures of the commands, drawn for this program.
#pragma once

#include <QIcon>
#include <string_view>

namespace brenvo::ui {

// The picture of a command (cmInsert, cmExit, ...), in the colour of the desktop's words and at
// any size; null when the command has none.
QIcon CommandIcon(std::string_view command);

// The program's own picture.
QIcon ProgramIcon();

}  // namespace brenvo::ui
