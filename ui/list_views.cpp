#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece ElencoView() { return ArrangedView({Item("Titolo")}); }
Piece ColonneView() { return TableView({}); }
Piece CambiaColonnaView() {
  return Column(
      {Form({Line({Item("Colonna"), Wide(Item("Valore"))})}), Item("Quanti"), TableView({})});
}
Piece ContaQsoView() { return ArrangedView({Item("Colonna")}); }

}  // namespace

const std::vector<View>& ListViews() {
  static const std::vector<View> kViews = {{"Elenco", ElencoView},
                                           {"Colonne", ColonneView},
                                           {"CambiaColonna", CambiaColonnaView},
                                           {"ContaQso", ContaQsoView}};
  return kViews;
}

}  // namespace brenvo::ui
