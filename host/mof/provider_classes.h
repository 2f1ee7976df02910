// Which of a schema's classes a provider is asked for when nothing says which it serves.
#pragma once

#include "host/mof/schema.h"

#include <filesystem>

namespace cmpihost::mof {

/// Whether the class can have instances and is the provider's own: not one of the DMTF's, of which a schema only has an
/// excerpt to build on.
inline bool is_provider_class(const ClassDeclaration& declaration) {
    return !declaration.abstract && std::filesystem::path(declaration.place.file).filename() != "dmtf.mof";
}

} // namespace cmpihost::mof
