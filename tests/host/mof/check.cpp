// Objects held against their classes: what is accepted, each finding, and the findings that are known and wanted.
#include "host/mof/check.h"
#include "host/mof/deviations.h"
#include "tests/host/mof/mof_text.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include <unistd.h>

namespace cmpihost::mof {
namespace {

constexpr const char* checked_classes = R"(
[Abstract] class Top { [Key] string Id; string Note; };
class Thing : Top { uint16 Count; uint8 Bytes[]; };
class Other { [Key] string Id; };
[Association] class Tie { [Key] Top REF One; [Key] Thing REF Two; uint16 Order; };
[Association] class Loose { Top REF One; Top REF Two; Top REF First; Top REF Last; };
class Named { [Key] string Id; [Required] string Name; };
class Renamed : Named { [Override ( "Name" )] string Name; };
class Inherited : Named { };
class Sure { [Key, Required] string Id; };
class Holder { [EmbeddedInstance("Thing")] string One; [EmbeddedObject] string Many[]; string Text; };
)";

const Schema& schema() {
    static const Schema read = std::get<Schema>(Schema::read_text("t.mof", checked_classes));
    return read;
}

Property text(const std::string& name, const std::string& value) {
    return {name, "string", {value}};
}

Property number(const std::string& name, const std::string& type, std::uint64_t value) {
    return {name, type, {value}};
}

Property null(const std::string& name, const std::string& type) {
    return {name, type, {}};
}

Property reference(const std::string& name, const Object& target) {
    return {name, "reference", {std::make_shared<const Object>(target)}};
}

Object path(const std::string& class_name, std::vector<Property> keys) {
    return {class_name, "root/cimv2", std::nullopt, std::move(keys), {}};
}

Object instance(const std::string& class_name, std::vector<Property> properties) {
    return {class_name, "root/cimv2", std::nullopt, {}, std::move(properties)};
}

Lines of_path(const Object& object) {
    return check(schema(), object, Kind::path);
}

Lines of_instance(const Object& object) {
    return check(schema(), object, Kind::instance);
}

const Object thing = path("Thing", {text("Id", "1")});

// ---------------------------------------------------------------------------------------------- accepted

TEST(MofCheck, AcceptsAPathWithAllKeys) {
    EXPECT_EQ(of_path(thing), Lines{});
    EXPECT_EQ(of_path(path("Tie", {reference("Two", thing), reference("One", thing)})), Lines{});
}

TEST(MofCheck, AcceptsNamesInAnyCase) {
    EXPECT_EQ(of_path(path("THING", {text("ID", "1")})), Lines{});
    EXPECT_EQ(of_instance(instance("thing", {text("iD", "1"), number("cOUNT", "uint16", 3)})), Lines{});
}

TEST(MofCheck, AcceptsInheritedOwnArrayAndNullProperties) {
    EXPECT_EQ(of_instance(instance("Thing", {text("Id", "1"), null("Note", "string"), number("Count", "uint16", 3),
                                             Property{"Bytes", "uint8[]", {Value::Array{{std::uint64_t{1}}}}}})),
              Lines{});
}

TEST(MofCheck, AcceptsAnInstanceWhosePathHasSomeKeys) {
    Object object = instance("Thing", {text("Id", "1")});
    EXPECT_EQ(of_instance(object), Lines{});
    object.keys = {text("Id", "1")};
    EXPECT_EQ(of_instance(object), Lines{});
}

TEST(MofCheck, AcceptsObjectsInStringsThatMayHoldThem) {
    const auto embedded = std::make_shared<const Object>(thing);
    EXPECT_EQ(of_instance(instance(
                  "Holder", {{"One", "instance", {embedded}}, {"Many", "instance[]", {Value::Array{{embedded}}}}})),
              Lines{});
    EXPECT_EQ(of_instance(
                  instance("Holder", {{"One", "instance[]", {}}, {"Many", "instance", {}}, {"Text", "instance", {}}})),
              (Lines{"Holder.One: type instance[], expected string", "Holder.Many: type instance, expected string[]",
                     "Holder.Text: type instance, expected string"}));
}

TEST(MofCheck, APartialInstanceNeedsNoKeys) {
    const Object object = instance("Thing", {number("Count", "uint16", 3)});
    EXPECT_EQ(check(schema(), object, Kind::partial_instance), Lines{});
    EXPECT_EQ(check(schema(), object, Kind::instance), Lines{"Thing.Id: key is missing"});
}

TEST(MofCheck, WhatIsRequiredNeedNotBeInPaths) {
    EXPECT_EQ(of_path(path("Named", {text("Id", "1")})), Lines{});
    EXPECT_EQ(check(schema(), instance("Named", {}), Kind::partial_instance), Lines{});
}

TEST(MofCheck, AnAssociationWithoutKeysTakesAnyReferences) {
    EXPECT_EQ(of_instance(instance("Loose", {reference("One", thing), reference("Two", thing)})), Lines{});
    EXPECT_EQ(of_instance(instance("Loose", {reference("First", thing), reference("Last", thing)})), Lines{});
}

// ---------------------------------------------------------------------------------------------- findings

TEST(MofCheck, FindsAnUnknownClass) {
    EXPECT_EQ(of_path(path("Nobody", {})), Lines{"Nobody: class is not declared"});
}

TEST(MofCheck, FindsAnAbstractClass) {
    EXPECT_EQ(of_path(path("top", {text("Id", "1")})), Lines{"Top: class is abstract"});
}

TEST(MofCheck, FindsAnUndeclaredProperty) {
    EXPECT_EQ(of_instance(instance("Thing", {text("Id", "1"), text("Nome", "x")})),
              Lines{"Thing.Nome: is not declared"});
}

TEST(MofCheck, FindsAnUndeclaredKey) {
    EXPECT_EQ(of_path(path("Thing", {text("Id", "1"), text("Nome", "x")})), Lines{"Thing.Nome: is not declared"});
}

TEST(MofCheck, FindsAPropertyOfAnotherType) {
    EXPECT_EQ(of_instance(instance("Thing", {text("Id", "1"), number("count", "uint32", 3)})),
              Lines{"Thing.Count: type uint32, expected uint16"});
    EXPECT_EQ(of_instance(instance("Thing", {text("Id", "1"), number("Bytes", "uint8", 3)})),
              Lines{"Thing.Bytes: type uint8, expected uint8[]"});
    EXPECT_EQ(of_instance(instance("Thing", {text("Id", "1"), null("Note", "uint8")})),
              Lines{"Thing.Note: type uint8, expected string"});
}

TEST(MofCheck, FindsAKeyOfAnotherType) {
    EXPECT_EQ(of_path(path("Thing", {number("Id", "uint32", 1)})), Lines{"Thing.Id: type uint32, expected string"});
    EXPECT_EQ(of_path(path("Tie", {text("One", "x"), reference("Two", thing)})),
              Lines{"Tie.One: type string, expected reference"});
}

TEST(MofCheck, FindsAPropertyAmongTheKeys) {
    EXPECT_EQ(of_path(path("Thing", {text("Id", "1"), text("Note", "x")})), Lines{"Thing.Note: is no key"});
    Object object = instance("Thing", {text("Id", "1")});
    object.keys = {text("Note", "x")};
    EXPECT_EQ(of_instance(object), Lines{"Thing.Note: is no key"});
}

TEST(MofCheck, FindsAMissingKey) {
    EXPECT_EQ(of_path(path("Thing", {})), Lines{"Thing.Id: key is missing"});
    EXPECT_EQ(of_path(path("Tie", {reference("One", thing)})), Lines{"Tie.Two: key is missing"});
}

TEST(MofCheck, FindsANullKey) {
    EXPECT_EQ(of_path(path("Thing", {null("Id", "string")})), Lines{"Thing.Id: key is NULL"});
    EXPECT_EQ(of_instance(instance("Thing", {null("Id", "string")})), Lines{"Thing.Id: key is NULL"});
    EXPECT_EQ(of_path(path("Tie", {null("One", "reference"), reference("Two", thing)})), Lines{"Tie.One: key is NULL"});
}

TEST(MofCheck, FindsANameThatIsThereTwice) {
    EXPECT_EQ(of_path(path("Thing", {text("Id", "1"), text("ID", "1")})), Lines{"Thing.Id: is there twice"});
}

TEST(MofCheck, FindsAReferenceToAClassThatIsNotAdmitted) {
    EXPECT_EQ(of_path(path("Tie", {reference("One", path("other", {text("Id", "1")})), reference("Two", thing)})),
              Lines{"Tie.One: refers to Other, expected Top"});
}

TEST(MofCheck, FindsAReferenceToASuperclassOfWhatIsAdmitted) {
    EXPECT_EQ(of_path(path("Tie", {reference("One", thing), reference("Two", path("Top", {text("Id", "1")}))})),
              (Lines{"Tie.Two: refers to Top, expected Thing", "Tie.Two > Top: class is abstract"}));
}

TEST(MofCheck, FindsAReferenceToAnUnknownClass) {
    EXPECT_EQ(of_path(path("Tie", {reference("One", path("Nobody", {})), reference("Two", thing)})),
              Lines{"Tie.One > Nobody: class is not declared"});
}

TEST(MofCheck, LooksIntoThePathsBehindReferences) {
    const Object bad = path("Thing", {text("Note", "x")});
    const Object outer = path("Tie", {reference("One", bad), reference("Two", thing)});
    const Lines expected = {"Tie.One > Thing.Note: is no key", "Tie.One > Thing.Id: key is missing"};
    EXPECT_EQ(of_path(outer), expected);
    EXPECT_EQ(of_instance(instance("Tie", outer.keys)), expected);
}

TEST(MofCheck, LooksIntoPathsBehindPaths) {
    const Object inner = path("Tie", {reference("Two", thing)});
    EXPECT_EQ(of_path(path("Tie", {reference("One", inner), reference("Two", thing)})),
              (Lines{"Tie.One: refers to Tie, expected Top", "Tie.One > Tie.One: key is missing"}));
}

TEST(MofCheck, FindsReferencesOfAPathThatAreNoKeys) {
    EXPECT_EQ(of_path(path("Loose", {reference("First", thing), reference("Last", thing)})),
              (Lines{"Loose.First: is no key", "Loose.Last: is no key"}));
}

TEST(MofCheck, FindsAMissingRequiredValue) {
    EXPECT_EQ(of_instance(instance("Named", {text("Id", "1")})), Lines{"Named.Name: required value is missing"});
}

TEST(MofCheck, FindsANullRequiredValue) {
    EXPECT_EQ(of_instance(instance("Named", {text("Id", "1"), null("Name", "string")})),
              Lines{"Named.Name: required value is NULL"});
}

TEST(MofCheck, WhatASuperclassRequiresStaysRequired) {
    EXPECT_EQ(of_instance(instance("Renamed", {text("Id", "1")})), Lines{"Renamed.Name: required value is missing"});
    EXPECT_EQ(of_instance(instance("Inherited", {text("Id", "1")})),
              Lines{"Inherited.Name: required value is missing"});
}

TEST(MofCheck, ARequiredKeyIsFoundMissingOnce) {
    EXPECT_EQ(of_instance(instance("Sure", {})), Lines{"Sure.Id: key is missing"});
}

// ---------------------------------------------------------------------------------------------- deviations

class DeviationsFile {
  public:
    explicit DeviationsFile(const std::string& contents) {
        path_ = (std::filesystem::temp_directory_path() / "deviations-XXXXXX").string();
        const int descriptor = mkstemp(path_.data());
        if (descriptor < 0 || close(descriptor) != 0)
            throw std::runtime_error("no temporary file");
        std::ofstream(path_) << contents;
    }
    ~DeviationsFile() { std::filesystem::remove(path_); }
    DeviationsFile(const DeviationsFile&) = delete;
    DeviationsFile& operator=(const DeviationsFile&) = delete;

    const std::string& path() const { return path_; }

  private:
    std::string path_;
};

TEST(MofDeviations, AreLinesThatAreNoComments) {
    const DeviationsFile file("# why\nA.b: is no key\n\nC: class is abstract");
    const auto read = Deviations::read(file.path());
    const auto* deviations = std::get_if<Deviations>(&read);
    ASSERT_NE(deviations, nullptr);
    EXPECT_EQ(deviations->findings(), (std::set<std::string>{"A.b: is no key", "C: class is abstract"}));
    EXPECT_TRUE(deviations->accepts("A.b: is no key"));
    EXPECT_FALSE(deviations->accepts("# why"));
    EXPECT_FALSE(deviations->accepts(""));
    EXPECT_EQ(deviations->unexpected({"Z: class is abstract", "A.b: is no key", "A.c: is no key"}),
              (Lines{"Z: class is abstract", "A.c: is no key"}));
}

std::string deviations_refusal(const std::string& path) {
    const auto read = Deviations::read(path);
    const Error* error = std::get_if<Error>(&read);
    return error ? error->text() : "(read)";
}

TEST(MofDeviations, ALineThatIsNoFindingIsRefused) {
    const DeviationsFile file("# why\nnonsense\n");
    EXPECT_EQ(deviations_refusal(file.path()),
              file.path() + ":2:1: nonsense, expected CLASS: WHAT, CLASS.NAME: WHAT, or # and a comment");
}

TEST(MofDeviations, ALineTwiceIsRefused) {
    const DeviationsFile file("A: class is abstract\nA: class is abstract\n");
    EXPECT_EQ(deviations_refusal(file.path()), file.path() + ":2:1: A: class is abstract is there twice");
}

TEST(MofDeviations, AMissingFileIsNamed) {
    EXPECT_EQ(deviations_refusal("/no/such.txt"), "/no/such.txt: cannot be read: No such file or directory");
}

TEST(MofDeviations, AFolderIsNoFile) {
    EXPECT_EQ(deviations_refusal("/"), "/: cannot be read, expected a file with text");
}

} // namespace
} // namespace cmpihost::mof
