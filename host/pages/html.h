// Pieces of HTML. Texts go through escaped(), whatever they are.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace cmpihost::pages {

/// Text for an element or an attribute in double quotes.
std::string escaped(std::string_view text);

/// `<a href="URL">TEXT</a>`
std::string link(std::string_view url, std::string_view text);

/// "10,000"
std::string grouped(std::uint64_t number);

/// "1 object", "10,000 objects"
std::string counted(std::uint64_t number, const std::string& what);

/// A whole page.
/// @param title text. @param trail HTML of the links above the heading; empty: none. @param body HTML
std::string page(std::string_view title, std::string_view trail, std::string_view body);

/// A box that scrolls by itself, which the keyboard reaches.
std::string scrolled(std::string_view label, std::string_view body);

} // namespace cmpihost::pages
