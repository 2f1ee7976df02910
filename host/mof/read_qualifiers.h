// Qualifiers of MOF, and their declarations.
#pragma once

#include "host/mof/builder.h"
#include "host/mof/tokens.h"

namespace cmpihost::mof {

/// A list of qualifiers in brackets; empty if there is none.
std::vector<Qualifier> read_qualifiers(Tokens& tokens, const Builder& builder);

/// A declaration; the word qualifier is taken already.
QualifierDeclaration read_qualifier_declaration(Tokens& tokens);

} // namespace cmpihost::mof
