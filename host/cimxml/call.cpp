#include "host/cimxml/call.h"

#include "host/cim/names.h"

namespace cmpihost::cimxml {

template <class T>
const T* argument(const Call& call, std::string_view name) {
    for (const Parameter& parameter : call.parameters)
        if (same_name(parameter.name, name))
            return std::get_if<T>(&parameter.value);
    return nullptr;
}

template const bool* argument(const Call&, std::string_view);
template const std::uint32_t* argument(const Call&, std::string_view);
template const std::string* argument(const Call&, std::string_view);
template const std::vector<std::string>* argument(const Call&, std::string_view);
template const ClassName* argument(const Call&, std::string_view);
template const Object* argument(const Call&, std::string_view);
template const Declaration* argument(const Call&, std::string_view);

} // namespace cmpihost::cimxml
