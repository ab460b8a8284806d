// What the function keys send.
#include <fmt/format.h>

#include <algorithm>

#include "base/text.h"
#include "contest_log.h"
#include "core/files.h"
#include "core/preferences.h"
#include "gara/gara_contest.h"

namespace brenvo::gara {
namespace {

// A key's caption has room for so many characters of what it sends.
constexpr std::size_t kShown = 12;

struct KeyText {
  std::string cw, wave;
};

KeyText TextOfKey(core::Session& session, std::size_t key) {
  const std::string whole = session.Choices.Text(core::choice::kContestKeys[key]);
  const std::size_t bar = whole.find('|');
  return {base::Trim(whole.substr(0, bar)),
          bar == std::string::npos ? std::string() : base::Trim(whole.substr(bar + 1))};
}

}  // namespace

void GaraContest::ShowSendingKeys() {
  for (const Moved& each : moved_) each.command->SetShortcut(each.shortcut);
  moved_.clear();
  const bool sends = session_.Choices.Get<core::choice::kContestSends>();
  if (!sends) keyer_.Stop();
  for (std::size_t i = 0; i < sendingKeys_.size(); ++i) {
    forms::Command& sending = *sendingKeys_[i];
    const std::string key = fmt::format("F{}", i + 1);
    sending.SetVisible(sends);
    if (!sends) {
      sending.SetShortcut(std::nullopt);
      continue;
    }
    const KeyText text = TextOfKey(session_, i);
    sending.SetCaption(fmt::format("{} {}", key, base::Left(text.cw, kShown)));
    sending.Tip = fmt::format("Manda {}{}{}", text.cw,
                              text.wave.empty() || text.cw.empty() ? "" : ", in fonia ", text.wave);
    for (forms::Field* const field : Fields()) {
      forms::Command* const other = FindCommand(field->Name());
      if (other == nullptr || other == &sending || other->Shortcut() != key) continue;
      moved_.push_back({other, other->Shortcut()});
      other->SetShortcut("Shift+" + key);
    }
    sending.SetShortcut(key);
  }
}

void GaraContest::SendKey(std::size_t key) {
  if (!HasContest()) return Say("Prima si sceglie o si comincia un contest");
  const KeyText text = TextOfKey(session_, key);
  const bool isCw = ModeFamily(Modo.Text()) == "CW";
  if (!isCw) {
    if (text.wave.empty()) {
      return Say(fmt::format("Il tasto F{} non ha un file di suono", key + 1));
    }
    const std::string why = keyer_.PlayWave(core::FileIn(session_.AppPath, "\\" + text.wave));
    return Say(why.empty() ? "Si trasmette " + text.wave : why);
  }
  const std::string sent = CwText(
      FillKeyText(text.cw, {entry_->call, base::Trim(Call.Text()), base::Trim(RapportoDato.Text()),
                            SerialeDato.Text(), entry_->locator, entry_->exchange}));
  const std::string why = keyer_.SendCw(sent);
  Say(why.empty() ? "Si manda " + sent : why);
}

}  // namespace brenvo::gara
