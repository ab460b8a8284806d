#include "forms/picture_box.h"

namespace brenvo::forms {

void PictureBox::SetPicture(const std::filesystem::path& file) {
  picture_ = file;
  circles_.clear();
  ShowChanged();
}

void PictureBox::Draw(const Circle& circle) {
  circles_.push_back(circle);
  Drawn(circle);
}

void PictureBox::SetTop(base::Twips top) {
  if (top_ == top) return;
  top_ = top;
  ShowChanged();
}

}  // namespace brenvo::forms
