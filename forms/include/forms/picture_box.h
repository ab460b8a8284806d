// A picture to draw circles on.
#pragma once

#include <filesystem>
#include <vector>

#include "base/units.h"
#include "forms/field.h"

namespace brenvo::forms {

class PictureBox : public Field {
 public:
  struct Circle {
    base::Twips x, y, radius;
    base::Colour colour;
    bool barred = false;  // with a stroke across it
  };
  using Field::Field;
  FieldKind Kind() override { return this; }

  const std::filesystem::path& Picture() const { return picture_; }
  // An empty name leaves a blank area; circles drawn so far go.
  void SetPicture(const std::filesystem::path& file);
  const std::vector<Circle>& Circles() const { return circles_; }
  void Draw(const Circle& circle);
  // For the screen: a circle has come.
  Signal<const Circle&> Drawn;

  // Where the picture lies in its window.
  base::Twips Top() const { return top_; }
  void SetTop(base::Twips top);

 private:
  std::filesystem::path picture_;
  std::vector<Circle> circles_;
  base::Twips top_;
};

}  // namespace brenvo::forms
