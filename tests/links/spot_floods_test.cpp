#include <gtest/gtest.h>

#include <stdexcept>

#include "base/text.h"
#include "tests/links/spot_terminals.h"

namespace brenvo::links {
namespace {

TEST_F(Radio, AFailedBandQueryLosesItsLineAndNoOther) {
  WatchDx();
  int asked = 0;
  SpotEngine engine(kRadioPolicy, terminal.Received,
                    {terminal.Banda, terminal.cmAutoSpelling, terminal.cmAutoCheck, &terminal.cmMDX,
                     &terminal.cmMAnnounce, &terminal.cmMTutto},
                    {.FindBand = [&](base::Khz) -> std::optional<SpotBand> {
                       if (++asked == 1) throw std::runtime_error("no");
                       return terminal.Bands.front().first;
                     },
                     .PlayWave = [](std::string_view) {},
                     .ShowCheck = [](std::string_view) {},
                     .Spotted = [](std::string_view) {},
                     .Beep = nullptr,
                     .TakeWaiting = nullptr});
  int failures = 0;
  for (char c : std::string(kSpot20) + std::string(kSpot2)) {
    try {
      engine.FeedCharacter(static_cast<unsigned char>(c));
    } catch (const std::runtime_error&) {
      ++failures;
    }
  }
  EXPECT_EQ(failures, 1);
  EXPECT_EQ(asked, 2);
  EXPECT_EQ(engine.RxLine(), "");
}

// Characters of one line, many times what is kept of it.
void ReceiveEndless(TestTerminal& terminal) {
  const std::string block(1 << 16, 'x');
  for (int i = 0; i < 5; ++i) terminal.Receive(block);
}

TEST_F(Radio, ALineWithoutAnEndStaysBounded) {
  WatchDx();
  ReceiveEndless(terminal);
  EXPECT_EQ(terminal.Engine.RxLine().size(), SpotEngine::kLongestLine);
  EXPECT_EQ(terminal.Received.Length(), 0u);
  terminal.Receive("\n");
  EXPECT_EQ(terminal.Engine.RxLine(), "");
}

TEST_F(Radio, UnderTuttoALineWithoutAnEndStaysBounded) {
  ReceiveEndless(terminal);
  EXPECT_EQ(terminal.Engine.RxLine().size(), SpotEngine::kLongestLine);
  EXPECT_LE(terminal.Received.Length(), 32001u);
  terminal.Receive("\n");
  EXPECT_EQ(terminal.Engine.RxLine(), "");
}

TEST_F(Telnet, ALineWithoutAnEndStaysBounded) {
  ReceiveEndless(terminal);
  EXPECT_EQ(terminal.Engine.RxLine().size(), SpotEngine::kLongestLine);
  EXPECT_EQ(terminal.Received.Length(), 0u);
  terminal.Receive("\nhello\n");
  EXPECT_EQ(base::Right(terminal.Received.Text(), 7), "\nhello\n");
}

TEST_F(Radio, ManyLongLinesStayBounded) {
  WatchDx();
  for (int i = 0; i < 40; ++i) {
    terminal.Receive("DX de " + std::to_string(i) + std::string(30000, 'x') + "\n");
    EXPECT_LE(terminal.Received.Length(), 132001u);
  }
}

// Spots that all come at once; the windows' own tests take ten thousand.
constexpr int kBurst = 2000;

std::string Burst() {
  std::string burst;
  for (int i = 0; i < kBurst; ++i) {
    burst += "DX de I4LCK:     14195.0  Z" + std::to_string(i) + "A   tnx\r\n";
  }
  return burst;
}

// Each line in turn is seen at the end of the text before the next one comes.
TEST_F(Radio, OfABurstEachLineComesUpAndIsHeard) {
  WatchDx();
  int shown = 0;
  const forms::Subscription edited =
      terminal.Received.Edited.Subscribe([&](const forms::RichText::Edit& edit) {
        if (!edit.inserted.empty()) {
          EXPECT_EQ(edit.inserted.front().text,
                    "DX DE I4LCK:     14195.0  Z" + std::to_string(shown) + "A   TNX\n");
          ++shown;
        }
        EXPECT_LE(terminal.Received.Length(), 32100u);
      });
  terminal.Receive(Burst());
  EXPECT_EQ(shown, kBurst);
  EXPECT_EQ(terminal.Heard.size(), static_cast<std::size_t>(kBurst));
}

TEST_F(Telnet, OfABurstEachLineComesUpAndItsCallIsChecked) {
  terminal.cmAutoCheck.Press();
  int shown = 0;
  const forms::Subscription edited =
      terminal.Received.Edited.Subscribe([&](const forms::RichText::Edit& edit) {
        if (!edit.inserted.empty()) ++shown;
        EXPECT_LE(terminal.Received.Length(), 32100u);
      });
  terminal.Receive(Burst());
  EXPECT_EQ(shown, kBurst);
  EXPECT_EQ(terminal.Checked.size(), static_cast<std::size_t>(kBurst));
  EXPECT_EQ(terminal.Checked.back(), "Z1999A");
}

TEST_F(Radio, ControlBytesAndBytesThatAreNoTextDoNoHarm) {
  std::string bytes;
  for (int byte = 0; byte < 256; ++byte) {
    if (byte != '\n' && byte != '\r' && byte != 7 && byte != '!') bytes += static_cast<char>(byte);
  }
  terminal.Receive("DX de " + bytes + ": 14195.0 " + bytes + " cq\n");
  EXPECT_EQ(base::Len(terminal.Received.Text()), 6 + 252 + 2 + 8 + 252 + 3 + 1);
}

}  // namespace
}  // namespace brenvo::links
