#include "assignment.h"

#include <algorithm>
#include <limits>

namespace brenvo::conferme {
namespace {

constexpr std::int64_t kNever = std::numeric_limits<std::int64_t>::max() / 4;

// A square of costs, in which each row and each column has one that stands for nothing.
class Square {
 public:
  Square(std::size_t lefts, std::size_t rights, const std::vector<Edge>& edges)
      : size_(lefts + rights), costs_(size_ * size_, 0) {
    // To leave one without is dearer than anything that can be had by it.
    const std::int64_t without = kDearest * static_cast<std::int64_t>(size_ + 1);
    const std::int64_t forbidden = without * 4;
    for (std::size_t left = 0; left < lefts; ++left) {
      for (std::size_t right = 0; right < size_; ++right) {
        At(left, right) = right < rights ? forbidden : right == rights + left ? without : forbidden;
      }
    }
    // The rows behind those of the lefts take what is left over.
    for (std::size_t row = lefts; row < size_; ++row) {
      for (std::size_t right = 0; right < rights; ++right) {
        At(row, right) = right == row - lefts ? 0 : forbidden;
      }
    }
    for (const Edge& edge : edges) {
      std::int64_t& cost = At(edge.left, edge.right);
      cost = std::min(cost, edge.cost);
    }
  }
  std::size_t Size() const { return size_; }
  std::int64_t& At(std::size_t row, std::size_t column) { return costs_[row * size_ + column]; }
  std::int64_t At(std::size_t row, std::size_t column) const {
    return costs_[row * size_ + column];
  }

 private:
  std::size_t size_;
  std::vector<std::int64_t> costs_;
};

// The shortest ways from row to row, one row more at a time, with prices that keep all costs
// from falling below 0.
struct Solution {
  std::vector<std::size_t> columnOf, rowOf;
  std::vector<std::int64_t> rowPrice, columnPrice;
};

Solution Solve(const Square& square) {
  const std::size_t size = square.Size(), none = size;
  Solution found{std::vector<std::size_t>(size, none), std::vector<std::size_t>(size + 1, none),
                 std::vector<std::int64_t>(size + 1, 0), std::vector<std::int64_t>(size + 1, 0)};
  std::vector<std::int64_t> least(size + 1);
  std::vector<std::size_t> before(size + 1);
  std::vector<char> seen(size + 1);
  for (std::size_t row = 0; row < size; ++row) {
    found.rowOf[size] = row;
    std::size_t column = size;
    std::ranges::fill(least, kNever);
    std::ranges::fill(seen, 0);
    do {
      seen[column] = 1;
      const std::size_t at = found.rowOf[column];
      std::int64_t step = kNever;
      std::size_t next = size;
      for (std::size_t each = 0; each < size; ++each) {
        if (seen[each] != 0) continue;
        const std::int64_t cost =
            square.At(at, each) - found.rowPrice[at] - found.columnPrice[each];
        if (cost < least[each]) {
          least[each] = cost;
          before[each] = column;
        }
        if (least[each] < step) {
          step = least[each];
          next = each;
        }
      }
      for (std::size_t each = 0; each <= size; ++each) {
        if (seen[each] != 0) {
          found.rowPrice[found.rowOf[each]] += step;
          found.columnPrice[each] -= step;
        } else if (each < size) {
          least[each] -= step;
        }
      }
      column = next;
    } while (found.rowOf[column] != none);
    while (column != size) {
      const std::size_t from = before[column];
      found.rowOf[column] = found.rowOf[from];
      column = from;
    }
  }
  for (std::size_t column = 0; column < size; ++column) {
    found.columnOf[found.rowOf[column]] = column;
  }
  return found;
}

// Rows that can change places at no cost: those that lie on a circle of steps, each to a row whose
// column costs the first one as little as its own. By depth, without recursion.
class Circles {
 public:
  Circles(const Square& square, const Solution& solution)
      : square_(square),
        solution_(solution),
        size_(square.Size()),
        index_(size_, 0),
        low_(size_, 0),
        onStack_(size_, 0),
        ofCircle_(size_, 0) {
    for (std::size_t row = 0; row < size_; ++row) {
      if (index_[row] == 0) Walk(row);
    }
  }
  bool Holds(std::size_t row) const { return ofCircle_[row] != 0; }

 private:
  bool Leads(std::size_t row, std::size_t to) const {
    const std::size_t column = solution_.columnOf[to];
    return row != to &&
           square_.At(row, column) == solution_.rowPrice[row] + solution_.columnPrice[column];
  }
  void Enter(std::size_t row) {
    index_[row] = low_[row] = ++count_;
    stack_.push_back(row);
    onStack_[row] = 1;
    path_.push_back({row, 0});
  }
  void Walk(std::size_t first) {
    Enter(first);
    while (!path_.empty()) {
      const std::size_t row = path_.back().row;
      std::size_t& next = path_.back().next;
      std::size_t deeper = size_;
      for (; next < size_ && deeper == size_; ++next) {
        if (!Leads(row, next)) continue;
        if (index_[next] == 0) {
          deeper = next;
        } else if (onStack_[next] != 0) {
          low_[row] = std::min(low_[row], index_[next]);
        }
      }
      if (deeper != size_) {
        Enter(deeper);
        continue;
      }
      path_.pop_back();
      if (!path_.empty()) low_[path_.back().row] = std::min(low_[path_.back().row], low_[row]);
      if (low_[row] == index_[row]) Leave(row);
    }
  }
  void Leave(std::size_t row) {
    const bool alone = stack_.back() == row;
    for (bool more = true; more;) {
      const std::size_t each = stack_.back();
      stack_.pop_back();
      onStack_[each] = 0;
      ofCircle_[each] = alone ? 0 : 1;
      more = each != row;
    }
  }

  struct Step {
    std::size_t row, next;
  };
  const Square& square_;
  const Solution& solution_;
  std::size_t size_;
  std::vector<std::size_t> index_, low_;
  std::vector<char> onStack_, ofCircle_;
  std::vector<std::size_t> stack_;
  std::vector<Step> path_;
  std::size_t count_ = 0;
};

}  // namespace

std::vector<Given> Assign(std::size_t lefts, std::size_t rights, const std::vector<Edge>& edges) {
  std::vector<Given> given(lefts);
  if (lefts == 1 && edges.size() == 1) {
    given[0] = {edges[0].right, true};
    return given;
  }
  if (lefts == 0 || edges.empty()) return given;
  const Square square(lefts, rights, edges);
  const Solution solution = Solve(square);
  const Circles circles(square, solution);
  for (std::size_t left = 0; left < lefts; ++left) {
    const std::size_t column = solution.columnOf[left];
    given[left] = {column < rights ? column : Given::kNothing, !circles.Holds(left)};
  }
  return given;
}

}  // namespace brenvo::conferme
