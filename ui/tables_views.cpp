#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece UserView() {
  const Piece station = Form(
      {Line({Wide(Item("CallQso", "Call", 10)), Wide(Item("Qra", "Qra", 14))}),
       Line({Wide(Item("Qth", "Qth", 14)), Wide(Item("Indirizzo", "Indirizzo", 16))}),
       Line({Item("Provincia", "Provincia", 4), Item("Locator", "Locator", 9)}),
       Line({Wide(Item("ZX9TOK", "Path manager ZX9TOK", 20))})});
  const Piece links = Column(
      {Form({Line({Item("TNCPort", "Port", 7), Item("TNCBaud", "Baud", 7), Item("TNCEcho")}),
             Line({Wide(Item("ClusterNode", "Radio cluster", 16))}),
             Line({Wide(Item("TelnetCluster", "Telnet cluster", 16))}),
             Line({Wide(Item("TelnetWWConv", "Telnet WWConv", 16))})}),
       Frame("Chiamata automatica",
             Line({Wide(Column({Item("File1", "File disponibili")})),
                   Wide(Column({Line({Item("cmCallFile"), Space()}),
                                Form({Line({Wide(Item("CallFile", "File wav", 12))}),
                                      Line({Labelled("Intervallo tra le chiamate",
                                                     {Item("CallInterval", " ", 5),
                                                      Words("secondi")})})})}))}),
             "FrameChiamata")});
  return Column({station, Item("Tab1"),
                 Frame("",
                       Line({Wide(Item("DataGrid1"), 4), Wide(Item("Modo")), Wide(Item("File2"))}),
                       "SSPanel1_0"),
                 Frame("", links, "SSPanel1_1")});
}

Piece PrefixesView() {
  return Column(
      {Form({Line({Item("Codice", "Prefisso", 9), Item("ZonaCQ", "Zona CQ", 4),
                   Item("ZonaITU", "Zona ITU", 4), Item("Continente", "Continente", 4)}),
             Line({Wide(Item("Country", "Country", 24))})}),
       Item("Spread1")});
}

Piece CountriesView() {
  const Piece fields = Column(
      {Form({Line({Item("Codice", "Codice", 7), Item("Locator", "Locator", 9)}),
             Line({Wide(Item("Descrizione", "Descrizione", 20))}),
             Line({Wide(Item("Mappa", "Mappa", 16))}), Line({Wide(Item("Flag", "Flag", 16))}),
             Line({Item("X", "X", 6), Item("Y", "Y", 6)})}),
       Frame("Validità",
             Form({Line({Item("Validita", "Dal", 9), Item("Deleted", "Al", 9)})}), "Frame2"),
       Item("File1", "File disponibili"), Line({Item("cmMappa"), Item("cmFlag"), Space()})});
  return Line({Wide(Column({Item("LBCountry", "Country")})), Wide(fields)});
}

Piece ProvincesView() {
  return Column({Line({Wide(Column({Item("LBCountry", "Country")})),
                       Wide(Column({Item("LBProv", "Provincie")}))}),
                 Form({Line({Item("Codice", "Codice", 6),
                             Wide(Item("Descrizione", "Descrizione", 20))})})});
}

Piece NotesView() {
  return Column({Item("LBNote", "Note"),
                 Form({Line({Item("Codice", "Tipo", 7), Wide(Item("Nota", "Nota", 20))})})});
}

Piece HelpView() {
  return Column({Line({Wide(Column({Item("LBTipoNote", "Tipo")})),
                       Wide(Column({Item("LBNote", "Nota")}), 2)}),
                 Line({Space(), Item("cmExit")})});
}

}  // namespace

const std::vector<View>& TablesViews() {
  static const std::vector<View> kViews = {{"User", UserView},
                                           {"TabellaPrefissi", PrefixesView},
                                           {"TabellaCountry", CountriesView},
                                           {"TabellaProvincie", ProvincesView},
                                           {"TabellaNote", NotesView},
                                           {"Help", HelpView}};
  return kViews;
}

}  // namespace brenvo
