#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece DiplomiView() {
  // The award's own choices have a line of their own: all in one ask for a wide screen.
  return Column({Line({Wide(Item("Diploma")), Item("Modo"), Item("Banda"), Item("Mostra")}),
                 Line({Wide(Item("Cerca")), Wide(Item("Stazione"))}), Item("Tabella"),
                 Column({Drawn(Item("Casella"), Look::kNarrow), Line({Wide(Item("Contatti"))}),
                         Drawn(Item("Totali"), Look::kNarrow)}),
                 Item("Avviso")});
}

}  // namespace

const std::vector<View>& DiplomiViews() {
  static const std::vector<View> kViews = {{"Diplomi", DiplomiView}};
  return kViews;
}

}  // namespace brenvo::ui
