#include "forms/text_field.h"
#include "tests/forms/sample_window.h"

namespace brenvo::forms {
namespace {

using TextFields = Fields;

TEST_F(TextFields, FocusSelectsAllAndTheFirstKeyReplacesIt) {
  window.Text.SetText("old");
  window.Text.Focus();
  window.Text.TypeKey('n');
  window.Text.TypeKey('e');
  EXPECT_EQ(window.Text.Text(), "ne");
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "n");
}

TEST_F(TextFields, AFilterSwallowsAndTurnsKeys) {
  window.Text.Filter = [](char32_t key) -> char32_t { return key == 'x' ? 0 : key - 32; };
  window.Text.TypeKey('x');
  window.Text.TypeKey('a');
  EXPECT_EQ(window.Text.Text(), "A");
  EXPECT_EQ(window.Text.FilterText("axb"), "AB");
}

TEST_F(TextFields, ACompletionWhileTypingLeavesTheCaretInItsPlace) {
  window.Text.OnChange = [&] {
    if (window.Text.Text() == "I") window.Text.SetText("I    Italia");
  };
  window.Text.TypeKey('I');
  EXPECT_EQ(window.Text.SelStart(), 1u);
  window.Text.TypeKey('S');
  EXPECT_EQ(window.Text.Text(), "IS    Italia");
}

TEST_F(TextFields, ReadOnlyAndFullFieldsRefuseKeys) {
  window.Text.ReadOnly = true;
  window.Text.TypeKey('a');
  EXPECT_EQ(window.Text.Text(), "");
  window.Text.ReadOnly = false;
  window.Text.MaxLength = 1;
  window.Text.TypeKey('a');
  window.Text.TypeKey('b');
  EXPECT_EQ(window.Text.Text(), "a");
}

TEST_F(TextFields, AShorterTextTakesTheCaretToItsEnd) {
  window.Text.SetText("IK3ABC");
  window.Text.Select(5, 1);
  window.Text.SetText("I2");
  EXPECT_EQ(window.Text.SelStart(), 2u);
  EXPECT_EQ(window.Text.SelLength(), 0u);
  window.Text.TypeKey('X');
  EXPECT_EQ(window.Text.Text(), "I2X");
}

TEST_F(TextFields, AKeyReplacesWhatIsSelectedAlsoInAFullField) {
  window.Text.MaxLength = 3;
  window.Text.SetText("abc");
  window.Text.Select(1, 1);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "axc");
  window.Text.TypeKey('y');
  EXPECT_EQ(window.Text.Text(), "axc");
  // The logic may have put in more than can be typed; one selected character makes no room then.
  window.Text.SetText("abcde");
  window.Text.Select(0, 2);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "abcde");
  window.Text.Select(0, 3);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "xde");
}

TEST_F(TextFields, BackspaceCanEmptyTheWholeField) {
  window.Text.BackspaceClears = true;
  window.Text.SetText("abc");
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "");
}

TEST_F(TextFields, AFieldThatIsLockedOrOffTakesNoKey) {
  window.Text.SetText("a");
  window.Time.SetText("12:34");
  for (TextField* field :
       {static_cast<TextField*>(&window.Text), static_cast<TextField*>(&window.Time)}) {
    const std::string before = field->Text();
    field->Select(0, 1);
    field->SetEnabled(false);
    field->TypeKey('5');
    field->SetEnabled(true);
    field->ReadOnly = true;
    field->TypeKey('5');
    field->TypeKey(kBackspace);
    EXPECT_EQ(field->Text(), before);
    field->ReadOnly = false;
    field->TypeKey('5');
    EXPECT_EQ(field->Text(), "5" + before.substr(1));
  }
}

TEST_F(TextFields, BackspaceTakesWhatIsSelectedElseOneCharacterBeforeTheCaret) {
  window.Text.SetText("abcdef");
  window.Text.Select(4, 0);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "abcef");
  EXPECT_EQ(window.Text.SelStart(), 3u);
  window.Text.Select(1, 2);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "aef");
  EXPECT_EQ(window.Text.SelStart(), 1u);
  window.Text.TypeKey('x');
  EXPECT_EQ(window.Text.Text(), "axef");
  window.Text.Select(0, 0);
  window.Text.TypeKey(kBackspace);
  EXPECT_EQ(window.Text.Text(), "axef");
}

TEST_F(TextFields, ASelectionIsHeldWithinTheTextAndTold) {
  window.Text.SetText("èàù");
  window.Text.Select(1, 1);
  EXPECT_EQ(window.Text.SelText(), "à");
  window.Text.Select(2, 9);
  EXPECT_EQ(window.Text.SelText(), "ù");
  window.Text.Select(9, 9);
  EXPECT_EQ(window.Text.SelStart(), 3u);
  EXPECT_EQ(window.Text.SelLength(), 0u);
}

TEST_F(TextFields, EnterRunsItsEventAndIsNoCharacter) {
  int entered = 0;
  for (TextField* field :
       {static_cast<TextField*>(&window.Text), static_cast<TextField*>(&window.Time)}) {
    field->TypeKey(kEnter);
    field->OnEnter = [&] { ++entered; };
    field->TypeKey(kEnter);
    EXPECT_EQ(field->Text(), "");
  }
  EXPECT_EQ(entered, 2);
}

TEST_F(TextFields, OfAPastedTextTheFilterLetsNoControlCharacterThrough) {
  EXPECT_EQ(window.Text.FilterText("a\tb"), "a\tb");  // nobody asked for a filter
  window.Text.Filter = [](char32_t key) { return key; };
  EXPECT_EQ(window.Text.FilterText("a\tb c\x1F"), "ab c");
}

TEST_F(TextFields, AMaskIsFilledPlaceByPlace) {
  window.Time.SetText("12:34");
  window.Time.Select(0, 99);
  window.Time.TypeKey('0');
  EXPECT_EQ(window.Time.Text(), "0_:__");
  window.Time.TypeKey('9');
  window.Time.TypeKey('x');
  window.Time.TypeKey('3');
  EXPECT_EQ(window.Time.Text(), "09:3_");
  window.Time.TypeKey(kBackspace);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "0_:__");
  EXPECT_EQ(window.Time.EmptyText(), "__:__");
}

TEST_F(TextFields, AMaskKeepsItsPlacesWhateverIsTyped) {
  window.Time.TypeKey('1');  // the empty text does not fit: the mask begins
  EXPECT_EQ(window.Time.Text(), "1_:__");
  window.Time.TypeKey('2');
  EXPECT_EQ(window.Time.SelStart(), 3u);  // over the colon
  window.Time.TypeKey('3');
  window.Time.TypeKey('4');
  EXPECT_EQ(window.Time.Text(), "12:34");
  window.Time.TypeKey('5');  // it is full
  EXPECT_EQ(window.Time.Text(), "12:34");
  for (const char32_t key : {U'/', U':', U'a'}) window.Time.TypeKey(key);
  EXPECT_EQ(window.Time.Text(), "12:34");
  window.Time.Select(2, 0);
  window.Time.TypeKey('9');  // at the colon it goes behind it
  EXPECT_EQ(window.Time.Text(), "12:94");
  window.Time.Select(3, 0);
  window.Time.TypeKey(kBackspace);  // behind the colon it goes before it
  EXPECT_EQ(window.Time.Text(), "1_:94");
  EXPECT_EQ(window.Time.SelStart(), 1u);
  window.Time.Select(1, 3);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "1_:_4");
  window.Time.Select(0, 0);
  window.Time.TypeKey(kBackspace);
  EXPECT_EQ(window.Time.Text(), "1_:_4");
  window.Time.SetText("nothing that fits");
  window.Time.Select(0, 0);
  window.Time.TypeKey('0');
  EXPECT_EQ(window.Time.Text(), "0_:__");
  window.Time.SetMask("##.#");
  EXPECT_EQ(window.Time.EmptyText(), "__._");
}

}  // namespace
}  // namespace brenvo::forms
