// A terminal without a port, a database and a sound device: what the engine does with its
// surroundings is written down.
#pragma once

#include <deque>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "base/csv.h"
#include "base/encoding.h"
#include "base/number.h"
#include "forms/window.h"
#include "links/spot_engine.h"
#include "recorder/recording_platform.h"
#include "tests/support/places.h"

namespace brenvo::links {

// The bands of a new operator, in table order.
inline std::vector<std::pair<SpotBand, std::pair<base::Khz, base::Khz>>> DeliveredBands() {
  const base::CsvTable table = base::ReadCsv(SourceDir() / "data/UserRTX.csv");
  std::vector<std::pair<SpotBand, std::pair<base::Khz, base::Khz>>> bands;
  for (const base::CsvTable::Row& row : table.Rows) {
    const auto cell = [&](std::string_view heading) { return row.Cells[table.Column(heading)]; };
    bands.push_back(
        {{cell("Banda"), cell("AnnunceDX") == "si", cell("FilenameDX")},
         {base::Khz(base::Val(cell("FrequenzaI"))), base::Khz(base::Val(cell("FrequenzaF")))}});
  }
  return bands;
}

class TestTerminal : public forms::Window {
 public:
  explicit TestTerminal(forms::WindowHost& host, const SpotPolicy& policy)
      : forms::Window(host, "TestTerminal", "", base::Twips(9000), base::Twips(6000)),
        Bands(DeliveredBands()),
        Engine(policy, Received,
               {Banda, cmAutoSpelling, cmAutoCheck, policy.monitors ? &cmMDX : nullptr,
                policy.monitors ? &cmMAnnounce : nullptr, policy.monitors ? &cmMTutto : nullptr},
               {.FindBand = [this](base::Khz frequency) { return FindBand(frequency); },
                .PlayWave = [this](std::string_view name) { Heard.emplace_back(name); },
                .ShowCheck = [this](std::string_view call) { Checked.emplace_back(call); },
                .Spotted = [this](std::string_view call) { Spotted.emplace_back(call); },
                .Beep = [this] { ++Beeps; },
                .TakeWaiting = [this] { return Take(); }}) {
    for (forms::Command* mark : {&cmMDX, &cmMAnnounce, &cmMTutto, &cmAutoSpelling, &cmAutoCheck}) {
      mark->Toggle = true;
    }
    for (forms::Command* mark : {&cmMDX, &cmMAnnounce, &cmMTutto}) {
      mark->OnClick = [this, mark] { Engine.MonitorChanged(*mark); };
    }
    cmMTutto.SetDown(true);
    Banda.Add("Tutte", true);
    for (const auto& [band, edges] : Bands) Banda.Add(band.Banda);
    Banda.OnPick = [this](int entry) { Engine.PickBand(entry); };
  }

  forms::RichText Received{*this, "Received"};
  forms::EntryArray Banda{*this, "Banda"};
  forms::Command cmMDX{*this, "cmMDX", "DX"};
  forms::Command cmMAnnounce{*this, "cmMAnnounce", "Announce"};
  forms::Command cmMTutto{*this, "cmMTutto", "Tutto"};
  forms::Command cmAutoSpelling{*this, "cmAutoSpelling", "Spelling Call"};
  forms::Command cmAutoCheck{*this, "cmAutoCheck", "Check Call"};
  std::vector<std::pair<SpotBand, std::pair<base::Khz, base::Khz>>> Bands;
  SpotEngine Engine;

  // What happened so far.
  std::vector<std::string> Heard, Checked, Spotted;
  std::vector<base::Khz> Asked;
  int Beeps = 0;

  // Bytes come, all of them in one event.
  void Receive(std::string_view bytes) {
    waiting_.insert(waiting_.end(), bytes.begin(), bytes.end());
    while (const auto character = Take()) Engine.FeedCharacter(*character);
  }
  void Forget() {
    Received.SetText("");
    Heard.clear();
    Checked.clear();
    Spotted.clear();
    Asked.clear();
    Beeps = 0;
  }
  // The entry of a band.
  int Entry(std::string_view band) const {
    for (std::size_t i = 0; i < Banda.Entries().size(); ++i) {
      if (Banda.Entries()[i].caption == band) return static_cast<int>(i);
    }
    return -1;
  }
  // The pieces of the text that are red.
  std::vector<std::string> Red() const {
    std::vector<std::string> red;
    for (const forms::RichText::Run& run : Received.Runs()) {
      if (run.colour == base::kRed) red.push_back(run.text);
    }
    return red;
  }

 private:
  std::optional<SpotBand> FindBand(base::Khz frequency) {
    Asked.push_back(frequency);
    for (const auto& [band, edges] : Bands) {
      if (frequency >= edges.first && frequency <= edges.second) return band;
    }
    return std::nullopt;
  }
  std::optional<char32_t> Take() {
    if (waiting_.empty()) return std::nullopt;
    const auto character = static_cast<unsigned char>(waiting_.front());
    waiting_.pop_front();
    return character;
  }

  std::deque<char> waiting_;
};

}  // namespace brenvo::links
