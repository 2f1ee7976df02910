// The broker as a library: gives providers the CMPI function tables, runs one MI operation per call, and hands back
// what the provider returned as plain values.
#pragma once

#include "host/cim/object.h"

#include <cmpift.h>

#include <functional>

namespace cmpihost {

/// What one MI operation answered.
struct Answer {
    int rc = 0;                         ///< CMPIrc
    std::optional<std::string> message; ///< the status's text
    std::vector<Object> objects;        ///< instances or paths, in the order returned
    std::optional<Property>
        returned; ///< what a method or get_property returned, without a name; the last one of several
    std::vector<Property> arguments; ///< output parameters of a method
    unsigned null_results = 0;       ///< null instances or paths handed to the result
    unsigned invalid_results = 0;    ///< pointers handed to the result that are no object of this call
    unsigned late_results = 0;       ///< instances, paths and values returned after returnDone
    bool done = false;               ///< the provider called returnDone
};

/// Which operation to run, with its arguments. Unset filters reach the provider as null.
struct Request {
    enum class Operation {
        enumerate_instances,
        enumerate_instance_names,
        get_instance,
        associators,
        associator_names,
        references,
        reference_names,
        create_instance,
        modify_instance,
        delete_instance,
        exec_query,
        invoke_method,
        set_property,
        get_property,
    };
    Operation operation = Operation::enumerate_instances;
    Object path;                             ///< class name, namespace and keys
    std::optional<std::string> assoc_class;  ///< associators; for references the result class
    std::optional<std::string> result_class; ///< associators
    std::optional<std::string> role;
    std::optional<std::string> result_role;
    std::optional<std::vector<std::string>> properties; ///< the property list; unset = all
    /// Of the instance to create, or to change: its class and keys are those of the path. Of set_property the one to
    /// set, of get_property the name alone.
    std::vector<Property> values;
    std::string query; ///< exec_query
    std::string query_language = "WQL";
    std::string method;              ///< invoke_method
    std::vector<Property> arguments; ///< input parameters of the method
};

/// Whether an operation answers with paths instead of instances.
bool gives_paths(Request::Operation operation);

/// Whether an operation goes from an object along associations.
bool is_traversal(Request::Operation operation);

/// Whether an operation answers with a value instead of objects.
bool gives_value(Request::Operation operation);

struct HeldObject;

/// Takes an instance or path at the moment when the provider returns it. What it is given ends with the call at the
/// latest, and may change once the sink has returned (host/broker/held.h). It must not throw.
using Sink = std::function<void(const HeldObject& object, bool is_instance)>;

/// Called for every instance and path that a provider returns, before the broker lets go of it.
using Observer = void (*)(const Object& object, bool is_instance, void* closure);

/// The broker's CMPI handle. Lives as long as the process; its function tables are complete.
const CMPIBroker* broker();

/// Everything that is made through the broker on this thread belongs to the innermost scope and is freed at its end.
/// An MI operation gets one of its own; code that calls a provider's functions directly opens one itself.
class CallScope {
  public:
    CallScope();
    ~CallScope();
    CallScope(const CallScope&) = delete;
    CallScope& operator=(const CallScope&) = delete;

    const CMPIContext* context() const; ///< with the entries that every call carries
    const CMPIResult* result() const;   ///< collects into answer()
    Answer& answer();                   ///< what was returned through result() so far

    /// Broker calls that make an object (newInstance, newObjectPath, newString, newArray, ...) in this scope so far.
    unsigned objects_made() const;

    /// The n-th such call from now on answers null with CMPI_RC_ERR_FAILED (1 = the next); 0 = none.
    void fail_object(unsigned nth);

    class State;

  private:
    std::unique_ptr<State> state_;
    State* outer_;
};

/// A path as the broker's own object. Belongs to the innermost scope of this thread.
CMPIObjectPath* new_path(const Object& path);

/// What an instance or path of the innermost scope holds. The pointer must be one of that scope's objects.
Object describe(const CMPIInstance* instance);
Object describe(const CMPIObjectPath* path);

/// Whether the pointer is a live object of the innermost scope (never dereferenced).
bool is_live(const void* object);

/// The management interfaces of a provider. Each may be null: its operations then answer NOT_SUPPORTED, and methods
/// METHOD_NOT_AVAILABLE.
struct Provider {
    CMPIInstanceMI* instance_mi = nullptr;
    CMPIAssociationMI* association_mi = nullptr;
    CMPIMethodMI* method_mi = nullptr;
    CMPIPropertyMI* property_mi = nullptr;
};

/// Runs one operation on the calling thread, in a scope of its own.
/// @param fail_object as CallScope::fail_object, for that scope
Answer run(const Provider& provider, const Request& request, unsigned fail_object = 0);

/// The same, with the objects given to the sink, and none in the answer.
Answer run(const Provider& provider, const Request& request, const Sink& sink);

/// Sets the observer of all returned objects, of all threads; null removes it.
void observe(Observer observer, void* closure);

/// "ERR_NOT_SUPPORTED" without its prefix, "NOT_SUPPORTED", for 7; "OK" for 0; "UNKNOWN" outside the standard.
std::string_view rc_name(int rc);

/// Whether a return code says that the provider does not serve what it was asked for.
bool is_not_served(int rc);

/// "uint16", "string[]", "reference", ... of a CMPI type code; chars count as string.
std::string type_name(CMPIType type);

} // namespace cmpihost
