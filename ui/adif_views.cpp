#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece ImportaAdifView() {
  return Column(
      {Form({Line({Wide(Item("File", "File"))}),
             Line({Item("Letti", "Record letti", 9), Item("Nuovi", "Nuovi", 9),
                   Item("Ripetuti", "Ripetuti", 9), Item("Rifiutati", "Rifiutati", 9),
                   Item("Spostati", "Spostati nel minuto", 9),
                   Item("Riparati", "Campi riparati", 9)}),
             Line({Wide(Item("Periodo", "Periodo", 28)), Wide(Item("Avvisi", "Avvisi", 28))}),
             Line({Wide(Item("Bande", "Bande"))}), Line({Wide(Item("Modi", "Modi"))}),
             Line({Wide(Item("Motivi", "Motivi rifiuto"))})}),
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

}  // namespace brenvo
