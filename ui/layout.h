// How a window's fields stand on the screen, told as a tree of pieces.
#pragma once

#include <string>
#include <vector>

#include "ui/field_widgets.h"

namespace brenvo {

struct Piece {
  enum class Kind {
    kField,
    kText,    // words that are no field
    kSpace,   // what is left over
    kLine,    // side by side
    kColumn,  // one below the other
    kForm,    // lines of labelled fields whose labels and fields stand in columns
    kFrame,   // one piece in a titled frame; the name is the panel whose hint it gives
    kEither,  // the first piece while the named panel shows, the second while it does not
    kSplit,   // one below the other in equal shares, with borders that can be moved
  };
  Kind kind = Kind::kField;
  std::string name;    // the field; one that the window lacks is left out
  std::string label;   // words before the field instead of its caption; a frame's title
  int characters = 0;  // width of a text; 0 for all there is
  int stretch = 0;     // share of the room left over
  Look look = Look::kPlain;
  std::vector<Piece> pieces;
};

Piece Item(std::string name, std::string label = "", int characters = 0);
// Takes the room that its neighbours leave.
Piece Wide(Piece piece, int stretch = 1);
Piece Drawn(Piece piece, Look look);
Piece Words(std::string text);
Piece Space();
Piece Line(std::vector<Piece> pieces);
// A line within a form's line, after a label.
Piece Labelled(std::string label, std::vector<Piece> pieces);
Piece Column(std::vector<Piece> pieces);
Piece Form(std::vector<Piece> lines);
Piece Frame(std::string title, Piece inside, std::string panel = "");
Piece Either(std::string panel, Piece shown, Piece otherwise);
Piece Split(std::vector<Piece> pieces);

// The names of all fields in the pieces.
std::vector<std::string> FieldsIn(const Piece& piece);

}  // namespace brenvo
