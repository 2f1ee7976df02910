// XML text to a tree of elements.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace cmpihost::cimxml {

struct XmlAttribute {
    std::string name;
    std::string value;
};

/// An element: its character data, taken together, and its child elements. Comments and processing instructions are
/// left out.
struct XmlElement {
    std::string name;
    std::string text;
    std::vector<XmlAttribute> attributes;
    std::vector<XmlElement> children;

    const std::string* attribute(std::string_view attribute_name) const; ///< null if absent
    bool is(std::string_view element_name) const { return name == element_name; }
};

enum class XmlFault {
    invalid,         ///< no XML at all, no UTF-8, a DOCTYPE, or beyond the limits below
    not_well_formed, ///< begins as XML does, and breaks its rules
};

constexpr std::size_t max_xml_depth = 64;
constexpr std::size_t max_xml_elements = 20'000;
constexpr std::size_t max_xml_attributes = 64; ///< of one element

/// Reads one document, without recursion. An ampersand that begins no reference stands for itself: there are clients
/// that send keys as they are.
std::variant<XmlElement, XmlFault> read_xml(std::string_view bytes);

} // namespace cmpihost::cimxml
