#include "core/note_tag.h"

#include "base/text.h"

namespace brenvo::core {

std::string NoteWords(std::string_view selection) {
  constexpr std::string_view kLike = "Note LIKE '*";
  const std::size_t note = selection.find("Note");
  if (note == std::string_view::npos || selection.size() < note + kLike.size()) return {};
  const std::string_view words = selection.substr(note + kLike.size());
  return std::string(words.substr(0, words.find('*')));
}

std::optional<std::string> NoteTag(std::string_view note, std::string_view words) {
  const std::size_t from = base::InStr(base::Lower(note), base::Lower(words));
  if (from == 0) return std::nullopt;
  const std::string rest = base::Mid(note, from);
  const std::size_t bracket = rest.find(']');
  if (bracket == std::string::npos) return std::nullopt;
  return rest.substr(0, bracket);
}

SatelliteNote ParseSatelliteNote(std::string_view note) {
  if (note.size() < 4 || note.front() != '[' || note.back() != ']') return {};
  const std::string_view inside = note.substr(1, note.size() - 2);
  const std::size_t first = inside.find('/');
  const std::size_t second = first == inside.npos ? first : inside.find('/', first + 1);
  if (second == inside.npos || first == 0) return {};
  return {inside.substr(0, first), inside.substr(first + 1, second - first - 1),
          inside.substr(second + 1)};
}

}  // namespace brenvo::core
