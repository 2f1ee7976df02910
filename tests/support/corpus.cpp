#include "tests/support/corpus.h"

namespace test {

namespace {

void add(std::vector<cmpihost::Request>& requests, Operation operation, cmpihost::Object path,
         std::optional<std::string> association_class = std::nullopt) {
    cmpihost::Request request;
    request.operation = operation;
    request.path = std::move(path);
    request.assoc_class = std::move(association_class);
    requests.push_back(std::move(request));
}

constexpr Operation walks[] = {Operation::associators, Operation::associator_names, Operation::references,
                               Operation::reference_names};

} // namespace

std::vector<const char*> association_names() {
    std::vector<const char*> names(std::begin(association_classes), std::end(association_classes));
    names.insert(names.end(), std::begin(other_association_names), std::end(other_association_names));
    return names;
}

std::vector<cmpihost::Object> source_objects() {
    return {
        path_of("ZANTO_FCIPProtocolEndPoint", {{"Name", "1_10.1.1.1_10.1.1.2"}}),
        path_of("ZANTO_RemoteFCIPPort", {{"Name", "0_10.1.1.2_10.1.1.1"}}),
        path_of("ZANTO_IPProtocolEndPoint", {{"Name", "16777216_10.1.1.1_10.1.1.2"}}),
        path_of("ZANTO_RemoteIPServiceAccessPoint", {{"Name", "0_10.1.1.2_10.1.1.1"}}),
        path_of("ZANTO_TCPProtocolEndPoint", {{"Name", "16777216"}}),
        path_of("ZANTO_RemoteTCPPort", {{"Name", "0_16777216"}}),
        path_of("ZANTO_LanEndPoint", {{"Name", "-2097152000:02:00:00:aa:00:01"}}),
        path_of("ZANTO_FCIPSettings", {{"InstanceID", "16777216"}}),
        path_of("ZANTO_IPSettings", {{"InstanceID", "16777216"}}),
        path_of("ZANTO_TCPSettings", {{"InstanceID", "16777216"}}),
        path_of("ZANTO_IPEndPointStatistics", {{"InstanceID", "16777216"}}),
        path_of("ZANTO_TCPEndPointStatistics", {{"InstanceID", "16777216"}}),
        path_of("ZANTO_EthernetPort", {{"DeviceID", "-2097152000"}}),
        path_of("ZANTO_EthernetPortStatistics", {{"InstanceID", "-2097152000"}}),
        path_of("ZANTO_FCIPProfile", {{"InstanceID", "3"}}),
    };
}

std::vector<cmpihost::Request> all_requests() {
    std::vector<cmpihost::Request> requests;
    for (const char* class_name : served_classes)
        for (const Operation operation : {Operation::enumerate_instances, Operation::enumerate_instance_names})
            add(requests, operation, path_of(class_name));
    for (const char* class_name : association_names())
        for (const Operation operation : {Operation::enumerate_instances, Operation::enumerate_instance_names})
            add(requests, operation, path_of(class_name));
    for (const auto& source : source_objects()) {
        add(requests, Operation::get_instance, source);
        for (const Operation operation : walks)
            for (const char* association : association_names())
                add(requests, operation, source, association);
    }
    return requests;
}

std::string name_of(const cmpihost::Request& request) {
    static constexpr const char* names[] = {"ei", "ein", "gi", "ai", "ain", "ri", "rin", "ci", "mi", "di", "xq"};
    return std::string(names[static_cast<int>(request.operation)]) + " " + path_text(request.path) + " " +
           request.assoc_class.value_or("");
}

} // namespace test
