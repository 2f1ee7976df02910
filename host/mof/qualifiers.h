// Qualifiers: what is said about classes and their parts, and how it spreads to subclasses.
#pragma once

#include "host/cim/object.h"
#include "host/mof/place.h"

#include <array>
#include <bitset>
#include <span>

namespace cmpihost::mof {

/// How a qualifier spreads, and whether it may be said otherwise. As the standard has it where nothing is declared.
struct Flavors {
    bool overridable = true;  ///< a subclass may give it another value
    bool to_subclass = true;  ///< subclasses have it too
    bool to_instance = false; ///< obsolete; kept since clients are told
    bool translatable = false;

    bool operator==(const Flavors&) const = default;
};

/// What a qualifier may stand at.
enum class Scope : std::uint8_t { klass, association, indication, property, reference, method, parameter };

/// The scopes' words, in their order.
inline constexpr std::array<std::string_view, 7> scope_names = {"class",     "association", "indication", "property",
                                                                "reference", "method",      "parameter"};

using Scopes = std::bitset<scope_names.size()>;

/// The declaration of a qualifier.
struct QualifierDeclaration {
    std::string name;
    std::string type;             ///< as of properties: "boolean", "string[]"
    std::uint32_t array_size = 0; ///< 0: any
    Value default_value;
    Scopes scopes;
    Flavors flavors;
    Place place; ///< line 0: this program's own declaration
};

/// A qualifier at a class, property, method or parameter.
struct Qualifier {
    std::string name;
    std::string type;
    Value value;
    Flavors flavors;
    bool propagated = false; ///< from a superclass
};

/// The qualifier of this name, in any case; null if there is none.
const Qualifier* find_qualifier(std::span<const Qualifier> qualifiers, std::string_view name);

/// Whether a qualifier is there and true.
bool is_on(std::span<const Qualifier> qualifiers, std::string_view name);

/// Sets what a flavor's word says, in any case.
/// @return false: there is no such word
bool set_flavor(Flavors& flavors, std::string_view word);

/// What this program gives a meaning to, and so knows without a declaration in MOF: Abstract, Association,
/// EmbeddedInstance, EmbeddedObject, Key, Override and Required.
std::span<const QualifierDeclaration> known_qualifiers();

} // namespace cmpihost::mof
