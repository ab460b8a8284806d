#include "conferme/assignment.h"

#include <gtest/gtest.h>

#include <numeric>
#include <random>
#include <set>

namespace brenvo::conferme {
namespace {

// By trying all ways: what each left thing is given in all of the cheapest ones, -1 for nothing and
// -2 where they differ.
class AllWays {
 public:
  AllWays(std::size_t lefts, std::size_t rights, const std::vector<Edge>& edges)
      : lefts_(lefts), costs_(lefts, std::vector<std::int64_t>(rights, -1)) {
    for (const Edge& edge : edges) {
      std::int64_t& cost = costs_[edge.left][edge.right];
      cost = cost < 0 ? edge.cost : std::min(cost, edge.cost);
    }
    given_.assign(lefts, -1);
    taken_.assign(rights, false);
    Try(0, 0, 0);
  }
  std::vector<int> answer;

 private:
  void Try(std::size_t left, int count, std::int64_t sum) {
    if (left == lefts_) {
      if (count < bestCount_ || (count == bestCount_ && sum > bestSum_)) return;
      const bool better = count > bestCount_ || sum < bestSum_;
      bestCount_ = count;
      bestSum_ = sum;
      if (better) {
        answer = given_;
      } else {
        for (std::size_t i = 0; i < lefts_; ++i) {
          if (answer[i] != given_[i]) answer[i] = -2;
        }
      }
      return;
    }
    given_[left] = -1;
    Try(left + 1, count, sum);
    for (std::size_t right = 0; right < taken_.size(); ++right) {
      if (taken_[right] || costs_[left][right] < 0) continue;
      taken_[right] = true;
      given_[left] = static_cast<int>(right);
      Try(left + 1, count + 1, sum + costs_[left][right]);
      taken_[right] = false;
      given_[left] = -1;
    }
  }
  std::size_t lefts_;
  std::vector<std::vector<std::int64_t>> costs_;
  std::vector<int> given_;
  std::vector<bool> taken_;
  int bestCount_ = -1;
  std::int64_t bestSum_ = 0;
};

TEST(TheCheapestAssignment, IsTheOneThatTryingAllWaysFinds) {
  std::mt19937 random(1);
  for (int round = 0; round < 3000; ++round) {
    SCOPED_TRACE(round);
    const std::size_t lefts = 1 + random() % 4, rights = 1 + random() % 4;
    std::vector<Edge> edges;
    const std::size_t count = random() % (lefts * rights + 1);
    for (std::size_t i = 0; i < count; ++i) {
      edges.push_back(
          {random() % lefts, random() % rights, static_cast<std::int64_t>(random() % 4)});
    }
    const AllWays all(lefts, rights, edges);
    const auto given = Assign(lefts, rights, edges);
    for (std::size_t left = 0; left < lefts; ++left) {
      if (all.answer[left] == -2) {
        EXPECT_FALSE(given[left].only);
      } else if (all.answer[left] == -1) {
        EXPECT_EQ(given[left].right, Given::kNothing);
      } else {
        EXPECT_EQ(given[left].right, static_cast<std::size_t>(all.answer[left]));
        EXPECT_TRUE(given[left].only);
      }
    }
  }
}

TEST(TheCheapestAssignment, ServesAsManyAsPossibleBeforeItLooksAtCosts) {
  const std::vector<Edge> edges = {{0, 0, 0}, {0, 1, kDearest}, {1, 0, kDearest}};
  const auto given = Assign(2, 2, edges);
  EXPECT_EQ(given[0].right, 1U);
  EXPECT_EQ(given[1].right, 0U);
}

}  // namespace
}  // namespace brenvo::conferme
