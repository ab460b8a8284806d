// The dialog in which the operator tells the cluster of a station.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "core/session.h"
#include "forms/command.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::links {

// Its Tag is the result when it hides: the command, kCancelled, or nothing when it was closed by
// its frame. It sends nothing by itself.
class DxDialog : public forms::Window {
 public:
  explicit DxDialog(core::Session& session);

  static constexpr std::string_view kCancelled = "CANCEL";
  // What to send to the cluster, without a line end: an empty line when the dialog was closed by
  // its frame, nullopt when it was cancelled.
  std::optional<std::string> Chosen() const {
    if (Tag == kCancelled) return std::nullopt;
    return Tag;
  }

  forms::TextField Frequenza{*this, "Frequenza", {.caption = "Frequenza", .characters = 12}};
  forms::TextField CallQso{*this, "CallQso", {.caption = "Call", .characters = 12}};
  forms::TextField Note{*this, "Note", {.caption = "Note", .characters = 24}};
  forms::Command cmInvia{*this, "cmInvia", "Invia", [this] { Finish(); }};
  forms::Command cmCancel{*this, "cmCancel", "Cancel", [this] { Cancel(); }};

 private:
  void Finish();
  void Cancel();
};

}  // namespace brenvo::links
