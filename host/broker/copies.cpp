// Copies of what objects hold, and the end of them.
#include "host/broker/scope.h"

namespace cmpihost {

Text copy(Store& store, const Text& text) {
    return text_in(store, text.chars);
}

InstanceData copy(Store& store, const InstanceData& instance) {
    InstanceData copied{copy(store, instance.object), list_for<Name>(store, instance.filter.count), instance.filtered};
    for (const Name& name : instance.filter)
        append(store, copied.filter, *store.name(name.text));
    return copied;
}

ArrayData copy(Store& store, const ArrayData& array) {
    return {array.type, copy(store, array.values)};
}

EnumerationData copy(Store& store, const EnumerationData& enumeration) {
    EnumerationData copied{enumeration.type, list_for<HeldObject>(store, enumeration.objects.count), enumeration.next};
    for (const HeldObject& object : enumeration.objects)
        append(store, copied.objects, copy(store, object));
    return copied;
}

DateTime copy(Store&, const DateTime& time) {
    return time;
}

void release(Store& store, const Text& text) {
    store.arena.release(text.chars);
}

void release(Store& store, const InstanceData& instance) {
    release(store, instance.object);
    release_list(store, instance.filter);
}

void release(Store& store, const ArrayData& array) {
    release(store, array.values);
}

void release(Store& store, const EnumerationData& enumeration) {
    for (const HeldObject& object : enumeration.objects)
        release(store, object);
    release_list(store, enumeration.objects);
}

void release(Store&, const DateTime&) {}

} // namespace cmpihost
