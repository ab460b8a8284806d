#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece DiplomiView() {
  return TableView(
      {Item("Diploma"), Item("Modo"), Item("Stazione"), Item("Banda"), Item("Mostra")},
      Column({Item("Casella"), Line({Wide(Item("Contatti"))}), Item("Totali")}));
}

}  // namespace

const std::vector<View>& DiplomiViews() {
  static const std::vector<View> kViews = {{"Diplomi", DiplomiView}};
  return kViews;
}

}  // namespace brenvo::ui
