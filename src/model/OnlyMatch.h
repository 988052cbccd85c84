// Selects the element that a predicate identifies uniquely. Pure, any thread.
#pragma once

#include <algorithm>
#include <iterator>
#include <memory>
#include <vector>

namespace kelpa {

/// The only element for which `matches` holds; null when there is none or more than one. Ambiguity
/// is never resolved by guessing.
template <class Element, class Predicate>
const Element* onlyMatch(const std::vector<Element>& elements, Predicate matches)
{
    const auto first = std::ranges::find_if(elements, matches);
    if (first == elements.end())
        return nullptr;
    const bool isAmbiguous = std::any_of(std::next(first), elements.end(), matches);
    return isAmbiguous ? nullptr : std::to_address(first);
}

} // namespace kelpa
