#include "platform/wayland/toplevels/ToplevelMatching.h"

#include <algorithm>
#include <iterator>
#include <set>

namespace kelpa::wayland {

namespace {

bool contains(const std::vector<Toplevel>& toplevels, ToplevelID id)
{
    return std::ranges::find(toplevels, id, &Toplevel::id) != toplevels.end();
}

/// Whether both may be the same window.
bool mayBeSame(const Toplevel& acting, const Toplevel& identified)
{
    return acting.title == identified.title &&
           (acting.appID == identified.appID || identified.appID.isEmpty());
}

/// The only one of `candidates` for which `matches` holds; null when there is none or more.
template <class Matches>
const Toplevel* onlyOne(const std::vector<Toplevel>& candidates, Matches matches)
{
    const auto first = std::ranges::find_if(candidates, matches);
    if (first == candidates.end() ||
        std::find_if(std::next(first), candidates.end(), matches) != candidates.end())
        return nullptr;
    return &*first;
}

} // namespace

std::map<ToplevelID, ToplevelID> matchedToplevels(const std::vector<Toplevel>& acting,
                                                  const std::vector<Toplevel>& identified,
                                                  const std::map<ToplevelID, ToplevelID>& known)
{
    std::map<ToplevelID, ToplevelID> matches;
    std::set<ToplevelID> taken;
    for (const auto& [actor, identity] : known) {
        if (contains(acting, actor) && contains(identified, identity)) {
            matches.emplace(actor, identity);
            taken.insert(identity);
        }
    }
    const auto isFree = [&](const Toplevel& each) {
        return !matches.contains(each.id) && !taken.contains(each.id);
    };
    std::map<ToplevelID, ToplevelID> found;
    for (const Toplevel& actor : acting) {
        if (!isFree(actor))
            continue;
        const Toplevel* const identity = onlyOne(identified, [&](const Toplevel& each) {
            return isFree(each) && mayBeSame(actor, each);
        });
        if (identity && onlyOne(acting, [&](const Toplevel& each) {
                return isFree(each) && mayBeSame(each, *identity);
            }))
            found.emplace(actor.id, identity->id);
    }
    matches.merge(found);
    return matches;
}

} // namespace kelpa::wayland
