// The two forms of the engine on terminals of the delivered bands, and spots for them.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <vector>

#include "tests/links/test_terminal.h"

namespace brenvo::links {

using Texts = std::vector<std::string>;

// As they arrive, and as the radio form shows them.
inline constexpr std::string_view kSpot20 = "DX de I4LCK:     14195.0  VP8ORK   tnx 1423Z\r\n";
inline constexpr std::string_view kSpot2 = "DX de I4LCK:    144300.0  DL1ABC   tnx 1424Z\r\n";
inline constexpr std::string_view kSpotNowhere = "DX de I4LCK:     13000.0  VP8ORK   tnx 1425Z\r\n";
inline constexpr std::string_view kShown20 = "DX DE I4LCK:     14195.0  VP8ORK   TNX 1423Z\n";
inline constexpr std::string_view kShown2 = "DX DE I4LCK:    144300.0  DL1ABC   TNX 1424Z\n";

// A line in the case that it came in, as the text area holds it.
inline std::string Arrived(std::string_view line) {
  std::string text(line);
  std::erase(text, '\r');
  return text;
}

class SpotTerminal : public testing::Test {
 protected:
  explicit SpotTerminal(const SpotPolicy& policy) : terminal(platform.Host(), policy) {}

  void OnlyBand(std::string_view band) { terminal.Banda.Pick(terminal.Entry(band)); }
  bool Ticked(std::string_view band) {
    return terminal.Banda.Entries()[static_cast<std::size_t>(terminal.Entry(band))].checked;
  }

  recorder::RecordingPlatform platform;
  TestTerminal terminal;
};

class Radio : public SpotTerminal {
 protected:
  Radio() : SpotTerminal(kRadioPolicy) {}
  void WatchDx() { terminal.cmMDX.Press(); }
};

class Telnet : public SpotTerminal {
 protected:
  Telnet() : SpotTerminal(kTelnetPolicy) {}
};

}  // namespace brenvo::links
