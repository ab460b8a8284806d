#include "frame/palette.h"

#include <algorithm>
#include <utility>

#include "base/plain_letters.h"
#include "base/text.h"
#include "command_words.h"
#include "core/window_place.h"

namespace brenvo::frame {
namespace {

constexpr std::string_view kName = "Palette", kBetween = " > ";

void AddCommands(forms::Window& window, bool named, std::vector<KnownCommand>& commands) {
  for (NamedCommand& each : CommandsOf(window, named ? window.Caption() : "", Commands::kReady)) {
    const std::string& key = each.command->Shortcut();
    if (!key.empty()) each.words += " (" + key + ")";
    commands.push_back({&window, each.command, std::move(each.words)});
  }
}

std::string Plain(std::string_view text) {
  return base::Lower(base::ToPlainLetters(base::Trim(text)).text);
}

bool HoldsLetters(std::string_view words, std::string_view letters) {
  std::size_t at = 0;
  for (const char letter : letters) {
    at = words.find(letter, at);
    if (at == words.npos) return false;
    ++at;
  }
  return true;
}

std::vector<std::string> Words(std::string_view text) {
  std::vector<std::string> words;
  std::string word;
  for (const char each : std::string(text) + ' ') {
    if (each != ' ') {
      word += each;
    } else if (!word.empty()) {
      words.push_back(std::exchange(word, {}));
    }
  }
  return words;
}

// The nearer the smaller: its own caption begins so, one of its words does, it holds all that is
// typed, or at least the letters. None that are farther.
std::optional<int> DistanceOf(const std::string& words, const std::string& typed) {
  const std::size_t last = words.rfind(kBetween);
  const std::string_view own =
      std::string_view(words).substr(last == words.npos ? 0 : last + kBetween.size());
  if (own.starts_with(typed)) return 0;
  if (own.find(' ' + typed) != own.npos) return 1;
  const std::vector<std::string> parts = Words(typed);
  const bool all = std::all_of(parts.begin(), parts.end(), [&](const std::string& part) {
    return words.find(part) != words.npos;
  });
  if (all) return own.find(typed) != own.npos ? 2 : 3;
  if (parts.size() == 1 && HoldsLetters(own, typed)) return 4;
  return std::nullopt;
}

}  // namespace

std::vector<KnownCommand> KnownCommands(core::Session& session) {
  std::vector<KnownCommand> commands;
  const std::vector<forms::Window*>& loaded = session.Windows.Loaded();
  if (loaded.empty()) return commands;
  AddCommands(*loaded.front(), false, commands);
  for (auto at = loaded.rbegin(); at + 1 != loaded.rend(); ++at) {
    if ((*at)->Name() != kName && (*at)->Visible()) AddCommands(**at, true, commands);
  }
  // The way here leads nowhere.
  std::erase_if(commands,
                [](const KnownCommand& each) { return each.command->Name() == "cmPalette"; });
  return commands;
}

std::vector<KnownCommand> CommandsFor(core::Session& session, std::string_view text) {
  std::vector<KnownCommand> all = KnownCommands(session);
  const std::string typed = Plain(text);
  if (typed.empty()) return all;
  std::vector<std::pair<int, KnownCommand>> near;
  for (KnownCommand& each : all) {
    if (const auto distance = DistanceOf(Plain(each.words), typed)) {
      near.emplace_back(*distance, std::move(each));
    }
  }
  std::stable_sort(near.begin(), near.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  std::vector<KnownCommand> found;
  for (auto& [distance, each] : near) found.push_back(std::move(each));
  return found;
}

void PressCommand(core::Session& session, const KnownCommand& chosen) {
  if (!session.Windows.IsLoaded(chosen.window)) return;
  if (chosen.window != session.Windows.Loaded().front()) session.Windows.Show(*chosen.window);
  chosen.command->Press();
  if (chosen.command->FocusAfter != nullptr && session.Windows.IsLoaded(chosen.window)) {
    session.Host().MoveFocus(*chosen.command->FocusAfter);
  }
}

Palette::Palette(core::Session& session)
    : forms::Window(session.Host(), std::string(kName), "Comandi", base::Twips(7500),
                    base::Twips(6000)),
      session_(session) {
  DefaultCommand = &cmEsegui;
  CancelCommand = &cmExit;
  Cerca.OnChange = [this] { Seek(); };
  Comandi.OnDoubleClick = [this] { Choose(); };
}

void Palette::Load() {
  core::RestoreWindow(session_, *this, kName);
  Seek();
}

void Palette::Unload() { core::SaveWindow(session_, *this, kName); }

void Palette::Seek() {
  found_ = CommandsFor(session_, Cerca.Text());
  std::vector<std::string> words;
  for (const KnownCommand& each : found_) words.push_back(each.words);
  Comandi.SetItems(std::move(words));
  Comandi.SetListIndex(found_.empty() ? -1 : 0);
}

void Palette::Choose() {
  const int row = Comandi.ListIndex();
  if (row < 0) return;
  chosen_ = found_[static_cast<std::size_t>(row)];
  Hide();
}

}  // namespace brenvo::frame
