#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece GaraContestView() {
  return Column(
      {Line({Wide(Item("Gara"), 2), Wide(Item("Regole"), 2), Item("Dal"), Item("MioCall"),
             Item("MioLocator")}),
       Line({Item("MioScambio"), Wide(Item("Categoria")), Item("Mail"), Item("Obiettivo"),
             Wide(Drawn(Item("Regolamento"), Look::kNarrow), 2)}),
       Line({Item("Banda"), Item("Modo"), Item("Call"), Item("RapportoDato"), Named(Item("SerialeDato"), "Progr. dato"),
             Item("RapportoRicevuto"), Item("SerialeRicevuto"), Item("Scambio"), Item("Locator"),
             Item("Quando"), Wide(Item("Direzione"))}),
       Line({Named(Item("Punti"), "Punti"), Wide(Drawn(Item("Stato"), Look::kNarrow), 2),
             Wide(Drawn(Item("Cambi"), Look::kNarrow))}),
       Line({Wide(Drawn(Item("Storia"), Look::kNarrow)),
             Wide(Drawn(Item("Parziali"), Look::kNarrow))}),
       Line({Wide(Drawn(Item("Totale"), Look::kNarrow), 2), Item("Ritmo"), Item("Tempo")}),
       Line({Wide(Item("Cerca")), Item("Conteggi")}), Wide(Item("Qso"), 5),
       Wide(Item("Verifiche"), 2), Item("Avviso")});
}

}  // namespace

const std::vector<View>& GaraViews() {
  static const std::vector<View> kViews = {{"GaraContest", GaraContestView, "Call"}};
  return kViews;
}

}  // namespace brenvo::ui
