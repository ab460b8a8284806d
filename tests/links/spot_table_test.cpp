// Lines in the forms that nodes send, and what becomes of each on both terminals.
#include <gtest/gtest.h>

#include <fstream>
#include <memory>
#include <set>
#include <sstream>

#include "base/text.h"
#include "links/spot_line.h"
#include "tests/links/test_terminal.h"
#include "tests/support/places.h"

namespace brenvo::links {
namespace {

struct SpotCase {
  int line = 0;  // of the table
  std::string form, bytes, spotter, khz, call, band;
  std::string radioAll, radio20, telnetAll, telnet20;
};

std::string Unescaped(const std::string& text) {
  std::string bytes;
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\') {
      bytes += text[i];
    } else if (text[i + 1] == 'x') {
      bytes += static_cast<char>(std::stoi(text.substr(i + 2, 2), nullptr, 16));
      i += 3;
    } else {
      bytes += text[++i];
    }
  }
  return bytes;
}

std::vector<SpotCase> ReadTable() {
  std::vector<SpotCase> cases;
  std::ifstream file(SourceDir() / "tests/links/spots.tsv");
  std::string text;
  for (int number = 1; std::getline(file, text); ++number) {
    if (text.starts_with("#")) continue;
    std::vector<std::string> cells;
    std::istringstream stream(text);
    for (std::string cell; std::getline(stream, cell, '\t');) cells.push_back(cell);
    if (cells.size() != 10) {
      ADD_FAILURE() << "line " << number << " has " << cells.size() << " columns";
      continue;
    }
    cases.push_back({number, cells[0], Unescaped(cells[1]), base::FromLatin1(Unescaped(cells[2])),
                     cells[3], base::FromLatin1(Unescaped(cells[4])), cells[5], cells[6], cells[7],
                     cells[8], cells[9]});
  }
  return cases;
}

const std::vector<SpotCase>& Table() {
  static const std::vector<SpotCase> kCases = ReadTable();
  return kCases;
}

// The line as a terminal shows it: without the characters that go no further.
std::string Shown(const SpotCase& spot) {
  std::string text = spot.bytes;
  std::erase(text, '\x07');
  return base::FromLatin1(text);
}

// A terminal, its marks, and the column that tells what becomes of a line there.
struct Way {
  const SpotPolicy& policy;
  bool only20;  // of the bands, " 20 m" alone is ticked
  std::string SpotCase::*outcome;
};
constexpr Way kWays[] = {{kRadioPolicy, false, &SpotCase::radioAll},
                         {kRadioPolicy, true, &SpotCase::radio20},
                         {kTelnetPolicy, false, &SpotCase::telnetAll},
                         {kTelnetPolicy, true, &SpotCase::telnet20}};

class SpotTable : public testing::Test {
 protected:
  std::unique_ptr<TestTerminal> Terminal(const Way& way) {
    auto terminal = std::make_unique<TestTerminal>(platform_.Host(), way.policy);
    terminal->cmAutoCheck.SetDown(true);
    if (way.policy.monitors) terminal->cmMDX.Press();
    if (way.only20) terminal->Banda.Pick(terminal->Entry(" 20 m"));
    return terminal;
  }
  // What has become of the line that was just received.
  static std::string Outcome(const TestTerminal& terminal, const std::string& shown) {
    std::string outcome;
    const auto add = [&](std::string_view word) {
      if (!outcome.empty()) outcome += '+';
      outcome += word;
    };
    if (terminal.Received.Text() == shown + "\n") add("shown");
    if (!terminal.Heard.empty()) add("wave");
    if (!terminal.Checked.empty()) add("check");
    return outcome.empty() ? "-" : outcome;
  }
  static void Check(const TestTerminal& terminal, const SpotCase& spot, const Way& way) {
    const std::string shown = way.policy.showsOwnCase ? Shown(spot) : base::Upper(Shown(spot));
    ASSERT_EQ(Outcome(terminal, shown), spot.*way.outcome)
        << "line " << spot.line << ": " << spot.bytes;
    if (terminal.Received.Length() != 0) {
      ASSERT_EQ(terminal.Received.Text(), shown + "\n");
    }
    if (!terminal.Heard.empty()) {
      std::string band = spot.band;
      std::erase(band, ' ');
      ASSERT_EQ(terminal.Heard, std::vector<std::string>{"\\" + band + ".wav"});
    }
    if (!terminal.Checked.empty()) {
      ASSERT_EQ(terminal.Checked, std::vector<std::string>{spot.call});
    }
  }

  recorder::RecordingPlatform platform_;
};

TEST_F(SpotTable, HoldsAtLeastThreeHundredSpots) {
  std::set<std::string> spots;
  for (const SpotCase& spot : Table()) {
    if (spot.khz != "-") spots.insert(spot.bytes);
  }
  EXPECT_GE(spots.size(), 300u);
}

TEST_F(SpotTable, TellsHowEachLineIsCut) {
  for (const SpotCase& spot : Table()) {
    const std::string line = base::Upper(Shown(spot));
    const auto cut = BeginsAsSpot(line) ? CutSpotLine(line) : std::nullopt;
    ASSERT_EQ(cut.has_value(), spot.khz != "-") << "line " << spot.line;
    if (!cut) continue;
    EXPECT_EQ(cut->Spotter, spot.spotter) << "line " << spot.line;
    EXPECT_EQ(base::PlainNumber(cut->SpotFrequenza.Value()), spot.khz) << "line " << spot.line;
    EXPECT_EQ(cut->SpotCall.value_or("-"), spot.call) << "line " << spot.line;
  }
}

TEST_F(SpotTable, TellsTheOutcomeOnBothTerminals) {
  for (const Way& way : kWays) {
    const auto terminal = Terminal(way);
    for (const SpotCase& spot : Table()) {
      for (const std::string_view lineEnd : {"\n", "\r\n"}) {
        terminal->Forget();
        terminal->Receive(spot.bytes + std::string(lineEnd));
        Check(*terminal, spot, way);
        if (HasFatalFailure()) return;
      }
    }
  }
}

// Every place at which the network may part the line.
TEST_F(SpotTable, TellsTheSameHoweverALineIsSplit) {
  for (const Way& way : kWays) {
    if (way.only20) continue;  // which bands are marked is asked when the line has ended
    const auto terminal = Terminal(way);
    for (const SpotCase& spot : Table()) {
      const std::string bytes = spot.bytes + "\r\n";
      for (std::size_t split = 1; split < bytes.size(); ++split) {
        terminal->Forget();
        terminal->Receive(std::string_view(bytes).substr(0, split));
        terminal->Receive(std::string_view(bytes).substr(split));
        Check(*terminal, spot, way);
        if (HasFatalFailure()) return;
      }
    }
  }
}

TEST_F(SpotTable, ShowsEveryLineAsItArrivedUnderTutto) {
  const auto terminal = Terminal(kWays[0]);
  terminal->cmMTutto.Press();
  for (const SpotCase& spot : Table()) {
    terminal->Forget();
    terminal->Receive(spot.bytes + "\r\n");
    EXPECT_EQ(terminal->Received.Text(), Shown(spot) + "\n");
    EXPECT_EQ(!terminal->Red().empty(),
              base::Upper(Shown(spot)).find("DX DE") != std::string::npos);
  }
}

TEST_F(SpotTable, KeepsAllLinesOfABurst) {
  const auto terminal = Terminal(kWays[2]);
  std::string burst;
  std::string shown;
  for (const SpotCase& spot : Table()) {
    burst += spot.bytes + "\r\n";
    if (spot.telnetAll.find("shown") != std::string::npos) shown += Shown(spot) + "\n";
  }
  ASSERT_LT(base::Len(shown), 32000u);
  terminal->Receive(burst);
  EXPECT_EQ(terminal->Received.Text(), shown);
}

}  // namespace
}  // namespace brenvo::links
