// Requests as clients send them, and the classes that they are about.
#pragma once

#include "host/cimxml/request.h"

#include <gtest/gtest.h>

#include <string>

namespace cmpihost::cimxml {

/// One class of each shape of keys.
inline const mof::Schema& test_schema() {
    static const mof::Schema schema = std::get<mof::Schema>(mof::Schema::read_text("test.mof", R"(
        class T_Thing {
            [Key, MaxLen(64), Description("what it is called")] string Name;
            [Key] uint16 Number;
            [Key] boolean Up;
            uint8 Small = 7;
            string Texts[];
        };
        class T_Single { [Key] string Id; };
        class T_Sub : T_Single { sint32 Level; };
        [Association] class T_Link { [Key] T_Thing ref One; [Key] T_Single ref Other; };
    )"));
    return schema;
}

inline std::string message(const std::string& content) {
    return R"(<?xml version="1.0" encoding="utf-8" ?><CIM CIMVERSION="2.0" DTDVERSION="2.0">)"
           R"(<MESSAGE ID="42" PROTOCOLVERSION="1.0"><SIMPLEREQ>)" +
           content + "</SIMPLEREQ></MESSAGE></CIM>";
}

inline std::string intrinsic(const std::string& operation, const std::string& parameters) {
    return message("<IMETHODCALL NAME=\"" + operation +
                   R"("><LOCALNAMESPACEPATH><NAMESPACE NAME="root"/><NAMESPACE NAME="cimv2"/></LOCALNAMESPACEPATH>)" +
                   parameters + "</IMETHODCALL>");
}

inline std::string parameter(const std::string& name, const std::string& content) {
    return "<IPARAMVALUE NAME=\"" + name + "\">" + content + "</IPARAMVALUE>";
}

inline std::string class_parameter(const std::string& name = "ClassName", const std::string& value = "T_Thing") {
    return parameter(name, "<CLASSNAME NAME=\"" + value + "\"/>");
}

inline std::string name_request(const std::string& keys, const std::string& class_name = "T_Thing") {
    return intrinsic("GetInstance", parameter("InstanceName", "<INSTANCENAME CLASSNAME=\"" + class_name + "\">" + keys +
                                                                  "</INSTANCENAME>"));
}

inline std::string key(const std::string& name, const std::string& attributes, const std::string& text) {
    return "<KEYBINDING NAME=\"" + name + "\"><KEYVALUE" + attributes + ">" + text + "</KEYVALUE></KEYBINDING>";
}

/// What an operation answers to; fails and is empty if it is refused.
inline Call call_of(const std::string& body) {
    auto read = read_request(body, test_schema());
    if (const auto* refusal = std::get_if<Refusal>(&read)) {
        ADD_FAILURE() << refusal->http_status << ' ' << refusal->cim_error << refusal->description << "\n" << body;
        return {};
    }
    return std::get<Call>(std::move(read));
}

/// "400 request-not-valid", "200 4 DESCRIPTION", or "served".
inline std::string answer_of(const std::string& body) {
    const auto read = read_request(body, test_schema());
    const auto* refusal = std::get_if<Refusal>(&read);
    if (refusal == nullptr)
        return "served";
    const std::string status = std::to_string(refusal->http_status) + " ";
    return refusal->http_status == 200 ? status + std::to_string(refusal->code) + " " + refusal->description
                                       : status + refusal->cim_error;
}

inline std::string replaced(std::string text, const std::string& what, const std::string& with) {
    const std::size_t at = text.find(what);
    EXPECT_NE(at, std::string::npos) << what;
    return text.replace(at, what.size(), with);
}

} // namespace cmpihost::cimxml
