// Class declarations as elements.
#pragma once

#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// What a client wants of a class.
struct ClassOptions {
    bool local_only = true; ///< leave out what comes from a superclass, unless the class overrides it
    bool qualifiers = true;
    bool class_origin = false;
    const std::vector<std::string>* property_list = nullptr; ///< null: all; methods are not asked about
};

/// A CLASSNAME.
void append_class_name(std::string& out, std::string_view name);

/// A CLASS: qualifiers, properties with their defaults, methods.
void append_class(std::string& out, const mof::ClassDeclaration& declaration, const ClassOptions& options,
                  const ReplyPlace& place);

} // namespace cmpihost::cimxml
