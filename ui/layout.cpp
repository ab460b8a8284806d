#include "layout.h"

namespace brenvo::ui {
namespace {

Piece Of(Piece::Kind kind, std::vector<Piece> pieces) {
  Piece piece;
  piece.kind = kind;
  piece.pieces = std::move(pieces);
  return piece;
}

}  // namespace

Piece Item(std::string name) {
  Piece piece;
  piece.name = std::move(name);
  return piece;
}

Piece Titled(Piece field) {
  field.label = Piece::Label::kCaption;
  return field;
}

Piece Bare(Piece field) {
  field.label = Piece::Label::kNone;
  return field;
}

Piece Named(Piece field, std::string words) {
  field.label = Piece::Label::kWords;
  field.words = std::move(words);
  return field;
}

Piece Wide(Piece piece, int stretch) {
  piece.stretch = stretch;
  return piece;
}

Piece Drawn(Piece piece, Look look) {
  piece.look = look;
  return piece;
}

Piece Words(std::string text) {
  Piece piece = Of(Piece::Kind::kText, {});
  piece.words = std::move(text);
  return piece;
}

Piece Space() {
  Piece piece = Of(Piece::Kind::kSpace, {});
  piece.stretch = 1;
  return piece;
}

Piece Line(std::vector<Piece> pieces) { return Of(Piece::Kind::kLine, std::move(pieces)); }

Piece Labelled(std::string field, std::vector<Piece> pieces) {
  Piece piece = Line(std::move(pieces));
  piece.name = std::move(field);
  return piece;
}

Piece Column(std::vector<Piece> pieces) { return Of(Piece::Kind::kColumn, std::move(pieces)); }
Piece Form(std::vector<Piece> lines) { return Of(Piece::Kind::kForm, std::move(lines)); }

Piece Frame(std::string title, Piece inside) {
  Piece piece = Of(Piece::Kind::kFrame, {std::move(inside)});
  piece.words = std::move(title);
  return piece;
}

Piece Framed(std::string panel, Piece inside) {
  Piece piece = Of(Piece::Kind::kFrame, {std::move(inside)});
  piece.name = std::move(panel);
  return piece;
}

Piece Either(std::string panel, Piece shown, Piece otherwise) {
  Piece piece = Of(Piece::Kind::kEither, {std::move(shown), std::move(otherwise)});
  piece.name = std::move(panel);
  return piece;
}

Piece Split(std::vector<Piece> pieces) { return Of(Piece::Kind::kSplit, std::move(pieces)); }

std::vector<std::string> FieldsIn(const Piece& piece) {
  std::vector<std::string> names;
  // A line's name is that of a field within it.
  if (!piece.name.empty() && piece.kind != Piece::Kind::kLine) names.push_back(piece.name);
  for (const Piece& inner : piece.pieces) {
    for (std::string& name : FieldsIn(inner)) names.push_back(std::move(name));
  }
  return names;
}

}  // namespace brenvo::ui
