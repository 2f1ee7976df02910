#include "host/mof/qualifiers.h"

#include "host/cim/names.h"

#include <algorithm>

namespace cmpihost::mof {

namespace {

constexpr Scopes scopes(std::initializer_list<Scope> list) {
    unsigned long bits = 0;
    for (const Scope scope : list)
        bits |= 1UL << static_cast<unsigned>(scope);
    return {bits};
}

constexpr Scopes classes = scopes({Scope::klass, Scope::association, Scope::indication});
constexpr Scopes values = scopes({Scope::property, Scope::method, Scope::parameter});
constexpr Scopes members = scopes({Scope::property, Scope::reference, Scope::method});

constexpr Flavors fixed{.overridable = false};
constexpr Flavors restricted{.to_subclass = false};

} // namespace

const Qualifier* find_qualifier(std::span<const Qualifier> qualifiers, std::string_view name) {
    const auto found = std::find_if(qualifiers.begin(), qualifiers.end(),
                                    [name](const Qualifier& qualifier) { return same_name(qualifier.name, name); });
    return found == qualifiers.end() ? nullptr : &*found;
}

bool is_on(std::span<const Qualifier> qualifiers, std::string_view name) {
    const Qualifier* qualifier = find_qualifier(qualifiers, name);
    const bool* value = qualifier == nullptr ? nullptr : std::get_if<bool>(&qualifier->value.data);
    return value != nullptr && *value;
}

bool set_flavor(Flavors& flavors, std::string_view word) {
    struct Row {
        std::string_view word;
        bool Flavors::*flavor;
        bool value;
    };
    static constexpr std::array rows{
        Row{"EnableOverride", &Flavors::overridable, true}, Row{"DisableOverride", &Flavors::overridable, false},
        Row{"ToSubclass", &Flavors::to_subclass, true},     Row{"Restricted", &Flavors::to_subclass, false},
        Row{"ToInstance", &Flavors::to_instance, true},     Row{"Translatable", &Flavors::translatable, true},
    };
    const auto* row =
        std::find_if(rows.begin(), rows.end(), [word](const Row& each) { return same_name(each.word, word); });
    if (row == rows.end())
        return false;
    flavors.*row->flavor = row->value;
    return true;
}

std::span<const QualifierDeclaration> known_qualifiers() {
    static const std::array declarations{
        QualifierDeclaration{"Abstract", "boolean", 0, {false}, classes, restricted, {}},
        QualifierDeclaration{"Association", "boolean", 0, {false}, scopes({Scope::association}), fixed, {}},
        QualifierDeclaration{"EmbeddedInstance", "string", 0, {}, values, {}, {}},
        QualifierDeclaration{"EmbeddedObject", "boolean", 0, {false}, values, fixed, {}},
        QualifierDeclaration{"Key", "boolean", 0, {false}, scopes({Scope::property, Scope::reference}), fixed, {}},
        QualifierDeclaration{"Override", "string", 0, {}, members, restricted, {}},
        QualifierDeclaration{"Required", "boolean", 0, {false}, members | values, fixed, {}},
    };
    return declarations;
}

} // namespace cmpihost::mof
