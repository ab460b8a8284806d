#include "links/ft736.h"

#include <algorithm>
#include <cmath>
#include <stdexcept>

#include "base/number.h"
#include "core/entry.h"
#include "core/window_place.h"

namespace brenvo::links {
namespace {

constexpr std::string_view kVfoA = "VFO-A";
constexpr int kPollInterval = 100;  // milliseconds
constexpr int kHalfSpan = 1000;     // units of 100 Hz
// What the slider can carry, with its span: far beyond any transceiver.
constexpr double kHighest = 2e9;

int WholeSteps(base::HundredHz frequency) {
  return static_cast<int>(base::RoundHalfEven(frequency.Value()));
}

}  // namespace

FT736::FT736(core::Session& session)
    : forms::Window(session.Host(), "FT736", "FT-736R", base::Twips(8700), base::Twips(2550)),
      session_(session),
      msComm1_(session.Machine.MakeSerialPort()),
      timer1_(session.Machine.MakeTimer()) {
  for (forms::Field* field :
       {static_cast<forms::Field*>(&DFrequenza), static_cast<forms::Field*>(&SMeter),
        static_cast<forms::Field*>(&Frequenza)}) {
    field->SetVisible(false);
  }
  DFrequenza.OnChange = [this] { SendFrame(BcdFrequency(Active())); };
  DFrequenza.OnDoubleClick = [this] { BeginTyping(); };
  // Enter ends the typing as leaving the field does.
  Frequenza.Filter = [](char32_t key) {
    return key == forms::kEnter ? key : core::NumericKey(key);
  };
  Frequenza.OnEnter = [this] {
    EndTyping();
    Host().MoveFocus(SliderFrequenza);
  };
  Frequenza.OnLeave = [this] { EndTyping(); };
  SliderFrequenza.OnChange = [this] { Tune(); };
  SliderFrequenza.OnFocus = [this] { RecentreSlider(); };
  timer1_->SetInterval(kPollInterval);
  timer1_->OnTick = [this] { Poll(); };
}

FT736::~FT736() = default;

void FT736::Load() {
  core::RestoreWindow(session_, *this, "FT736");
  session_.Opened.FT736Open = true;
  msComm1_->SetPortNumber(1);
  msComm1_->SetSettings("4800,N,8,2");
  OpenPort();
}

void FT736::Unload() {
  msComm1_->Close();
  core::SaveWindow(session_, *this, "FT736");
  session_.Opened.FT736Open = false;
}

bool FT736::OpenPort() {
  try {
    msComm1_->Open();
    return true;
  } catch (const platform::DeviceError& failure) {
    session_.Messages().Show(platform::MessageIcon::kExclamation, "FT-736R", failure.what());
    return false;
  }
}

base::HundredHz& FT736::Active() { return DVFO.Text() == kVfoA ? FreqA : FreqB; }

void FT736::PowerKey() {
  if (RigAcceso) {
    SwitchOff();
  } else if (msComm1_->IsOpen() || OpenPort()) {
    SwitchOn();
  }
}

void FT736::SwitchOn() {
  RigAcceso = true;
  Accensione.SetCaption("OFF");
  SendFrame(kCatOn);
  // No VFO is on display yet, so this tunes B: switching on copies A's frequency there.
  MoveSlider(FreqA);
  DFrequenza.SetVisible(true);
  SMeter.SetVisible(true);
  DVFO.SetText(kVfoA);
  SetMode("USB");
  timer1_->SetEnabled(true);
}

void FT736::SwitchOff() {
  RigAcceso = false;
  Accensione.SetCaption("ON");
  timer1_->SetEnabled(false);
  DFrequenza.SetVisible(false);
  SMeter.SetVisible(false);
  DVFO.SetText("");
  DModo.SetText("");
  // Last: on a line that is gone this fails, and the panel is to be dark all the same.
  SendFrame(kCatOff);
}

void FT736::Tune() {
  const base::HundredHz tuned(SliderFrequenza.Value());
  Active() = tuned;
  DFrequenza.SetText(base::FormatNumber(base::ToKhz(tuned).Value(), "###,###.0"));
}

// Beyond the span that it was last centred on, too: a limit gives way, and the value arrives whole.
void FT736::MoveSlider(base::HundredHz to) {
  const int value = WholeSteps(to);
  SliderFrequenza.SetMinimum(std::min(SliderFrequenza.Minimum(), value));
  SliderFrequenza.SetMaximum(std::max(SliderFrequenza.Maximum(), value));
  SliderFrequenza.SetValue(value);
}

void FT736::RecentreSlider() {
  if (!RigAcceso) return;
  // Taken once: a limit that moves past the value tunes on its way.
  const int centre = WholeSteps(Active());
  SliderFrequenza.SetMinimum(0);
  SliderFrequenza.SetMaximum(centre + kHalfSpan);
  SliderFrequenza.SetMinimum(centre - kHalfSpan);
  SliderFrequenza.SetValue(centre);
}

// The mode on display goes into the other VFO's memory, whichever VFO was active.
void FT736::SwitchTo(std::string_view vfo) {
  const bool toA = vfo == kVfoA;
  (toA ? ModoB : ModoA) = DModo.Text();
  const std::string mode = toA ? ModoA : ModoB;
  DVFO.SetText(vfo);
  RecentreSlider();
  MoveSlider(toA ? FreqA : FreqB);
  SetMode(mode);
}

void FT736::SetMode(std::string_view name) {
  const auto mode = std::find_if(kCatModes.begin(), kCatModes.end(),
                                 [&](const CatMode& each) { return each.name == name; });
  if (mode == kCatModes.end()) return;
  SendFrame(mode->frame);
  DModo.SetText(name);
}

void FT736::BeginTyping() {
  Frequenza.SetText(base::PlainNumber(base::ToKhz(Active()).Value()));
  Frequenza.SetVisible(true);
  Host().MoveFocus(Frequenza);
}

void FT736::EndTyping() {
  if (!Frequenza.Visible()) return;  // hiding it takes the focus away once more
  Frequenza.SetVisible(false);
  const base::HundredHz typed = base::ToHundredHz(base::Khz(base::Val(Frequenza.Text())));
  if (std::fabs(typed.Value()) > kHighest) throw std::out_of_range("Frequenza fuori scala");
  Active() = typed;
  RecentreSlider();
  MoveSlider(typed);
}

void FT736::Poll() {
  SendFrame(kReadSMeter);
  if (msComm1_->BytesWaiting() == 0) return;
  if (const auto reading = SMeterReading(msComm1_->Read(msComm1_->BytesWaiting()))) {
    SMeter.SetValue(*reading);
  }
}

void FT736::SendFrame(const CatFrame& frame) {
  if (!msComm1_->IsOpen()) return;
  try {
    msComm1_->Write(Bytes(frame));
  } catch (const platform::DeviceError&) {
    // A line that is gone is told once, not ten times a second; the power key opens it anew.
    timer1_->SetEnabled(false);
    msComm1_->Close();
    throw;
  }
}

}  // namespace brenvo::links
