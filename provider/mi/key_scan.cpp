#include "provider/mi/key_scan.h"

#include "provider/common/text.h"
#include "provider/common/trace.h"
#include "provider/common/values.h"
#include "provider/mi/class_catalogue.h"

namespace fcip {

found_key scan_keys(const char* class_name, const CMPIObjectPath* path, const char* line_end) {
    found_key found;
    const CMPICount count = key_count(path);
    for (CMPICount index = 0; index < count && !found.found; ++index) {
        const path_key key = key_at(path, index);
        found.found = check_key_name(class_name, key.name.data()) == 1;
        if (found.found && key.data.type == CMPI_string) {
            found.value = copy_text<254>(chars_of(key.data.value.string));
            trace("\tfound key ", key.name.data(), " : ", found.value.data(), line_end);
        }
    }
    return found;
}

CMPIStatus key_not_found() {
    return {CMPI_RC_OK, new_string("invalid key name")};
}

} // namespace fcip
