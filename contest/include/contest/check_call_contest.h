// Answers whether a call was already worked in the contest, beside its log.
#pragma once

#include <string>

#include "core/session.h"
#include "forms/command.h"
#include "forms/status_bar.h"
#include "forms/text_field.h"
#include "forms/window.h"

namespace brenvo {

class CheckCallContest : public Window {
 public:
  explicit CheckCallContest(Session& session);
  void Load() override;
  void Unload() override;

  TextField CallContest{*this, "CallContest", {.caption = "Call", .characters = 12}};
  Command cmCheck{
      *this, "cmCheck", "Check", {.run = [this] { Check(); }, .hint = "Controlla call doppi"}};
  // It inserts nothing, whatever its hint says.
  Command cmOk{
      *this, "cmOk", "Ok", {.run = [this] { Close(); }, .hint = "Inserisce il Call nel Contest"}};
  Command cmCancel{
      *this, "cmCancel", "Cancel", {.run = [this] { Close(); }, .hint = "Chiude il check call"}};
  TextField Status{*this, "Status", {.characters = 12}};
  Panel Panel3D1{*this, "Panel3D1", {.hint = ""}};
  StatusBar StatusBar1{*this, "StatusBar1", 1};

  // The contest that it answers for.
  std::string DataContest, Banda;

 private:
  void Check();
  void Drag(Twips x, Twips y);

  Session& session_;
  bool dragging_ = false;
  Twips grabX_, grabY_;
};

}  // namespace brenvo
