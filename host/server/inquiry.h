// An operation on instances that returns objects: whom to ask what, and what to write of it.
#pragma once

#include "host/cimxml/call.h"
#include "host/server/catalogue.h"
#include "host/server/object_encoder.h"
#include "host/server/status.h"

namespace cmpihost::server {

/// An operation, and how it goes on.
struct InquiryRow {
    std::string_view name; ///< as the standard spells it
    Request::Operation operation;
    Form form;
    bool opens; ///< an enumeration to be pulled
};

/// The row of this operation, in any case; null if it is none that returns objects.
const InquiryRow* find_inquiry(std::string_view operation);

/// What is to be asked.
struct Inquiry {
    Request request;                              ///< but for the class, which asking sets
    std::vector<const ServedClass*> classes;      ///< to ask for, the one that was named first
    const mof::ClassDeclaration* named = nullptr; ///< the class that the client named; null: none
    std::optional<std::string> result_class;      ///< objects of other classes are left out
    Form form = Form::instance;
    Selection selection;
    bool single = false; ///< one object is all that is wanted
};

/// @param call must outlive the inquiry
/// @throws Status a class that is not declared, a class in place of an instance
Inquiry make_inquiry(const cimxml::Call& call, const InquiryRow& row, const Namespace& space);

/// @throws Status the class is not declared
Inquiry get_inquiry(const Object& path, const std::vector<std::string>* properties, const Namespace& space);

/// The served classes that are `ancestor` or derive from it (null: all), `ancestor` itself first.
/// @param served what they are to be served for
std::vector<const ServedClass*> served_below(const Namespace& space, const mof::ClassDeclaration* ancestor,
                                             bool ServedClass::*served);

/// Whether a class is `ancestor` or derives from it; of one that is not declared, whether the names are the same.
bool is_kind_of(const mof::Schema& schema, std::string_view name, std::string_view ancestor);

/// The class of this name. @throws Status `code`: it is not declared
const mof::ClassDeclaration& declared_class(const Namespace& space, std::string_view name, CimCode code);

} // namespace cmpihost::server
