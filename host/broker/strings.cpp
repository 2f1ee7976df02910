// CMPIString.
#include "host/broker/broker_tables.h"
#include "host/broker/scope.h"

namespace cmpihost {

namespace {

const char* get_char_ptr(const CMPIString* self, CMPIStatus* status) {
    const Text* text = open(self, status);
    return text == nullptr ? nullptr : text->chars.data();
}

} // namespace

const CMPIStringFT string_table{
    .ftVersion = CMPIVersion100,
    .release = release_object,
    .clone = clone_object,
    .getCharPtr = get_char_ptr,
};

CMPIString* new_string(const CMPIBroker*, const char* text, CMPIStatus* status) {
    if (text != nullptr)
        return make_string(text, status);
    report(status, CMPI_RC_ERR_INVALID_PARAMETER);
    return nullptr;
}

} // namespace cmpihost
