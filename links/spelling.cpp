#include "spelling.h"

#include "base/text.h"
#include "core/files.h"

namespace brenvo::links {

void PlayWave(const core::Session& session, platform::WavePlayer& player, std::string_view name) {
  player.PlayAndWait(core::PlayedFileIn(session.AppPath, name));
}

void SpellCall(std::string_view call, const std::function<void(std::string_view name)>& play) {
  for (char32_t c : base::Characters(call)) {
    if (c == U'-') return;
    if (c == U'/') {
      play(kStrokeWave);
    } else {
      play("\\" + base::FromCharacters(std::u32string(1, c)) + ".wav");
    }
  }
}

}  // namespace brenvo::links
