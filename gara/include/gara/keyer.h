// What the function keys of a contest send: CW through cwdaemon, or a wave file.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "core/session.h"

namespace brenvo::gara {

// What a key's text may name.
struct KeyWords {
  std::string myCall, call, report, serial, locator, exchange;
};
// The text with {MYCALL}, {CALL}, {RST}, {NR}, {LOC} and {EXCH} filled in, in capitals.
std::string FillKeyText(std::string_view text, const KeyWords& words);
// What of it CW has a sign for, and no more than cwdaemon takes at once.
std::string CwText(std::string_view text);
// How long CW takes, in milliseconds, at so many words of PARIS a minute.
int CwMilliseconds(std::string_view text, int wordsAMinute);

// One transmission at a time: a new one takes the place of another. Whatever happens, none is
// longer than the limit that the operator has set. Without transmission enabled it sends nothing.
class Keyer {
 public:
  explicit Keyer(core::Session& session);
  // Stops what is sent.
  ~Keyer();
  Keyer(const Keyer&) = delete;
  Keyer& operator=(const Keyer&) = delete;

  // Why nothing is sent, in Italian; empty when it is.
  [[nodiscard]] std::string SendCw(std::string_view text);
  [[nodiscard]] std::string PlayWave(const std::filesystem::path& file);
  bool IsSending() const { return what_ != What::kNothing; }
  void Stop();

  // What was sent is over by itself; with words when the limit has stopped it.
  std::function<void(std::string_view why)> OnEnd;

 private:
  enum class What { kNothing, kCw, kWave };
  void Begin(What what, int expected);
  void Ticked();
  void Heard();
  void EndWith(std::string_view why);
  void Order(std::string_view request);

  core::Session& session_;
  std::unique_ptr<platform::UdpSocket> socket_;
  std::string from_;  // where it listens
  std::unique_ptr<platform::WavePlayer> player_;
  std::unique_ptr<platform::Timer> timer_;
  What what_ = What::kNothing;
  // Milliseconds: of the limit, once what was expected has passed; 0 when the limit is next.
  int untilLimit_ = 0;
  bool guards_ = false;  // cwdaemon has not said that it has ended
};

}  // namespace brenvo::gara
