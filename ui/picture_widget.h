// A picture with circles on it.
#pragma once

#include "forms/picture_box.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakePictureWidget(PictureBox& field, ViewContext& context, QWidget* parent);
// The picture alone, made small; nothing is seen where there is none.
QWidget* MakeSmallPicture(PictureBox& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
