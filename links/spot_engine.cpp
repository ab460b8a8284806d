#include "links/spot_engine.h"

#include <algorithm>
#include <utility>

#include "base/text.h"
#include "received_text.h"
#include "spelling.h"
#include "spot_line.h"

namespace brenvo::links {
namespace {

constexpr char32_t kBell = 7, kLineFeed = 10, kCarriageReturn = 13;
constexpr std::string_view kSpotMark = "DX DE";
constexpr std::size_t kPainted = 2;

}  // namespace

SpotEngine::SpotEngine(const SpotPolicy& policy, forms::RichText& Received, const SpotMarks& marks,
                       SpotOutside outside)
    : policy_(policy), received_(Received), marks_(marks), outside_(std::move(outside)) {}

void SpotEngine::FeedCharacter(char32_t character) {
  if (character == U'!' && policy_.escapes) {
    SkipEscape();
  } else if (character == kBell) {
    if (policy_.beeps) outside_.Beep();
  } else if (character == kLineFeed) {
    CompleteLine();
  } else if (character != kCarriageReturn) {
    AddCharacter(character);
  }
}

void SpotEngine::SkipEscape() {
  const auto kind = outside_.TakeWaiting();
  if (kind != U'0' && kind != U'1') return;
  outside_.TakeWaiting();
  outside_.TakeWaiting();
}

void SpotEngine::AddCharacter(char32_t character) {
  const bool shown = Everything();
  const std::string text = base::FromCharacters(std::u32string_view(&character, 1));
  if (rxLength_ < kLongestLine) {
    rxLine_ += text;
    ++rxLength_;
  }
  if (shown || policy_.trimsAtEachCharacter) TrimReceived(received_);
  if (shown) received_.Append(text);
}

bool SpotEngine::Everything() const {
  return marks_.cmMTutto != nullptr && marks_.cmMTutto->Down();
}

bool SpotEngine::MonitorThis(std::string_view line) const {
  if (!policy_.monitors || Everything()) return true;
  const auto holds = [line](std::string_view what) { return line.find(what) != line.npos; };
  return (marks_.cmMDX->Down() && holds("DX de")) ||
         (marks_.cmMAnnounce->Down() && holds("To ALL"));
}

void SpotEngine::CompleteLine() {
  // Taken out at once: whatever becomes of this line, the next one starts empty.
  const std::string arrived = std::exchange(rxLine_, {});
  rxLength_ = 0;
  TrimReceived(received_);
  if (!MonitorThis(arrived)) return;
  const std::string line = base::Upper(arrived);
  if (policy_.dropsRepeats && !Everything() && received_.Find(line, 0) != forms::RichText::npos)
    return;
  const std::string displayCopy = (policy_.showsOwnCase ? arrived : line) + "\n";

  if (policy_.showsFirst) ShowAtOnce(line);
  if (BeginsAsSpot(line)) {
    JudgeSpot(line, displayCopy);
  } else if (!policy_.showsFirst) {
    received_.Append(displayCopy);
  }
}

// Where everything is shown the line stands there already, in its own case.
void SpotEngine::ShowAtOnce(std::string_view line) {
  received_.Append(Everything() ? "\n" : std::string(line) + "\n");
  if (!policy_.paintsRed) return;
  const std::size_t shown = base::Len(line) + 1;
  const std::size_t start = received_.Length() - std::min(shown, received_.Length());
  const std::size_t mark = received_.Find(kSpotMark, start);
  if (mark == forms::RichText::npos) return;
  received_.Select(mark, kPainted);
  received_.SetSelColour(base::kRed);
  received_.Select(received_.Length(), 0);
}

// The whole text is put there anew as plain text, so the red of all other lines goes too.
void SpotEngine::TakeBack(std::string_view line) {
  const std::size_t shown = base::Len(line) + 1;
  received_.CutPlain(received_.Length() - std::min(shown, received_.Length()));
}

void SpotEngine::JudgeSpot(std::string_view line, std::string_view displayCopy) {
  const auto spot = CutSpotLine(line);
  if (!spot) return;
  const auto band = outside_.FindBand(spot->SpotFrequenza);
  const bool stays = band ? BandaOk(band->Banda) : marks_.Banda.Entries().front().checked;
  if (stays && !policy_.showsFirst) received_.Append(displayCopy);
  if (!stays && policy_.showsFirst) TakeBack(line);
  if (stays && spot->SpotCall) outside_.Spotted(*spot->SpotCall);

  const bool checks = spot->SpotCall && marks_.cmAutoCheck.Down();
  if (checks && policy_.check == SpotCheck::kWhereBandPasses && band && stays) {
    outside_.ShowCheck(*spot->SpotCall);
  }
  const bool heard = stays ? policy_.passingBandSounds : policy_.failingBandSounds;
  const bool annunciaSpot = band && band->AnnunceDX && heard;
  if (annunciaSpot) Announce(*band, spot->Spotter, spot->SpotCall);
  if (checks && policy_.check == SpotCheck::kBehindAnnouncement) {
    outside_.ShowCheck(*spot->SpotCall);
  }
}

bool SpotEngine::BandaOk(std::string_view band) const {
  const auto& entries = marks_.Banda.Entries();
  if (entries.front().checked) return true;
  for (const forms::EntryArray::Entry& entry : entries) {
    if (entry.checked && entry.caption == band) return true;
  }
  return false;
}

void SpotEngine::Announce(const SpotBand& band, std::string_view spotter,
                          const std::optional<std::string>& spotCall) {
  outside_.PlayWave("\\" + band.FilenameDX);
  if (!marks_.cmAutoSpelling.Down()) return;
  SpellCall(spotter, outside_.PlayWave);
  outside_.PlayWave(kPauseWave);
  if (spotCall) SpellCall(*spotCall, outside_.PlayWave);
}

void SpotEngine::PickBand(int entry) {
  forms::EntryArray& bands = marks_.Banda;
  const bool ticked = !bands.Entries().at(static_cast<std::size_t>(entry)).checked;
  bands.SetChecked(entry, ticked);
  if (entry != 0) {
    bands.SetChecked(0, false);
  } else if (ticked) {
    for (int each = 1; each < static_cast<int>(bands.Entries().size()); ++each) {
      bands.SetChecked(each, false);
    }
  }
}

void SpotEngine::MonitorChanged(forms::Command& mark) {
  if (!mark.Down()) return;
  if (&mark == marks_.cmMTutto) {
    marks_.cmMDX->SetDown(false);
    marks_.cmMAnnounce->SetDown(false);
  } else {
    marks_.cmMTutto->SetDown(false);
  }
}

}  // namespace brenvo::links
