// Class declarations of MOF.
#pragma once

#include "host/mof/builder.h"
#include "host/mof/tokens.h"

namespace cmpihost::mof {

/// A class with what it declares itself; its qualifiers or the word class is next.
ClassDeclaration read_class(Tokens& tokens, const Builder& builder);

} // namespace cmpihost::mof
