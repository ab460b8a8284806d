#include "base/plain_letters.h"

#include <gtest/gtest.h>

#include "base/text.h"

namespace brenvo::base {
namespace {

TEST(PlainLettersTest, LettersLoseTheirMarks) {
  const std::pair<std::string_view, std::string_view> kTexts[] = {
      {"", ""},
      {"Mario <3 \\ ~", "Mario <3 \\ ~"},
      {"àèéìòù ÀÈÉÌÒÙ", "aeeiou AEEIOU"},
      {"Łukasz Wałęsa", "Lukasz Walesa"},
      {"Łódź, ąćęłńóśźż", "Lodz, acelnoszz"},
      {"Jürgen Größe", "Jurgen Grosse"},
      {"Øystein Ærø Åse", "Oystein AEro Ase"},
      {"Đorđe Šešelj žćč", "Dorde Seselj zcc"},
      {"İstanbul ığş", "Istanbul igs"},
      {"Nguyễn Việt", "Nguyen Viet"},
      {"Țepeș Ștefan", "Tepes Stefan"},
      {"Σωκράτης", "Sokratis"},
      {"Сергей Щука", "Sergej Shchuka"},
      {"Київ Ґанок", "Kiyiv Ganok"},
      {"„così” – ‘tutto’… 5 €", "\"cosi\" - 'tutto'... 5 EUR"},
      {"a\u0300e\u0301", "ae"},
      {"\xC2\xA0x", " x"},
      {"東京 \xF0\x9F\x93\xBB", "?? ?"},
      {"\xFF", "?"}};
  for (const auto& [text, plain] : kTexts) EXPECT_EQ(ToPlainLetters(text).text, plain) << text;
}

TEST(PlainLettersTest, EachCharacterThatChangesIsCounted) {
  EXPECT_EQ(ToPlainLetters("Mario").changed, 0);
  EXPECT_EQ(ToPlainLetters("Łódź").changed, 3);
  EXPECT_EQ(ToPlainLetters("ß").changed, 1);
}

TEST(PlainLettersTest, WhateverComesNothingButAsciiGoesOut) {
  std::u32string all;
  for (char32_t c = 0; c < 0x3000; ++c) all += c;
  const PlainLetters plain = ToPlainLetters(FromCharacters(all));
  EXPECT_TRUE(IsAscii(plain.text));
  EXPECT_EQ(plain.changed, 0x3000 - 0x80);
}

}  // namespace
}  // namespace brenvo::base
