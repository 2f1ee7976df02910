// What the tests of replies share.
#pragma once

#include "host/cimxml/write_class.h"
#include "host/cimxml/write_instance.h"
#include "host/cimxml/write_path.h"
#include "host/cimxml/write_reply.h"
#include "tests/host/cimxml/request_text.h"

#include <limits>

namespace cmpihost::cimxml {

inline ReplyPlace test_place() {
    return {"host", "root/cimv2", test_schema()};
}

inline Envelope test_envelope(const std::string& operation) {
    Envelope envelope;
    envelope.message_id = "42";
    envelope.protocol_version = "1.0";
    envelope.operation = operation;
    envelope.name_space = "root/cimv2";
    return envelope;
}

inline Object single(const std::string& id) {
    Object object;
    object.class_name = "T_Single";
    object.keys = {{"Id", "string", {id}}};
    return object;
}

inline Object instance_of(std::vector<Property> properties) {
    Object object;
    object.class_name = "T_Unknown";
    object.properties = std::move(properties);
    return object;
}

/// The frame around what IRETURNVALUE holds.
inline std::string framed(const std::string& operation, const std::string& content) {
    return "<?xml version=\"1.0\" encoding=\"utf-8\"?>\n<CIM CIMVERSION=\"2.0\" DTDVERSION=\"2.0\">"
           "<MESSAGE ID=\"42\" PROTOCOLVERSION=\"1.0\"><SIMPLERSP><IMETHODRESPONSE NAME=\"" +
           operation + "\">" + content + "</IMETHODRESPONSE></SIMPLERSP></MESSAGE></CIM>\n";
}

} // namespace cmpihost::cimxml
