// Links: links recorder
// Arbitrary bytes to both terminals, split and marked as the first bytes say: the engine asks and
// plays nothing that it should not, and nothing grows beyond its bound.
#include <cstdint>
#include <cstdlib>
#include <deque>
#include <memory>

#include "base/text.h"
#include "forms/window.h"
#include "links/spot_engine.h"
#include "recorder/recording_platform.h"

namespace brenvo::fuzz {
namespace {

void Require(bool holds) {
  if (!holds) std::abort();
}

class Terminal : public forms::Window {
 public:
  Terminal(forms::WindowHost& host, const links::SpotPolicy& policy, std::uint8_t marks)
      : forms::Window(host, "T", "", base::Twips(1), base::Twips(1)),
        engine_(policy, Received,
                {Banda, cmAutoSpelling, cmAutoCheck, policy.monitors ? &cmMDX : nullptr,
                 policy.monitors ? &cmMAnnounce : nullptr, policy.monitors ? &cmMTutto : nullptr},
                {.FindBand = [](base::Khz frequency) { return FindBand(frequency); },
                 .PlayWave =
                     [](std::string_view name) {
                       Require(name.starts_with("\\"));
                       // One character a file, but for the band, the pause and the stroke.
                       Require(name == "\\20m.wav" || name == "\\pause.wav" ||
                               name == "\\stroke.wav" || base::Len(name) == 6);
                     },
                 .ShowCheck =
                     [](std::string_view call) {
                       Require(!call.empty() && call.find(' ') == call.npos);
                     },
                 .Spotted = [](std::string_view call) { Require(!call.empty()); },
                 .Beep = [] {},
                 .TakeWaiting = [this] { return Take(); }}) {
    Banda.Add("Tutte", (marks & 1) != 0);
    Banda.Add(" 20 m", (marks & 2) != 0);
    cmMDX.SetDown((marks & 4) != 0);
    cmMAnnounce.SetDown((marks & 8) != 0);
    cmMTutto.SetDown((marks & 16) != 0);
    cmAutoSpelling.SetDown((marks & 32) != 0);
    cmAutoCheck.SetDown((marks & 64) != 0);
  }

  void Receive(const std::uint8_t* data, std::size_t size) {
    waiting_.insert(waiting_.end(), data, data + size);
    while (const auto character = Take()) {
      engine_.FeedCharacter(*character);
      Require(engine_.RxLine().size() <= 2 * links::SpotEngine::kLongestLine);
      Require(Received.Length() <= 132001);
    }
  }

  forms::RichText Received{*this, "Received"};
  forms::EntryArray Banda{*this, "Banda"};
  forms::Command cmMDX{*this, "cmMDX", ""}, cmMAnnounce{*this, "cmMAnnounce", ""},
      cmMTutto{*this, "cmMTutto", ""}, cmAutoSpelling{*this, "cmAutoSpelling", ""},
      cmAutoCheck{*this, "cmAutoCheck", ""};

 private:
  static std::optional<links::SpotBand> FindBand(base::Khz frequency) {
    if (frequency < base::Khz(14000) || frequency > base::Khz(14350)) return std::nullopt;
    return links::SpotBand{" 20 m", true, "20m.wav"};
  }
  std::optional<char32_t> Take() {
    if (waiting_.empty()) return std::nullopt;
    const std::uint8_t byte = waiting_.front();
    waiting_.pop_front();
    return byte;
  }

  std::deque<std::uint8_t> waiting_;
  links::SpotEngine engine_;
};

}  // namespace
}  // namespace brenvo::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace brenvo;
  using namespace brenvo::fuzz;
  static recorder::RecordingPlatform machine;
  if (size < 2) return 0;
  const std::uint8_t marks = data[0];
  const std::size_t split = 2 + data[1] % (size - 1);
  for (const links::SpotPolicy* policy : {&links::kRadioPolicy, &links::kTelnetPolicy}) {
    Terminal terminal(machine.Host(), *policy, marks);
    // Text that stood there before, so that the limits are in reach; seldom, for it takes long.
    if ((marks & 128) != 0 && data[1] >= 250) {
      terminal.Received.SetText(std::string(31990, 'x') + "\n");
    }
    terminal.Receive(data + 2, split - 2);
    terminal.Receive(data + split, size - split);
    std::size_t runs = 0;
    for (const forms::RichText::Run& run : terminal.Received.Runs()) runs += base::Len(run.text);
    Require(runs == terminal.Received.Length());
  }
  return 0;
}
