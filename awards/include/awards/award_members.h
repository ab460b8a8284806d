// The eight awards that are one grid, and what each has of its own.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "forms/grid.h"

namespace brenvo::awards {

struct AwardColumn {
  std::string_view heading;
  base::Twips width = forms::kOwnSize;
};

enum class ConditionJoin {
  kNone,        // the award adds no condition
  kAnd,         // " AND ", also where the selection is empty and the engine refuses the result
  kWhereOrAnd,  // "WHERE " where the selection is empty
};

// What stands beside the key.
enum class EntryText {
  kNothing,
  kCountryOfKey,    // the key's description in Country
  kCountryOfGroup,  // the description of the group's second column in Country
  kProvinceOfKey,   // in Provincie, with the group's second column as its country
  kSplitKey,        // the key itself is cut at its slashes
};

// Column of the list that holds the flag's file name, where an award has flags.
inline constexpr int kFlagFileColumn = 4;

// Where an award leaves the common way.
struct AwardTraits {
  bool firstQslUnread = false;  // the first entry always shows as not confirmed
  bool flags = false;           // column 3 shows the country's flag, a hidden one its file
  bool whiteWhenNot = false;    // an entry that is not confirmed is painted white
  bool staged = false;          // the query reads table SNote, filled from the notes at load
};

struct AwardMember {
  std::string_view window;
  std::string_view caption;  // the word before the score

  std::string_view condition;  // on the selection
  ConditionJoin join;

  // The grouped query; every one counts QslRicevuta too, true first.
  std::string_view key;         // column of the group that makes an entry
  std::string_view expression;  // what it is in table Log
  std::string_view columns;     // of the SELECT
  std::string_view groups;      // of the GROUP BY
  std::string_view second;      // a second column of the group; empty for none

  // A condition for the contacts of one entry: this, the key, and the same closing quote.
  std::string_view contacts;  // empty: no way to the log
  std::string_view quote;

  std::array<AwardColumn, 5> headings;
  int headingCount;
  int qslColumn;
  int lastGreen;  // columns 1 to this one are green when confirmed
  std::string_view confirmed;
  std::string_view score;  // between the two numbers of the caption
  EntryText text;
  // The reference table that "Elenca tutto" lists, the second column's value between the halves;
  // empty for none.
  std::string_view reference, referenceEnd;
  AwardTraits traits;
};

const std::array<AwardMember, 8>& AwardMembers();
// By the window's name, which must be one of the eight.
const AwardMember& AwardMemberOf(std::string_view window);

// `selection` with the award's own condition.
std::string SelectionOf(const AwardMember& member, std::string_view selection);
// The grouped query over that.
std::string GroupedQuery(const AwardMember& member, std::string_view ownSelection);

}  // namespace brenvo::awards
