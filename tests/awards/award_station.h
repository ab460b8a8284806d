// A station with contacts and award windows; no country has a flag.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "awards/award_grid.h"
#include "tests/support/station.h"

namespace brenvo::awards {

class AwardStation : public StationTest {
 protected:
  AwardStation() {
    for (const AwardMember& member : AwardMembers()) {
      session.Windows.Register(std::string(member.window), [this, &member] {
        return std::make_unique<AwardGrid>(session, member);
      });
    }
    session.Db.Execute("UPDATE Country SET Flag=NULL");
  }

  // A contact of the log.
  void Contact(std::string_view columns, std::string_view values) {
    session.Db.Execute("insert into Log (" + std::string(columns) + ") values (" +
                       std::string(values) + ")");
  }
  // The window of an award on a selection.
  AwardGrid& Award(std::string_view window, std::string_view selection) {
    session.Handed.QueryText = selection;
    return Open<AwardGrid>(window);
  }
  // The rows under the heading, the cells of each joined by "|".
  static std::vector<std::string> Entries(forms::Grid& grid) {
    std::vector<std::string> rows;
    for (std::int64_t row = 1; row < grid.Rows(); ++row) rows.push_back(RowText(grid, row));
    return rows;
  }
  static std::string RowText(forms::Grid& grid, std::int64_t row) {
    std::string text;
    for (int column = 0; column < grid.Columns(); ++column) {
      if (column > 0) text += "|";
      text += grid.Cell(row, column);
    }
    return text;
  }
};

}  // namespace brenvo::awards
