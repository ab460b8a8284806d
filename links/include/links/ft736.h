// The front panel of a Yaesu FT-736R on the serial port COM1.
#pragma once

#include <memory>
#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"
#include "links/cat_frame.h"

namespace brenvo::links {

// What the panel shows is what it last commanded: the transceiver tells nothing but its S-meter.
// Where the port cannot be opened the operator is told, at the opening and at each try to switch
// CAT on; commands then go nowhere. The same holds for a line that goes while it is in use, once
// its first failed command has been told.
class FT736 : public forms::Window {
 public:
  explicit FT736(core::Session& session);
  ~FT736() override;

  void Load() override;
  // Refuses while CAT is on.
  bool QueryUnload() override { return !RigAcceso; }
  void Unload() override;

  forms::Panel Picture1{*this, "Picture1"};
  forms::Command Accensione{*this, "Accensione", "ON", [this] { PowerKey(); }};
  forms::Label DVFO{*this, "DVFO", {.characters = 8}};
  forms::Label DFrequenza{
      *this, "DFrequenza", {.characters = 12}};  // kHz; its change sends the frequency
  forms::TextField Frequenza{
      *this,
      "Frequenza",
      {.caption = "Frequenza (kHz)", .characters = 12}};  // kHz, shown while it is typed
  forms::Label DModo{*this, "DModo", {.characters = 6}};
  forms::Gauge SMeter{*this, "SMeter", 20, 175, {.caption = "S-meter"}};
  forms::Slider SliderFrequenza{*this,  "SliderFrequenza",      500000, 502500,
                                500001, {.caption = "Sintonia"}};  // units of 100 Hz
  forms::Command cmVFOA{*this, "cmVFOA", "VFO-A", [this] { SwitchTo("VFO-A"); }};
  forms::Command cmVFOB{*this, "cmVFOB", "VFO-B", [this] { SwitchTo("VFO-B"); }};
  forms::Command cmUSB{*this, "cmUSB", "USB", [this] { SetMode("USB"); }};
  forms::Command cmLSB{*this, "cmLSB", "LSB", [this] { SetMode("LSB"); }};
  forms::Command cmFM{*this, "cmFM", "FM", [this] { SetMode("FM"); }};
  forms::Command cmBand{*this, "cmBand", "Banda"};

  bool RigAcceso = false;
  base::HundredHz FreqA{kStartFrequency}, FreqB{kStartFrequency};
  std::string ModoA = "USB", ModoB = "USB";

  // Sets the slider 100 kHz either side of the active VFO's frequency; nothing while CAT is off.
  void RecentreSlider();

 private:
  static constexpr double kStartFrequency = 501100;

  base::HundredHz& Active();
  void PowerKey();
  void SwitchOn();
  void SwitchOff();
  void Tune();
  void MoveSlider(base::HundredHz to);
  void SwitchTo(std::string_view vfo);
  void SetMode(std::string_view name);
  void BeginTyping();
  void EndTyping();
  void Poll();
  bool OpenPort();
  void SendFrame(const CatFrame& frame);

  core::Session& session_;
  std::unique_ptr<platform::SerialPort> msComm1_;
  std::unique_ptr<platform::Timer> timer1_;
};

}  // namespace brenvo::links
