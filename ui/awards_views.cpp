#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece StatSelView() {
  const Piece filters = Column(
      {Frame("Data Qso",
             Form({Line({Item("DataQsoI", "Iniziale", 10), Item("DataQsoF", "Finale", 10)})})),
       Form({Line({Wide(Item("Country", "Country", 22))}), Line({Item("Banda", "Banda", 9)})}),
       Frame("Qsl", Line({Item("QslRicevuta"), Item("QslInviata"), Item("QslDaInviare"), Space()})),
       Form({Line({Wide(Item("Note", "Note", 22))})}), Item("Elenca")});
  return Frame("",
               Line({Wide(filters, 2), Wide(Column({Item("Modo", "Modo")})),
                     Wide(Column({Item("Propagazione", "Propagazione")}))}),
               "Panel3D1");
}

Piece AwardView() { return Column({Item("Spread1")}); }

Piece Matrix(const char* filter) {
  return Frame("",
               Column({Line({Item("CallQso", "Call", 12), Item("Locator", "Locator", 9),
                             Item(filter, "", 9), Item("cmSearch"), Item("Mappa"), Space()}),
                       Item("Coordinate"), Item("Grid1")}),
               "SSPanel1");
}

Piece HrdView() { return Matrix("Modo"); }
Piece HrdModeView() { return Matrix("Banda"); }

}  // namespace

const std::vector<View>& AwardsViews() {
  static const std::vector<View> kViews = {
      {"StatSel", StatSelView}, {"SField", AwardView},      {"SSQuare", AwardView},
      {"SPrefissi", AwardView}, {"SContinenti", AwardView}, {"SZone", AwardView},
      {"SCountry", AwardView},  {"SProvincie", AwardView},  {"SNote", AwardView},
      {"Hrd", HrdView},         {"HrdMode", HrdModeView}};
  return kViews;
}

}  // namespace brenvo
