// The switch's own provider, for CIM servers off the switch: what other providers of a switch serve. It only reads.
#include "simulator/live.h"
#include "simulator/provider/switch_classes.h"

#include "platform/services.h"

#include <cmpimacs.h>

#include <exception>
#include <optional>
#include <string_view>

#include <strings.h>

namespace switchsim {

namespace {

const CMPIBroker* own_broker = nullptr;

constexpr CMPIStatus ok{CMPI_RC_OK, nullptr};
constexpr CMPIStatus not_supported{CMPI_RC_ERR_NOT_SUPPORTED, nullptr};

CMPIStatus status_of(CMPIrc rc, const char* text) {
    return {rc, CMNewString(own_broker, text, nullptr)};
}

CMPIStatus no_memory() {
    return status_of(CMPI_RC_ERR_FAILED, "not enough memory");
}

CMPIStatus not_found() {
    return status_of(CMPI_RC_ERR_NOT_FOUND, "the switch has no such object");
}

/// Holds the process-wide lock, so that no request sees half of a change.
class Locked {
  public:
    Locked() { mutex_lock(); }
    ~Locked() { mutex_unlock(); }
    Locked(const Locked&) = delete;
    Locked& operator=(const Locked&) = delete;
};

const char* text_of(const CMPIString* text) {
    const char* chars = text ? CMGetCharPtr(text) : nullptr;
    return chars ? chars : "";
}

/// Runs a request for a class, if that is served.
/// @param body makes the status of (switch's class, class to make objects of, what the request sees)
template <class Body>
CMPIStatus answer(const CMPIObjectPath* path, Body body) noexcept {
    try {
        const SwitchClass* row = find_class(text_of(CMGetClassName(path, nullptr)));
        if (!row)
            return not_supported;
        const Locked locked;
        const Switch* contents = present_switch();
        if (!contents)
            return status_of(CMPI_RC_ERR_FAILED, "the switch's scenario could not be loaded");
        Look look(*contents);
        return body(*row, CimClass{row->name, text_of(CMGetNameSpace(path, nullptr)), own_broker}, look);
    } catch (const std::exception&) {
        return no_memory();
    }
}

/// Hands all objects of a class to the server.
/// @param give makes the object of an id, and returns it; false: the broker has no memory
template <class Give>
CMPIStatus enumerate(const CMPIResult* result, const SwitchClass& row, const Look& look, Give give) {
    for (const std::string& id : row.ids(look.contents))
        if (!give(id))
            return no_memory();
    CMReturnDone(result);
    return ok;
}

CMPIStatus EnumInstanceNames(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result,
                             const CMPIObjectPath* path) noexcept {
    return answer(path, [result](const SwitchClass& row, const CimClass& of, const Look& look) {
        return enumerate(result, row, look, [&](const std::string& id) {
            const CMPIObjectPath* made = row.path(of, id);
            return made && (CMReturnObjectPath(result, made), true);
        });
    });
}

CMPIStatus EnumInstances(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result, const CMPIObjectPath* path,
                         const char** properties) noexcept {
    return answer(path, [&](const SwitchClass& row, const CimClass& of, Look& look) {
        return enumerate(result, row, look, [&](const std::string& id) {
            const CMPIInstance* made = row.instance(look, of, id, properties);
            return made && (CMReturnInstance(result, made), true);
        });
    });
}

/// Nothing if there is no such key, or if it is no text.
std::optional<std::string> key_text(const CMPIObjectPath* path, const char* name) {
    const CMPIData key = CMGetKey(path, name, nullptr);
    if (key.type != CMPI_string || CMIsNullValue(key))
        return std::nullopt;
    return text_of(key.value.string);
}

bool names_class(std::string_view key) {
    constexpr std::string_view ending = "ClassName";
    return key.size() > ending.size() &&
           strncasecmp(key.data() + key.size() - ending.size(), ending.data(), ending.size()) == 0;
}

/// Whether each key of `asked` is one of `own`, with the same value: names of classes in any case.
bool has_keys_of(const CMPIObjectPath* asked, const CMPIObjectPath* own) {
    const CMPICount count = CMGetKeyCount(asked, nullptr);
    for (CMPICount at = 0; at < count; ++at) {
        CMPIString* name = nullptr;
        CMGetKeyAt(asked, at, &name, nullptr);
        const auto wanted = key_text(asked, text_of(name));
        const auto is = key_text(own, text_of(name));
        if (!wanted || !is)
            return false;
        if (names_class(text_of(name)) ? strcasecmp(wanted->c_str(), is->c_str()) != 0 : *wanted != *is)
            return false;
    }
    return true;
}

CMPIStatus GetInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult* result, const CMPIObjectPath* path,
                       const char** properties) noexcept {
    return answer(path, [&](const SwitchClass& row, const CimClass& of, Look& look) {
        const std::optional<std::string> id = key_text(path, row.id_key);
        if (!id || !row.has(look.contents, *id))
            return not_found();
        const CMPIObjectPath* own = row.path(of, *id);
        if (!own)
            return no_memory();
        if (!has_keys_of(path, own))
            return not_found();
        const CMPIInstance* made = row.instance(look, of, *id, properties);
        if (!made)
            return no_memory();
        CMReturnInstance(result, made);
        CMReturnDone(result);
        return ok;
    });
}

CMPIStatus Cleanup(CMPIInstanceMI*, const CMPIContext*, CMPIBoolean) noexcept {
    return ok;
}

CMPIStatus CreateInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                          const CMPIInstance*) noexcept {
    return not_supported;
}

CMPIStatus ModifyInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*,
                          const CMPIInstance*, const char**) noexcept {
    return not_supported;
}

CMPIStatus DeleteInstance(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*) noexcept {
    return not_supported;
}

CMPIStatus ExecQuery(CMPIInstanceMI*, const CMPIContext*, const CMPIResult*, const CMPIObjectPath*, const char*,
                     const char*) noexcept {
    return not_supported;
}

consteval CMPIInstanceMIFT make_functions() {
    CMPIInstanceMIFT table{};
    table.ftVersion = 100;
    table.miVersion = 100;
    table.miName = "instanceswitchsimProvider";
    table.cleanup = Cleanup;
    table.enumerateInstanceNames = EnumInstanceNames;
    table.enumerateInstances = EnumInstances;
    table.getInstance = GetInstance;
    table.createInstance = CreateInstance;
    table.modifyInstance = ModifyInstance;
    table.deleteInstance = DeleteInstance;
    table.execQuery = ExecQuery;
    return table;
}

CMPIInstanceMIFT functions = make_functions();
CMPIInstanceMI instance_mi{nullptr, &functions};

} // namespace

} // namespace switchsim

/// Keeps the broker. @return the instance MI, always
extern "C" SWITCHSIM_API CMPIInstanceMI* switchsimProvider_Create_InstanceMI(const CMPIBroker* broker,
                                                                             const CMPIContext* /*context*/) noexcept {
    switchsim::own_broker = broker;
    return &switchsim::instance_mi;
}
