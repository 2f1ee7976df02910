// What the elements of a request are made of.
#pragma once

#include "host/cimxml/xml_reader.h"

namespace cmpihost::cimxml {

/// Whether an element and all below it have the children, in order, the text and the attributes that they must have.
/// Further attributes are read over. The element is at most max_xml_depth deep.
bool is_valid_structure(const XmlElement& element);

} // namespace cmpihost::cimxml
