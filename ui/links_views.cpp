#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece Entry() {
  return Column({Form({Line({Wide(Item("Sended"))})}), Drawn(Item("Collegamento"), Look::kNarrow)});
}

Piece SpotEntry() {
  return Column(
      {Form({Line({Wide(Item("Sended"))})}), Line({Wide(Drawn(Item("Collegamento"), Look::kNarrow)),
                                                   Wide(Drawn(Item("Entita"), Look::kNarrow))})});
}

Piece RadioView() { return Column({Item("Received"), SpotEntry()}); }

// What has not ended yet stands as the last line.
Piece TelnetView() {
  return Column({Item("Received"), Drawn(Item("InArrivo"), Look::kTail), SpotEntry()});
}

Piece ChatView() { return Column({Split({Item("Received"), Item("ReceivedPersonal")}), Entry()}); }

Piece FT736View() {
  return Framed("Picture1",
                Column({Line({Item("Accensione"), Wide(Drawn(Bare(Item("DVFO")), Look::kDisplay)),
                              Wide(Drawn(Bare(Item("DFrequenza")), Look::kDisplay), 2),
                              Wide(Drawn(Bare(Item("DModo")), Look::kDisplay))}),
                        Form({Line({Wide(Drawn(Item("Frequenza"), Look::kLasting))}),
                              Line({Wide(Drawn(Item("SMeter"), Look::kLasting))}),
                              Line({Wide(Item("SliderFrequenza"))})}),
                        Line({Item("cmVFOA"), Item("cmVFOB"), Space(), Item("cmUSB"), Item("cmLSB"),
                              Item("cmFM"), Space(), Item("cmBand")})}));
}

Piece DxView() {
  return Column({Form({Line({Wide(Item("Frequenza"))}), Line({Wide(Item("CallQso"))}),
                       Line({Wide(Item("Note"))})}),
                 Space(), Line({Space(), Item("cmInvia"), Item("cmCancel")})});
}

}  // namespace

const std::vector<View>& LinksViews() {
  static const std::vector<View> kViews = {{"TNC", RadioView},
                                           {"TNCtelnet", TelnetView},
                                           {"WWConv", ChatView},
                                           {"FT736", FT736View},
                                           {"DX", DxView}};
  return kViews;
}

}  // namespace brenvo::ui
