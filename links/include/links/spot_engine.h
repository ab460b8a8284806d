// What turns the characters of a DX cluster into something to see and to hear.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "base/units.h"
#include "forms/command.h"
#include "forms/rich_text.h"

namespace brenvo::links {

// When the spotted call is looked up in the log.
enum class SpotCheck {
  kBehindAnnouncement,  // every spot that has a call, on whatever band
  kWhereBandPasses,     // at the moment its band passes the marks, no other
};

// All points in which the two terminals differ. The differences are meant.
struct SpotPolicy {
  bool escapes;               // "!" opens an escape that is thrown away
  bool beeps;                 // at character 7; it goes no further in any case
  bool trimsAtEachCharacter;  // or only where it shows one, and at each line end
  bool monitors;              // the marks DX, Announce, Tutto decide if a line counts at all
  bool dropsRepeats;          // a line that already stands in the text area
  bool showsFirst;            // shows each line before it judges it, and takes it back
  bool showsOwnCase;          // as the line arrived, not in upper case
  bool paintsRed;             // the DX of a spot
  bool passingBandSounds;     // what is heard: spots whose band the marks let through...
  bool failingBandSounds;     // ...or those that they hold back
  SpotCheck check;
};

inline constexpr SpotPolicy kRadioPolicy{
    .escapes = true,
    .beeps = true,
    .trimsAtEachCharacter = false,
    .monitors = true,
    .dropsRepeats = true,
    .showsFirst = true,
    .showsOwnCase = false,
    .paintsRed = true,
    .passingBandSounds = true,
    .failingBandSounds = false,
    .check = SpotCheck::kBehindAnnouncement,
};
inline constexpr SpotPolicy kTelnetPolicy{
    .escapes = false,
    .beeps = false,
    .trimsAtEachCharacter = true,
    .monitors = false,
    .dropsRepeats = false,
    .showsFirst = false,
    .showsOwnCase = true,
    .paintsRed = false,
    .passingBandSounds = false,
    .failingBandSounds = true,
    .check = SpotCheck::kWhereBandPasses,
};

// The row of the station's bands that holds a frequency.
struct SpotBand {
  std::string Banda;
  bool AnnunceDX = false;
  std::string FilenameDX;
};

// The marks of a terminal. The monitor marks are null where there is no monitor.
struct SpotMarks {
  forms::EntryArray& Banda;  // entry 0 is Tutte
  forms::Command& cmAutoSpelling;
  forms::Command& cmAutoCheck;
  forms::Command* cmMDX = nullptr;
  forms::Command* cmMAnnounce = nullptr;
  forms::Command* cmMTutto = nullptr;
};

// What the engine asks of its terminal. A failure of any of these ends the line in work.
struct SpotOutside {
  std::function<std::optional<SpotBand>(base::Khz)> FindBand;
  std::function<void(std::string_view name)> PlayWave;  // returns when it has ended
  std::function<void(std::string_view call)> ShowCheck;
  // A spot that stays on the screen.
  std::function<void(std::string_view call)> Spotted;
  std::function<void()> Beep;
  // The next character that waits, if one does.
  std::function<std::optional<char32_t>()> TakeWaiting;
};

class SpotEngine {
 public:
  SpotEngine(const SpotPolicy& policy, forms::RichText& Received, const SpotMarks& marks,
             SpotOutside outside);

  // Each received character, in order. Sounds are waited for.
  void FeedCharacter(char32_t character);

  // What came since the last line end, without it. What goes beyond kLongestLine characters is
  // dropped, so that a line that never ends costs no more memory.
  const std::string& RxLine() const { return rxLine_; }
  static constexpr std::size_t kLongestLine = 32000;

  // The operator's clicks: each tick is flipped, and the marks that contradict it go.
  void PickBand(int entry);
  void MonitorChanged(forms::Command& mark);

 private:
  void SkipEscape();
  void AddCharacter(char32_t character);
  void CompleteLine();
  bool MonitorThis(std::string_view line) const;
  bool Everything() const;
  void ShowAtOnce(std::string_view line);
  void TakeBack(std::string_view line);
  void JudgeSpot(std::string_view line, std::string_view displayCopy);
  bool BandaOk(std::string_view band) const;
  void Announce(const SpotBand& band, std::string_view spotter,
                const std::optional<std::string>& spotCall);

  const SpotPolicy& policy_;
  forms::RichText& received_;
  SpotMarks marks_;
  SpotOutside outside_;
  std::string rxLine_;
  std::size_t rxLength_ = 0;  // its characters
};

}  // namespace brenvo::links
