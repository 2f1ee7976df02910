// Objects as a scope holds them. All of it lies in the scope's store and needs no destructor; the functions here copy
// it in and out.
#pragma once

#include "host/broker/store.h"
#include "host/cim/object.h"

#include <cmpift.h>

#include <memory>
#include <new>
#include <type_traits>

namespace cmpihost {

/// Elements side by side in a store.
template <class T>
struct List {
    T* first = nullptr;
    std::uint32_t count = 0;
    std::uint32_t room = 0; // elements for which there is memory

    T* begin() const { return first; }
    T* end() const { return first + count; }
    T& operator[](std::size_t index) const { return first[index]; }
};

struct HeldObject;
struct HeldValue;
using HeldArray = List<HeldValue>;

/// As Value.
struct HeldValue {
    std::variant<std::monostate, bool, std::uint64_t, std::int64_t, double, std::string_view, HeldObject*, HeldArray*>
        data;
};

/// As Property.
struct HeldProperty {
    const Name* name;
    CMPIType type; // never CMPI_chars, which is held as CMPI_string
    HeldValue value;
};
using HeldProperties = List<HeldProperty>;

/// As Object.
struct HeldObject {
    const Name* class_name;
    const Name* name_space;
    const Name* host; // null: none
    HeldProperties keys;
    HeldProperties properties;
};

/// An empty list with memory for `room` elements.
template <class T>
List<T> list_for(Store& store, std::size_t room) {
    static_assert(std::is_trivially_destructible_v<T>);
    if (room == 0)
        return {};
    return {static_cast<T*>(store.arena.allocate(room * sizeof(T))), 0, static_cast<std::uint32_t>(room)};
}

/// Gives the list's own memory back, but not what its elements hold.
template <class T>
void release_list(Store& store, const List<T>& list) {
    store.arena.release(list.first, list.room * sizeof(T));
}

/// Adds an element at the end.
template <class T>
void append(Store& store, List<T>& list, const T& element) {
    if (list.count == list.room) {
        List<T> larger = list_for<T>(store, list.room == 0 ? 4 : 2 * std::size_t{list.room});
        std::uninitialized_copy(list.begin(), list.end(), larger.first);
        larger.count = list.count;
        release_list(store, list);
        list = larger;
    }
    new (&list.first[list.count++]) T(element);
}

/// Plain to held.
HeldValue hold(Store& store, const Value& value);
HeldProperties hold(Store& store, const std::vector<Property>& properties);
HeldObject hold(Store& store, const Object& object);

/// A copy in `store` of what is held there or elsewhere.
HeldValue copy(Store& store, const HeldValue& value);
HeldArray copy(Store& store, const HeldArray& values);
HeldProperties copy(Store& store, const HeldProperties& properties);
HeldObject copy(Store& store, const HeldObject& object);

/// Held to plain.
Value plain(const HeldValue& value);
std::vector<Property> plain(const HeldProperties& properties);
Object plain(const HeldObject& object);

/// Gives back the memory of what is held in `store`, so that it serves what comes next.
void release(Store& store, const HeldValue& value);
void release(Store& store, const HeldArray& values);
void release(Store& store, const HeldProperties& properties);
void release(Store& store, const HeldObject& object);

/// The property of this name, without regard to case; null if there is none.
HeldProperty* find_by_name(const HeldProperties& properties, std::string_view name);

} // namespace cmpihost
