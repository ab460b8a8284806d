#include "links/spelling.h"

#include "base/text.h"
#include "core/files.h"

namespace brenvo {

void PlayWave(const Session& session, WavePlayer& player, std::string_view name) {
  const std::string_view bare = name.substr(1);
  if (SafeFileName(bare) == bare || bare.find('/') != bare.npos) {
    player.PlayAndWait(session.File(name));
  } else {
    // Nothing is written here: a ":" that is spelled must not find the file of a "-".
    player.PlayAndWait(session.AppPath / std::u8string(bare.begin(), bare.end()));
  }
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
