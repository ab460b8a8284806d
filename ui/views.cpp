#include "views.h"

#include <algorithm>

#include "room_views.h"

namespace brenvo::ui {

const View* FindView(std::string_view window) {
  for (const auto* views : {&LogViews(), &ContestViews(), &AwardsViews(), &MapsViews(),
                            &PrintViews(), &LinksViews(), &TablesViews(), &AdifViews()}) {
    const auto at = std::find_if(views->begin(), views->end(),
                                 [&](const View& view) { return view.window == window; });
    if (at != views->end()) return &*at;
  }
  return nullptr;
}

}  // namespace brenvo::ui
