// The encoder against cimxml's writers: on every object of the two-site switch, and on odd ones.
#include "host/server/object_encoder.h"

#include "host/broker/loader.h"
#include "host/broker/values.h"
#include "host/cimxml/write_instance.h"
#include "host/cimxml/write_path.h"
#include "tests/host/mof/mof_files.h"
#include "tests/host/server/service_test.h"

#include <limits>

namespace cmpihost::server {
namespace {

using Writer = void (*)(std::string& out, const Object& object, const cimxml::ReplyPlace& place);

struct FormWriter {
    Form form;
    Writer write;
};

constexpr FormWriter form_writers[] = {
    {Form::instance_name, cimxml::append_instance_name},
    {Form::named_instance, cimxml::append_named_instance},
    {Form::instance, cimxml::append_instance},
    {Form::object_path, cimxml::append_object_path},
    {Form::object_with_path, cimxml::append_object_with_path},
    {Form::instance_path, cimxml::append_instance_path},
    {Form::instance_with_path, cimxml::append_instance_with_path},
};

/// Encodes the objects of a call in all forms beside the writers.
class BothWriters {
  public:
    explicit BothWriters(const mof::Schema& schema) : place_{"host", "root/place", schema} {
        for (const FormWriter& each : form_writers)
            encoders_.push_back(std::make_unique<ObjectEncoder>(each.form, place_, Selection{}, no_note_));
    }

    void compare(const HeldObject& object) {
        const Object same = plain(object);
        for (std::size_t i = 0; i < encoders_.size(); ++i) {
            std::string expected;
            form_writers[i].write(expected, same, place_);
            std::string encoded = "before";
            encoders_[i]->append(encoded, object);
            ASSERT_EQ(encoded, "before" + expected);
        }
        ++compared;
    }

    std::size_t compared = 0;

  private:
    cimxml::ReplyPlace place_;
    TypeNote no_note_;
    std::vector<std::unique_ptr<ObjectEncoder>> encoders_;
};

class TwoSites : public testing::Test {
  protected:
    TwoSites() : library(FCIP_PROVIDER) {
        library.load_scenario(FCIP_SOURCE_DIR "/scenarios/two-site.toml");
        const StandardOutputElsewhere quiet("", stderr);
        library.create("FCIPProvider");
    }

    void compare(const Request& request) {
        const StandardOutputElsewhere quiet("", stderr);
        BothWriters both(mof::provider_schema());
        run(library.provider(), request, [&both](const HeldObject& object, bool) { both.compare(object); });
        compared += both.compared;
    }

    static Request request_for(Request::Operation operation, const std::string& class_name) {
        Request request;
        request.operation = operation;
        request.path.class_name = class_name;
        request.path.name_space = "root/cimv2";
        return request;
    }

    /// From every instance of a class along every association.
    void compare_walks(const std::string& class_name) {
        const StandardOutputElsewhere quiet("", stderr);
        const Request names = request_for(Request::Operation::enumerate_instance_names, class_name);
        for (const Object& source : run(library.provider(), names).objects)
            for (const mof::ClassDeclaration& association : mof::provider_schema().classes())
                for (const auto operation : {Request::Operation::associators, Request::Operation::reference_names,
                                             Request::Operation::associator_names, Request::Operation::references}) {
                    Request request;
                    request.operation = operation;
                    request.path = source;
                    request.assoc_class = association.name;
                    if (association.association)
                        compare(request);
                }
    }

    Library library;
    std::size_t compared = 0;
};

TEST_F(TwoSites, ObjectsOfEveryClassAreEncodedAsTheWritersDo) {
    for (const mof::ClassDeclaration& declaration : mof::provider_schema().classes()) {
        compare(request_for(Request::Operation::enumerate_instances, declaration.name));
        compare(request_for(Request::Operation::enumerate_instance_names, declaration.name));
    }
    EXPECT_GT(compared, 100U);
}

TEST_F(TwoSites, ObjectsOfEveryWalkAreEncodedAsTheWritersDo) {
    for (const char* source : {"ZANTO_FCIPProtocolEndPoint", "ZANTO_TCPProtocolEndPoint", "ZANTO_EthernetPort",
                               "ZANTO_LANEndPoint", "ZANTO_IPProtocolEndPoint"})
        compare_walks(source);
    EXPECT_GT(compared, 100U);
}

class OddObjects : public testing::Test {
  protected:
    static const mof::Schema& schema() {
        static const mof::Schema read = std::get<mof::Schema>(mof::Schema::read_text("odd.mof", R"(
            class T_Thing { [Key] string Name; [Key] uint16 Number; string Text; uint8 Small; };
            class T_Sub : T_Thing { string More; };
            [Association] class T_Tie { [Key] T_Thing REF One; [Key] T_Tie REF Other; };
            class T_Keyless { string Name; };
        )"));
        return read;
    }

    static Object thing(std::vector<Property> keys, std::vector<Property> properties = {}) {
        return {"T_Thing", "root/cimv2", std::nullopt, std::move(keys), std::move(properties)};
    }

    static std::vector<Property> both_keys(const std::string& name = "n", std::uint64_t number = 7) {
        return {{"Name", "string", {name}}, {"Number", "uint16", {number}}};
    }

    static Value reference_to(Object object) { return {std::make_shared<const Object>(std::move(object))}; }

    void compare(const std::vector<Object>& objects) {
        Store store;
        BothWriters both(schema());
        for (const Object& object : objects)
            both.compare(hold(store, object));
    }
};

TEST_F(OddObjects, KeysInAnyOrderAndCase) {
    compare({thing(both_keys()), thing({{"NUMBER", "uint16", {std::uint64_t{1}}}, {"name", "string", {"x"}}}),
             thing(both_keys("again", 9))});
}

TEST_F(OddObjects, KeysThatAreMissingOrPropertiesOrOfOtherTypes) {
    compare({thing({}), thing({}, both_keys()), thing({both_keys()[0]}, {both_keys()[1]}), thing({both_keys()[1]}),
             thing({}, {{"Name", "string", {}}}), thing({}, both_keys("second")), thing({{"Name", "boolean", {true}}}),
             thing({{"Name", "string", {std::string("text")}}}), thing({{"Name", "sint8", {std::int64_t{-1}}}}),
             thing({{"Name", "real64", {0.5}}}), thing({{"Name", "char16", {std::uint64_t{'<'}}}}),
             thing({{"Name", "string[]", {Value::Array{{std::string("a")}}}}}), thing({{"Name", "string", {}}})});
}

TEST_F(OddObjects, KeysOfClassesThatDeclareNone) {
    Object keyless = thing(both_keys());
    keyless.class_name = "T_Keyless";
    Object unknown = keyless;
    unknown.class_name = "T_Unknown<&>";
    Object other_keys = thing({{"Other", "string", {std::string("o")}}});
    compare({keyless, unknown, other_keys, keyless});
}

TEST_F(OddObjects, HostsAndNamespaces) {
    Object hosted = thing(both_keys());
    hosted.host = "a & b";
    Object empty_host = hosted;
    empty_host.host = "";
    Object nowhere = thing(both_keys());
    nowhere.name_space = "";
    Object deep = thing(both_keys());
    deep.name_space = "a/b/c";
    compare({hosted, empty_host, nowhere, deep, thing(both_keys()), hosted});
}

TEST_F(OddObjects, ReferencesWithinReferences) {
    Object tie{"T_Tie", "root/cimv2", std::nullopt, {{"One", "reference", reference_to(thing(both_keys()))}}, {}};
    Object outer = tie;
    outer.keys.push_back({"Other", "reference", reference_to(tie)});
    Object outermost = tie;
    outermost.keys.push_back({"Other", "reference", reference_to(outer)});
    outermost.properties = outermost.keys;
    Object null = tie;
    null.properties = {{"One", "reference", {}}, {"Other", "reference[]", {Value::Array{reference_to(tie)}}}};
    compare({tie, outer, outermost, null, outermost});
}

TEST_F(OddObjects, ValuesOfEveryKind) {
    const std::string text = "<a href=\"x\">\x01\xff&\t\r\n\xe2\x82\xac";
    std::vector<Property> properties{{"Text", "string", {text}},
                                     {"Date", "datetime", {std::string("20260102030405.000006+060")}},
                                     {"Null", "string", {}},
                                     {"Yes", "boolean", {true}},
                                     {"No", "boolean", {false}},
                                     {"Most", "uint64", {std::numeric_limits<std::uint64_t>::max()}},
                                     {"Least", "sint64", {std::numeric_limits<std::int64_t>::min()}},
                                     {"Half", "real64", {0.5}},
                                     {"Whole", "real32", {3.0}},
                                     {"Infinite", "real64", {-std::numeric_limits<double>::infinity()}},
                                     {"Letter", "char16", {std::uint64_t{0x20ac}}},
                                     {"Surrogate", "char16", {std::uint64_t{0xd800}}},
                                     {"List", "uint8[]", {Value::Array{{std::uint64_t{1}}, {}}}},
                                     {"Empty", "string[]", {Value::Array{}}},
                                     {"NoList", "string[]", {}},
                                     {"Embedded", "instance", reference_to(thing({}, both_keys()))},
                                     {"NoType", "null", {}},
                                     {"Small", "string", {std::string("declared otherwise")}},
                                     {"A\"<", "string", {std::string("odd name")}}};
    compare({thing(both_keys(), properties)});
}

TEST_F(OddObjects, PropertiesThatChangeFromObjectToObject) {
    const Property text{"Text", "string", {std::string("t")}};
    const Property null{"Text", "string", {}};
    const Property number{"Text", "uint8", {std::uint64_t{1}}};
    const Property small{"Small", "uint8", {std::uint64_t{2}}};
    Object sub = thing(both_keys(), {small, text});
    sub.class_name = "T_Sub";
    compare({thing(both_keys(), {text, small}), thing(both_keys(), {small, text}), thing(both_keys(), {null}), sub,
             thing(both_keys(), {number, small, text}), thing(both_keys(), {text}), thing(both_keys()), sub});
}

TEST_F(OddObjects, MoreShapesThanArePutTogether) {
    std::vector<Object> objects;
    for (int i = 0; i < 100; ++i) {
        objects.push_back(thing(both_keys()));
        objects.back().name_space = "root/" + std::to_string(i % 80);
    }
    compare(objects);
}

TEST_F(OddObjects, SelectionLeavesOutPropertiesButNoKeys) {
    const std::vector<std::string> names{"TEXT", "Nothing"};
    const cimxml::ReplyPlace place{"host", "root/place", schema()};
    const TypeNote no_note;
    Object sub = thing(both_keys(), {{"Text", "string", {std::string("t")}},
                                     {"More", "string", {std::string("m")}},
                                     {"Extra", "string", {std::string("e")}}});
    sub.class_name = "T_Sub";
    const auto encoded = [&](const Selection& selection) {
        Store store;
        std::string out;
        ObjectEncoder(Form::named_instance, place, selection, no_note).append(out, hold(store, sub));
        return out;
    };
    const auto has = [](const std::string& out, const std::string& name) {
        return out.find(" NAME=\"" + name + "\"") != std::string::npos;
    };
    const std::string listed = encoded({&names, nullptr});
    EXPECT_TRUE(has(listed, "Text") && has(listed, "Number")) << listed;
    EXPECT_FALSE(has(listed, "More") || has(listed, "Extra")) << listed;
    const std::string shallow = encoded({nullptr, schema().find("T_Thing")});
    EXPECT_TRUE(has(shallow, "Text") && has(shallow, "Extra")) << shallow; // nobody declares Extra
    EXPECT_FALSE(has(shallow, "More")) << shallow;
}

TEST_F(OddObjects, TypeUnlikeTheDeclaredIsTold) {
    std::vector<std::string> lines;
    const TypeNote note = [&lines](const std::string& line) { lines.push_back(line); };
    const cimxml::ReplyPlace place{"host", "root/place", schema()};
    ObjectEncoder encoder(Form::instance, place, {}, note);
    Store store;
    std::string out;
    const Object object = thing({}, {{"small", "uint16", {std::uint64_t{1}}},
                                     {"Text", "instance", reference_to(thing({}))}, // an embedded one, in a string
                                     {"Name", "null", {}},
                                     {"Unknown", "uint8", {std::uint64_t{1}}}});
    encoder.append(out, hold(store, object));
    encoder.append(out, hold(store, object));
    EXPECT_EQ(lines, std::vector<std::string>{
                         "T_Thing.Small: is sent as uint16, which the provider gave it; declared as uint8"});
}

} // namespace
} // namespace cmpihost::server
