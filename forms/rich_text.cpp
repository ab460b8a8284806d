#include "forms/rich_text.h"

#include <algorithm>

#include "base/text.h"

namespace brenvo {

std::string RichText::Text() const { return FromCharacters(text_); }

std::string RichText::Text(std::size_t start, std::size_t length) const {
  start = std::min(start, text_.size());
  return FromCharacters(std::u32string_view(text_).substr(start, length));
}

void RichText::SetText(std::string_view text) {
  typingColourSet_ = false;
  Replace(0, text_.size(), Characters(text), kBlack);
  selStart_ = selLength_ = 0;
}

std::vector<RichText::Run> RichText::Runs() const {
  std::vector<Run> runs;
  for (std::size_t start = 0; start < text_.size();) {
    std::size_t end = start;
    while (end < text_.size() && colours_[end] == colours_[start]) ++end;
    runs.push_back({palette_[colours_[start]],
                    FromCharacters(std::u32string_view(text_).substr(start, end - start))});
    start = end;
  }
  return runs;
}

void RichText::Select(std::size_t start, std::size_t length) {
  selStart_ = std::min(start, text_.size());
  selLength_ = std::min(length, text_.size() - selStart_);
  typingColourSet_ = false;
}

void RichText::ReplaceSelection(std::string_view text) {
  const std::u32string characters = Characters(text);
  const Colour colour = typingColourSet_ ? typingColour_ : ColourAt(selStart_);
  Replace(selStart_, selLength_, characters, colour);
  selStart_ += characters.size();
  selLength_ = 0;
}

void RichText::SetSelColour(Colour colour) {
  if (selLength_ == 0) {
    typingColourSet_ = true;
    typingColour_ = colour;
    return;
  }
  auto at = std::find(palette_.begin(), palette_.end(), colour);
  if (at == palette_.end()) at = palette_.insert(palette_.end(), colour);
  const auto index = static_cast<unsigned char>(at - palette_.begin());
  std::fill_n(colours_.begin() + static_cast<std::ptrdiff_t>(selStart_), selLength_, index);
  if (Recoloured) Recoloured(selStart_, selLength_, colour);
  ShowChanged();
}

void RichText::Append(std::string_view text) {
  Replace(text_.size(), 0, Characters(text), ColourAt(text_.size()));
}

void RichText::Append(std::string_view text, Colour colour) {
  Replace(text_.size(), 0, Characters(text), colour);
}

void RichText::Erase(std::size_t start, std::size_t length) {
  start = std::min(start, text_.size());
  Replace(start, std::min(length, text_.size() - start), {}, kBlack);
}

std::size_t RichText::Find(std::string_view what, std::size_t start) const {
  const std::u32string needle = Characters(what);
  if (start > text_.size()) return npos;
  const auto equal = [](char32_t a, char32_t b) { return LowerChar(a) == LowerChar(b); };
  const auto at = std::search(text_.begin() + static_cast<std::ptrdiff_t>(start), text_.end(),
                              needle.begin(), needle.end(), equal);
  if (at == text_.end() && !needle.empty()) return npos;
  return static_cast<std::size_t>(at - text_.begin());
}

Colour RichText::ColourAt(std::size_t position) const {
  if (text_.empty()) return kBlack;
  return palette_[colours_[position == 0 ? 0 : position - 1]];
}

void RichText::Replace(std::size_t start, std::size_t length, std::u32string_view text,
                       Colour colour) {
  if (length == 0 && text.empty()) return;
  auto at = std::find(palette_.begin(), palette_.end(), colour);
  if (at == palette_.end()) at = palette_.insert(palette_.end(), colour);
  const auto index = static_cast<unsigned char>(at - palette_.begin());
  text_.replace(start, length, text);
  const auto first = colours_.begin() + static_cast<std::ptrdiff_t>(start);
  const auto behind = colours_.erase(first, first + static_cast<std::ptrdiff_t>(length));
  colours_.insert(behind, text.size(), index);
  // A selection behind the change moves along with its characters.
  if (selStart_ >= start + length) {
    selStart_ = selStart_ - length + text.size();
  } else if (selStart_ > start) {
    selStart_ = start;
    selLength_ = 0;
  }
  selStart_ = std::min(selStart_, text_.size());
  selLength_ = std::min(selLength_, text_.size() - selStart_);
  if (Edited) {
    Edit edit{start, length, {}};
    if (!text.empty()) edit.inserted.push_back({colour, FromCharacters(text)});
    Edited(edit);
  }
  Changed();
}

}  // namespace brenvo
