#include "screen_place.h"

#include <algorithm>

namespace brenvo::ui {
namespace {

// Of a title, in pixels: enough to take hold of.
constexpr int kTitle = 24, kHold = 60;

}  // namespace

QRect Within(QRect place, const QRect& room) {
  place.setWidth(std::min(place.width(), room.width()));
  place.setHeight(std::min(place.height(), room.height()));
  place.moveLeft(std::clamp(place.left(), room.left(), room.right() + 1 - place.width()));
  place.moveTop(std::clamp(place.top(), room.top(), room.bottom() + 1 - place.height()));
  return place;
}

QRect ScreenOf(const QRect& place, const QList<QRect>& screens, const QRect& usual) {
  const auto shown = [&](const QRect& screen) {
    const QRect both = screen & place;
    return both.isEmpty() ? 0LL : 1LL * both.width() * both.height();
  };
  QRect best = usual;
  long long most = 0;
  for (const QRect& screen : screens) {
    if (shown(screen) <= most) continue;
    most = shown(screen);
    best = screen;
  }
  return best;
}

bool IsInReach(const QRect& place, const QRect& room) {
  const QRect title(place.left(), place.top(), place.width(), kTitle);
  const QRect reached = title & room;
  return reached.width() >= std::min(kHold, place.width()) && reached.height() >= kTitle / 2;
}

}  // namespace brenvo::ui
