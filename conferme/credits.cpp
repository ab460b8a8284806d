#include "credits.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "base/text.h"

namespace brenvo::conferme {
namespace {

struct Credit {
  std::string name;
  std::vector<std::string> media;
};

template <class See>
void EachPiece(std::string_view text, char between, const See& see) {
  while (!text.empty()) {
    const std::size_t end = std::min(text.find(between), text.size());
    if (const std::string piece = base::Trim(text.substr(0, end)); !piece.empty()) see(piece);
    text.remove_prefix(std::min(end + 1, text.size()));
  }
}

void Add(std::vector<Credit>& credits, std::string_view text) {
  EachPiece(text, ',', [&](const std::string& piece) {
    const std::size_t colon = std::min(piece.find(':'), piece.size());
    const std::string name = base::Trim(piece.substr(0, colon));
    if (name.empty()) return;
    auto at = std::ranges::find_if(
        credits, [&](const Credit& each) { return base::SameText(each.name, name); });
    if (at == credits.end()) at = credits.insert(at, {name, {}});
    EachPiece(std::string_view(piece).substr(std::min(colon + 1, piece.size())), '&',
              [&](const std::string& medium) {
                const bool there = std::ranges::any_of(at->media, [&](const std::string& each) {
                  return base::SameText(each, medium);
                });
                if (!there) at->media.push_back(medium);
              });
  });
}

}  // namespace

std::string MergeCredits(std::string_view a, std::string_view b) {
  std::vector<Credit> credits;
  Add(credits, a);
  Add(credits, b);
  std::string text;
  for (const Credit& credit : credits) {
    if (!text.empty()) text += ',';
    text += credit.name;
    for (std::size_t i = 0; i < credit.media.size(); ++i) {
      text += (i == 0 ? ":" : "&") + credit.media[i];
    }
  }
  return text;
}

}  // namespace brenvo::conferme
