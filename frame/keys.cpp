#include "frame/keys.h"

#include <algorithm>
#include <array>
#include <utility>

#include "base/text.h"
#include "command_words.h"

namespace brenvo::frame {
namespace {

constexpr std::string_view kSection = "Tasti", kEntry = "Scelti";
// Between a command and its key, and between two of them; no name and no key holds either.
constexpr char kIs = '=', kNext = ' ';

struct Word {
  std::string_view written, name;
};
constexpr std::array<Word, 6> kHeld = {{{"ctrl", "Ctrl"},
                                        {"control", "Ctrl"},
                                        {"shift", "Shift"},
                                        {"maiusc", "Shift"},
                                        {"alt", "Alt"},
                                        {"alt gr", "Alt"}}};
constexpr std::array<Word, 32> kNamed = {
    {{"ins", "Ins"},       {"insert", "Ins"},     {"del", "Del"},
     {"delete", "Del"},    {"canc", "Del"},       {"home", "Home"},
     {"inizio", "Home"},   {"end", "End"},        {"fine", "End"},
     {"pgup", "PgUp"},     {"pag su", "PgUp"},    {"pgdown", "PgDown"},
     {"pgdn", "PgDown"},   {"pag giu", "PgDown"}, {"pag giù", "PgDown"},
     {"up", "Up"},         {"su", "Up"},          {"down", "Down"},
     {"giu", "Down"},      {"giù", "Down"},       {"left", "Left"},
     {"sinistra", "Left"}, {"right", "Right"},    {"destra", "Right"},
     {"tab", "Tab"},       {"esc", "Esc"},        {"return", "Return"},
     {"enter", "Enter"},   {"invio", "Return"},   {"backspace", "Backspace"},
     {"space", "Space"},   {"spazio", "Space"}}};
constexpr std::string_view kSigns = ",.-+;:'<>\\/*?!^()=&%$\"[]@#_|";

struct KeyParts {
  bool ctrl = false, shift = false, alt = false;
  std::string key;

  std::string Name() const {
    return std::string(ctrl ? "Ctrl+" : "") + (shift ? "Shift+" : "") + (alt ? "Alt+" : "") + key;
  }
  bool Alone() const { return !ctrl && !alt; }
};

template <std::size_t kSize>
std::string_view NameOf(const std::array<Word, kSize>& words, std::string_view written) {
  const auto at = std::find_if(words.begin(), words.end(),
                               [&](const Word& word) { return word.written == written; });
  return at == words.end() ? std::string_view() : at->name;
}

// 0 for what is none.
int FunctionKey(std::string_view written) {
  if (written.size() < 2 || written.size() > 3 || written[0] != 'f') return 0;
  int number = 0;
  for (const char digit : written.substr(1)) {
    if (digit < '0' || digit > '9') return 0;
    number = number * 10 + (digit - '0');
  }
  return written[1] != '0' && number <= 24 ? number : 0;
}

std::string KeyAlone(std::string_view written) {
  if (const std::string_view name = NameOf(kNamed, written); !name.empty()) {
    return std::string(name);
  }
  if (const int number = FunctionKey(written)) return "F" + std::to_string(number);
  if (written.size() != 1) return {};
  const char each = written[0];
  if (each >= 'a' && each <= 'z') return base::Upper(written);
  const bool stands = (each >= '0' && each <= '9') || kSigns.find(each) != kSigns.npos;
  return stands ? std::string(written) : std::string();
}

std::optional<KeyParts> PartsOf(std::string_view text) {
  std::string rest = base::Lower(base::Trim(text));
  KeyParts parts;
  // The sign between the parts may be the key itself.
  for (std::size_t at; (at = rest.find('+')) != rest.npos && at > 0 && at + 1 < rest.size();
       rest = base::Trim(rest.substr(at + 1))) {
    const std::string_view held = NameOf(kHeld, base::Trim(rest.substr(0, at)));
    if (held.empty()) return std::nullopt;
    bool& which = held == "Ctrl" ? parts.ctrl : held == "Shift" ? parts.shift : parts.alt;
    which = true;
  }
  parts.key = KeyAlone(rest);
  return parts.key.empty() ? std::nullopt : std::optional(parts);
}

bool IsOneOf(std::string_view key, std::initializer_list<std::string_view> keys) {
  return std::find(keys.begin(), keys.end(), key) != keys.end();
}

std::string PathOf(std::string_view window, std::string_view command) {
  return std::string(window) + '.' + std::string(command);
}

}  // namespace

std::optional<std::string> ReadKey(std::string_view text) {
  const auto parts = PartsOf(text);
  return parts ? std::optional(parts->Name()) : std::nullopt;
}

std::string FaultOfKey(std::string_view key) {
  const auto parts = PartsOf(key);
  if (!parts) return "non è il nome di un tasto";
  const std::string name = parts->Name();
  if (name == "F1") return "F1 apre la guida";
  if (IsOneOf(parts->key, {"Tab", "Esc", "Return", "Enter", "Space", "Backspace"})) {
    return "serve nei campi e nelle finestre di dialogo";
  }
  if (IsOneOf(parts->key, {"Up", "Down", "Left", "Right"}) ||
      (parts->Alone() && IsOneOf(parts->key, {"Home", "End", "Ins", "Del"}))) {
    return "serve a muoversi e a scrivere nei campi";
  }
  if (IsOneOf(name, {"Ctrl+C", "Ctrl+V", "Ctrl+X", "Ctrl+A", "Ctrl+Z", "Ctrl+Y", "Ctrl+Shift+Z",
                     "Ctrl+Ins", "Ctrl+Del"})) {
    return "serve a scrivere nei campi";
  }
  if (IsOneOf(name, {"Alt+F4", "Ctrl+F4", "Ctrl+F6", "Ctrl+Shift+F6"})) {
    return "chiude o scambia le finestre";
  }
  if (parts->key.size() > 1) return {};  // a function key, or a page
  if (parts->alt) return "con Alt si aprono i menu e si scrivono segni";
  if (!parts->ctrl) return "scrive: vuole Ctrl";
  return {};
}

Keys::Keys(core::Session& session) : session_(session) {
  const std::string all = session.GetSetting(kSection, kEntry, "");
  for (std::string_view rest = all; !rest.empty();) {
    const std::string_view one = rest.substr(0, rest.find(kNext));
    rest.remove_prefix(std::min(rest.size(), one.size() + 1));
    const std::size_t is = one.find(kIs);
    if (is == one.npos) continue;
    const std::string_view key = one.substr(is + 1);
    // A file that somebody has written into may hold anything.
    if (!key.empty() && ReadKey(key) != key) continue;
    kept_[std::string(one.substr(0, is))] = key;
  }
}

void Keys::PutOn(forms::Window& window) const {
  const std::string first = window.Name() + '.';
  for (auto at = kept_.lower_bound(first); at != kept_.end() && at->first.starts_with(first);
       ++at) {
    forms::Command* const command = window.FindCommand(at->first.substr(first.size()));
    if (command != nullptr) command->SetShortcut(at->second);
  }
}

void Keys::Set(const KeyOwner& owner, std::string_view key) {
  const std::string path = PathOf(owner.window, owner.command);
  const bool standard = key == owner.standard;
  if (standard) {
    kept_.erase(path);
  } else {
    kept_[path] = key;
  }
  std::string all;
  for (const auto& [each, its] : kept_) {
    if (!all.empty()) all += kNext;
    all += each + kIs + its;
  }
  session_.SaveSetting(kSection, kEntry, all);
  for (forms::Window* window : session_.Windows.Loaded()) {
    if (window->Name() != owner.window) continue;
    forms::Command* const command = window->FindCommand(owner.command);
    if (command == nullptr) continue;
    command->SetShortcut(standard ? std::nullopt : std::optional(std::string(key)));
  }
}

std::vector<KeyOwner> AllKeyOwners(core::Session& session) {
  const Keys keys(session);
  std::vector<KeyOwner> owners;
  const auto add = [&](forms::Window& window) {
    keys.PutOn(window);
    for (const NamedCommand& each : CommandsOf(window, "", Commands::kAll)) {
      owners.push_back({window.Name(), each.command->Name(), window.Caption(), each.words,
                        each.command->StandardShortcut(), each.command->Shortcut()});
    }
  };
  const std::vector<forms::Window*>& loaded = session.Windows.Loaded();
  if (!loaded.empty()) add(*loaded.front());
  const auto others = static_cast<std::ptrdiff_t>(owners.size());
  for (const std::string& name : session.Windows.KnownNames()) {
    session.Windows.Examine(name, add);
  }
  std::stable_sort(owners.begin() + others, owners.end(),
                   [](const KeyOwner& a, const KeyOwner& b) { return a.place < b.place; });
  return owners;
}

}  // namespace brenvo::frame
