// One column of many contacts changed.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "core/log_contact.h"
#include "core/session.h"
#include "engine/value.h"

namespace brenvo::list {

// What an operator has written for a column.
struct NewValue {
  std::string fault;    // why the column cannot hold it, in words for the operator; empty if it can
  engine::Value value;  // as it is stored
  std::string shown;    // as the list shows it
};
NewValue ParseValue(const core::LogColumn& column, std::string_view text);

enum class Changed { kAll, kStopped, kRepeats };
// All of them or none, as one work of that title. Nothing is changed when the operator has stopped
// it, which he is told, or when two contacts would be the same. What else the store throws goes on,
// and changes nothing either.
Changed ChangeColumn(core::Session& session, std::string_view title,
                     const std::vector<std::int64_t>& keys, const core::LogColumn& column,
                     const engine::Value& value);

}  // namespace brenvo::list
