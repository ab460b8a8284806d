#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece RtxView() {
  const Piece rig = Frame(
      "Rtx", Column({Item("Stato"), Line({Wide(Drawn(Bare(Item("Frequenza")), Look::kDial), 3)}),
                     Line({Wide(Drawn(Item("Banda"), Look::kDisplay)),
                           Wide(Drawn(Bare(Item("Modo")), Look::kDisplay))}),
                     Form({Line({Wide(Item("SMeter")), Item("Segnale")})}),
                     Line({Wide(Item("Split")), Item("Offerta")})}));
  const Piece rotor =
      Frame("Rotore", Line({Wide(Drawn(Item("Azimut"), Look::kDisplay)),
                            Wide(Column({Item("Rotore"), Item("Corrispondente")}), 3),
                            Form({Line({Item("Verso")})})}));
  return Column({rig, rotor, Item("Schede"), Framed("PanelMemorie", Item("Memorie")),
                 Framed("PanelModi", Item("Modi")), Framed("PanelTransverter", Item("Transverter")),
                 Item("Avviso")});
}

Piece ModelsView() {
  return TableView(
      {}, Form({Line({Wide(Item("Porta")), Item("Velocita")}), Line({Wide(Item("Indirizzo"))})}));
}

}  // namespace

const std::vector<View>& RigViews() {
  static const std::vector<View> kViews = {{"Rtx", RtxView}, {"Modelli", ModelsView}};
  return kViews;
}

}  // namespace brenvo::ui
