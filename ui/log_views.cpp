#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece LogFormView() {
  const Piece fields = Column(
      {Form({Line({Labelled("Data", {Item("DataQso", " "), Item("Qtr", "Qtr", 6), Item("cmQtr")}),
                   Labelled("Qso nr.", {Item("QsoNr", " ", 8), Item("QsoTotali", "di", 8)})}),
             Line({Wide(Item("CallQso", "Call", 14)), Wide(Item("Manager", "Manager", 12))}),
             Line({Wide(Item("Qra", "Qra", 16)), Wide(Item("Qth", "Qth", 16))}),
             Line({Labelled("Prefisso", {Item("Prefisso", " ", 7), Item("ZonaCQ", "Zona CQ", 4),
                                         Item("ZonaITU", "Zona ITU", 4),
                                         Item("Continente", "Continente", 4), Space()})}),
             Line({Wide(Item("Country", "Country", 20)), Wide(Item("Provincia", "Provincia", 18))}),
             Line({Item("Locator", "Locator", 12), Item("Qrb", "Qrb (km)", 8)})}),
       Frame("Collegamento",
             Form({Line({Item("Banda", "Banda", 8), Item("Frequenza", "Frequenza", 11),
                         Item("Modo", "Modo", 9), Item("QrkDato", "Qrk dato", 7)}),
                   Line({Item("Potenza", "Potenza", 8),
                         Item("Propagazione", "Propagazione", 11), Space(),
                         Item("QrkRicevuto", "Qrk ricevuto", 7)})})),
       Frame("Qsl", Line({Item("QslDaInviare"), Item("QslInviata"), Item("QslRicevuta"), Space()})),
       Form({Item("Note", "Note")})});
  return Either("PanelGriglia", Column({Item("DataGrid1")}), Frame("", fields, "Panel3D1"));
}

Piece LogSearchView() {
  return Line(
      {Wide(Column(
           {Form({Line({Labelled("Data", {Item("cmTipoData"), Item("DataQso", " ", 10), Space()})}),
                  Line({Item("CallQso", "Call", 12)}),
                  Line({Wide(Item("Country", "Country", 22))}),
                  Line({Wide(Item("Provincia", "Provincia", 22))}),
                  Line({Item("Locator", "Locator", 12)}),
                  Line({Item("Banda", "Banda", 8), Item("Modo", "Modo", 8)}),
                  Line({Item("Propagazione", "Propagazione", 12)}),
                  Line({Wide(Item("Note", "Note", 24))})}),
            Frame("Qsl", Line({Item("QslDaInviare"), Item("QslRicevuta"),
                               Item("QslInviata"), Space()})),
            Space()})),
       Frame("Ordina per", Item("SortOrder"))});
}

Piece OldQsoView() { return Either("PanelGriglia", Column({Item("DataGrid1")}), Column({})); }

}  // namespace

const std::vector<View>& LogViews() {
  static const std::vector<View> kViews = {{"LogForm", LogFormView},
                                           {"LogSearch", LogSearchView},
                                           {"OldQsoForm", OldQsoView},
                                           {"OldQsoLocator", OldQsoView}};
  return kViews;
}

}  // namespace brenvo
