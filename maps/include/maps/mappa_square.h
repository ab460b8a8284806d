// A picture of Europe with a circle on each worked square.
#pragma once

#include <memory>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/picture_box.h"
#include "forms/window.h"

namespace brenvo {

// Takes the session's selection at load and does not follow it. A load that fails leaves what it
// has reached, without a message.
class MappaSquare : public Window {
 public:
  explicit MappaSquare(Session& session);

  void Load() override;
  void Resize() override;
  void Unload() override;

  PictureBox PicBuf1{*this, "PicBuf1"};
  // Twips that the picture has moved up.
  Slider VScroll{*this, "VScroll", 0, 0, 0};
  Command cmStampa{*this, "cmStampa", "&Print", [this] { Print(); }};
  Command cmOnlySquare{*this, "cmOnlySquare", "&Only square", [this] { DropMap(); }};

  void Print();
  // Leaves the circles; the map does not come back.
  void DropMap();

 private:
  void DrawSquares();
  void DrawSquare(std::string_view square, bool confirmed);

  Session& session_;
  std::unique_ptr<Snapshot> squares_;
  Twips pictureHeight_;
};

}  // namespace brenvo
