// The views of each room's windows.
#pragma once

#include <vector>

#include "views.h"

namespace brenvo::ui {

const std::vector<View>& LogViews();
const std::vector<View>& ChecksViews();
const std::vector<View>& DigitalViews();
const std::vector<View>& GaraViews();
const std::vector<View>& ConfermeViews();
const std::vector<View>& DiplomiViews();
const std::vector<View>& RigViews();
const std::vector<View>& ContestViews();
const std::vector<View>& AwardsViews();
const std::vector<View>& MapsViews();
const std::vector<View>& PrintViews();
const std::vector<View>& LinksViews();
const std::vector<View>& TablesViews();
const std::vector<View>& AdifViews();
const std::vector<View>& UpkeepViews();
const std::vector<View>& ListViews();

// The view of every TableWindow: the search and the window's filters above, the table, what stands
// below it, and the line that says what happened.
Piece TableView(std::vector<Piece> filters, Piece below = Column({}));
// The same of every ArrangedWindow, with its counts below the table.
Piece ArrangedView(std::vector<Piece> filters);

}  // namespace brenvo::ui
