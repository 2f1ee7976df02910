#include "simulator/provider/look.h"

namespace switchsim {

std::optional<std::uint32_t> Look::tunnel_status(std::uint32_t if_index) {
    if (!statuses_) {
        statuses_.emplace();
        for (const auto& [key, link] : contents.links)
            statuses_->emplace(link.link_if_index, link.status);
    }
    const auto found = statuses_->find(if_index);
    return found == statuses_->end() ? std::nullopt : std::optional(found->second);
}

} // namespace switchsim
