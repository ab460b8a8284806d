#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece PreferenzeView() {
  return TableView({Item("SoloCambiate")},
                   Column({Item("Spiegazione"), Form({Line({Wide(Item("Valore"))})})}));
}

}  // namespace

const std::vector<View>& UpkeepViews() {
  static const std::vector<View> kViews = {{"Preferenze", PreferenzeView}};
  return kViews;
}

}  // namespace brenvo::ui
