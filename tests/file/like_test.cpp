// Patterns of LIKE in statements.
#include <gtest/gtest.h>

#include "base/text.h"
#include "dialect/like_pattern.h"
#include "tests/file/contacts.h"

namespace brenvo::file {
namespace {

// A statement with a pattern gives the rows that the pattern matches, however it is served.
TEST(LikeTest, EveryPatternGivesTheRowsThatItMatches) {
  ScratchDatabase scratch;
  engine::Database db = scratch.Open();
  const char* const texts[] = {"JN65", "JN65FR", "jn65fr ", "JN6",   "JN66AA", "JN",   "J",
                               "",     "JN65 X", "JN6Z",    "Cantù", "CANTÙ",  "K@1",  "K[1",
                               "Ka",   "KZ",     "K{",      "a*b",   "A?B",    "12",   "JN65F",
                               "JM",   "JO",     "CANTO",   "@",     "K@",     "k@zz", "  JN65"};
  int minute = 0;
  db.BeginTrans();
  for (const char* text : texts) AddContact(db, ++minute, text, "  2 m", text);
  db.CommitTrans();
  for (const char* pattern :
       {"JN65*",  "jn65*", "JN6*",   "J*",        "*",   "JN65F*",  "JN65FR*", "JN65 *",
        "JN65",   "JN65 ", "",       "K@*",       "@*",  "K*",      "KZ*",     "Kz*",
        "Cantù",  "Cant*", "CantÙ*", "?N*",       "*R",  "a[*]b",   "a?b",     "##",
        "[J-K]*", "[!J]*", "*65*",   "JN65FR  *", "  *", "JN65 X*", "JN6 *"}) {
    std::vector<std::string> expected;
    for (std::size_t i = 0; i < std::size(texts); ++i) {
      if (dialect::LikePattern(pattern).Matches(texts[i]))
        expected.push_back(std::to_string(i + 1));
    }
    for (const char* column : {"Locator", "Call", "Left(Locator,4)", "Locator & ''"}) {
      std::vector<std::string> wanted = expected;
      if (std::string_view(column).starts_with("Left")) {
        wanted.clear();
        for (std::size_t i = 0; i < std::size(texts); ++i) {
          if (dialect::LikePattern(pattern).Matches(base::Left(texts[i], 4))) {
            wanted.push_back(std::to_string(i + 1));
          }
        }
      }
      const std::string where = std::string(column) + " like '" + pattern + "'";
      EXPECT_EQ(Select(db, "select QsoNr from Log where " + where), wanted) << where;
      EXPECT_EQ(Select(db, "select QsoNr from Log where not (" + where + ")").size(),
                std::size(texts) - wanted.size())
          << where;
      EXPECT_EQ(Select(db, "select QsoNr from Log where " + std::string(column) + " not like '" +
                               pattern + "'")
                    .size(),
                std::size(texts) - wanted.size())
          << where;
    }
  }
}

}  // namespace
}  // namespace brenvo::file
