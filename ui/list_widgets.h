// Lists: dropping down, standing open, with several choices.
#pragma once

#include "field_binding.h"
#include "forms/list_field.h"

namespace brenvo::ui {

QWidget* MakeListWidget(forms::ListField& field, ViewContext& context, QWidget* parent);

}  // namespace brenvo::ui
