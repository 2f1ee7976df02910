// Questions about any object: what it is, whether it is of a type, how it reads as text.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"
#include "host/cim/names.h"
#include "host/cim/path_text.h"

namespace cmpihost {

namespace {

/// The CMPI name of a live object's type, null for any other pointer.
const char* type_of(const void* object) {
    const State* scope = State::innermost();
    const Node* node = scope == nullptr ? nullptr : scope->find(object);
    return node == nullptr ? nullptr : node->kind->name;
}

std::optional<std::string> text_of(Node* node) {
    if (const Text* text = data_in<CMPIString>(node))
        return std::string(text->chars);
    if (const HeldObject* path = data_in<CMPIObjectPath>(node))
        return path_text(plain(*path));
    if (const InstanceData* instance = data_in<CMPIInstance>(node))
        return path_text(plain(instance->object));
    if (const DateTime* time = data_in<CMPIDateTime>(node))
        return format_date_time(*time);
    return std::nullopt;
}

} // namespace

/// The class itself is known without a schema; whether another one is its superclass is not.
CMPIBoolean class_path_is_a(const CMPIBroker*, const CMPIObjectPath* argument, const char* class_name,
                            CMPIStatus* status) {
    const HeldObject* path = live(argument);
    if (path == nullptr || class_name == nullptr) {
        report(status, class_name == nullptr ? CMPI_RC_ERR_INVALID_PARAMETER : fault_of(argument));
        return 0;
    }
    const bool same = same_name(path->class_name->text, class_name);
    report(status, same ? CMPI_RC_OK : CMPI_RC_ERR_NOT_SUPPORTED);
    return same ? 1 : 0;
}

/// Strings, date-times and paths as they are, instances as their path; other kinds have no text.
CMPIString* to_string(const CMPIBroker*, const void* object, CMPIStatus* status) {
    if (type_of(object) == nullptr) {
        report(status, CMPI_RC_ERR_INVALID_HANDLE);
        return nullptr;
    }
    const auto text = text_of(State::innermost()->find(object));
    if (text)
        return make_string(*text, status);
    report(status, CMPI_RC_ERR_NOT_SUPPORTED);
    return nullptr;
}

CMPIBoolean is_of_type(const CMPIBroker*, const void* object, const char* type, CMPIStatus* status) {
    const char* actual = type_of(object);
    if (actual == nullptr || type == nullptr) {
        report(status, actual == nullptr ? CMPI_RC_ERR_INVALID_HANDLE : CMPI_RC_ERR_INVALID_PARAMETER);
        return 0;
    }
    report(status, CMPI_RC_OK);
    return std::string_view(actual) == type ? 1 : 0;
}

CMPIString* get_type(const CMPIBroker*, const void* object, CMPIStatus* status) {
    const char* actual = type_of(object);
    if (actual != nullptr)
        return make_string(actual, status);
    report(status, CMPI_RC_ERR_INVALID_HANDLE);
    return nullptr;
}

} // namespace cmpihost
