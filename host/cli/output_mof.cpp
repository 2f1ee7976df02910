#include "host/cli/output.h"

#include "host/cim/path_text.h"

namespace cmpihost {

namespace {

std::string mof_of_instance(const Object& object) {
    std::string mof = "instance of " + object.class_name + " {\n";
    for (const Property& property : object.properties)
        mof += "    " + property.name + " = " + mof_value(property) + ";\n";
    return mof + "};\n";
}

} // namespace

std::string mof_of(const Answer& answer, bool paths) {
    std::string mof;
    for (const Object& object : answer.objects) {
        if (!paths && !mof.empty())
            mof += "\n";
        mof += "// " + printable(path_text(object)) + "\n";
        if (!paths)
            mof += mof_of_instance(object);
    }
    return mof;
}

} // namespace cmpihost
