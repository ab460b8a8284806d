#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece DigitaleView() {
  return Column(
      {Line({Wide(Item("Cerca")), Item("SoloBisogni"), Item("SoloCQ"), Item("SoloMiei")}),
       Wide(Item("Decodifiche"), 5), Item("Programmi"),
       Line({Item("Conteggi"), Wide(Drawn(Item("Attesa"), Look::kNarrow)), Item("Ascolto")}),
       Item("Avviso")});
}

}  // namespace

const std::vector<View>& DigitalViews() {
  static const std::vector<View> kViews = {{"Digitale", DigitaleView}};
  return kViews;
}

}  // namespace brenvo::ui
