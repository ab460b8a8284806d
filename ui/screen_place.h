// Where a window is brought back to.
#pragma once

#include <QList>
#include <QRect>

namespace brenvo::ui {

// Moves and shrinks a place until it lies within the room.
QRect Within(QRect place, const QRect& room);

// The screen that shows most of a place; the usual one where none shows any of it, because the
// monitor that it was on is gone.
QRect ScreenOf(const QRect& place, const QList<QRect>& screens, const QRect& usual);

// False where a hand cannot reach the title of a window at this place.
bool IsInReach(const QRect& place, const QRect& room);

}  // namespace brenvo::ui
