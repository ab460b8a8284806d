#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece GaraContestView() {
  return Column(
      {Line({Wide(Item("Gara")), Wide(Item("Regole")), Item("Dal")}),
       Line({Item("MioCall"), Item("MioLocator"), Item("MioScambio"), Wide(Item("Categoria")),
             Item("Mail"), Item("Obiettivo")}),
       Drawn(Item("Regolamento"), Look::kNarrow),
       Line({Item("Banda"), Item("Modo"), Item("Call"), Item("RapportoDato"),
             Named(Item("SerialeDato"), "Nr"), Item("RapportoRicevuto"), Item("SerialeRicevuto"),
             Item("Scambio"), Item("Locator"), Space()}),
       Line({Item("Quando"), Named(Item("Punti"), "Punti"),
             Wide(Drawn(Item("Stato"), Look::kNarrow)), Item("Direzione")}),
       Line({Wide(Drawn(Item("Storia"), Look::kNarrow)), Wide(Drawn(Item("Cambi"), Look::kNarrow)),
             Wide(Drawn(Item("Parziali"), Look::kNarrow))}),
       Line({Wide(Drawn(Item("Totale"), Look::kNarrow)), Item("Ritmo"), Item("Tempo")}),
       Line({Wide(Item("Cerca")), Item("Conteggi")}), Wide(Split({Item("Qso"), Item("Verifiche")})),
       Item("Avviso")});
}

}  // namespace

const std::vector<View>& GaraViews() {
  static const std::vector<View> kViews = {{"GaraContest", GaraContestView, "Call"}};
  return kViews;
}

}  // namespace brenvo::ui
