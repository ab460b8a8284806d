#include "spelling.h"

#include "base/text.h"
#include "core/files.h"

namespace brenvo {

void PlayWave(const Session& session, WavePlayer& player, std::string_view name) {
  player.PlayAndWait(PlayedFileIn(session.AppPath, name));
}

void SpellCall(std::string_view call, const std::function<void(std::string_view name)>& play) {
  for (char32_t c : Characters(call)) {
    if (c == U'-') return;
    if (c == U'/') {
      play(kStrokeWave);
    } else {
      play("\\" + FromCharacters(std::u32string(1, c)) + ".wav");
    }
  }
}

}  // namespace brenvo
