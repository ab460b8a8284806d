// Commands that work on the database as a whole.
#pragma once

namespace brenvo {

class Session;

// Each asks first and empties its tables in one transaction.
void AzzeraLog(Session& session);
void AzzeraContest(Session& session);

// Rewrites the database file; the file as it stood becomes Brenvo.BAK, in the place of the last
// one. A failure ends the program with the data in one of Brenvo.mdb, Brenvo.BAK, BrenvoNEW.MDB.
void CompattaDatabase(Session& session);

}  // namespace brenvo
