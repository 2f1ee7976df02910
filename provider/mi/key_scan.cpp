#include "provider/mi/key_scan.h"

#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/class_catalogue.h"

namespace fcip {

found_key scan_keys(const char* class_name, const CMPIObjectPath* path, const char* line_end) {
    found_key key;
    const CMPICount count = CMGetKeyCount(path, nullptr);
    for (CMPICount index = 0; index < count && !key.found; ++index) {
        CMPIString* name = nullptr;
        const CMPIData data = CMGetKeyAt(path, index, &name, nullptr);
        const auto key_name = copy_text<254>(chars_of(name));
        if (check_key_name(class_name, key_name.data()) == 0)
            continue;
        key.found = true;
        if (data.type == CMPI_string) {
            key.value = copy_text<254>(chars_of(data.value.string));
            trace("\tfound key ", key_name.data(), " : ", key.value.data(), line_end);
        }
    }
    return key;
}

CMPIStatus key_not_found() {
    return {CMPI_RC_OK, CMNewString(_broker, "invalid key name", nullptr)};
}

} // namespace fcip
