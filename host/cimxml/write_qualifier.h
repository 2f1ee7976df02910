// Qualifiers and their declarations as elements.
#pragma once

#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// A QUALIFIER, with those flavors that differ from what clients take for granted.
void append_qualifier(std::string& out, const mof::Qualifier& qualifier, const ReplyPlace& place);

/// A QUALIFIER.DECLARATION.
void append_qualifier_declaration(std::string& out, const mof::QualifierDeclaration& declaration,
                                  const ReplyPlace& place);

} // namespace cmpihost::cimxml
