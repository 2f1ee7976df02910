#include "host/broker/values.h"

#include "host/broker/scope.h"
#include "host/cim/names.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <type_traits>

namespace cmpihost {

namespace {

struct TypeRow {
    CMPIType code;
    std::string_view name;
    std::string_view array;
};

constexpr std::array types{
    TypeRow{CMPI_string, "string", "string[]"},       TypeRow{CMPI_uint16, "uint16", "uint16[]"},
    TypeRow{CMPI_uint32, "uint32", "uint32[]"},       TypeRow{CMPI_uint64, "uint64", "uint64[]"},
    TypeRow{CMPI_boolean, "boolean", "boolean[]"},    TypeRow{CMPI_ref, "reference", "reference[]"},
    TypeRow{CMPI_uint8, "uint8", "uint8[]"},          TypeRow{CMPI_chars, "string", "string[]"},
    TypeRow{CMPI_sint8, "sint8", "sint8[]"},          TypeRow{CMPI_sint16, "sint16", "sint16[]"},
    TypeRow{CMPI_sint32, "sint32", "sint32[]"},       TypeRow{CMPI_sint64, "sint64", "sint64[]"},
    TypeRow{CMPI_real32, "real32", "real32[]"},       TypeRow{CMPI_real64, "real64", "real64[]"},
    TypeRow{CMPI_char16, "char16", "char16[]"},       TypeRow{CMPI_dateTime, "datetime", "datetime[]"},
    TypeRow{CMPI_instance, "instance", "instance[]"}, TypeRow{CMPI_null, "null", ""},
};

constexpr CMPIType without_array(CMPIType type) {
    return static_cast<CMPIType>(type & ~CMPI_ARRAY);
}

/// The type under which values of `type` are held.
constexpr CMPIType held_type(CMPIType type) {
    if (without_array(type) != CMPI_chars)
        return type;
    return static_cast<CMPIType>(CMPI_string | (type & CMPI_ARRAY));
}

template <class Data>
HeldValue held_apart(Store& store, const Data& data) {
    return {new (store.arena.allocate(sizeof(Data))) Data(copy(store, data))};
}

HeldValue held(Store& store, const Text& text) {
    return {store.arena.copy(text.chars)};
}

HeldValue held(Store& store, const HeldObject& path) {
    return held_apart(store, path);
}

HeldValue held(Store& store, const InstanceData& instance) {
    return held_apart(store, instance.object);
}

HeldValue held(Store& store, const DateTime& time) {
    return {store.arena.copy(format_date_time(time))};
}

HeldValue held(Store& store, const ArrayData& array) {
    return held_apart(store, array.values);
}

/// A copy of what a handle stands for; a null handle is NULL.
template <class Handle>
CMPIrc read_handle(Store& store, const Handle* handle, HeldValue& out) {
    if (handle == nullptr)
        return CMPI_RC_OK;
    const DataOf<Handle>* data = live(handle);
    if (data == nullptr)
        return CMPI_RC_ERR_INVALID_HANDLE;
    out = held(store, *data);
    return CMPI_RC_OK;
}

CMPIrc read_array(Store& store, const CMPIArray* array, CMPIType element_type, HeldValue& out) {
    const ArrayData* data = array == nullptr ? nullptr : live(array);
    if (data != nullptr && data->type != held_type(element_type))
        return CMPI_RC_ERR_TYPE_MISMATCH;
    return read_handle(store, array, out);
}

CMPIrc read_other(Store& store, const CMPIValue& value, CMPIType type, HeldValue& out) {
    switch (type) {
    case CMPI_boolean:
        out.data = value.boolean != 0;
        return CMPI_RC_OK;
    case CMPI_string:
        return read_handle(store, value.string, out);
    case CMPI_ref:
        return read_handle(store, value.ref, out);
    case CMPI_instance:
        return read_handle(store, value.inst, out);
    case CMPI_dateTime:
        return read_handle(store, value.dateTime, out);
    default:
        return CMPI_RC_ERR_INVALID_DATA_TYPE;
    }
}

/// Stores `value` widened to the alternative of HeldValue that holds its kind of number.
template <class Number>
CMPIrc read_number(Number value, HeldValue& out) {
    if constexpr (std::is_floating_point_v<Number>)
        out.data = static_cast<double>(value);
    else if constexpr (std::is_signed_v<Number>)
        out.data = static_cast<std::int64_t>(value);
    else
        out.data = static_cast<std::uint64_t>(value);
    return CMPI_RC_OK;
}

CMPIrc read_simple(Store& store, const CMPIValue& value, CMPIType type, HeldValue& out) {
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
        return read_other(store, value, type, out);
    }
}

/// The number in a value, whichever kind it is stored as. False: it holds none.
template <class Number>
bool number_in(const HeldValue& value, Number& out) {
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
bool object_for(const HeldValue& value, Handle*& out, CMPIStatus* status, ToData to_data) {
    const Held* held = std::get_if<Held>(&value.data);
    out = held == nullptr ? nullptr : make<Handle>(status, [&](Store& store) { return to_data(store, *held); });
    return out != nullptr;
}

DateTime date_time_of(Store&, std::string_view text) {
    return parse_date_time(text).value_or(DateTime{});
}

bool give_handle(const HeldValue& value, CMPIType type, CMPIValue& out, CMPIStatus* status) {
    if ((type & CMPI_ARRAY) != 0)
        return object_for<CMPIArray, HeldArray*>(value, out.array, status, [type](Store& store, HeldArray* values) {
            return ArrayData{without_array(type), copy(store, *values)};
        });
    switch (type) {
    case CMPI_string:
        return object_for<CMPIString, std::string_view>(value, out.string, status, text_in);
    case CMPI_ref:
        return object_for<CMPIObjectPath, HeldObject*>(
            value, out.ref, status, [](Store& store, HeldObject* path) { return copy(store, *path); });
    case CMPI_instance:
        return object_for<CMPIInstance, HeldObject*>(value, out.inst, status, [](Store& store, HeldObject* instance) {
            return InstanceData{copy(store, *instance), {}, false};
        });
    case CMPI_dateTime:
        return object_for<CMPIDateTime, std::string_view>(value, out.dateTime, status, date_time_of);
    default:
        return false;
    }
}

bool give_simple(const HeldValue& value, CMPIType type, CMPIValue& out, CMPIStatus* status) {
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

/// How many bytes of a CMPIValue a value of this type takes.
std::size_t size_of(CMPIType type) {
    switch (type) {
    case CMPI_boolean:
    case CMPI_uint8:
    case CMPI_sint8:
        return 1;
    case CMPI_char16:
    case CMPI_uint16:
    case CMPI_sint16:
        return 2;
    case CMPI_uint32:
    case CMPI_sint32:
    case CMPI_real32:
        return 4;
    case CMPI_uint64:
    case CMPI_sint64:
    case CMPI_real64:
        return 8;
    default:
        return sizeof(void*);
    }
}

/// The value that a provider points to. It may be a variable of the type alone, and lie anywhere.
CMPIValue value_at(const CMPIValue* value, CMPIType type) {
    CMPIValue copied{};
    const void* from = value;
    switch (size_of(type)) { // copies of known sizes take no call
    case 1:
        std::memcpy(&copied, from, 1);
        break;
    case 2:
        std::memcpy(&copied, from, 2);
        break;
    case 4:
        std::memcpy(&copied, from, 4);
        break;
    default:
        std::memcpy(&copied, from, 8);
    }
    return copied;
}

} // namespace

std::string_view type_text(CMPIType type) {
    const auto* row =
        std::find_if(types.begin(), types.end(), [type](const TypeRow& r) { return r.code == without_array(type); });
    if (row == types.end())
        return {};
    return (type & CMPI_ARRAY) != 0 ? row->array : row->name;
}

std::string type_name(CMPIType type) {
    return std::string(type_text(type));
}

CMPIType type_code(std::string_view name) {
    for (const TypeRow& row : types) {
        if (row.name == name)
            return row.code;
        if (row.array == name && !name.empty())
            return static_cast<CMPIType>(row.code | CMPI_ARRAY);
    }
    return CMPI_null;
}

CMPIrc read_value(Store& store, const CMPIValue* value, CMPIType type, HeldValue& out) {
    out.data = std::monostate{};
    if (value == nullptr || (type & CMPI_ARRAY) != 0) {
        if (type_text(type).empty())
            return CMPI_RC_ERR_INVALID_DATA_TYPE;
        return value == nullptr ? CMPI_RC_OK : read_array(store, value_at(value, type).array, without_array(type), out);
    }
    if (type == CMPI_null)
        return CMPI_RC_OK;
    if (type != CMPI_chars)
        return read_simple(store, value_at(value, type), type, out);
    out.data = store.arena.copy(reinterpret_cast<const char*>(value));
    return CMPI_RC_OK;
}

CMPIData give_value(const HeldValue& value, CMPIType type, CMPIStatus* status) {
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

CMPIData get_named(const HeldProperties& values, const char* name, CMPIStatus* status, CMPIrc missing) {
    if (name == nullptr)
        return nothing_found(status, CMPI_RC_ERR_INVALID_PARAMETER);
    const HeldProperty* found = find_by_name(values, name);
    if (found == nullptr)
        return nothing_found(status, missing);
    return give_value(found->value, found->type, status);
}

CMPIData get_indexed(const HeldProperties& values, CMPICount index, CMPIString** name, CMPIStatus* status,
                     CMPIrc missing) {
    if (index >= values.count)
        return nothing_found(status, missing);
    const HeldProperty& found = values[index];
    if (name != nullptr) {
        *name = make_string(found.name->text, status);
        if (*name == nullptr)
            return nothing_found(status, CMPI_RC_ERR_FAILED);
    }
    return give_value(found.value, found.type, status);
}

CMPIrc set_named(Store& store, HeldProperties& values, const char* name, const CMPIValue* value, CMPIType type) {
    if (name == nullptr || *name == '\0')
        return CMPI_RC_ERR_INVALID_PARAMETER;
    HeldValue read;
    const CMPIrc rc = read_value(store, value, type, read);
    if (rc == CMPI_RC_OK)
        put_named(store, values, name, type, read);
    return rc;
}

void put_named(Store& store, HeldProperties& values, std::string_view name, CMPIType type, const HeldValue& value) {
    const Name* wanted = store.name(name);
    for (HeldProperty& held : values)
        if (same_name(*held.name, *wanted)) {
            release(store, held.value);
            held.type = held_type(type);
            held.value = value;
            return;
        }
    append(store, values, HeldProperty{wanted, held_type(type), value});
}

} // namespace cmpihost
