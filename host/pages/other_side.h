// Ties that only their other end tells.
#pragma once

#include "host/pages/roles.h"
#include "host/pages/timed_ask.h"

namespace cmpihost::pages {

/// An object at the other end of a tie.
struct TiedObject {
    std::string association; ///< its class
    Object object;
    EndNames names;
};

/// The objects that stand beside this one in the names of associations' instances, at most so many. Only associations
/// that admit its class are enumerated, as long as there is time.
std::vector<TiedObject> tied_by_names(TimedAsk& ask, const server::Namespace& space, const Object& path,
                                      std::size_t most);

} // namespace cmpihost::pages
