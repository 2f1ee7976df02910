// The intrinsic operations and their parameters.
#pragma once

#include <string_view>

namespace cmpihost::cimxml {

/// What a parameter holds.
enum class ParameterKind {
    boolean,
    number, ///< uint32
    text,
    property_list,
    class_name,
    instance_name,
    object_name, ///< a class's or an instance's
    instance,
    named_instance,
    value, ///< a text, texts, or a reference
    declaration,
};

struct ParameterRow {
    std::string_view name;
    ParameterKind kind;
};

struct OperationRow {
    std::string_view name;
    std::string_view required; ///< names of parameters, separated by blanks
    std::string_view optional;
};

/// The operation of this name, in any case; null if there is none.
const OperationRow* find_operation(std::string_view name);

/// The parameter of this name, in any case, if the operation has it; else null.
const ParameterRow* find_parameter(const OperationRow& operation, std::string_view name);

/// The first required parameter that `given` is false for; empty if there is none.
template <class Given>
std::string_view missing_parameter(const OperationRow& operation, Given given) {
    std::string_view rest = operation.required;
    while (!rest.empty()) {
        const std::string_view name = rest.substr(0, rest.find(' '));
        if (!given(name))
            return name;
        rest.remove_prefix(name.size() == rest.size() ? rest.size() : name.size() + 1);
    }
    return {};
}

} // namespace cmpihost::cimxml
