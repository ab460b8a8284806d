#include "adif/window_keys.h"

namespace brenvo {

void SetUpKeys(Session& session, Window& window, const WindowKeys& keys) {
  keys.run.Icon = "cmUpdate";
  keys.run.Tip = keys.runTip;
  keys.help.Icon = "cmHelp";
  keys.help.Tip = "Aiuto";
  keys.help.Shortcut = "F1";
  keys.help.OnClick = [&session, topic = keys.topic] { session.Help(topic); };
  keys.exit.Icon = "cmExit";
  keys.exit.Tip = keys.exitTip;
  window.DefaultCommand = &keys.run;
  window.CancelCommand = &keys.exit;
}

}  // namespace brenvo
