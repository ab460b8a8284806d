// A picture with circles on it.
#pragma once

#include "field_binding.h"
#include "forms/picture_box.h"

namespace brenvo::ui {

QWidget* MakePictureWidget(forms::PictureBox& field, ViewContext& context, QWidget* parent);
// The picture alone, made small; nothing is seen where there is none.
QWidget* MakeSmallPicture(forms::PictureBox& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
