// One request and the reply that is made to it.
#pragma once

#include "host/cimxml/call.h"
#include "host/cimxml/write_value.h"
#include "host/server/catalogue.h"
#include "host/server/notes.h"
#include "host/server/reply_body.h"

namespace cmpihost::server {

/// What an operation works with. It writes the whole reply unless it answers with an error.
struct Exchange {
    const cimxml::Call& call;
    const Namespace& space;
    const cimxml::ReplyPlace& place;
    const Settings& settings;
    Contexts& contexts;
    ReplyBody& body;
    Notes& notes;
    std::uint64_t objects = 0; ///< in the body
};

/// @return the error to answer with, or OK. @throws Status likewise
using Operation = Status (*)(Exchange& exchange);

/// Operations that return objects, and those that open enumerations of them.
struct InquiryRow;
Status answer_inquiry(Exchange& exchange, const InquiryRow& row);
Status answer_opening(Exchange& exchange, const InquiryRow& row);

/// What goes on with an open enumeration. Null: it is no such operation, or it is not supported.
Operation find_pull_operation(std::string_view name);

/// What concerns one instance. Null: likewise.
Operation find_instance_operation(std::string_view name);

/// Calls a method of a class or an instance.
Status invoke_method(Exchange& exchange);

} // namespace cmpihost::server
