#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece UserView() {
  const Piece station =
      Form({Line({Wide(Item("CallQso")), Wide(Item("Qra"))}),
            Line({Wide(Item("Qth")), Wide(Item("Indirizzo"))}),
            Line({Item("Provincia"), Item("Locator")}), Line({Wide(Item("ZX9TOK"))})});
  const Piece links = Column(
      {Form({Line({Item("TNCPort"), Item("TNCBaud"), Item("TNCEcho")}),
             Line({Wide(Item("ClusterNode"))}), Line({Wide(Item("TelnetCluster"))}),
             Line({Wide(Item("TelnetWWConv"))})}),
       Framed(
           "FrameChiamata",
           Line({Wide(Column({Titled(Item("File1"))})),
                 Wide(Column({Line({Item("cmCallFile"), Space()}),
                              Form({Line({Wide(Item("CallFile"))}),
                                    Line({Labelled("CallInterval", {Item("CallInterval"),
                                                                    Words("secondi")})})})}))}))});
  return Column({station, Item("Tab1"),
                 Framed("SSPanel1_0", Line({Wide(Item("DataGrid1"), 4), Wide(Item("Modo")),
                                            Wide(Item("File2"))})),
                 Framed("SSPanel1_1", links), Item("Avviso")});
}

Piece PrefixesView() {
  return Column({Form({Line({Item("Codice"), Item("ZonaCQ"), Item("ZonaITU"), Item("Continente")}),
                       Line({Wide(Item("Country"))})}),
                 Item("Spread1"), Item("Avviso")});
}

Piece CountriesView() {
  const Piece fields =
      Column({Form({Line({Item("Codice"), Item("Locator")}), Line({Wide(Item("Descrizione"))}),
                    Line({Wide(Item("Mappa"))}), Line({Wide(Item("Flag"))}),
                    Line({Item("X"), Item("Y")})}),
              Framed("Frame2", Form({Line({Item("Validita"), Item("Deleted")})})),
              Titled(Item("File1")), Line({Item("cmMappa"), Item("cmFlag"), Space()})});
  return Column({Line({Wide(Column({Titled(Item("LBCountry"))})), Wide(fields)}), Item("Avviso")});
}

Piece ProvincesView() {
  return Column(
      {Line({Wide(Column({Titled(Item("LBCountry"))})), Wide(Column({Titled(Item("LBProv"))}))}),
       Form({Line({Item("Codice"), Wide(Item("Descrizione"))})}), Item("Avviso")});
}

Piece NotesView() {
  return Column(
      {Titled(Item("LBNote")), Form({Line({Item("Codice"), Wide(Item("Nota"))})}), Item("Avviso")});
}

Piece HelpView() {
  return Column({Line({Wide(Column({Titled(Item("LBTipoNote"))})),
                       Wide(Column({Titled(Item("LBNote"))}), 2)}),
                 Line({Space(), Item("cmExit")})});
}

Piece StationsView() {
  return TableView({}, Form({Line({Wide(Item("Nome")), Item("Tipo"), Wide(Item("CallQso"))}),
                             Line({Item("Operatore"), Item("Locator"), Item("Provincia")}),
                             Line({Item("Country"), Item("Altezza"), Wide(Item("RTX"))}),
                             Line({Wide(Item("Antenna")), Item("Dal"), Item("Al")})}));
}

}  // namespace

const std::vector<View>& TablesViews() {
  static const std::vector<View> kViews = {{"User", UserView},
                                           {"TabellaPrefissi", PrefixesView},
                                           {"TabellaCountry", CountriesView},
                                           {"TabellaProvincie", ProvincesView},
                                           {"TabellaNote", NotesView},
                                           {"Help", HelpView},
                                           {"Stazioni", StationsView}};
  return kViews;
}

}  // namespace brenvo::ui
