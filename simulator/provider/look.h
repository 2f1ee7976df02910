// The switch as one request sees it.
#pragma once

#include "simulator/cim_objects.h"

#include <optional>
#include <unordered_map>

namespace switchsim {

/// Lives while the process-wide lock is held.
class Look {
  public:
    explicit Look(const Switch& contents) : contents(contents) {}

    /// The status of the tunnel whose interface this is; nothing if there is none.
    std::optional<std::uint32_t> tunnel_status(std::uint32_t if_index);

    const Switch& contents;

  private:
    std::optional<std::unordered_map<std::uint32_t, std::uint32_t>> statuses_; ///< by interface, once one was wanted
};

} // namespace switchsim
