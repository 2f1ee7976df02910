// Objects of a call: how the broker makes them, finds them again, and lets go of them.
#pragma once

#include "host/broker/broker.h"
#include "host/cim/date_time.h"

#include <cmpift.h>

#include <unordered_map>
#include <utility>

namespace cmpihost {

/// What an instance holds: the object, and the names that its property filter lets through (unset: all).
struct InstanceData {
    Object object;
    std::optional<std::vector<std::string>> filter;
};

/// What an array holds: the CIM type of its elements, and as many values as it was made for.
struct ArrayData {
    CMPIType type = CMPI_null;
    Value::Array values;
};

/// What an enumeration holds, and which object comes next.
struct EnumerationData {
    CMPIType type = CMPI_ref;
    std::vector<Object> objects;
    std::size_t next = 0;
};

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
CMPIHOST_KIND(CMPIString, string_table, std::string);
CMPIHOST_KIND(CMPIObjectPath, object_path_table, Object);
CMPIHOST_KIND(CMPIInstance, instance_table, InstanceData);
CMPIHOST_KIND(CMPIArray, array_table, ArrayData);
CMPIHOST_KIND(CMPIDateTime, date_time_table, DateTime);
CMPIHOST_KIND(CMPIEnumeration, enumeration_table, EnumerationData);
CMPIHOST_KIND(CMPIContext, context_table, std::vector<Property>);
CMPIHOST_KIND(CMPIArgs, args_table, std::vector<Property>);
CMPIHOST_KIND(CMPIResult, result_table, CallScope::State*);
#undef CMPIHOST_KIND

template <class Handle>
using DataOf = typename Kind<Handle>::Data;

/// Any object of the broker.
struct Node {
    Node() = default;
    virtual ~Node() = default;
    Node(const Node&) = delete;
    Node& operator=(const Node&) = delete;
};

/// An object of one kind. A provider holds the address of `handle`, whose `hdl` leads back here.
template <class Handle>
struct Holder final : Node {
    explicit Holder(DataOf<Handle> content) : handle{this, Kind<Handle>::table}, data(std::move(content)) {}

    Handle handle;
    DataOf<Handle> data;
};

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
        auto* holder = dynamic_cast<Holder<Handle>*>(find(handle));
        return holder == nullptr ? nullptr : &holder->data;
    }

    /// Counts a broker call that makes an object. False: this one is to fail.
    bool count_object();

    /// Makes an object that lives until its release or the end of the scope.
    template <class Handle>
    Handle* add(DataOf<Handle> data) {
        auto holder = std::make_unique<Holder<Handle>>(std::move(data));
        Handle* handle = &holder->handle;
        objects_.emplace(handle, std::move(holder));
        return handle;
    }

    /// Frees an object of this scope. False: it is none.
    bool release(const void* handle);

    Holder<CMPIContext> context;
    Holder<CMPIResult> result;
    Answer answer;
    unsigned objects_made = 0;
    unsigned calls_until_failure = 0; ///< 0: no failure ahead

  private:
    std::unordered_map<const void*, std::unique_ptr<Node>> objects_;
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

/// Makes an object in the innermost scope for a broker call. Null with ERR_FAILED: the call is to fail, or there is no
/// scope on this thread.
template <class Handle>
Handle* make(DataOf<Handle> data, CMPIStatus* status) {
    State* scope = State::innermost();
    if (scope == nullptr || !scope->count_object()) {
        report(status, CMPI_RC_ERR_FAILED);
        return nullptr;
    }
    report(status, CMPI_RC_OK);
    return scope->add<Handle>(std::move(data));
}

/// What lies behind the handle that a table's function is called on. Null with ERR_INVALID_HANDLE: nothing does.
template <class Handle>
DataOf<Handle>* open(const Handle* self, CMPIStatus* status) {
    const bool valid = self != nullptr && self->hdl != nullptr;
    report(status, valid ? CMPI_RC_OK : CMPI_RC_ERR_INVALID_HANDLE);
    return valid ? &static_cast<Holder<Handle>*>(const_cast<void*>(self->hdl))->data : nullptr;
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
    return data == nullptr ? nullptr : make<Handle>(*data, status);
}

} // namespace cmpihost
