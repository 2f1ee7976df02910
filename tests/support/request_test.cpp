#include "tests/support/request_test.h"

namespace test {

cmpihost::Object path_of(const std::string& class_name, const std::vector<std::pair<std::string, std::string>>& keys) {
    cmpihost::Object path;
    path.class_name = class_name;
    path.name_space = "root/cimv2";
    for (const auto& [name, value] : keys)
        path.keys.push_back({name, "string", {value}});
    return path;
}

std::vector<std::string> paths(const cmpihost::Answer& answer) {
    std::vector<std::string> texts;
    for (const auto& object : answer.objects)
        texts.push_back(path_text(object));
    return texts;
}

std::vector<std::string> values(const cmpihost::Answer& answer, const std::string& property) {
    std::vector<std::string> texts;
    for (const auto& object : answer.objects) {
        const auto* found = object.property(property);
        texts.push_back(found == nullptr ? "(none)" : text_of(found->value));
    }
    return texts;
}

void RequestTest::SetUp() {
    ProviderTest::SetUp();
    provider.instance_mi = FCIPProvider_Create_InstanceMI(cmpihost::broker(), scope.context());
    provider.association_mi = FCIPProvider_Create_AssociationMI(cmpihost::broker(), scope.context());
    switchsim::clear_counts();
}

cmpihost::Answer RequestTest::ask(const cmpihost::Request& request) {
    auto answer = captured([&] { return cmpihost::run(provider, request); });
    hold_against_schema(answer, request);
    return answer;
}

void RequestTest::hold_against_schema(const cmpihost::Answer& answer, const cmpihost::Request& request) {
    using cmpihost::mof::Kind;
    const bool are_paths = request.operation == Operation::enumerate_instance_names ||
                           request.operation == Operation::associator_names ||
                           request.operation == Operation::reference_names;
    const Kind kind = are_paths ? Kind::path : request.properties ? Kind::partial_instance : Kind::instance;
    for (const auto& object : answer.objects)
        ProviderTest::hold_against_schema(object, kind);
}

cmpihost::Answer RequestTest::enumerate_instances(const std::string& class_name,
                                                  std::optional<std::vector<std::string>> properties) {
    cmpihost::Request request;
    request.operation = Operation::enumerate_instances;
    request.path = path_of(class_name);
    request.properties = std::move(properties);
    return ask(request);
}

cmpihost::Answer RequestTest::enumerate_names(const std::string& class_name) {
    cmpihost::Request request;
    request.operation = Operation::enumerate_instance_names;
    request.path = path_of(class_name);
    return ask(request);
}

cmpihost::Answer RequestTest::get(const cmpihost::Object& path, std::optional<std::vector<std::string>> properties) {
    cmpihost::Request request;
    request.operation = Operation::get_instance;
    request.path = path;
    request.properties = std::move(properties);
    return ask(request);
}

cmpihost::Answer RequestTest::walk(Operation operation, const cmpihost::Object& source,
                                   std::optional<std::string> association_class) {
    cmpihost::Request request;
    request.operation = operation;
    request.path = source;
    request.assoc_class = std::move(association_class);
    return ask(request);
}

} // namespace test
