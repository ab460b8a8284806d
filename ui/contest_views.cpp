#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece ContestView() {
  const Piece contest = Column(
      {Form({Line({Item("DataContest"), Item("Banda"), Item("Frequenza")}),
             Line({Wide(Item("NomeContest")), Space(), Item("Categoria")})}),
       Line({Framed("Frame2", Line({Item("Fisso"), Item("Portatile")})),
             Framed("Frame3", Line({Item("Singolo"), Item("Multi")})),
             Framed("Frame1", Line({Item("Square"), Item("Country"), Item("Exch")})), Space()})});
  const Piece station =
      Form({Line({Wide(Item("CallContest"))}), Line({Wide(Item("Qra"))}), Line({Wide(Item("Qth"))}),
            Line({Wide(Item("Indirizzo"))}), Line({Item("Provincia")})});
  const Piece place = Form({Line({Wide(Item("SQTH")), Item("SProvincia")}),
                            Line({Item("Locator"), Item("Altezza")}), Line({Wide(Item("RTX"))}),
                            Line({Wide(Item("Antenna"))}), Line({Item("Potenza")})});
  return Column({Framed("Panel3D1", contest),
                 Line({Wide(Framed("Panel3D2", station)), Wide(Framed("Panel3D3", place))}),
                 Line({Wide(Framed("Panel3D4", Column({Drawn(Bare(Item("Note")), Look::kLines)}))),
                       Drawn(Item("Logo"), Look::kSmall), Drawn(Item("Sign"), Look::kSmall)})});
}

Piece ContestQsoView() {
  return Column({Line({Item("cmNew"), Item("cmStatistiche"), Item("cmCheckCall"),
                       Item("cmAutoCall"), Space()}),
                 Item("QC")});
}

Piece ContestNewQsoView() {
  return Column({Form({Line({Item("Giorno"), Labelled("Qtr", {Item("Qtr"), Item("cmQtr")})}),
                       Line({Wide(Item("CallQso")), Item("Modo")})}),
                 Line({Wide(Frame("Dato", Form({Line({Named(Item("QrkD"), "Qrk"),
                                                      Named(Item("ProgrD"), "Progr.")})}))),
                       Wide(Frame("Ricevuto", Form({Line({Named(Item("QrkR"), "Qrk"),
                                                          Named(Item("ProgrR"), "Progr.")})})))}),
                 Form({Line({Item("Locator"), Named(Item("Qrb"), "Qrb (km)")}),
                       Line({Item("Exc"), Line({Item("Qsl"), Item("InLog"), Space()})}),
                       Line({Wide(Item("Note"))})}),
                 Space(), Line({Wide(Item("Avviso")), Item("cmInsertR"), Item("cmInsertE")})});
}

Piece CheckCallContestView() {
  return Framed(
      "Panel3D1",
      Column(
          {Form({Line({Wide(Item("CallContest"))}), Line({Wide(Named(Item("Status"), "Stato"))})}),
           Space(), Line({Space(), Item("cmCheck"), Item("cmOk"), Item("cmCancel")})}));
}

Piece ContestSearchView() { return Column({Item("Spread1")}); }

Piece StatContestView() {
  return Column(
      {Form({Line({Wide(Item("TotaleQso"))}), Line({Wide(Item("QrbTotale"))})}),
       Framed("Frame1", Form({Line({Wide(Item("NrSquare"))}), Line({Wide(Item("NrCountry"))}),
                              Line({Wide(Item("NrExch"))})})),
       Form({Line({Wide(Item("PunteggioTotale"))}), Line({Wide(Item("MediaPunti"))}),
             Line({Wide(Item("QrbMax"))}), Line({Wide(Item("QsoMaxQrb"))})}),
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

}  // namespace brenvo::ui
