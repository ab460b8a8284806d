// A text area with colours, in a fixed font.
#pragma once

#include "field_binding.h"
#include "forms/rich_text.h"

namespace brenvo::ui {

// The area's letters, as large as those of the font.
QFont TerminalFont(const QFont& font);

QWidget* MakeRichTextWidget(forms::RichText& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
