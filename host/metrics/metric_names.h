// Names of metrics and labels, out of those of classes and properties.
#pragma once

#include <span>
#include <string>
#include <string_view>

namespace cmpihost::metrics {

/// "ReceivedPDUHeaderErrors" as "received_pdu_header_errors". A run of capitals is a word, but for its last one where a
/// small letter follows; an s at its end is its plural. Acronyms are words, too, longest first.
std::string snake_case(std::string_view name, std::span<const std::string> acronyms);

/// The label for a key of this name: in snake case, and another one than those that Prometheus uses itself.
std::string label_name(std::string_view key, std::span<const std::string> acronyms);

} // namespace cmpihost::metrics
