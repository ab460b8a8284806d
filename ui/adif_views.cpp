#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece ImportaAdifView() {
  return Column(
      {Form({Line({Wide(Item("File"))}),
             Line({Item("Letti"), Item("Nuovi"), Item("Ripetuti"), Item("Rifiutati")}),
             Line({Wide(Item("Periodo")), Item("Spostati"), Item("Riparati")}),
             Line({Wide(Item("Bande"))}), Line({Wide(Item("Modi"))}), Line({Wide(Item("Motivi"))}),
             Line({Wide(Item("Avvisi"))})}),
       Line({Frame("Valgono come Qsl ricevuta",
                   Line({Item("QslCartacea"), Item("QslLotw"), Item("QslEqsl"), Space()})),
             Frame("Contatti ripetuti", Item("ContattiRipetuti"))}),
       Wide(Item("Anteprima"), 3), Wide(Item("Riparazioni")),
       Line({Space(), Item("cmImporta"), Item("cmHelp"), Item("cmExit")})});
}

Piece EsportaAdifView() {
  return Column({Frame("Contatti da esportare", Item("Contatti")),
                 Frame("Lettere del file", Item("Lettere")), Space(),
                 Line({Space(), Item("cmEsporta"), Item("cmHelp"), Item("cmExit")})});
}

}  // namespace

const std::vector<View>& AdifViews() {
  static const std::vector<View> kViews = {{"ImportaAdif", ImportaAdifView},
                                           {"EsportaAdif", EsportaAdifView}};
  return kViews;
}

}  // namespace brenvo::ui
