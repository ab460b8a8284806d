#include "forms/rich_text.h"

#include <algorithm>
#include <array>
#include <cstring>

#include "base/text.h"

namespace brenvo::forms {
namespace {

std::u32string Folded(std::u32string_view text) {
  std::u32string folded(text);
  std::transform(folded.begin(), folded.end(), folded.begin(), base::LowerChar);
  return folded;
}

// A scan that steps by the character under the needle's end: most steps are as long as the needle.
std::size_t FindIn(std::u32string_view text, std::u32string_view needle, std::size_t start) {
  constexpr std::size_t kSlots = 256;
  if (needle.empty()) return start;
  if (needle.size() > text.size()) return RichText::npos;
  // Characters that share a slot share the shorter step, so none is stepped over.
  std::array<std::size_t, kSlots> steps;
  steps.fill(needle.size());
  for (std::size_t i = 0; i + 1 < needle.size(); ++i) {
    steps[needle[i] % kSlots] = needle.size() - 1 - i;
  }
  const std::size_t last = text.size() - needle.size();
  const char32_t end = needle.back();
  for (std::size_t at = start; at <= last;) {
    const char32_t under = text[at + needle.size() - 1];
    if (under == end && text.compare(at, needle.size(), needle) == 0) return at;
    at += steps[under % kSlots];
  }
  return RichText::npos;
}

}  // namespace

std::string RichText::Text() const { return base::FromCharacters(text_); }

std::string RichText::Text(std::size_t start, std::size_t length) const {
  start = std::min(start, text_.size());
  return base::FromCharacters(std::u32string_view(text_).substr(start, length));
}

void RichText::SetText(std::string_view text) {
  Replace(0, text_.size(), base::Characters(text), base::kBlack);
  selStart_ = selLength_ = 0;
}

std::vector<RichText::Run> RichText::Runs(std::size_t start, std::size_t length) const {
  std::vector<Run> runs;
  start = std::min(start, text_.size());
  const std::size_t behind = start + std::min(length, text_.size() - start);
  while (start < behind) {
    std::size_t end = start;
    while (end < behind && colours_[end] == colours_[start]) ++end;
    runs.push_back({palette_[colours_[start]],
                    base::FromCharacters(std::u32string_view(text_).substr(start, end - start))});
    start = end;
  }
  return runs;
}

void RichText::Select(std::size_t start, std::size_t length) {
  selStart_ = std::min(start, text_.size());
  selLength_ = std::min(length, text_.size() - selStart_);
}

void RichText::SetSelColour(base::Colour colour) {
  std::fill_n(colours_.begin() + static_cast<std::ptrdiff_t>(selStart_), selLength_,
              PaletteIndex(colour));
  Recoloured(selStart_, selLength_, colour);
  ShowChanged();
}

void RichText::Append(std::string_view text) {
  Append(text, text_.empty() ? base::kBlack : palette_[colours_.back()]);
}

void RichText::Append(std::string_view text, base::Colour colour) {
  Select(text_.size(), 0);
  Replace(text_.size(), 0, base::Characters(text), colour);
}

void RichText::Erase(std::size_t start, std::size_t length) {
  start = std::min(start, text_.size());
  Replace(start, std::min(length, text_.size() - start), {}, base::kBlack);
}

void RichText::CutPlain(std::size_t length) {
  if (length < text_.size()) Erase(length, text_.size() - length);
  const unsigned char black = PaletteIndex(base::kBlack);
  // The usual case, seen at the speed of memory: all black.
  if (colours_.empty() || (colours_[0] == black &&
                           std::memcmp(&colours_[0], &colours_[0] + 1, colours_.size() - 1) == 0)) {
    Select(0, 0);
    return;
  }
  const auto coloured = [&](unsigned char index) { return index != black; };
  const auto first = std::find_if(colours_.begin(), colours_.end(), coloured);
  const auto last = std::find_if(colours_.rbegin(), colours_.rend(), coloured).base();
  std::fill(first, last, black);
  Recoloured(static_cast<std::size_t>(first - colours_.begin()),
             static_cast<std::size_t>(last - first), base::kBlack);
  ShowChanged();
  Select(0, 0);
}

std::size_t RichText::Find(std::string_view what, std::size_t start) const {
  if (start > text_.size()) return npos;
  if (!foldedInUse_) {
    folded_ = Folded(text_);
    foldedInUse_ = true;
  }
  return FindIn(folded_, Folded(base::Characters(what)), start);
}

unsigned char RichText::PaletteIndex(base::Colour colour) {
  auto at = std::find(palette_.begin(), palette_.end(), colour);
  if (at == palette_.end()) at = palette_.insert(palette_.end(), colour);
  return static_cast<unsigned char>(at - palette_.begin());
}

void RichText::Replace(std::size_t start, std::size_t length, std::u32string_view text,
                       base::Colour colour) {
  if (length == 0 && text.empty()) return;
  const unsigned char index = PaletteIndex(colour);
  if (foldedInUse_) {
    folded_.replace(start, length, text);
    std::transform(text.begin(), text.end(), folded_.begin() + static_cast<std::ptrdiff_t>(start),
                   base::LowerChar);
  }
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
  if (Edited.IsHeard()) {
    Edit edit{start, length, {}};
    if (!text.empty()) edit.inserted.push_back({colour, base::FromCharacters(text)});
    Edited(edit);
  }
  Changed();
}

}  // namespace brenvo::forms
