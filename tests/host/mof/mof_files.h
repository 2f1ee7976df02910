// The provider's schema as its files declare it, for tests.
#pragma once

#include "host/mof/deviations.h"

#include <stdexcept>

namespace cmpihost::mof {

inline const std::string schema_folder = FCIP_SOURCE_DIR "/schema/";

/// Reads MOF files; a fault in one ends the test.
inline Schema read_schema(const std::vector<std::string>& files) {
    auto result = Schema::read(files);
    if (const Error* error = std::get_if<Error>(&result))
        throw std::runtime_error(error->text());
    return std::get<Schema>(std::move(result));
}

/// The provider's classes and what they derive from.
inline const Schema& provider_schema() {
    static const Schema schema = read_schema({schema_folder + "dmtf.mof", schema_folder + "fcip.mof"});
    return schema;
}

/// What answers are known to differ in.
inline const Deviations& known_deviations() {
    static const Deviations read = std::get<Deviations>(Deviations::read(schema_folder + "deviations.txt"));
    return read;
}

inline bool is_ours(const ClassDeclaration& declaration) {
    return declaration.name.starts_with("ZANTO_");
}

} // namespace cmpihost::mof
