#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece GaraContestView() {
  std::vector<Piece> keys;
  for (int i = 1; i <= 8; ++i) keys.push_back(Item("cmTasto" + std::to_string(i)));
  keys.push_back(Space());
  return Column(
      {Line({Wide(Item("Gara")), Wide(Item("Regole")), Item("Dal")}),
       Line({Item("MioCall"), Item("MioLocator"), Item("MioScambio"), Item("Obiettivo"), Space()}),
       Line({Wide(Item("Categoria")), Item("Mail")}), Drawn(Item("Regolamento"), Look::kNarrow),
       Line({Item("Banda"), Item("Modo"), Item("Call"), Item("RapportoDato"),
             Named(Item("SerialeDato"), "Nr"), Space()}),
       Line({Item("RapportoRicevuto"), Item("SerialeRicevuto"), Item("Scambio"), Item("Locator"),
             Item("Quando"), Space()}),
       Line(std::move(keys)),
       Line({Named(Item("Punti"), "Punti"), Wide(Drawn(Item("Stato"), Look::kNarrow)),
             Item("Direzione")}),
       Line({Wide(Drawn(Item("Storia"), Look::kNarrow)), Wide(Drawn(Item("Cambi"), Look::kNarrow)),
             Wide(Drawn(Item("Parziali"), Look::kNarrow))}),
       Line({Wide(Drawn(Item("Totale"), Look::kNarrow)), Item("Ritmo"),
             Wide(Drawn(Item("Tempo"), Look::kNarrow))}),
       Line({Wide(Item("Cerca")), Item("Conteggi")}), Wide(Split({Item("Qso"), Item("Verifiche")})),
       Item("Avviso")});
}

}  // namespace

const std::vector<View>& GaraViews() {
  static const std::vector<View> kViews = {{"GaraContest", GaraContestView, "Call"}};
  return kViews;
}

}  // namespace brenvo::ui
