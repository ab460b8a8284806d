#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece LogFormView() {
  const Piece fields = Column(
      {Form({Line({Labelled("DataQso", {Item("DataQso"), Item("Qtr"), Item("cmQtr")}),
                   Labelled("QsoNr", {Item("QsoNr"), Item("QsoTotali")})}),
             Line({Wide(Item("CallQso")), Wide(Item("Manager"))}),
             Line({Wide(Item("Qra")), Wide(Item("Qth"))}),
             Line({Labelled("Prefisso", {Item("Prefisso"), Item("ZonaCQ"), Item("ZonaITU"),
                                         Item("Continente"), Space()})}),
             Line({Wide(Item("Country")), Wide(Item("Provincia"))}),
             Line({Item("Locator"), Item("Qrb")})}),
       Frame("Collegamento",
             Form({Line({Item("Banda"), Item("Frequenza"), Item("Modo"), Item("QrkDato")}),
                   Line({Item("Potenza"), Item("Propagazione"), Space(), Item("QrkRicevuto")})})),
       Frame("Qsl", Line({Item("QslDaInviare"), Item("QslInviata"), Item("QslRicevuta"),
                          Item("QslDi"), Space(), Item("cmAnnulla")})),
       Form({Item("Note")}), Item("Avviso")});
  return Either("PanelGriglia", Column({Item("DataGrid1")}), Framed("Panel3D1", fields));
}

Piece LogSearchView() {
  return Line(
      {Wide(Column(
           {Form({Line({Labelled("DataQso", {Item("cmTipoData"), Item("DataQso"), Space()})}),
                  Line({Item("CallQso")}), Line({Wide(Item("Country"))}),
                  Line({Wide(Item("Provincia"))}), Line({Item("Locator")}),
                  Line({Item("Banda"), Item("Modo")}), Line({Item("Propagazione")}),
                  Line({Wide(Item("Note"))})}),
            Frame("Qsl",
                  Line({Item("QslDaInviare"), Item("QslRicevuta"), Item("QslInviata"), Space()})),
            Space()})),
       Frame("Ordina per", Item("SortOrder"))});
}

Piece OldQsoView() { return Either("PanelGriglia", Column({Item("DataGrid1")}), Column({})); }

Piece StationPageView() {
  return TableView(
      {Item("CallQso")},
      Column({Item("Matrice"), Form({Line({Wide(Item("Nomi")), Wide(Item("Luoghi"))}),
                                     Line({Wide(Item("Locatori"))}), Line({Wide(Item("Entita"))}),
                                     Line({Wide(Item("Direzione"))}), Line({Wide(Item("Sole"))}),
                                     Line({Wide(Item("Nota"))})})}));
}

Piece HistoryView() { return TableView({}, Column({Item("Contatti"), Item("Cambiamenti")})); }

}  // namespace

const std::vector<View>& LogViews() {
  static const std::vector<View> kViews = {
      {"LogForm", LogFormView},   {"LogSearch", LogSearchView, "CallQso"},
      {"OldQsoForm", OldQsoView}, {"OldQsoLocator", OldQsoView},
      {"Storia", HistoryView},    {"Corrispondente", StationPageView}};
  return kViews;
}

}  // namespace brenvo::ui
