#include "tests/support/provider_test.h"

#include "platform/services.h"
#include "tests/support/emitted.h"

namespace test {

namespace {

struct value_text {
    std::string operator()(std::monostate) const { return "NULL"; }
    std::string operator()(bool value) const { return value ? "true" : "false"; }
    std::string operator()(std::uint64_t value) const { return std::to_string(value); }
    std::string operator()(std::int64_t value) const { return std::to_string(value); }
    std::string operator()(double value) const { return std::to_string(value); }
    std::string operator()(const std::string& value) const { return value; }
    std::string operator()(const cmpihost::Value::Reference& value) const { return path_text(*value); }
    std::string operator()(const cmpihost::Value::Array& values) const {
        std::string text;
        for (const auto& value : values)
            text += (text.empty() ? "" : ",") + text_of(value);
        return "{" + text + "}";
    }
};

} // namespace

std::string text_of(const cmpihost::Value& value) {
    return std::visit(value_text{}, value.data);
}

Rows rows(const std::vector<cmpihost::Property>& properties) {
    Rows result;
    for (const auto& property : properties)
        result.push_back({property.name, property.type, text_of(property.value)});
    return result;
}

std::string path_text(const cmpihost::Object& path) {
    std::string text = path.name_space + ":" + path.class_name;
    const char* separator = ".";
    for (const auto& key : path.keys) {
        text += separator + key.name + "=\"" + text_of(key.value) + "\"";
        separator = ",";
    }
    return text;
}

void ProviderTest::SetUp() {
    use_small_switch();
    _broker = cmpihost::broker();
    const fcip::platform_lock lock;
    ASSERT_EQ(init_mts(&mts_q), 0);
    switchsim::clear_counts();
}

Rows ProviderTest::properties(const CMPIInstance* instance) {
    const auto object = cmpihost::describe(instance);
    hold_against_schema(object, cmpihost::mof::Kind::partial_instance);
    return rows(object.properties);
}

Rows ProviderTest::keys(const CMPIObjectPath* path) {
    const auto object = cmpihost::describe(path);
    hold_against_schema(object, cmpihost::mof::Kind::path);
    return rows(object.keys);
}

void ProviderTest::hold_against_schema(const cmpihost::Object& object, cmpihost::mof::Kind kind) {
    cmpihost::Object held = object;
    if (held.class_name == made_up_class) {
        const auto* creation_class =
            kind == cmpihost::mof::Kind::path ? object.key("CreationClassName") : object.property("CreationClassName");
        if (creation_class == nullptr || text_of(creation_class->value) == made_up_class)
            return;
        held.class_name = text_of(creation_class->value);
    }
    for (const auto& finding : findings_of(held, kind))
        findings_.insert(finding);
}

void ProviderTest::TearDown() {
    if (whole_objects_expected) {
        EXPECT_EQ(findings_, std::set<std::string>{}) << "against schema/";
    }
    EXPECT_FALSE(switchsim::lock_held());
    if (!complaints_expected) {
        EXPECT_EQ(switchsim::complaints(), std::vector<std::string>{});
    }
}

} // namespace test
