// A JSON text as a tree whose values know their lines.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvo::base {

struct JsonMember;

struct Json {
  enum class Kind { kNull, kYesNo, kNumber, kText, kList, kObject };
  Kind kind = Kind::kNull;
  int line = 0;
  bool yes = false;
  double number = 0;
  std::string text;
  std::vector<Json> items;
  std::vector<JsonMember> members;
};

struct JsonMember {
  std::string name;
  Json value;
};

struct JsonFault {
  int line = 0;
  std::string what;  // Italian
};

struct JsonBounds {
  std::size_t bytes = 0, values = 0;
  int depth = 0;
};

// Of any bytes; a fault where it is no JSON, or beyond its bounds.
struct ReadJson {
  Json tree;
  std::optional<JsonFault> fault;
};
ReadJson ReadJsonText(std::string_view bytes, const JsonBounds& bounds);

}  // namespace brenvo::base
