// Where a window's fields stand on the screen, as a tree of pieces. What is written on a field, and
// how wide it is, the field knows itself.
#pragma once

#include <string>
#include <vector>

#include "field_widgets.h"

namespace brenvo::ui {

struct Piece {
  enum class Kind {
    kField,
    kText,    // words of the layout's own
    kSpace,   // what is left over
    kLine,    // side by side
    kColumn,  // one below the other
    kForm,    // lines of labelled fields whose labels and fields stand in columns
    kFrame,   // one piece in a titled frame; the name is the panel whose hint it gives
    kEither,  // the first piece while the named panel shows, the second while it does not
    kSplit,   // one below the other in equal shares, with borders that can be moved
  };
  Kind kind = Kind::kField;
  // What stands before a field: its caption, unless its kind shows that itself or fills the room.
  enum class Label { kUsual, kCaption, kNone, kWords };
  std::string name;   // the field; one that the window lacks is left out
  std::string words;  // a text; what stands before the field with Label::kWords; a frame's title
  Label label = Label::kUsual;
  int characters = 0;  // width of a text instead of the field's own; 0 for that
  int stretch = 0;     // share of the room left over
  Look look = Look::kPlain;
  std::vector<Piece> pieces;
};

Piece Item(std::string name);
// With its caption before it, whatever its kind; with none; with other words than its caption.
Piece Titled(Piece field);
Piece Bare(Piece field);
Piece Named(Piece field, std::string words);
// Takes the room that its neighbours leave.
Piece Wide(Piece piece, int stretch = 1);
Piece Drawn(Piece piece, Look look);
Piece Words(std::string text);
Piece Space();
Piece Line(std::vector<Piece> pieces);
// A line within a form's line, after the caption of one of its fields.
Piece Labelled(std::string field, std::vector<Piece> pieces);
Piece Column(std::vector<Piece> pieces);
Piece Form(std::vector<Piece> lines);
Piece Frame(std::string title, Piece inside);
// The frame is a panel, whose caption is its title.
Piece Framed(std::string panel, Piece inside);
Piece Either(std::string panel, Piece shown, Piece otherwise);
Piece Split(std::vector<Piece> pieces);

// The names of all fields in the pieces.
std::vector<std::string> FieldsIn(const Piece& piece);

}  // namespace brenvo::ui
