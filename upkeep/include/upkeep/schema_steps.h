// The tables that this program keeps beside those that every version has, and the steps by which a
// database comes to have them.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/date.h"
#include "engine/database.h"
#include "upkeep/backup.h"

namespace brenvo::upkeep {

struct SchemaStep {
  int number = 0;  // from 1 on, without a gap; one that has been delivered is never changed
  std::string_view title;
  std::string_view statements;
};
std::span<const SchemaStep> SchemaSteps();

// What SQLite is to run for a step, in one transaction: its number goes into table Passi, with the
// time, none for a database that is being made.
std::string StatementsOf(const SchemaStep& step, std::optional<base::DateTime> when);

// The last step that the database has taken, as its table Passi says; 0 where there is none.
int StepsTaken(engine::Database& database);
bool IsOutOfDate(engine::Database& database);

// Takes the steps that the closed database in the directory lacks, each whole or not at all, and
// gives every contact its name and its station; a database with contacts has its copy of the day
// before that. Gives the titles of the steps taken. However it ends, the next call goes on from
// there. DatabaseError as of file::OpenDatabaseFile, and what fails of the copy.
std::vector<std::string> BringUpToDate(const std::filesystem::path& appPath, base::DateTime now,
                                       const ShowProgress& show);

}  // namespace brenvo::upkeep
