// A text area with colours, in a fixed font.
#pragma once

#include "forms/rich_text.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakeRichTextWidget(RichText& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
