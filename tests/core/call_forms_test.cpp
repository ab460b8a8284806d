#include "core/call_forms.h"

#include <gtest/gtest.h>

#include "core/station_notes.h"
#include "tests/support/station.h"

namespace brenvo::core {
namespace {

TEST(CallForms, AllFormsOfACallAreOneStation) {
  for (const char* form : {"IK3ABC", " ik3abc ", "IK3ABC/P", "IK3ABC/QRP", "F/IK3ABC",
                           "F/IK3ABC/MM", "IK3ABC/W6", "VP2M/IK3ABC", "IK3ABC/"}) {
    EXPECT_EQ(BaseCall(form), "IK3ABC") << form;
  }
}

TEST(CallForms, OfPartsOfOneLengthTheCallIsTheOneThatEndsInALetter) {
  EXPECT_EQ(BaseCall("VP8/G3X"), "G3X");
  EXPECT_EQ(BaseCall("G3X/VP8"), "G3X");
  EXPECT_EQ(BaseCall("K1A/W6B"), "K1A");
}

TEST(CallForms, WhatIsNoCallHasNone) {
  for (const char* none : {"", "  ", "/", "//"}) EXPECT_EQ(BaseCall(none), "") << none;
}

using StationNotesTest = StationTest;

TEST_F(StationNotesTest, ANoteBelongsToAllFormsOfACall) {
  StoreStationNote(session.Db, "F/IK3ABC/P", " parla piano ");
  EXPECT_EQ(StationNote(session.Db, "ik3abc"), "parla piano");
  StoreStationNote(session.Db, "IK3ABC", "parla in fretta");
  EXPECT_EQ(Rows("select Call,Nota from NoteStazioni"),
            std::vector<std::string>{"IK3ABC|parla in fretta"});
  StoreStationNote(session.Db, "IK3ABC/M", "  ");
  EXPECT_EQ(Rows("select Call from NoteStazioni"), std::vector<std::string>{});
}

TEST_F(StationNotesTest, NobodyHasNoNote) {
  StoreStationNote(session.Db, " / ", "nessuno");
  EXPECT_EQ(Rows("select Call from NoteStazioni"), std::vector<std::string>{});
  EXPECT_EQ(StationNote(session.Db, ""), "");
}

}  // namespace
}  // namespace brenvo::core
