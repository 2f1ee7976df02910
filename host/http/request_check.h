// What a request's head asks for, before its body is read.
#pragma once

#include "host/http/request_head.h"

#include <variant>

namespace cmpihost::http {

/// An answer without a body.
struct Refusal {
    unsigned status = 400;
    std::string cim_error{};      ///< text of the header CIMError; empty for none
    std::vector<Field> headers{}; ///< others
    std::string prefix{};         ///< of CIM headers, as in CimHeaders
};

/// What the headers of a CIM operation tell.
struct CimHeaders {
    std::string method; ///< CIMMethod as sent
    std::string object; ///< CIMObject as sent
    std::string prefix; ///< "NN-" that names of CIM headers begin with, in the reply too; empty for POST
};

/// Whether the body can be read at all: its length is told, and nothing contradicts it. 0, or a status.
unsigned framing_fault(const RequestHead& head);

/// The client's name for this server: its Host, or nothing if it has none.
/// @return no value: it is no name, is told twice, or missing where it must not be
std::optional<std::string> host_of(const RequestHead& head);

/// Method, path and headers.
std::variant<CimHeaders, Refusal> check_request(const RequestHead& head);

} // namespace cmpihost::http
