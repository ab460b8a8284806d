#include "rig/rig_server.h"

#include <fmt/format.h>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <vector>

#include "base/text.h"
#include "platform/device_error.h"
#include "rig/replies.h"

namespace brenvo::rig {
namespace {

namespace choice = core::choice;

constexpr std::size_t kBlock = 4096;
constexpr double kHighest = 1e12;  // Hz
constexpr int kInvalid = -1, kIo = -6, kNotAvailable = -11;

struct Command {
  char letter;  // 0 for none
  std::string_view name;
};
constexpr Command kCommands[] = {
    {'f', "get_freq"},       {'F', "set_freq"}, {'m', "get_mode"},      {'M', "set_mode"},
    {'v', "get_vfo"},        {'V', "set_vfo"},  {'s', "get_split_vfo"}, {'S', "set_split_vfo"},
    {'i', "get_split_freq"}, {'t', "get_ptt"},  {'_', "get_info"},      {'q', "quit"},
    {'Q', "quit"},           {0, "chk_vfo"},    {0, "dump_state"},      {0, "get_powerstat"},
    {0, "get_lock_mode"}};

// A program of the library asks what can be done before it does anything: nothing but to hear and
// to tune. Modes are all that have a bit there.
constexpr std::string_view kState =
    "1\n2\n0\n"
    "1000.000000 1000000000000.000000 0x1dff -1 -1 0x1 0x1\n0 0 0 0 0 0 0\n"
    "0 0 0 0 0 0 0\n"
    "0x1dff 1\n0 0\n"
    "0x1dff 0\n0 0\n"
    "0\n0\n0\n0\n0\n0\n"
    "0x0\n0x0\n0x0\n0x0\n0x0\n0x0\n"
    "vfo_ops=0x0\nptt_type=0x0\ntargetable_vfo=0x0\nhas_set_vfo=1\nhas_get_vfo=1\nhas_set_freq=1\n"
    "has_get_freq=1\nhas_set_conf=0\nhas_get_conf=0\ntimeout=0\nrig_model=2\ndone";

std::vector<std::string_view> WordsIn(std::string_view line) {
  std::vector<std::string_view> words;
  while (true) {
    const std::size_t begin = line.find_first_not_of(" \t");
    if (begin == line.npos) return words;
    line.remove_prefix(begin);
    const std::size_t end = std::min(line.find_first_of(" \t"), line.size());
    words.push_back(line.substr(0, end));
    line.remove_prefix(end);
  }
}

std::string_view NameOf(std::string_view word) {
  const bool isLong = word.starts_with('\\');
  if (isLong) word.remove_prefix(1);
  for (const Command& each : kCommands) {
    const bool isIt =
        isLong ? word == each.name : word.size() == 1 && each.letter != 0 && word[0] == each.letter;
    if (isIt) return each.name;
  }
  return {};
}

std::optional<base::Hz> HzOf(std::string_view word) {
  double value = 0;
  const char* const end = word.data() + word.size();
  const auto [at, error] = std::from_chars(word.data(), end, value);
  if (error != std::errc() || at != end || !(value >= 1 && value <= kHighest)) return std::nullopt;
  return base::Hz(std::round(value));
}

// Lines with their keys, and how it went.
struct Told {
  std::vector<std::pair<std::string, std::string>> lines{};
  int code = kDone;
  bool isSet = false;  // the plain answer is the code, whatever it is
};

Told Do(std::string_view name, const std::vector<std::string_view>& words, const ServedRig& rig,
        ServedWish& wish) {
  const auto argument = [&](std::size_t n) {
    return words.size() > n ? words[n] : std::string_view();
  };
  if (name == "get_vfo") return {{{"VFO", "VFOA"}}};
  if (name == "get_split_vfo") return {{{"Split", "0"}, {"TX VFO", "VFOA"}}};
  if (name == "get_ptt") return {{{"PTT", "0"}}};
  if (name == "get_powerstat") return {{{"Power Status", rig.frequency ? "1" : "0"}}};
  // Asked before a mode is set.
  if (name == "get_lock_mode") return {{{"Locked", "0"}}};
  if (name == "get_info") return {{{"Info", "Brenvo"}}};
  if (name == "set_vfo") {
    const bool isOurs = argument(1) == "VFOA" || argument(1) == "currVFO" || argument(1) == "Main";
    return {{}, isOurs ? kDone : kNotAvailable, true};
  }
  if (name == "set_split_vfo") return {{}, argument(1) == "0" ? kDone : kNotAvailable, true};
  if (!rig.frequency) return {{}, kIo, name.starts_with("set")};
  const std::string frequency = fmt::format("{:.0f}", rig.frequency->Value());
  if (name == "get_freq") return {{{"Frequency", frequency}}};
  if (name == "get_split_freq") return {{{"TX Frequency", frequency}}};
  if (name == "get_mode") {
    return {{{"Mode", rig.mode.empty() ? "USB" : rig.mode}, {"Passband", "0"}}};
  }
  if (name == "set_freq") {
    wish.frequency = HzOf(argument(1));
    return {{}, wish.frequency ? kDone : kInvalid, true};
  }
  if (name == "set_mode" && Request::SetMode(argument(1))) {
    wish.mode = argument(1);
    return {{}, kDone, true};
  }
  return {{}, kInvalid, true};
}

}  // namespace

std::string AnswerTo(std::string_view line, const ServedRig& rig, ServedWish& wish) {
  const bool isExtended = line.starts_with('+');
  if (isExtended) line.remove_prefix(1);
  const std::vector<std::string_view> words = WordsIn(line);
  if (words.empty()) return {};
  const std::string_view name = NameOf(words[0]);
  if (name == "quit") {
    wish.leaves = true;
    return "RPRT 0";
  }
  if (name == "chk_vfo") return "0";
  if (name == "dump_state") return std::string(kState);
  const Told told = name.empty() ? Told{{}, kNotAvailable, true} : Do(name, words, rig, wish);
  const std::string code = fmt::format("RPRT {}", told.code);
  std::string answer;
  if (isExtended) {
    answer = fmt::format("{}:", name.empty() ? words[0] : name);
    for (std::size_t i = 1; i < words.size(); ++i) answer += fmt::format(" {}", words[i]);
    answer += '\n';
    for (const auto& [key, value] : told.lines) answer += fmt::format("{}: {}\n", key, value);
    return answer + code;
  }
  if (told.isSet || told.code != kDone) return code;
  for (const auto& [key, value] : told.lines) answer += (answer.empty() ? "" : "\n") + value;
  return answer;
}

RigServer::RigServer(core::Session& session, Transceiver& transceiver)
    : session_(session),
      transceiver_(transceiver),
      server_(session.Machine.MakeTcpServer("RIGSERVER")) {
  server_->OnData = [this](int peer) { Hear(peer); };
  server_->OnGone = [this](int peer) {
    partial_.erase(peer);
    Changed();
  };
  choices_ = session.Choices.Changed.Subscribe([this](const core::Choice& changed) {
    if (&changed == &choice::kRigServes || &changed == &choice::kRigServesPort) Follow();
  });
}

RigServer::~RigServer() = default;

void RigServer::Start() { Follow(); }

void RigServer::Follow() {
  server_->Close();
  partial_.clear();
  fault_.clear();
  if (session_.Choices.Get<choice::kRigServes>()) {
    try {
      server_->Listen(session_.Choices.Get<choice::kRigServesPort>());
    } catch (const platform::DeviceError& failure) {
      fault_ = failure.what();
    }
  }
  Changed();
}

std::string RigServer::StateText() const {
  if (!server_->IsListening()) return fault_;
  return fmt::format("Offerto sulla porta {} ({} {})",
                     session_.Choices.Get<choice::kRigServesPort>(), partial_.size(),
                     partial_.size() == 1 ? "programma" : "programmi");
}

void RigServer::Hear(int peer) {
  const bool isNew = !partial_.contains(peer);
  std::string& partial = partial_[peer];
  for (std::string bytes = server_->Read(peer, kBlock); !bytes.empty();
       bytes = server_->Read(peer, kBlock)) {
    partial += bytes;
    std::size_t begin = 0;
    for (std::size_t end = partial.find('\n'); end != partial.npos;
         end = partial.find('\n', begin)) {
      if (!TakeLine(peer, std::string_view(partial).substr(begin, end - begin))) return;
      begin = end + 1;
    }
    partial.erase(0, begin);
    if (partial.size() > kLongestLine) {
      server_->Drop(peer);
      partial_.erase(peer);
      Changed();
      return;
    }
  }
  if (isNew) Changed();
}

// False when the program is no longer there.
bool RigServer::TakeLine(int peer, std::string_view line) {
  if (line.ends_with('\r')) line.remove_suffix(1);
  const bool isLong = line.size() > kLongestLine;
  ServedWish wish;
  const std::string answer =
      isLong ? std::string()
             : AnswerTo(line, {transceiver_.Frequency(), transceiver_.Mode()}, wish);
  if (!answer.empty()) server_->Send(peer, answer + '\n');
  if (wish.frequency) {
    transceiver_.TuneTo({*wish.frequency, ""});
  } else if (!wish.mode.empty()) {
    transceiver_.TakeModeOfRig(wish.mode);
  }
  if (!isLong && !wish.leaves) return true;
  server_->Drop(peer);
  partial_.erase(peer);
  Changed();
  return false;
}

}  // namespace brenvo::rig
