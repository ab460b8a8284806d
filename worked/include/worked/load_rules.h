// The rules of the station's directory.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "core/session.h"
#include "worked/rules.h"

namespace brenvo::worked {

// Ours and the operator's own; ours alone where his cannot be understood, and none at all where
// ours cannot: `tell` gets why.
std::shared_ptr<const Rules> LoadRules(core::Session& session,
                                       const std::function<void(const std::string& text)>& tell);

}  // namespace brenvo::worked
