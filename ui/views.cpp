#include "views.h"

#include <algorithm>

#include "room_views.h"

namespace brenvo::ui {

const View* FindView(std::string_view window) {
  for (const auto* views :
       {&LogViews(), &ChecksViews(), &ContestViews(), &AwardsViews(), &MapsViews(), &PrintViews(),
        &LinksViews(), &TablesViews(), &AdifViews(), &UpkeepViews(), &ListViews(), &DigitalViews(),
        &GaraViews(), &ConfermeViews(), &DiplomiViews(), &RigViews()}) {
    const auto at = std::find_if(views->begin(), views->end(),
                                 [&](const View& view) { return view.window == window; });
    if (at != views->end()) return &*at;
  }
  return nullptr;
}

Piece TableView(std::vector<Piece> filters, Piece below) {
  std::vector<Piece> above = {Wide(Item("Cerca"))};
  above.insert(above.end(), filters.begin(), filters.end());
  return Column({Line(std::move(above)), Item("Tabella"), std::move(below), Item("Avviso")});
}

Piece ArrangedView(std::vector<Piece> filters) {
  return TableView(std::move(filters), Item("Conteggi"));
}

}  // namespace brenvo::ui
