// The CIM headers against the body.
#include "host/cimxml/header_match.h"

#include <gtest/gtest.h>

namespace cmpihost::cimxml {

namespace {

Envelope intrinsic_envelope() {
    Envelope envelope;
    envelope.operation = "GetInstance";
    envelope.name_space = "root/cimv2";
    return envelope;
}

Envelope method_envelope() {
    Envelope envelope = intrinsic_envelope();
    envelope.operation = "Reset";
    Object target;
    target.class_name = "T_Thing";
    target.name_space = "root/cimv2";
    target.keys = {{"Name", "string", {std::string("a b")}}, {"Number", "uint16", {std::uint64_t{7}}}};
    envelope.target = target;
    return envelope;
}

TEST(CimXmlHeaders, NamespacePlainEncodedAndInAnyCaseMatches) {
    for (const char* object : {"root/cimv2", "root%2Fcimv2", "root%2fcimv2", "ROOT/CIMV2", "%72oot/cimv2"})
        EXPECT_TRUE(headers_match("getinstance", object, intrinsic_envelope())) << object;
    EXPECT_TRUE(headers_match("Get%49nstance", "root/cimv2", intrinsic_envelope()));
}

TEST(CimXmlHeaders, AnotherMethodOrNamespaceDoesNotMatch) {
    EXPECT_FALSE(headers_match("EnumerateInstances", "root/cimv2", intrinsic_envelope()));
    for (const char* object : {"", "root", "root/cimv2/", "root%2", "root%zzcimv2", "root%2Fcimv2%"})
        EXPECT_FALSE(headers_match("GetInstance", object, intrinsic_envelope())) << object;
}

TEST(CimXmlHeaders, MethodsTargetMatchesWithKeysInAnyOrder) {
    for (const char* object :
         {R"(root/cimv2:T_Thing.Name="a b",Number=7)", R"(root/cimv2:t_thing.number=7,name="A B")",
          "root%2Fcimv2%3AT_Thing.Name%3D%22a%20b%22%2CNumber%3D7", R"(root/cimv2:T_Thing.Name="a b",Number="7")"})
        EXPECT_TRUE(headers_match("Reset", object, method_envelope())) << object;
}

TEST(CimXmlHeaders, WhatIsNoPathOfTheTargetDoesNotMatch) {
    for (const char* object : {"root/cimv2", "root/cimv2:T_Thing", R"(root/cimv2:T_Thing.Name="a b")",
                               R"(root/cimv2:T_Thing.Name="a b",Number=8)", R"(root/x:T_Thing.Name="a b",Number=7)",
                               R"(root/cimv2:T_Other.Name="a b",Number=7)", R"(root/cimv2:T_Thing.Name="a b",Number=)"})
        EXPECT_FALSE(headers_match("Reset", object, method_envelope())) << object;
}

TEST(CimXmlHeaders, ClassAsTargetHasNoKeys) {
    Envelope envelope = method_envelope();
    envelope.target = ClassName{"T_Thing"};
    EXPECT_TRUE(headers_match("Reset", "root/cimv2:T_Thing", envelope));
    EXPECT_FALSE(headers_match("Reset", R"(root/cimv2:T_Thing.Name="a b")", envelope));
}

} // namespace

} // namespace cmpihost::cimxml
