#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece PreferenzeView() {
  return TableView({Item("SoloCambiate")},
                   Column({Item("Spiegazione"), Form({Line({Wide(Item("Valore"))})})}));
}

Piece OraDelLogView() {
  return Column({Item("Domanda"), Item("Ultimo"), Item("Spiegazione"), Space(),
                 Line({Space(), Item("cmUtc"), Item("cmLocale"), Item("cmExit")})});
}

Piece ConvertiOraView() {
  return TableView(
      {}, Column({Form({Line({Item("Qso"), Wide(Item("Periodo"))})}), Item("Spiegazione")}));
}

Piece PaletteView() {
  return Column({Form({Line({Wide(Item("Cerca"))})}), Item("Comandi"),
                 Line({Space(), Item("cmEsegui"), Item("cmExit")})});
}

Piece TastiView() {
  return TableView({Item("SoloConTasto"), Item("SoloCambiati")},
                   Form({Line({Item("Tasto"), Space()})}));
}

}  // namespace

const std::vector<View>& UpkeepViews() {
  static const std::vector<View> kViews = {{"Preferenze", PreferenzeView},
                                           {"OraDelLog", OraDelLogView},
                                           {"ConvertiOra", ConvertiOraView},
                                           {"Palette", PaletteView},
                                           {"Tasti", TastiView}};
  return kViews;
}

}  // namespace brenvo::ui
