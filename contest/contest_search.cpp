#include "contest/contest_search.h"

#include "core/modules.h"

namespace brenvo {
namespace {

// Twips: date, band, description.
constexpr Twips kWidths[] = {Twips(1115), Twips(780), Twips(2730)};

}  // namespace

ContestSearch::ContestSearch(Session& session)
    : Window(session.Host(), "ContestSearch", "Contest - Ricerca", Twips(5400), Twips(4200)),
      Data1(session),
      session_(session) {
  Spread1.SetSource(&Data1);
  Spread1.OnDoubleClick = [this] {
    Tag = std::to_string(Spread1.Row());
    Hide();
  };
}

void ContestSearch::Load() {
  RestoreWindow(session_, *this, "ContestSearch");
  Data1.RecordSource = "select * from Contest";
  Data1.Refresh();
  std::vector<DataGrid::ColumnOf> columns;
  for (const Twips width : kWidths) {
    const std::size_t at = columns.size();
    columns.push_back({Data1.Rows()->Columns().at(at), at, width, nullptr});
  }
  Spread1.SetColumnsOf(std::move(columns));
}

void ContestSearch::Unload() {
  Data1.Close();
  SaveWindow(session_, *this, "ContestSearch");
}

}  // namespace brenvo
