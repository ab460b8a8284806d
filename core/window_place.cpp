#include "core/window_place.h"

#include "base/number.h"

namespace brenvo::core {

void RestoreWindow(Session& session, forms::Window& window, std::string_view key) {
  const auto read = [&](std::string_view name, base::Twips current) {
    const std::string stored =
        session.GetSetting(key, name, base::PlainNumber(static_cast<double>(current.Value())));
    const double twips = base::Val(stored);
    return twips > -1e6 && twips < 1e6 ? base::Twips(static_cast<int>(twips)) : current;
  };
  window.Move({read("X", window.GetBounds().left), read("Y", window.GetBounds().top),
               read("W", window.Width()), read("H", window.Height())});
}

void SaveWindow(Session& session, const forms::Window& window, std::string_view key) {
  if (window.State() != forms::WindowState::kNormal) return;
  const auto write = [&](std::string_view name, base::Twips value) {
    session.SaveSetting(key, name, std::to_string(value.Value()));
  };
  write("X", window.GetBounds().left);
  write("Y", window.GetBounds().top);
  write("W", window.Width());
  write("H", window.Height());
}

}  // namespace brenvo::core
