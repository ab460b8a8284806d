// One case for each alternative of a variant: std::visit(Match{[](int) {...}, [](bool) {...}}, v).
#pragma once

namespace brenvo::base {

template <class... Cases>
struct Match : Cases... {
  using Cases::operator()...;
};
template <class... Cases>
Match(Cases...) -> Match<Cases...>;

}  // namespace brenvo::base
