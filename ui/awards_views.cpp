#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece StatSelView() {
  const Piece filters = Column(
      {Frame("Data Qso", Form({Line({Item("DataQsoI"), Item("DataQsoF")})})),
       Form({Line({Wide(Item("Country"))}),
             Line({Labelled("Banda", {Item("Banda"), Item("cmTutteLeBande"), Space()})})}),
       Frame("Qsl", Line({Item("QslRicevuta"), Item("QslInviata"), Item("QslDaInviare"), Space()})),
       Form({Line({Wide(Item("Note"))})}), Item("Elenca")});
  return Framed("Panel3D1", Line({Wide(filters, 2), Wide(Column({Titled(Item("Modo"))})),
                                  Wide(Column({Titled(Item("Propagazione"))}))}));
}

Piece AwardView() { return Column({Item("Spread1"), Drawn(Item("Selezione"), Look::kNarrow)}); }

Piece Matrix(const char* filter) {
  return Framed("SSPanel1",
                Column({Line({Item("CallQso"), Item("Locator"), Item(filter), Item("cmSearch"),
                              Item("Mappa"), Space()}),
                        Line({Item("Coordinate"), Wide(Drawn(Item("Avviso"), Look::kNarrow))}),
                        Item("Grid1")}));
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

}  // namespace brenvo::ui
