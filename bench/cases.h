// What is measured: one row per class and operation, with the platform calls that its bare loop makes.
#pragma once

#include "host/broker/broker.h"
#include "platform/records.h"

#include <span>

namespace bench {

using Operation = cmpihost::Request::Operation;

/// What a bare loop knows of the row at hand; the others are null.
struct Row {
    const FcipLinkEntry* link = nullptr;
    const FcipEntityEntry* profile = nullptr;
    std::uint32_t if_index = 0; ///< of a port
};

/// Makes the platform calls behind one object of an answer.
using RowCalls = void(const Row& row);

/// The rows that an answer is made from.
enum class Walk {
    every_link,
    every_profile,
    every_port,                 ///< up to the first that is no Ethernet port
    every_port_with_statistics, ///< skipping the others
    last_link,                  ///< the walk of a lookup, all through the link table
    last_link_by_address,       ///< likewise, the peers' addresses written on the way
    last_profile,               ///< both tables
    last_port,                  ///< one read
};

struct Case {
    const char* class_name; ///< of the request's path
    Operation operation;
    Walk walk;
    RowCalls* calls;
    const char* key = nullptr;         ///< the key that names the source of a get or a traversal
    const char* association = nullptr; ///< traversals: the association class
    bool filtered = true;              ///< whether the property list is applied to the instances
};

std::span<const Case> cases();

} // namespace bench
