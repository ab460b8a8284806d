#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece ConfermeView() {
  return TableView({Item("Servizio"), Item("Stadio"), Item("SoloDubbi")},
                   Column({Line({Wide(Item("Candidati")), Item("QsoNr")}), Item("Stadi")}));
}

}  // namespace

const std::vector<View>& ConfermeViews() {
  static const std::vector<View> kViews = {{"Conferme", ConfermeView}};
  return kViews;
}

}  // namespace brenvo::ui
