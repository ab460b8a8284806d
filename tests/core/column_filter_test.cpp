#include "core/column_filter.h"

#include <gtest/gtest.h>

namespace brenvo::core {
namespace {

struct FilterCase {
  const char* filter;
  const char* passes;  // cells, "|" between
  const char* fails;
};

std::vector<std::string> CellsOf(std::string_view all) {
  std::vector<std::string> cells;
  for (std::size_t at = 0; at <= all.size();) {
    const std::size_t end = std::min(all.find('|', at), all.size());
    cells.emplace_back(all.substr(at, end - at));
    at = end + 1;
  }
  return cells;
}

void TryFilters(ColumnKind kind, std::initializer_list<FilterCase> cases) {
  for (const FilterCase& each : cases) {
    const ColumnFilter filter(each.filter, kind);
    EXPECT_EQ(filter.Fault(), "") << each.filter;
    for (const std::string& cell : CellsOf(each.passes)) {
      EXPECT_TRUE(filter.Passes(cell)) << each.filter << " on \"" << cell << '"';
    }
    if (std::string_view(each.fails) == "-") continue;
    for (const std::string& cell : CellsOf(each.fails)) {
      EXPECT_FALSE(filter.Passes(cell)) << each.filter << " on \"" << cell << '"';
    }
  }
}

TEST(ColumnFilter, FindsATextWhateverCaseAndAccents) {
  TryFilters(ColumnKind::kText, {{"citta", "Città|una CITTÀ|città", "citt|"},
                                 {"dl1", "DL1ABC|SP/DL1ABC", "DL2ABC"},
                                 {" 2 m ", "  2 m", " 20 m"},
                                 {"dl*", "DL1ABC|dl", "SP/DL1ABC|D"},
                                 {"*/p", "IK3ABC/P|a/P  ", "IK3ABC|/p/m"},
                                 {"dl?abc", "DL1ABC|dlàABC", "DL12ABC|DLABC"},
                                 {"=dl", "DL|dl ", "DL1|"},
                                 {"!dl", "IK|", "DL1"},
                                 {"!!dl", "DL1", "IK"},
                                 {"=", "|  ", "a"},
                                 {"<>", "a", "|  "},
                                 {"dl;ik*", "aDL|IK3", "aIK"},
                                 {">dl", "DM|e|dla", "DL|C"},
                                 {">=dl", "DL|e", "C"},
                                 {"<b", "a|", "b"},
                                 {"a..c", "A|b|C", "cc|d"},
                                 {"b..", "b|z", "a"},
                                 {"..b", "a|b|", "c"}});
}

TEST(ColumnFilter, ComparesNumbers) {
  TryFilters(ColumnKind::kNumber, {{"14", "14|14.0", "140|14.1|"},
                                   {">10", "10.1|11", "10|9|"},
                                   {">= 10", "10|11", "9.9"},
                                   {"<10", "9|-1|", "10"},
                                   {"<=10", "10", "10.1"},
                                   {"14..14,35", "14|14.2|14.35", "13.9|14.36"},
                                   {"5..", "5|6", "4"},
                                   {"..5", "5|4|-3", "6"},
                                   {"<>14", "13|", "14"},
                                   {"!10..20", "9|21", "10|15"},
                                   {"14;21", "14|21", "18"},
                                   {"14*", "14|14.074|145", "21"},
                                   {"=", "|0", "1"},
                                   {"<>", "1", "0|"},
                                   {"-5", "-5", "5"}});
}

TEST(ColumnFilter, ComparesDaysMonthsYearsAndMinutes) {
  TryFilters(ColumnKind::kDate,
             {{"2024", "01/01/2024|31/12/2024 23:59:59", "31/12/2023 23:59:59|01/01/2025|"},
              {"02/2024", "01/02/2024|29/02/2024 12:00:00", "31/01/2024|01/03/2024"},
              {"12/2024", "31/12/2024", "01/01/2025|30/11/2024"},
              {"3/2/2001", "03/02/2001|03/02/2001 23:59:59", "04/02/2001|02/02/2001"},
              {"2001-02-03", "03/02/2001 10:00:00", "04/02/2001"},
              {"3/2/2001 10:15", "03/02/2001 10:15:00|03/02/2001 10:15:59", "03/02/2001 10:16:00"},
              {">2023", "01/01/2024", "31/12/2023 23:59:59"},
              {">=2023", "01/01/2023", "31/12/2022"},
              {"<3/2/2001", "02/02/2001 23:59:59", "03/02/2001"},
              {"<=3/2/2001", "03/02/2001 23:59:59", "04/02/2001"},
              {"1/1/2024..31/3/2024", "01/01/2024|31/03/2024 23:59:59", "01/04/2024|31/12/2023"},
              {"2023..2024", "01/01/2023|31/12/2024 10:00:00", "01/01/2025"},
              {"2024..", "01/01/2024", "31/12/2023"},
              {"=", "", "01/01/2024"},
              {"!2024", "01/01/2023", "01/01/2024"}});
}

TEST(ColumnFilter, KnowsYesAndNoFromTheirFirstLetters) {
  TryFilters(ColumnKind::kYesNo, {{"s", "Sì", "No|"},
                                  {"Sì", "Sì", "No"},
                                  {"si", "Sì", "No"},
                                  {"1", "Sì", "No"},
                                  {"n", "No|", "Sì"},
                                  {"=no", "No", "Sì"},
                                  {"!no", "Sì", "No"}});
}

TEST(ColumnFilter, WhatIsStillToComeWantsNothing) {
  for (const auto kind :
       {ColumnKind::kText, ColumnKind::kNumber, ColumnKind::kDate, ColumnKind::kYesNo}) {
    for (const char* text : {"", "  ", ">", "<", ">=", "!", ";", " ; "}) {
      const ColumnFilter filter(text, kind);
      EXPECT_TRUE(filter.WantsNothing()) << text;
      EXPECT_EQ(filter.Fault(), "") << text;
      EXPECT_TRUE(filter.Passes("")) << text;
    }
  }
}

TEST(ColumnFilter, WhatIsNotUnderstoodIsToldAndWantsNothing) {
  const std::pair<ColumnKind, const char*> cases[] = {
      {ColumnKind::kNumber, "abc"},      {ColumnKind::kNumber, "1x"},
      {ColumnKind::kNumber, "1..x"},     {ColumnKind::kNumber, ">>1"},
      {ColumnKind::kDate, "abc"},        {ColumnKind::kDate, "32/1/2024"},
      {ColumnKind::kDate, "13/2024"},    {ColumnKind::kDate, "99999999999"},
      {ColumnKind::kDate, "20"},         {ColumnKind::kYesNo, "forse"},
      {ColumnKind::kYesNo, ">sì"},       {ColumnKind::kYesNo, "sì..no"},
      {ColumnKind::kNumber, "14;forse"}, {ColumnKind::kDate, "1/1/2024..x"}};
  for (const auto& [kind, text] : cases) {
    const ColumnFilter filter(text, kind);
    EXPECT_EQ(filter.Fault(), ColumnFilter::Hint(kind)) << text;
    EXPECT_TRUE(filter.WantsNothing()) << text;
    EXPECT_TRUE(filter.Passes("x")) << text;
  }
}

}  // namespace
}  // namespace brenvo::core
