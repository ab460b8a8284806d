// All kinds of fields, for VisitField.
#pragma once

#include <type_traits>

#include "forms/choice_fields.h"
#include "forms/command.h"
#include "forms/field_kind.h"
#include "forms/grid.h"
#include "forms/list_field.h"
#include "forms/picture_box.h"
#include "forms/rich_text.h"
#include "forms/status_bar.h"
#include "forms/tab_strip.h"
#include "forms/text_field.h"

namespace brenvo::forms {

// For who is after one kind alone, whatever others there are: the field as that kind or one that
// derives from it; null when it is neither.
template <class Wanted>
Wanted* FieldAs(Field& field) {
  return std::visit(
      [](auto* each) -> Wanted* {
        if constexpr (std::is_convertible_v<decltype(each), Wanted*>) {
          return each;
        } else {
          return nullptr;
        }
      },
      field.Kind());
}

}  // namespace brenvo::forms
