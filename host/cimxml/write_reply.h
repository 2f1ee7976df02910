// The frame of a reply. A reply is begun, its values are appended by the other writers, and it is ended:
//
//     begin_reply(out, envelope); append_instance_name(out, ...); end_reply(out);
#pragma once

#include "host/cimxml/call.h"
#include "host/cimxml/write_value.h"

namespace cmpihost::cimxml {

/// From the declaration to the begin of IRETURNVALUE. The operation's name is the one that the client sent.
void begin_reply(std::string& out, const Envelope& envelope);
void end_reply(std::string& out);

/// Ends the reply of an operation that opens or pulls. The context is empty at the end of the sequence.
void end_reply(std::string& out, std::string_view enumeration_context, bool end_of_sequence);

/// A whole reply without any value: CloseEnumeration, DeleteInstance.
void append_empty_reply(std::string& out, const Envelope& envelope);

/// A whole reply with an error, of an intrinsic operation or a method.
void append_error_reply(std::string& out, const Envelope& envelope, unsigned code, std::string_view description);

/// A whole reply of a method: what it returned (no NAME is used; NULL writes none) and its output parameters.
void append_method_reply(std::string& out, const Envelope& envelope, const Property& returned,
                         const std::vector<Property>& parameters, const ReplyPlace& place);

} // namespace cmpihost::cimxml
