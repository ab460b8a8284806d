#include "room_views.h"

namespace brenvo::ui {
namespace {

// The picture scrolls by itself, so the window's own scroll bar has nothing to add on a screen.
Piece MappaSquareView() {
  return Column(
      {Line({Item("cmStampa"), Item("cmOnlySquare"), Item("Legenda"), Space()}), Item("PicBuf1")});
}

}  // namespace

const std::vector<View>& MapsViews() {
  static const std::vector<View> kViews = {{"MappaSquare", MappaSquareView}};
  return kViews;
}

}  // namespace brenvo::ui
