// Objects of a call: how the broker makes them, finds them again, and lets go of them.
#pragma once

#include "host/broker/broker.h"
#include "host/broker/held.h"
#include "host/cim/date_time.h"

#include <cmpift.h>

#include <cstddef>
#include <type_traits>

namespace cmpihost {

/// What a string holds, with a terminator behind it.
struct Text {
    std::string_view chars;
};

/// What an instance holds: the object, and the names that its property filter lets through, if it has one.
struct InstanceData {
    HeldObject object;
    List<Name> filter;
    bool filtered;
};

/// What an array holds: the CIM type of its elements, and as many values as it was made for.
struct ArrayData {
    CMPIType type;
    HeldArray values;
};

/// What an enumeration holds, and which object comes next.
struct EnumerationData {
    CMPIType type;
    List<HeldObject> objects;
    std::uint32_t next;
};

/// Copies of an object's data in `store`, and what gives their memory there back.
Text copy(Store& store, const Text& text);
InstanceData copy(Store& store, const InstanceData& instance);
ArrayData copy(Store& store, const ArrayData& array);
EnumerationData copy(Store& store, const EnumerationData& enumeration);
DateTime copy(Store& store, const DateTime& time);
void release(Store& store, const Text& text);
void release(Store& store, const InstanceData& instance);
void release(Store& store, const ArrayData& array);
void release(Store& store, const EnumerationData& enumeration);
void release(Store& store, const DateTime& time);

/// What lies behind each kind of handle, and its function table.
template <class Handle>
struct Kind;

#define CMPIHOST_KIND(HANDLE, TABLE, DATA)                                                                             \
    extern const HANDLE##FT TABLE;                                                                                     \
    template <>                                                                                                        \
    struct Kind<HANDLE> {                                                                                              \
        using Data = DATA;                                                                                             \
        static constexpr const HANDLE##FT* table = &TABLE;                                                             \
        static constexpr const char* name = #HANDLE;                                                                   \
    }
CMPIHOST_KIND(CMPIString, string_table, Text);
CMPIHOST_KIND(CMPIObjectPath, object_path_table, HeldObject);
CMPIHOST_KIND(CMPIInstance, instance_table, InstanceData);
CMPIHOST_KIND(CMPIArray, array_table, ArrayData);
CMPIHOST_KIND(CMPIDateTime, date_time_table, DateTime);
CMPIHOST_KIND(CMPIEnumeration, enumeration_table, EnumerationData);
CMPIHOST_KIND(CMPIContext, context_table, HeldProperties);
CMPIHOST_KIND(CMPIArgs, args_table, HeldProperties);
CMPIHOST_KIND(CMPIResult, result_table, CallScope::State*);
#undef CMPIHOST_KIND

template <class Handle>
using DataOf = typename Kind<Handle>::Data;

struct Node;

/// What the broker knows about a kind of object. There is one row for each, so that its address tells kinds apart.
struct KindRow {
    const char* name;            ///< "CMPIString", ...
    void (*release)(Node& node); ///< gives back all memory of the object
};

/// What stands in front of every handle.
struct alignas(16) Node {
    Store* store; ///< where the object lies
    const KindRow* kind;
};

/// An object of one kind. A provider holds the address of `handle`, whose `hdl` leads to the data.
template <class Handle>
struct Holder {
    Node node;
    alignas(16) Handle handle;
    alignas(16) DataOf<Handle> data;
};
inline constexpr std::size_t handle_offset = sizeof(Node);

template <class Handle>
void release_holder(Node& node) {
    static_assert(std::is_standard_layout_v<Holder<Handle>> && std::is_trivially_destructible_v<Holder<Handle>>);
    static_assert(offsetof(Holder<Handle>, handle) == handle_offset);
    Store& store = *node.store;
    auto* holder = reinterpret_cast<Holder<Handle>*>(&node);
    release(store, holder->data);
    store.arena.release(holder, sizeof *holder);
}

template <class Handle>
inline constexpr KindRow kind_row{Kind<Handle>::name, release_holder<Handle>};

/// The object's data if it is of this kind; null for another kind and for no object.
template <class Handle>
DataOf<Handle>* data_in(Node* node) {
    const bool matches = node != nullptr && node->kind == &kind_row<Handle>;
    return matches ? &reinterpret_cast<Holder<Handle>*>(node)->data : nullptr;
}

class CallScope::State {
  public:
    State();

    /// The innermost scope of this thread; null outside of any.
    static State* innermost();

    /// The object at this address if it is a live one of this scope, else null. The address is only looked up.
    Node* find(const void* handle) const;

    /// As find(), for one kind.
    template <class Handle>
    DataOf<Handle>* live(const Handle* handle) const {
        return data_in<Handle>(find(handle));
    }

    /// Counts a broker call that makes an object. False: this one is to fail.
    bool count_object();

    /// Makes an object that lives until its release or the end of the scope. Its data lie in the scope's store.
    template <class Handle>
    Handle* add(const DataOf<Handle>& data) {
        void* memory = store.arena.allocate(sizeof(Holder<Handle>));
        auto* holder = new (memory) Holder<Handle>{{&store, &kind_row<Handle>}, {}, data};
        holder->handle = {&holder->data, Kind<Handle>::table};
        store.arena.mark(&holder->handle);
        return &holder->handle;
    }

    /// Frees an object of this scope. False: it is none.
    bool release(const void* handle);

    Store store;
    Holder<CMPIContext> context;
    Holder<CMPIResult> result;
    const Sink* sink = nullptr; ///< null: objects are collected in the answer
    Answer answer;
    unsigned objects_made = 0;
    unsigned calls_until_failure = 0; ///< 0: no failure ahead
};

using State = CallScope::State;

/// A status without text.
inline CMPIStatus status_of(CMPIrc rc) {
    return CMPIStatus{rc, nullptr};
}

/// Stores a status without text where the caller wants one.
inline void report(CMPIStatus* status, CMPIrc rc) {
    if (status != nullptr)
        *status = status_of(rc);
}

/// Makes an object in the innermost scope for a broker call, with the data that `data_in_store(Store&)` puts there.
/// Null with ERR_FAILED: the call is to fail, or there is no scope on this thread.
template <class Handle, class DataInStore>
Handle* make(CMPIStatus* status, DataInStore data_in_store) {
    State* scope = State::innermost();
    if (scope == nullptr || !scope->count_object()) {
        report(status, CMPI_RC_ERR_FAILED);
        return nullptr;
    }
    report(status, CMPI_RC_OK);
    return scope->add<Handle>(data_in_store(scope->store));
}

inline Text text_in(Store& store, std::string_view text) {
    return {store.arena.copy(text)};
}

inline CMPIString* make_string(std::string_view text, CMPIStatus* status) {
    return make<CMPIString>(status, [text](Store& store) { return text_in(store, text); });
}

/// What lies behind the handle that a table's function is called on. Null with ERR_INVALID_HANDLE: nothing does.
template <class Handle>
DataOf<Handle>* open(const Handle* self, CMPIStatus* status) {
    const bool valid = self != nullptr && self->hdl != nullptr;
    report(status, valid ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return valid ? static_cast<DataOf<Handle>*>(const_cast<void*>(self->hdl)) : nullptr;
}

/// Where the data lie that open() gives for a handle.
template <class Handle>
Store& store_of(const Handle* self) {
    const auto* data = static_cast<const std::byte*>(self->hdl);
    return *reinterpret_cast<const Holder<Handle>*>(data - offsetof(Holder<Handle>, data))->node.store;
}

/// What lies behind an argument, if that is a live object of the innermost scope; the pointer is only looked up.
template <class Handle>
DataOf<Handle>* live(const Handle* argument) {
    State* scope = State::innermost();
    return scope == nullptr ? nullptr : scope->live<Handle>(argument);
}

/// What to answer about an argument for which live() gives nothing.
inline CMPIrc fault_of(const void* argument) {
    return argument == nullptr ? CMPI_RC_ERR_INVALID_PARAMETER : CMPI_RC_ERR_INVALID_HANDLE;
}

/// `release` of every table: frees an object of the innermost scope.
template <class Handle>
CMPIStatus release_object(Handle* self) {
    State* scope = State::innermost();
    return status_of(scope != nullptr && scope->release(self) ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
}

/// `clone` of every table whose objects are plain data.
template <class Handle>
Handle* clone_object(const Handle* self, CMPIStatus* status) {
    const DataOf<Handle>* data = open(self, status);
    return data == nullptr ? nullptr : make<Handle>(status, [data](Store& store) { return copy(store, *data); });
}

} // namespace cmpihost
