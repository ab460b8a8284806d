#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece ContestView() {
  const Piece contest = Column(
      {Form({Line({Item("DataContest", "Data", 9), Item("Banda", "Banda", 8),
                   Item("Frequenza", "Frequenza", 10)}),
             Line({Wide(Item("NomeContest", "Descrizione", 20)), Space(),
                   Item("Categoria", "Categoria", 10)})}),
       Line({Frame("Postazione", Line({Item("Fisso"), Item("Portatile")}), "Frame2"),
             Frame("Operatore", Line({Item("Singolo"), Item("Multi")}), "Frame3"),
             Frame("Moltiplicatori", Line({Item("Square"), Item("Country"), Item("Exch")}),
                   "Frame1"),
             Space()})});
  const Piece station = Form({Line({Wide(Item("CallContest", "Call", 10))}),
                              Line({Wide(Item("Qra", "Qra", 14))}),
                              Line({Wide(Item("Qth", "Qth", 14))}),
                              Line({Wide(Item("Indirizzo", "Indirizzo", 16))}),
                              Line({Item("Provincia", "Provincia", 4)})});
  const Piece place = Form({Line({Wide(Item("SQTH", "Qth", 14)),
                                  Item("SProvincia", "Provincia", 4)}),
                            Line({Item("Locator", "Locator", 9), Item("Altezza", "Alt.", 6)}),
                            Line({Wide(Item("RTX", "RTX", 16))}),
                            Line({Wide(Item("Antenna", "Antenna", 16))}),
                            Line({Item("Potenza", "Potenza", 7)})});
  return Column({Frame("Dati contest", contest, "Panel3D1"),
                 Line({Wide(Frame("Dati Brenvo", station, "Panel3D2")),
                       Wide(Frame("Dati stazione", place, "Panel3D3"))}),
                 Frame("Note", Column({Drawn(Item("Note", " "), Look::kLines)}), "Panel3D4"),
                 Line({Drawn(Item("Logo"), Look::kSmall), Space(),
                       Drawn(Item("Sign"), Look::kSmall)})});
}

Piece ContestQsoView() {
  return Column({Line({Item("cmNew"), Item("cmStatistiche"), Item("cmCheckCall"),
                       Item("cmAutoCall"), Space()}),
                 Item("QC")});
}

Piece ContestNewQsoView() {
  return Column(
      {Form({Line({Item("Giorno", "Giorno", 3), Labelled("Qtr", {Item("Qtr", " ", 6),
                                                                 Item("cmQtr")})}),
             Line({Wide(Item("CallQso", "Call", 12)), Item("Modo", "Modo", 6)})}),
       Line({Wide(Frame("Dato", Form({Line({Item("QrkD", "Qrk", 5), Item("ProgrD", "Progr.", 6)})}))),
             Wide(Frame("Ricevuto",
                        Form({Line({Item("QrkR", "Qrk", 5), Item("ProgrR", "Progr.", 6)})})))}),
       Form({Line({Item("Locator", "Locator", 9), Item("Qrb", "Qrb (km)", 7)}),
             Line({Item("Exc", "Exchange", 9),
                   Line({Item("Qsl"), Item("InLog"), Space()})}),
             Line({Wide(Item("Note", "Note", 20))})}),
       Space(), Line({Space(), Item("cmInsertR"), Item("cmInsertE")})});
}

Piece CheckCallContestView() {
  return Frame("",
               Column({Form({Line({Wide(Item("CallContest", "Call", 12))}),
                             Line({Wide(Item("Status", "Stato", 12))})}),
                       Space(), Line({Space(), Item("cmCheck"), Item("cmOk"), Item("cmCancel")})}),
               "Panel3D1");
}

Piece ContestSearchView() { return Column({Item("Spread1")}); }

Piece StatContestView() {
  const auto figure = [](const char* field, const char* label) {
    return Line({Wide(Item(field, label, 12))});
  };
  return Column(
      {Form({figure("TotaleQso", "Totale Qso"), figure("QrbTotale", "Qrb. totale")}),
       Frame("Moltiplicatori",
             Form({figure("NrSquare", "Square"), figure("NrCountry", "Country"),
                   figure("NrExch", "Exchange")}),
             "Frame1"),
       Form({figure("PunteggioTotale", "Punt. totale"), figure("MediaPunti", "Media Punti/Qso"),
             figure("QrbMax", "Massimo Qrb"), figure("QsoMaxQrb", "Qso Nr.")}),
       Space(), Line({Space(), Item("cmExit")})});
}

}  // namespace

const std::vector<View>& ContestViews() {
  static const std::vector<View> kViews = {{"Contest", ContestView},
                                           {"ContestQso", ContestQsoView},
                                           {"ContestNewQso", ContestNewQsoView},
                                           {"CheckCallContest", CheckCallContestView},
                                           {"ContestSearch", ContestSearchView},
                                           {"StatContest", StatContestView}};
  return kViews;
}

}  // namespace brenvo
