// Object paths as elements, straight from what the broker holds.
#pragma once

#include "host/broker/held.h"
#include "host/cimxml/write_value.h"

#include <deque>

namespace cmpihost::server {

/// Appends a value of a type that has text, escaped. False: nothing was appended, the value is NULL or no text.
bool append_held_text(std::string& out, CMPIType type, const HeldValue& value);

/// The same value in the form that the writers of cimxml take.
Property plain_property(std::string_view name, const HeldProperty& property);

/// Writes what cimxml's writers of paths do. What all objects of a class have in common is put together once and
/// copied. For the objects of one scope: it knows names by their addresses.
class PathEncoder {
  public:
    /// @param place must outlive the encoder
    explicit PathEncoder(const cimxml::ReplyPlace& place) : place_(place) {}

    void append_instance_name(std::string& out, const HeldObject& object);
    void append_instance_path(std::string& out, const HeldObject& object);
    void append_value_reference(std::string& out, const HeldObject& object);

  private:
    /// A key, and where it stood in the first object.
    struct Key {
        std::string name; ///< as written
        const Name* held_name;
        bool in_keys; ///< among the keys, or else the properties
        std::uint32_t index;
        CMPIType type;
        std::size_t alternative; ///< of the value
        std::string begin;       ///< up to the value; empty where cimxml's writer is to be asked
    };

    /// What paths with the same class, namespace, host and names of keys have in common. Never changes.
    struct Plan {
        const Name* class_name;
        const Name* name_space;
        const Name* host;
        std::vector<const Name*> key_names;
        std::vector<Key> keys; ///< in the order of writing
        std::string name_begin;
        std::string path_begin; ///< the same, with the namespace path before it
    };

    const Plan* plan_for(const HeldObject& object);
    Plan make_plan(const HeldObject& object) const;
    static Key key_of(const HeldObject& object, std::string_view name);
    void append_keys(std::string& out, const Plan& plan, const HeldObject& object);
    void append_key(std::string& out, const Key& key, const HeldObject& object);

    const cimxml::ReplyPlace& place_;
    std::deque<Plan> plans_; // references to elements stay valid while others are added
    const Plan* last_ = nullptr;
};

} // namespace cmpihost::server
