#include "contest/contest_search.h"

#include "base/number.h"
#include "core/window_place.h"

namespace brenvo::contest {
namespace {

// Twips: date, band, description.
constexpr base::Twips kWidths[] = {base::Twips(1115), base::Twips(780), base::Twips(2730)};

}  // namespace

ContestSearch::ContestSearch(core::Session& session)
    : forms::Window(session.Host(), "ContestSearch", "Contest - Ricerca", base::Twips(5400),
                    base::Twips(4200)),
      Data1(session),
      session_(session) {
  Spread1.SetSource(&Data1);
  Spread1.OnDoubleClick = [this] {
    Tag = std::to_string(Spread1.Row());
    Hide();
  };
}

void ContestSearch::Load() {
  core::RestoreWindow(session_, *this, "ContestSearch");
  Data1.RecordSource = "select * from Contest";
  Data1.Refresh();
  std::vector<forms::DataGrid::ColumnOf> columns;
  for (const base::Twips width : kWidths) {
    const std::size_t at = columns.size();
    columns.push_back({Data1.Rows()->Columns().at(at), at, width, nullptr});
  }
  Spread1.SetColumnsOf(std::move(columns));
}

std::optional<std::int64_t> ContestSearch::Chosen() const {
  const auto row = static_cast<std::int64_t>(base::Val(Tag));
  if (row <= 0) return std::nullopt;
  return row;
}

void ContestSearch::Unload() {
  Data1.Close();
  core::SaveWindow(session_, *this, "ContestSearch");
}

}  // namespace brenvo::contest
