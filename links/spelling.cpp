#include "links/spelling.h"

#include "base/text.h"
#include "core/files.h"

namespace brenvo {

void PlayWave(const Session& session, WavePlayer& player, std::string_view name) {
  const std::string_view bare = name.substr(1);
  // Nothing is written here: a ":" that is spelled must not find the file of a "-". What the
  // platform takes for a way to another directory goes by its safe name.
  const std::filesystem::path spelled(std::u8string(bare.begin(), bare.end()));
  const bool asItStands = SafeFileName(bare) != bare && spelled == spelled.filename();
  player.PlayAndWait(asItStands ? session.AppPath / spelled : session.File(name));
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
