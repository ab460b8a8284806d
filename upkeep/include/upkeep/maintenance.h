// Commands that work on the database as a whole.
#pragma once

#include <filesystem>
#include <span>
#include <string>

namespace brenvo::core {
class Session;
}

namespace brenvo::upkeep {

// Each asks first and empties its tables in one transaction; stopped, it leaves them.
void AzzeraLog(core::Session& session);
void AzzeraContest(core::Session& session);

// Rewrites the database file; the file as it stood becomes Brenvo.BAK, in the place of the last
// one. A failure ends the program with the data in one of Brenvo.mdb, Brenvo.BAK, BrenvoNEW.MDB.
void CompattaDatabase(core::Session& session);

// The steps of a compaction, in order. Whichever is the last that runs, the data is whole in one
// of the three files.
using CompactionStep = void (*)(core::Session& session);
std::span<const CompactionStep> CompactionSteps();

// True when a compaction ended between its two renames: Brenvo.BAK and BrenvoNEW.MDB both hold all.
// Only where there is no Brenvo.mdb.
bool CompactionWasInterrupted(const std::filesystem::path& directory);
// Once there is a Brenvo.mdb again: what an interrupted compaction left beside it was never that.
void DropScratch(core::Session& session);

// Which file holds the data when an interrupted compaction left no Brenvo.mdb, as a sentence for
// the operator; empty when neither of the others is there.
std::string WhereDataIs(const std::filesystem::path& directory);

}  // namespace brenvo::upkeep
