// Registration files: what is read, and what is refused with file and line.
#include "host/server/registration.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <stdexcept>

namespace cmpihost::server {
namespace {

std::string refusal_of(const std::string& text) {
    try {
        read_registration("a.reg", text);
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "accepted";
}

constexpr const char* whole = "[A]\n provider: P\n location: L\n type: instance\n namespace: root/a\n";

TEST(Registration, StanzaTellsClassProviderLibraryTypesAndNamespaces) {
    const auto classes = read_registration("a.reg", "[Test_Thing]\r\n"
                                                    "   provider: Prefix\n"
                                                    "   location:Library\n"
                                                    "   type: instance  association\n"
                                                    "   namespace: root/a root/b\n"
                                                    "#\n");
    ASSERT_EQ(classes.size(), 1u);
    EXPECT_EQ(classes[0].class_name, "Test_Thing");
    EXPECT_EQ(classes[0].provider, "Prefix");
    EXPECT_EQ(classes[0].location, "Library");
    EXPECT_EQ(classes[0].types, (std::vector<std::string>{"instance", "association"}));
    EXPECT_EQ(classes[0].namespaces, (std::vector<std::string>{"root/a", "root/b"}));
}

TEST(Registration, StanzaEndsWithHashWithTheNextOneAndWithTheFile) {
    const std::string text = whole;
    EXPECT_EQ(read_registration("a.reg", text + "#\n" + text).size(), 2u);
    EXPECT_EQ(read_registration("a.reg", text + text + "\n\n").size(), 2u);
    EXPECT_EQ(read_registration("a.reg", "# all of this\n#\n" + text).size(), 1u);
    EXPECT_EQ(read_registration("a.reg", "").size(), 0u);
}

TEST(Registration, OtherKeysAreReadOver) {
    EXPECT_EQ(refusal_of(std::string(whole) + " unload: never\n"), "accepted");
}

TEST(Registration, BadLinesAreRefusedWithTheirPlace) {
    EXPECT_EQ(refusal_of("provider: P\n"), "a.reg:1: expected [CLASS] before this");
    EXPECT_EQ(refusal_of("\n[A\n"), "a.reg:2: expected [CLASS]");
    EXPECT_EQ(refusal_of("[ ]\n"), "a.reg:1: expected [CLASS]");
    EXPECT_EQ(refusal_of("[\n"), "a.reg:1: expected [CLASS]");
    EXPECT_EQ(refusal_of("[A]\n provider P\n"), "a.reg:2: expected KEY: VALUE");
}

TEST(Registration, MissingKeysAreRefusedWithTheirStanza) {
    EXPECT_EQ(refusal_of("[A]\n#\n"), "a.reg:1: [A] has no provider: line");
    EXPECT_EQ(refusal_of("[A]\n provider: P\n[B]\n"), "a.reg:1: [A] has no location: line");
    EXPECT_EQ(refusal_of("[A]\n provider: P\n location: L\n"), "a.reg:1: [A] has no type: line");
    EXPECT_EQ(refusal_of("[A]\n provider: P\n location: L\n type: instance\n namespace:\n"),
              "a.reg:1: [A] has no namespace: line");
}

TEST(Registration, ProvidersOwnFileIsRead) {
    std::ifstream file(FCIP_SOURCE_DIR "/schema/registration/sfcb.reg");
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    const auto classes = read_registration("sfcb.reg", text);
    EXPECT_GE(classes.size(), 30u);
    for (const RegisteredClass& each : classes)
        EXPECT_EQ(each.location, "FCIPProvider") << each.class_name;
}

} // namespace
} // namespace cmpihost::server
