// A picture of Europe with a circle on each worked square.
#pragma once

#include <memory>

#include "core/session.h"
#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/picture_box.h"
#include "forms/window.h"

namespace brenvo::maps {

// Takes the session's selection at load and does not follow it. A load that fails leaves what it
// has reached, without a message.
class MappaSquare : public forms::Window {
 public:
  explicit MappaSquare(core::Session& session);

  void Load() override;
  void Resize() override;
  void Unload() override;

  forms::PictureBox PicBuf1{*this, "PicBuf1"};
  // Twips that the picture has moved up.
  forms::Slider VScroll{*this, "VScroll", 0, 0, 0};
  forms::Command cmStampa{*this, "cmStampa", "&Print", [this] { Print(); }};
  forms::Command cmOnlySquare{*this, "cmOnlySquare", "&Only square", [this] { DropMap(); }};

  forms::Label Legenda{
      *this,
      "Legenda",
      {.caption = "Cerchio verde: confermato. Cerchio rosso sbarrato: lavorato, non confermato"}};

  void Print();
  // Leaves the circles; the map does not come back.
  void DropMap();

 private:
  void DrawSquares();
  void DrawBeam();
  void DrawSquare(std::string_view square, bool confirmed);

  core::Session& session_;
  std::unique_ptr<engine::Snapshot> squares_;
  base::Twips pictureHeight_;
};

}  // namespace brenvo::maps
