#include "room_views.h"

namespace brenvo::ui {
namespace {

Piece VerificaLogView() {
  return TableView({Item("Regola"), Item("AncheVerificati")},
                   Column({Item("Spiegazione"), Item("Conteggi")}));
}

Piece VerificaEntitaView() {
  return TableView({Item("CheCosa"), Item("AncheScelti")},
                   Column({Item("Spiegazione"), Item("Tabelle"), Item("Conteggi")}));
}

}  // namespace

const std::vector<View>& ChecksViews() {
  static const std::vector<View> kViews = {{"VerificaLog", VerificaLogView},
                                           {"VerificaEntita", VerificaEntitaView}};
  return kViews;
}

}  // namespace brenvo::ui
