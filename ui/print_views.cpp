#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece Measure(const char* slider, const char* value, const char* label) {
  return Line({Labelled(label, {Wide(Item(slider, " ")), Item(value, "", 6)})});
}

Piece StampaQslView() {
  return Column(
      {Frame("Formato etichette (in mm.)",
             Form({Measure("AltezzaEtichetta", "VAltezzaEtichetta", "Altezza"),
                   Measure("LarghezzaEtichetta", "VLarghezzaEtichetta", "Larghezza")})),
       Frame("Spaziatura etichette (in mm.)",
             Form({Measure("SpazOrizzontale", "VSpazOrizzontale", "Orizzontale"),
                   Measure("SpazVerticale", "VSpazVerticale", "Verticale")})),
       Frame("Margini (in mm.)",
             Form({Measure("MargineSuperiore", "VMargineSuperiore", "Superiore"),
                   Measure("MargineSinistro", "VMargineSinistro", "Sinistro")})),
       Frame("Etichette per fila", Form({Measure("EtichXFila", "VEtichXFila", "")})),
       Frame("Tipo etichetta", Line({Item("DatiQso"), Item("DatiStazione"), Space()})),
       Space(), Line({Space(), Item("cmPrint"), Item("cmUpdate"), Item("cmHelp"), Item("cmExit")})});
}

}  // namespace

const std::vector<View>& PrintViews() {
  static const std::vector<View> kViews = {{"StampaQsl", StampaQslView}};
  return kViews;
}

}  // namespace brenvo
