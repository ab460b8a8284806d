#include "core/entity_key.h"

#include "base/text.h"

namespace brenvo {

std::string EntityKey(std::string_view key) { return Lower(RTrim(key)); }

}  // namespace brenvo
