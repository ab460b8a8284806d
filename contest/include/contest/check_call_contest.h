// Answers whether a call was already worked in the contest, beside its log.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo::contest {

class CheckCallContest : public forms::Window {
 public:
  explicit CheckCallContest(core::Session& session);
  void Load() override;
  void Unload() override;

  forms::TextField CallContest{*this, "CallContest", {.caption = "Call", .characters = 12}};
  forms::Command cmCheck{
      *this, "cmCheck", "Check", {.run = [this] { Check(); }, .hint = "Controlla call doppi"}};
  // It inserts nothing, whatever its hint says.
  forms::Command cmOk{
      *this, "cmOk", "Ok", {.run = [this] { Close(); }, .hint = "Inserisce il Call nel Contest"}};
  forms::Command cmCancel{
      *this, "cmCancel", "Cancel", {.run = [this] { Close(); }, .hint = "Chiude il check call"}};
  forms::TextField Status{*this, "Status", {.characters = 12}};
  forms::Panel Panel3D1{*this, "Panel3D1", {.hint = ""}};
  forms::StatusBar StatusBar1{*this, "StatusBar1", 1};

  // The contest that it answers for.
  std::string DataContest, Banda;

 private:
  void Check();
  void Drag(base::Twips x, base::Twips y);

  core::Session& session_;
  bool dragging_ = false;
  base::Twips grabX_, grabY_;
};

}  // namespace brenvo::contest
