#include "tools/mkmaps/outlines.h"

#include <gtest/gtest.h>

#include <fstream>
#include <stdexcept>

namespace brenvo::mkmaps {
namespace {

class OutlineFile : public testing::Test {
 protected:
  std::vector<Outline> Read(const std::string& rows) {
    // Each test runs as a program of its own, beside others.
    const auto* test = testing::UnitTest::GetInstance()->current_test_info();
    const auto file = std::filesystem::path(testing::TempDir()) /
                      (std::string("brenvo_outlines_") + test->name() + ".csv");
    std::ofstream(file, std::ios::binary) << "Kind,Name,Group,Step,Points\n" << rows;
    return ReadOutlines(file);
  }
  // Two squares of 2 by 2 degrees side by side, the left one with a hole.
  std::vector<Outline> Neighbours() {
    return Read(
        "ring,a,x,1,0 0 2 0 0 2 -2 0 0 -2\n"
        "ring,a,x,0.5,1 1 1 0 0 1 -1 0 0 -1\n"
        "ring,b,y,1,2 0 2 0 0 2 -2 0 0 -2\n");
  }
};

TEST_F(OutlineFile, VerticesAreStepsFromTheOneBefore) {
  const auto outlines = Read("line,n,g,0.5,2 4 -1 1 0 -3\n");
  ASSERT_EQ(outlines.size(), 1u);
  EXPECT_EQ(outlines[0].kind, OutlineKind::kLine);
  EXPECT_EQ(outlines[0].name, "n");
  EXPECT_EQ(outlines[0].group, "g");
  EXPECT_EQ(outlines[0].points, (GeoLine{{1, 2}, {0.5, 2.5}, {0.5, 1}}));
}

TEST_F(OutlineFile, WhatIsNoOutlineIsAnError) {
  EXPECT_THROW(Read("blob,n,,1,0 0\n"), std::runtime_error);
  EXPECT_THROW(Read("line,n,,1,0 zero\n"), std::runtime_error);
  EXPECT_THROW(Read("line,n,,1,\n"), std::runtime_error);
  EXPECT_THROW(ReadOutlines("/nothing/here.csv"), std::runtime_error);
}

TEST_F(OutlineFile, AHoleIsNoPartOfItsArea) {
  const auto outlines = Neighbours();
  EXPECT_TRUE(Contains(outlines, {1.5, 1.5}));
  EXPECT_TRUE(Contains(outlines, {1.5, 1.5}, "a"));
  EXPECT_FALSE(Contains(outlines, {1.5, 1.5}, "b"));
  EXPECT_FALSE(Contains(outlines, {0.75, 0.75}));
  EXPECT_TRUE(Contains(outlines, {3, 1}, "b"));
  EXPECT_FALSE(Contains(outlines, {5, 1}));
}

TEST_F(OutlineFile, ABorderIsAnEdgeOfTwoAndACoastOfOne) {
  const Edges edges = EdgesOf(Neighbours());
  ASSERT_EQ(edges.borders.size(), 1u);
  EXPECT_EQ(edges.borders[0], (GeoLine{{2, 0}, {2, 2}}));
  std::size_t pieces = 0;
  for (const GeoLine& coast : edges.coasts) pieces += coast.size() - 1;
  EXPECT_EQ(pieces, 3u + 4u + 3u);
}

TEST_F(OutlineFile, CutsAtTheDateLineAndAtThePoleAreNoCoasts) {
  const Edges edges =
      EdgesOf(Read("ring,a,,1,170 -90 10 0 0 20 -10 0 0 -20\n"));  // from the pole to 70 south
  std::size_t pieces = 0;
  for (const GeoLine& coast : edges.coasts) pieces += coast.size() - 1;
  EXPECT_EQ(pieces, 2u);
  EXPECT_TRUE(edges.borders.empty());
}

}  // namespace
}  // namespace brenvo::mkmaps
