// The station's transceiver: where it stands, and how it is led there.
#pragma once

#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "core/session.h"
#include "rig/bands.h"
#include "rig/mode_table.h"

namespace brenvo::rig {

class HamlibLine;
struct Reply;

struct RememberedFrequency {
  base::Hz frequency;  // on the air
  std::string mode;    // the transceiver's; empty for none
  friend bool operator==(const RememberedFrequency&, const RememberedFrequency&) = default;
};

// Lives as long as the main frame, and is who leads the session's Rig. It is connected while a
// window wants it, or as long as the operator has chosen so. It asks for frequency and mode; for
// the signal while a window shows it; for the split where that has proved harmless. It transmits
// nothing and switches nothing on.
class Transceiver {
 public:
  // Milliseconds between two questions; while it does not answer they are fewer.
  static constexpr int kPoll = 1000;
  static constexpr std::size_t kMostRemembered = 10;
  // Seconds on one frequency after which it is remembered, and how far one may be turned away, Hz.
  static constexpr std::int64_t kRests = 10;
  static constexpr double kNear = 500;
  // The split is asked for once in so many questions.
  static constexpr int kBetweenSplits = 5;

  explicit Transceiver(core::Session& session);
  ~Transceiver();
  Transceiver(const Transceiver&) = delete;
  Transceiver& operator=(const Transceiver&) = delete;

  void Start();
  void WindowOpened(bool open);
  // What was chosen in the set-up is others: connects anew.
  void SetUpChanged();

  // "Collegato: Icom IC-7300", or why not.
  std::string StateText() const;
  bool Stands() const;
  // What the last command came to; empty until there was one.
  const std::string& LastNews() const { return news_; }
  // On the air; nothing while nobody knows.
  std::optional<base::Hz> Frequency() const;
  const std::string& Mode() const { return mode_; }  // the transceiver's own word
  std::optional<base::Hz> Sends() const;             // another frequency than it hears, on the air
  std::optional<int> Strength() const { return strength_; }  // dB above S9
  const std::deque<RememberedFrequency>& Remembered() const { return remembered_; }
  const Bands& StationBands() const { return bands_; }

  // Wants it at a frequency on the air, in a mode of contacts; empty leaves the mode. In words what
  // becomes of it.
  std::string Tune(base::Hz air, std::string_view modo);
  // The same with a word of its own.
  std::string TuneTo(const RememberedFrequency& where);
  // Where it stands, in another mode of its own.
  std::string TakeModeOfRig(std::string_view mode);
  // Puts where it stands among what is remembered; nothing while nobody knows.
  void Remember();

  const std::vector<Transverter>& Transverters() const { return transverters_; }
  void SetTransverters(std::vector<Transverter> transverters);
  const ModeTable& Modes() const { return modes_; }
  // A row of the operator's own; std::runtime_error when it cannot be kept.
  void SetMode(const ModeRule& rule);

  // Anything of the above has changed.
  forms::Signal<> Changed;

 private:
  void Follow();
  void ReadTables();
  void Connected();
  void Probe();
  void Poll();
  void AskFrequency(std::function<void()> then = {});
  void TakeFrequency(const Reply& reply);
  void TakeMode(const Reply& reply);
  void TakeSplit(const Reply& reply);
  void Dead(int code);
  void SendWanted();
  void SendMode(std::string_view mode);
  void Publish();
  void Rest();
  void Say(std::string text);

  core::Session& session_;
  std::unique_ptr<HamlibLine> line_;
  std::unique_ptr<platform::Timer> poll_;
  forms::Subscription choices_, reopened_, profileStored_;
  Bands bands_;
  ModeTable modes_;
  std::vector<Transverter> transverters_;
  std::deque<RememberedFrequency> remembered_;  // the newest first

  bool windowOpen_ = false, isOurs_ = false;
  std::string name_;  // of the model
  std::string news_, dead_;
  int deadTries_ = 0, polls_ = 0;
  std::optional<base::Hz> rig_, sendsRig_;  // as the transceiver has them
  std::optional<base::Hz> beforeSplit_;     // rig_ when the split was first asked for
  std::string mode_;
  std::optional<int> strength_;
  bool tellsMode_ = true, tellsStrength_ = true, tellsSplit_ = true;
  std::optional<base::Hz> wanted_;  // and not yet sent
  bool setting_ = false;            // a frequency is on its way
  std::string wantedMode_;          // to follow the frequency
  std::optional<base::Hz> restsAt_;
  std::int64_t restsSince_ = 0;  // seconds
};

}  // namespace brenvo::rig
