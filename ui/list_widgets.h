// Lists: dropping down, standing open, with several choices.
#pragma once

#include "forms/list_field.h"
#include "field_binding.h"

namespace brenvo {

QWidget* MakeListWidget(ListField& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo
