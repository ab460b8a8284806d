// A text area with colours.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "base/units.h"
#include "forms/field.h"

namespace brenvo::forms {

// Positions and lengths count characters from 0.
class RichText : public Field {
 public:
  using Field::Field;
  static constexpr std::size_t npos = static_cast<std::size_t>(-1);
  FieldKind Kind() override { return this; }
  struct Run {
    base::Colour colour;
    std::string text;
  };

  std::size_t Length() const { return text_.size(); }
  std::string Text() const;
  std::string Text(std::size_t start, std::size_t length) const;
  void SetText(std::string_view text);  // plain: all colours go
  // The pieces of one colour, from a character on; as many characters as asked for.
  std::vector<Run> Runs(std::size_t start = 0, std::size_t length = npos) const;

  std::size_t SelStart() const { return selStart_; }
  std::size_t SelLength() const { return selLength_; }
  void Select(std::size_t start, std::size_t length);  // held within the text
  std::string SelText() const { return Text(selStart_, selLength_); }
  void SetSelColour(base::Colour colour);

  // As one who types at the end: the selection goes there. The text takes the colour of the
  // character before it, black at the start, or the colour told.
  void Append(std::string_view text);
  void Append(std::string_view text, base::Colour colour);
  void Erase(std::size_t start, std::size_t length);
  // The same as SetText with the first `length` characters, without touching those.
  void CutPlain(std::size_t length);
  // The first `what` at or behind `start`, ignoring case; npos when there is none. The selection
  // does not move.
  std::size_t Find(std::string_view what, std::size_t start) const;

  // For a screen that follows without reading everything again: characters removed at a place,
  // then characters inserted there. (0, everything, ...) is a new text.
  struct Edit {
    std::size_t start, removed;
    std::vector<Run> inserted;
  };
  Signal<const Edit&> Edited;
  Signal<std::size_t, std::size_t, base::Colour> Recoloured;  // start, length

 private:
  void Replace(std::size_t start, std::size_t length, std::u32string_view text,
               base::Colour colour);
  unsigned char PaletteIndex(base::Colour colour);

  std::u32string text_;
  // The text in lower case, once something was sought in it: a terminal seeks every line that
  // comes in everything that it shows.
  mutable std::u32string folded_;
  mutable bool foldedInUse_ = false;
  std::vector<base::Colour> palette_{base::kBlack};
  std::vector<unsigned char> colours_;  // index into the palette, a character each
  std::size_t selStart_ = 0, selLength_ = 0;
};

}  // namespace brenvo::forms
