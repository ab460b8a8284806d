#include "key_page.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/text.h"

namespace brenvo::frame {
namespace {

constexpr std::string_view kFont = "Arial", kTitle = "Brenvo: i tasti";
constexpr std::string_view kInMany = "In più finestre";
constexpr std::size_t kMany = 3;
constexpr double kTitleSize = 14;
// Millimetres.
constexpr double kTop = 12, kColumnGap = 6, kKeyGap = 2, kInAPoint = 25.4 / 72, kRowHeights = 1.25;

// From what is read best to what still can be.
struct Fit {
  int columns;
  double size;  // points
};
constexpr std::array<Fit, 6> kFits = {{{2, 10}, {2, 9}, {2, 8}, {3, 7.5}, {3, 6.5}, {4, 5}}};

struct Line {
  std::string key, words;  // no key: a heading
};
using Block = std::vector<Line>;

std::string LastOf(const std::string& words) {
  const std::size_t at = words.rfind(" > ");
  return at == words.npos ? words : words.substr(at + 3);
}

std::vector<Block> BlocksOf(std::span<const KeyOwner> owners, int& keys) {
  std::map<std::pair<std::string, std::string>, std::set<std::string>> windows;
  for (const KeyOwner& owner : owners) windows[{owner.key, owner.words}].insert(owner.window);
  std::vector<Block> blocks;
  Block common = {{"", std::string(kInMany)}};
  std::set<std::pair<std::string, std::string>> told;
  const std::string* window = nullptr;
  keys = 0;
  for (const KeyOwner& owner : owners) {
    if (owner.key.empty()) continue;
    ++keys;
    if (windows[{owner.key, owner.words}].size() > kMany) {
      if (told.insert({owner.key, owner.words}).second) common.push_back({owner.key, owner.words});
      continue;
    }
    if (window == nullptr || *window != owner.window) {
      window = &owner.window;
      blocks.push_back({{"", owner.place}});
    }
    blocks.back().push_back({owner.key, LastOf(owner.words)});
  }
  if (common.size() > 1) {
    blocks.insert(blocks.begin() + std::min<std::ptrdiff_t>(1, std::ssize(blocks)),
                  std::move(common));
  }
  return blocks;
}

class Page {
 public:
  Page(std::vector<Block> blocks, platform::Printer& printer)
      : blocks_(std::move(blocks)), printer_(printer) {}

  void Print() {
    printer_.SetFont(kFont, kTitleSize, true);
    printer_.Text(base::Mm(0), base::Mm(0), kTitle);
    Fit fit = kFits.back();
    for (const Fit& each : kFits) {
      if (ColumnsAt(each.size) > each.columns) continue;
      fit = each;
      break;
    }
    Draw(fit);
    printer_.EndDocument();
  }

 private:
  static double RowAt(double size) { return size * kInAPoint * kRowHeights; }
  std::size_t RowsAt(double size) const {
    const double rows = (printer_.PageHeight().Value() - kTop) / RowAt(size);
    return std::max<std::size_t>(2, static_cast<std::size_t>(std::max(rows, 2.0)));
  }
  // A block begins a column where its heading would stand without a line below it, and goes on in
  // the next one where it is too long.
  template <class Place>
  int Walk(std::size_t rows, const Place& place) const {
    int column = 0;
    std::size_t row = 0;
    for (const Block& block : blocks_) {
      if (row > 0 && row + 3 > rows) {
        ++column;
        row = 0;
      } else if (row > 0) {
        ++row;
      }
      for (const Line& line : block) {
        if (row == rows) {
          ++column;
          row = 0;
        }
        place(column, row++, line);
      }
    }
    return column + 1;
  }
  int ColumnsAt(double size) const {
    return Walk(RowsAt(size), [](int, std::size_t, const Line&) {});
  }

  void Draw(const Fit& fit) {
    const double width =
        (printer_.PageWidth().Value() - kColumnGap * (fit.columns - 1)) / fit.columns;
    printer_.SetFont(kFont, fit.size, true);
    double keys = 0;
    for (const Block& block : blocks_) {
      for (const Line& line : block) {
        keys = std::max(keys, printer_.TextWidth(line.key).Value());
      }
    }
    Walk(RowsAt(fit.size), [&](int column, std::size_t row, const Line& line) {
      if (column >= fit.columns) return;
      const double x = column * (width + kColumnGap);
      const base::Mm y(kTop + static_cast<double>(row) * RowAt(fit.size));
      printer_.SetBold(true);
      if (line.key.empty()) {
        printer_.Text(base::Mm(x), y, Fitted(line.words, width));
        return;
      }
      printer_.Text(base::Mm(x), y, line.key);
      printer_.SetBold(false);
      printer_.Text(base::Mm(x + keys + kKeyGap), y, Fitted(line.words, width - keys - kKeyGap));
    });
  }

  std::string Fitted(const std::string& text, double width) {
    std::string part = text;
    for (std::size_t length = base::Len(text);
         length > 0 && printer_.TextWidth(part).Value() > width;) {
      part = base::Left(text, --length) + "...";
    }
    return part;
  }

  std::vector<Block> blocks_;
  platform::Printer& printer_;
};

}  // namespace

int PrintKeys(std::span<const KeyOwner> owners, platform::Printer& printer) {
  int keys = 0;
  std::vector<Block> blocks = BlocksOf(owners, keys);
  Page(std::move(blocks), printer).Print();
  return keys;
}

}  // namespace brenvo::frame
