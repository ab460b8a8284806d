#include "gara/keyer.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>

#include "base/plain_letters.h"
#include "base/text.h"
#include "core/preferences.h"

namespace brenvo::gara {
namespace {

// A request to cwdaemon begins so; one a datagram.
constexpr char kEscape = '\x1B';
constexpr std::string_view kStop = "4", kPttOff = "a0", kTellEnd = "h";
constexpr std::size_t kLongestCw = 200;  // bytes of a datagram, well below what cwdaemon takes
constexpr int kMargin = 1500;            // milliseconds that a transmission may begin late

// Dots and dashes; a sign that is not here is none of CW's.
struct Sign {
  char letter;
  std::string_view code;
};
constexpr std::array<Sign, 43> kSigns = {
    {{'A', ".-"},     {'B', "-..."},   {'C', "-.-."},   {'D', "-.."},   {'E', "."},
     {'F', "..-."},   {'G', "--."},    {'H', "...."},   {'I', ".."},    {'J', ".---"},
     {'K', "-.-"},    {'L', ".-.."},   {'M', "--"},     {'N', "-."},    {'O', "---"},
     {'P', ".--."},   {'Q', "--.-"},   {'R', ".-."},    {'S', "..."},   {'T', "-"},
     {'U', "..-"},    {'V', "...-"},   {'W', ".--"},    {'X', "-..-"},  {'Y', "-.--"},
     {'Z', "--.."},   {'0', "-----"},  {'1', ".----"},  {'2', "..---"}, {'3', "...--"},
     {'4', "....-"},  {'5', "....."},  {'6', "-...."},  {'7', "--..."}, {'8', "---.."},
     {'9', "----."},  {'/', "-..-."},  {'?', "..--.."}, {'=', "-...-"}, {',', "--..--"},
     {'.', ".-.-.-"}, {':', "---..."}, {'@', ".--.-."}}};

const Sign* FindSign(char letter) {
  const auto at = std::ranges::find(kSigns, letter, &Sign::letter);
  return at == kSigns.end() ? nullptr : at;
}

}  // namespace

std::string FillKeyText(std::string_view text, const KeyWords& words) {
  const std::pair<std::string_view, const std::string*> all[] = {
      {"{MYCALL}", &words.myCall}, {"{CALL}", &words.call},   {"{RST}", &words.report},
      {"{NR}", &words.serial},     {"{LOC}", &words.locator}, {"{EXCH}", &words.exchange}};
  std::string filled;
  while (!text.empty()) {
    const auto word = std::ranges::find_if(all, [&](const auto& each) {
      return base::UpperAscii(text.substr(0, each.first.size())) == each.first;
    });
    if (word == std::end(all)) {
      filled += text[0];
      text.remove_prefix(1);
    } else {
      filled += *word->second;
      text.remove_prefix(word->first.size());
    }
  }
  return base::Upper(base::Trim(filled));
}

std::string CwText(std::string_view text) {
  std::string sent;
  for (const char c : base::UpperAscii(base::ToPlainLetters(text).text)) {
    if (sent.size() == kLongestCw) break;
    if (FindSign(c) != nullptr || (c == ' ' && !sent.empty() && sent.back() != ' ')) sent += c;
  }
  return base::Trim(sent);
}

int CwMilliseconds(std::string_view text, int wordsAMinute) {
  constexpr int kDotsOfParis = 50, kMinute = 60000;
  int dots = 0;
  for (const char c : text) {
    if (const Sign* const sign = FindSign(c)) {
      for (const char part : sign->code) dots += part == '.' ? 2 : 4;
      dots += 2;  // to the next sign three in all
    } else {
      dots += 4;  // to the next word seven in all
    }
  }
  return dots * kMinute / (kDotsOfParis * std::max(1, wordsAMinute));
}

Keyer::Keyer(core::Session& session) : session_(session), timer_(session.Machine.MakeTimer()) {
  timer_->OnTick = [this] { session_.Windows.RunEvent([this] { Ticked(); }); };
}

Keyer::~Keyer() { Stop(); }

void Keyer::Order(std::string_view request) {
  if (socket_ == nullptr || !socket_->IsOpen()) return;
  socket_->Send({session_.Choices.Get<core::choice::kCwAddress>(),
                 session_.Choices.Get<core::choice::kCwPort>()},
                std::string(1, kEscape).append(request));
}

std::string Keyer::SendCw(std::string_view text) {
  if (!session_.Choices.Get<core::choice::kContestSends>()) {
    return "In Preferenze la trasmissione non è abilitata";
  }
  const std::string sent = CwText(text);
  if (sent.empty()) return "Non c'è niente da mandare in CW";
  Stop();
  const std::string host = session_.Choices.Get<core::choice::kCwAddress>();
  try {
    // cwdaemon answers to where it was asked from.
    if (socket_ == nullptr) {
      socket_ = session_.Machine.MakeUdpSocket("CW");
      socket_->OnData = [this] { session_.Windows.RunEvent([this] { Heard(); }); };
    }
    const std::string from = host.starts_with("127.") ? "127.0.0.1" : "0.0.0.0";
    if (!socket_->IsOpen() || from != from_) socket_->Open({{from, 0}, "", {}});
    from_ = from;
  } catch (const platform::DeviceError& failure) {
    return fmt::format("cwdaemon non si raggiunge: {}", failure.what());
  }
  const int speed = session_.Choices.Get<core::choice::kCwSpeed>();
  Order(fmt::format("2{}", speed));
  Order(kTellEnd);
  socket_->Send({host, session_.Choices.Get<core::choice::kCwPort>()}, sent);
  guards_ = true;
  Begin(What::kCw, CwMilliseconds(sent, speed) + kMargin);
  return {};
}

std::string Keyer::PlayWave(const std::filesystem::path& file) {
  if (!session_.Choices.Get<core::choice::kContestSends>()) {
    return "In Preferenze la trasmissione non è abilitata";
  }
  Stop();
  std::error_code error;
  if (!std::filesystem::is_regular_file(file, error)) {
    return fmt::format("Il file {} non c'è", file.filename().string());
  }
  if (player_ == nullptr) {
    player_ = session_.Machine.MakeWavePlayer();
    player_->OnComplete = [this](int) {
      session_.Windows.RunEvent([this] {
        if (what_ == What::kWave) EndWith("");
      });
    };
  }
  Begin(What::kWave, 0);
  player_->Start(file);
  return {};
}

void Keyer::Begin(What what, int expected) {
  what_ = what;
  const int limit = session_.Choices.Get<core::choice::kSendingLimit>() * 1000;
  const bool endsBefore = expected > 0 && expected < limit;
  untilLimit_ = endsBefore ? limit - expected : 0;
  timer_->SetInterval(endsBefore ? expected : limit);
  timer_->SetEnabled(true);
}

void Keyer::Ticked() {
  timer_->SetEnabled(false);
  if (untilLimit_ > 0) {
    // It should be over; a cwdaemon that has not said so is stopped at the limit all the same.
    timer_->SetInterval(untilLimit_);
    untilLimit_ = 0;
    what_ = What::kNothing;
    timer_->SetEnabled(true);
    if (OnEnd) OnEnd("");
    return;
  }
  const bool told = IsSending();
  Stop();
  if (told && OnEnd) {
    OnEnd(fmt::format("Trasmissione fermata dopo {} secondi",
                      session_.Choices.Get<core::choice::kSendingLimit>()));
  }
}

void Keyer::Heard() {
  const platform::UdpAddress daemon{session_.Choices.Get<core::choice::kCwAddress>(),
                                    session_.Choices.Get<core::choice::kCwPort>()};
  while (const auto datagram = socket_->Receive()) {
    if (datagram->from != daemon || !datagram->bytes.starts_with(kTellEnd)) continue;
    guards_ = false;
    timer_->SetEnabled(false);
    if (what_ == What::kCw) EndWith("");
  }
}

void Keyer::EndWith(std::string_view why) {
  timer_->SetEnabled(false);
  what_ = What::kNothing;
  if (OnEnd) OnEnd(why);
}

void Keyer::Stop() {
  timer_->SetEnabled(false);
  if (what_ == What::kWave && player_ != nullptr) player_->Close();
  if (guards_) {
    Order(kStop);
    Order(kPttOff);
  }
  guards_ = false;
  what_ = What::kNothing;
}

}  // namespace brenvo::gara
