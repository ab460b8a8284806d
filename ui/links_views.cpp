#include "ui/room_views.h"

namespace brenvo {
namespace {

Piece TerminalView() {
  return Column({Item("Received"), Form({Line({Wide(Item("Sended", "Invio"))})})});
}

Piece ChatView() {
  return Column({Split({Item("Received"), Item("ReceivedPersonal")}),
                 Form({Line({Wide(Item("Sended", "Invio"))})})});
}

Piece FT736View() {
  return Frame(
      "",
      Column({Line({Item("Accensione"), Wide(Drawn(Item("DVFO", " ", 8), Look::kDisplay)),
                    Wide(Drawn(Item("DFrequenza", " ", 12), Look::kDisplay), 2),
                    Wide(Drawn(Item("DModo", " ", 6), Look::kDisplay))}),
              Form({Line({Wide(Drawn(Item("Frequenza", "Frequenza (kHz)", 12), Look::kLasting))}),
                    Line({Wide(Drawn(Item("SMeter", "S-meter"), Look::kLasting))}),
                    Line({Wide(Item("SliderFrequenza", "Sintonia"))})}),
              Line({Item("cmVFOA"), Item("cmVFOB"), Space(), Item("cmUSB"), Item("cmLSB"),
                    Item("cmFM"), Space(), Item("cmBand")})}),
      "Picture1");
}

Piece DxView() {
  return Column({Form({Line({Wide(Item("Frequenza", "Frequenza", 12))}),
                       Line({Wide(Item("CallQso", "Call", 12))}),
                       Line({Wide(Item("Note", "Note", 24))})}),
                 Space(), Line({Space(), Item("cmInvia"), Item("cmCancel")})});
}

}  // namespace

const std::vector<View>& LinksViews() {
  static const std::vector<View> kViews = {{"TNC", TerminalView},
                                           {"TNCtelnet", TerminalView},
                                           {"WWConv", ChatView},
                                           {"FT736", FT736View},
                                           {"DX", DxView}};
  return kViews;
}

}  // namespace brenvo
