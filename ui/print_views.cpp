#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece Measure(const char* slider, const char* value) {
  return Line({Labelled(slider, {Wide(Item(slider)), Item(value)})});
}

Piece StampaQslView() {
  return Column(
      {Form({Line({Wide(Item("Foglio"))})}), Drawn(Item("Avviso"), Look::kNarrow),
       Frame("Formato etichette (in mm.)",
             Form({Measure("AltezzaEtichetta", "VAltezzaEtichetta"),
                   Measure("LarghezzaEtichetta", "VLarghezzaEtichetta")})),
       Frame("Spaziatura etichette (in mm.)", Form({Measure("SpazOrizzontale", "VSpazOrizzontale"),
                                                    Measure("SpazVerticale", "VSpazVerticale")})),
       Frame("Margini (in mm.)", Form({Measure("MargineSuperiore", "VMargineSuperiore"),
                                       Measure("MargineSinistro", "VMargineSinistro")})),
       Frame("Etichette per fila",
             Form({Line({Line({Wide(Bare(Item("EtichXFila"))), Item("VEtichXFila")})})})),
       Frame("Tipo etichetta", Line({Item("DatiQso"), Item("DatiStazione"), Space()})), Space(),
       Line({Space(), Item("cmPrint"), Item("cmUpdate"), Item("cmHelp"), Item("cmExit")})});
}

Piece GestioneQslView() {
  return TableView({Item("Mostra"), Item("Via"), Item("Dal"), Item("Al")},
                   Column({Form({Line({Item("ViaCartolina"), Item("DataCartolina"), Space()})}),
                           Item("Conteggi")}));
}

}  // namespace

const std::vector<View>& PrintViews() {
  static const std::vector<View> kViews = {{"StampaQsl", StampaQslView},
                                           {"GestioneQsl", GestioneQslView}};
  return kViews;
}

}  // namespace brenvo::ui
