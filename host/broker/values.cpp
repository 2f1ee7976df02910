#include "host/broker/values.h"

#include "host/broker/scope.h"
#include "host/cim/names.h"

#include <algorithm>
#include <array>
#include <type_traits>

namespace cmpihost {

namespace {

struct TypeRow {
    CMPIType code;
    std::string_view name;
};

constexpr std::array types{
    TypeRow{CMPI_null, "null"},         TypeRow{CMPI_boolean, "boolean"},   TypeRow{CMPI_char16, "char16"},
    TypeRow{CMPI_real32, "real32"},     TypeRow{CMPI_real64, "real64"},     TypeRow{CMPI_uint8, "uint8"},
    TypeRow{CMPI_uint16, "uint16"},     TypeRow{CMPI_uint32, "uint32"},     TypeRow{CMPI_uint64, "uint64"},
    TypeRow{CMPI_sint8, "sint8"},       TypeRow{CMPI_sint16, "sint16"},     TypeRow{CMPI_sint32, "sint32"},
    TypeRow{CMPI_sint64, "sint64"},     TypeRow{CMPI_instance, "instance"}, TypeRow{CMPI_ref, "reference"},
    TypeRow{CMPI_dateTime, "datetime"}, TypeRow{CMPI_string, "string"},     TypeRow{CMPI_chars, "string"},
};

constexpr CMPIType without_array(CMPIType type) {
    return static_cast<CMPIType>(type & ~CMPI_ARRAY);
}

/// A handle's data as a plain value; a null handle is NULL.
template <class Handle, class ToValue>
CMPIrc read_handle(const Handle* handle, Value& out, ToValue to_value) {
    if (handle == nullptr) {
        out.data = std::monostate{};
        return CMPI_RC_OK;
    }
    const DataOf<Handle>* data = live(handle);
    if (data == nullptr)
        return CMPI_RC_ERR_INVALID_HANDLE;
    out.data = to_value(*data);
    return CMPI_RC_OK;
}

Value::Reference shared(const Object& object) {
    return std::make_shared<const Object>(object);
}

CMPIrc read_array(const CMPIArray* array, CMPIType element_type, Value& out) {
    const CMPIType type = element_type == CMPI_chars ? CMPI_string : element_type;
    const ArrayData* data = array == nullptr ? nullptr : live(array);
    if (data != nullptr && data->type != type)
        return CMPI_RC_ERR_TYPE_MISMATCH;
    return read_handle(array, out, [](const ArrayData& content) { return content.values; });
}

CMPIrc read_other(const CMPIValue& value, CMPIType type, Value& out) {
    switch (type) {
    case CMPI_boolean:
        out.data = value.boolean != 0;
        return CMPI_RC_OK;
    case CMPI_string:
        return read_handle(value.string, out, [](const std::string& text) { return text; });
    case CMPI_ref:
        return read_handle(value.ref, out, [](const Object& path) { return shared(path); });
    case CMPI_instance:
        return read_handle(value.inst, out, [](const InstanceData& instance) { return shared(instance.object); });
    case CMPI_dateTime:
        return read_handle(value.dateTime, out, [](const DateTime& time) { return format_date_time(time); });
    default:
        return CMPI_RC_ERR_INVALID_DATA_TYPE;
    }
}

/// Stores `value` widened to the alternative of Value that holds its kind of number.
template <class Number>
CMPIrc read_number(Number value, Value& out) {
    if constexpr (std::is_floating_point_v<Number>)
        out.data = static_cast<double>(value);
    else if constexpr (std::is_signed_v<Number>)
        out.data = static_cast<std::int64_t>(value);
    else
        out.data = static_cast<std::uint64_t>(value);
    return CMPI_RC_OK;
}

CMPIrc read_simple(const CMPIValue& value, CMPIType type, Value& out) {
    switch (type) {
    case CMPI_char16:
        return read_number(value.char16, out);
    case CMPI_real32:
        return read_number(value.real32, out);
    case CMPI_real64:
        return read_number(value.real64, out);
    case CMPI_uint8:
        return read_number(value.uint8, out);
    case CMPI_uint16:
        return read_number(value.uint16, out);
    case CMPI_uint32:
        return read_number(value.uint32, out);
    case CMPI_uint64:
        return read_number(value.uint64, out);
    case CMPI_sint8:
        return read_number(value.sint8, out);
    case CMPI_sint16:
        return read_number(value.sint16, out);
    case CMPI_sint32:
        return read_number(value.sint32, out);
    case CMPI_sint64:
        return read_number(value.sint64, out);
    default:
        return read_other(value, type, out);
    }
}

/// The number in a value, whichever kind it is stored as. False: it holds none.
template <class Number>
bool number_in(const Value& value, Number& out) {
    return std::visit(
        [&out](const auto& held) {
            using Held = std::decay_t<decltype(held)>;
            if constexpr (std::is_arithmetic_v<Held>) {
                out = static_cast<Number>(held);
                return true;
            }
            return false;
        },
        value.data);
}

/// Makes the object that stands for a value of type Held. False: the value is no Held, or the object cannot be made.
template <class Handle, class Held, class ToData>
bool object_for(const Value& value, Handle*& out, CMPIStatus* status, ToData to_data) {
    const Held* held = std::get_if<Held>(&value.data);
    out = held == nullptr ? nullptr : make<Handle>(to_data(*held), status);
    return out != nullptr;
}

bool give_handle(const Value& value, CMPIType type, CMPIValue& out, CMPIStatus* status) {
    if ((type & CMPI_ARRAY) != 0)
        return object_for<CMPIArray, Value::Array>(value, out.array, status, [type](const Value::Array& values) {
            return ArrayData{without_array(type), values};
        });
    switch (type) {
    case CMPI_string:
        return object_for<CMPIString, std::string>(value, out.string, status, [](const auto& text) { return text; });
    case CMPI_ref:
        return object_for<CMPIObjectPath, Value::Reference>(value, out.ref, status,
                                                            [](const auto& path) { return *path; });
    case CMPI_instance:
        return object_for<CMPIInstance, Value::Reference>(value, out.inst, status, [](const auto& instance) {
            return InstanceData{*instance, std::nullopt};
        });
    case CMPI_dateTime:
        return object_for<CMPIDateTime, std::string>(
            value, out.dateTime, status, [](const auto& text) { return parse_date_time(text).value_or(DateTime{}); });
    default:
        return false;
    }
}

bool give_simple(const Value& value, CMPIType type, CMPIValue& out, CMPIStatus* status) {
    switch (type) {
    case CMPI_boolean:
        return number_in(value, out.boolean);
    case CMPI_char16:
        return number_in(value, out.char16);
    case CMPI_real32:
        return number_in(value, out.real32);
    case CMPI_real64:
        return number_in(value, out.real64);
    case CMPI_uint8:
        return number_in(value, out.uint8);
    case CMPI_uint16:
        return number_in(value, out.uint16);
    case CMPI_uint32:
        return number_in(value, out.uint32);
    case CMPI_uint64:
        return number_in(value, out.uint64);
    case CMPI_sint8:
        return number_in(value, out.sint8);
    case CMPI_sint16:
        return number_in(value, out.sint16);
    case CMPI_sint32:
        return number_in(value, out.sint32);
    case CMPI_sint64:
        return number_in(value, out.sint64);
    default:
        return give_handle(value, type, out, status);
    }
}

} // namespace

std::string type_name(CMPIType type) {
    const auto* row =
        std::find_if(types.begin(), types.end(), [type](const TypeRow& r) { return r.code == without_array(type); });
    if (row == types.end() || type == CMPI_ARRAY)
        return {};
    std::string name(row->name);
    return (type & CMPI_ARRAY) != 0 ? name + "[]" : name;
}

CMPIType type_code(std::string_view name) {
    const bool array = name.ends_with("[]");
    const std::string_view element = array ? name.substr(0, name.size() - 2) : name;
    const auto* row =
        std::find_if(types.begin(), types.end(), [element](const TypeRow& r) { return r.name == element; });
    if (row == types.end())
        return CMPI_null;
    return array ? static_cast<CMPIType>(row->code | CMPI_ARRAY) : row->code;
}

CMPIrc read_value(const CMPIValue* value, CMPIType type, Value& out) {
    out.data = std::monostate{};
    if (type_name(type).empty())
        return CMPI_RC_ERR_INVALID_DATA_TYPE;
    if (value == nullptr || type == CMPI_null)
        return CMPI_RC_OK;
    if ((type & CMPI_ARRAY) != 0)
        return read_array(value->array, without_array(type), out);
    if (type == CMPI_chars) {
        out.data = std::string(reinterpret_cast<const char*>(value));
        return CMPI_RC_OK;
    }
    return read_simple(*value, type, out);
}

CMPIData give_value(const Value& value, CMPIType type, CMPIStatus* status) {
    CMPIData data{};
    data.type = type;
    report(status, CMPI_RC_OK);
    if (std::holds_alternative<std::monostate>(value.data)) {
        data.state = CMPI_nullValue;
    } else if (!give_simple(value, type, data.value, status)) {
        data.state = CMPI_badValue;
        report(status, CMPI_RC_ERR_FAILED);
    }
    return data;
}

CMPIData nothing_found(CMPIStatus* status, CMPIrc rc) {
    report(status, rc);
    CMPIData data{};
    data.state = CMPI_notFound;
    return data;
}

CMPIData get_named(const std::vector<Property>& values, const char* name, CMPIStatus* status, CMPIrc missing) {
    if (name == nullptr)
        return nothing_found(status, CMPI_RC_ERR_INVALID_PARAMETER);
    const Property* found = find_by_name(values, name);
    if (found == nullptr)
        return nothing_found(status, missing);
    return give_value(found->value, type_code(found->type), status);
}

CMPIData get_indexed(const std::vector<Property>& values, CMPICount index, CMPIString** name, CMPIStatus* status,
                     CMPIrc missing) {
    if (index >= values.size())
        return nothing_found(status, missing);
    const Property& found = values[index];
    if (name != nullptr) {
        *name = make<CMPIString>(found.name, status);
        if (*name == nullptr)
            return nothing_found(status, CMPI_RC_ERR_FAILED);
    }
    return give_value(found.value, type_code(found.type), status);
}

CMPIrc set_named(std::vector<Property>& values, const char* name, const CMPIValue* value, CMPIType type) {
    if (name == nullptr || *name == '\0')
        return CMPI_RC_ERR_INVALID_PARAMETER;
    Value read;
    const CMPIrc rc = read_value(value, type, read);
    if (rc == CMPI_RC_OK)
        put_named(values, name, type, std::move(read));
    return rc;
}

void put_named(std::vector<Property>& values, const char* name, CMPIType type, Value value) {
    const auto found =
        std::find_if(values.begin(), values.end(), [name](const Property& held) { return same_name(held.name, name); });
    if (found == values.end()) {
        values.push_back({name, type_name(type), std::move(value)});
        return;
    }
    found->type = type_name(type);
    found->value = std::move(value);
}

} // namespace cmpihost
