#include "core/note_tag.h"

#include <gtest/gtest.h>

namespace brenvo::core {
namespace {

TEST(NoteTag, TheWordsStandBetweenTheTwoStars) {
  EXPECT_EQ(NoteWords("WHERE Banda='  2 m' AND Note LIKE '*DCI*'"), "DCI");
  EXPECT_EQ(NoteWords("WHERE Note LIKE '*castello di*'"), "castello di");
}

TEST(NoteTag, ASelectionWithoutANoteHasNoWords) {
  EXPECT_EQ(NoteWords(""), "");
  EXPECT_EQ(NoteWords("WHERE Banda='  2 m'"), "");
  EXPECT_EQ(NoteWords("Note"), "");
}

TEST(NoteTag, TheTagRunsFromTheWordsToTheBracket) {
  EXPECT_EQ(NoteTag("bel qso [DCI/MI001/Castello] 73", "DCI"), "DCI/MI001/Castello");
  EXPECT_EQ(NoteTag("[IOTA EU-024] [DCI/MI001]", "DCI"), "DCI/MI001");
}

TEST(NoteTag, TheWordsAreFoundWithoutRegardToCase) {
  EXPECT_EQ(NoteTag("Già [dci/mi001]", "DCI"), "dci/mi001");
}

TEST(NoteTag, WithoutTheBracketOrTheWordsThereIsNone) {
  EXPECT_EQ(NoteTag("DCI/MI001", "DCI"), std::nullopt);
  EXPECT_EQ(NoteTag("[IOTA] DCI", "DCI"), std::nullopt);
  EXPECT_EQ(NoteTag("[IOTA]", "DCI"), std::nullopt);
}

TEST(NoteTag, TheSatellitesShorthandIsReadAsTheLabelsReadIt) {
  const SatelliteNote note = ParseSatelliteNote("[QO-100/SX/SSB]");
  EXPECT_EQ(note.satellite, "QO-100");
  EXPECT_EQ(note.satelliteMode, "SX");
  EXPECT_EQ(note.mode, "SSB");
  for (const char* other :
       {"", "[QO-100]", "[QO-100/SX]", "QO-100/SX/SSB", "[/SX/SSB]", "[a/b/c] x"}) {
    EXPECT_EQ(ParseSatelliteNote(other).satellite, "") << other;
  }
}

}  // namespace
}  // namespace brenvo::core
