// What a class has of its superclass.
#pragma once

#include "host/mof/schema.h"

namespace cmpihost::mof {

/// "property NAME of CLASS", "reference NAME of CLASS", "method NAME of CLASS", for messages.
std::string described(const PropertyDeclaration& property, const std::string& class_name);
std::string described(const MethodDeclaration& method, const std::string& class_name);

/// Adds what the superclass has: its qualifiers that spread, its properties and methods, and to what overrides one of
/// these, the qualifiers that spread from it. Throws Refusal where something may not be overridden as it is.
/// @param schema the classes that references may admit
void inherit(ClassDeclaration& declaration, const ClassDeclaration& parent, const Schema& schema);

} // namespace cmpihost::mof
