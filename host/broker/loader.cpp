#include "host/broker/loader.h"

#include <dlfcn.h>
#include <link.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <fstream>
#include <set>

namespace cmpihost {

namespace {

constexpr CMPIVersion newest_version = 200;
const std::string generic_prefix = "_Generic";
constexpr std::array kinds{"_Create_InstanceMI", "_Create_AssociationMI", "_Create_MethodMI", "_Create_PropertyMI"};
constexpr const char* indication_kind = "_Create_IndicationMI";
constexpr const char* scenario_function = "switchsim_load_scenario";

/// As servers call factories: those of version 100 take the first two arguments and do not see the third.
template <class Mi>
using Factory = Mi* (*)(const CMPIBroker*, const CMPIContext*, CMPIStatus*);

template <class Mi>
using GenericFactory = Mi* (*)(const CMPIBroker*, const CMPIContext*, const char* name, CMPIStatus*);

using LoadScenario = int (*)(const char* file, char* message, std::size_t size);

std::string one_line(std::string text) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    return text;
}

std::string last_dl_error() {
    const char* text = dlerror();
    return text == nullptr ? "unknown error" : one_line(text);
}

/// The name to give to dlopen(), which looks for names without a slash in the system's folders only.
std::string path_of(const std::string& file) {
    const bool in_working_folder = file.find('/') == std::string::npos && access(file.c_str(), F_OK) == 0;
    return in_working_folder ? "./" + file : file;
}

void* open_library(const std::string& file) {
    const std::string path = path_of(file);
    if (path.find('/') != std::string::npos && access(path.c_str(), F_OK) != 0)
        throw LoadError("provider library " + file + ": no such file");
    void* handle = dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        throw LoadError("provider library " + file + ": cannot be loaded: " + last_dl_error());
    return handle;
}

void check_version(const std::string& what, int version) {
    if (version < CMPIVersion100 || version > newest_version)
        throw LoadError(what + " is " + std::to_string(version) + ", expected 100 to " +
                        std::to_string(newest_version));
}

/// Calls a factory of the name's own, or else the one for any name; null if the library has neither.
template <class Mi>
Mi* create_mi(void* library, const std::string& prefix, const std::string& kind) {
    void* own = dlsym(library, (prefix + kind).c_str());
    void* generic = own == nullptr ? dlsym(library, (generic_prefix + kind).c_str()) : nullptr;
    if (own == nullptr && generic == nullptr)
        return nullptr;
    const std::string name = (own != nullptr ? prefix : generic_prefix) + kind;
    const CallScope scope;
    CMPIStatus status{CMPI_RC_OK, nullptr};
    Mi* mi = own != nullptr
                 ? reinterpret_cast<Factory<Mi>>(own)(broker(), scope.context(), &status)
                 : reinterpret_cast<GenericFactory<Mi>>(generic)(broker(), scope.context(), prefix.c_str(), &status);
    if (mi == nullptr)
        throw LoadError(name + "() made no MI");
    if (mi->ft == nullptr)
        throw LoadError("the MI of " + name + "() has no function table");
    check_version("ftVersion of the MI of " + name + "()", mi->ft->ftVersion);
    check_version("miVersion of the MI of " + name + "()", mi->ft->miVersion);
    return mi;
}

/// The library's file as the loader found it.
std::string file_of(void* library) {
    const link_map* map = nullptr;
    return dlinfo(library, RTLD_DI_LINKMAP, &map) == 0 && map != nullptr ? map->l_name : "";
}

/// All functions of the library that are named like factories, in alphabetical order.
std::set<std::string> factories_of(void* library) {
    std::ifstream file(file_of(library), std::ios::binary);
    std::set<std::string> names;
    for (std::string text; std::getline(file, text, '\0');) {
        const std::size_t kind = text.find("_Create_");
        const bool is_name = kind != std::string::npos && text.ends_with("MI") && text.size() < 256;
        if (is_name && dlsym(library, text.c_str()) != nullptr)
            names.insert(text);
    }
    return names;
}

/// Why nothing could be created.
std::string missing_factories(void* library, const std::string& name) {
    if (dlsym(library, (name + indication_kind).c_str()) != nullptr)
        return name + indication_kind + "() makes a provider of indications, which are not served";
    std::string missing = "has none of " + name;
    for (std::size_t i = 0; i < kinds.size(); ++i)
        missing += (i == 0 ? "" : ", ") + std::string(kinds[i]);
    std::string there;
    for (const std::string& factory : factories_of(library))
        there += (there.empty() ? "; it has " : ", ") + factory;
    return missing + there;
}

/// Whether the MI asks for its library to stay loaded.
template <class Mi>
bool clean_up(Mi* mi) {
    if (mi == nullptr || mi->ft->cleanup == nullptr)
        return false;
    const CallScope scope;
    const CMPIStatus status = mi->ft->cleanup(mi, scope.context(), 1);
    return status.rc == CMPI_RC_DO_NOT_UNLOAD || status.rc == CMPI_RC_NEVER_UNLOAD;
}

} // namespace

Library::Library(const std::string& file) : file_(file), handle_(open_library(file)) {}

Library::~Library() {
    const bool instances_stay = clean_up(provider_.instance_mi);
    const bool associations_stay = clean_up(provider_.association_mi);
    const bool methods_stay = clean_up(provider_.method_mi);
    const bool properties_stay = clean_up(provider_.property_mi);
    if (!instances_stay && !associations_stay && !methods_stay && !properties_stay)
        dlclose(handle_);
}

void* Library::symbol(const std::string& name) const {
    return dlsym(handle_, name.c_str());
}

const void* Library::platform() const {
    return symbol(scenario_function);
}

void Library::load_scenario(const std::string& file) {
    void* function = symbol(scenario_function);
    if (function == nullptr)
        throw LoadError("provider library " + file_ +
                        ": takes no scenario (it does not come with switchsim_load_scenario())");
    std::array<char, 1024> message{};
    if (reinterpret_cast<LoadScenario>(function)(file.c_str(), message.data(), message.size()) == 0)
        return;
    message.back() = '\0';
    throw LoadError(message.front() == '\0' ? "scenario " + file + ": cannot be loaded" : one_line(message.data()));
}

void Library::create(const std::string& name) {
    provider_.instance_mi = create_mi<CMPIInstanceMI>(handle_, name, kinds[0]);
    provider_.association_mi = create_mi<CMPIAssociationMI>(handle_, name, kinds[1]);
    provider_.method_mi = create_mi<CMPIMethodMI>(handle_, name, kinds[2]);
    provider_.property_mi = create_mi<CMPIPropertyMI>(handle_, name, kinds[3]);
    if (!provider_.instance_mi && !provider_.association_mi && !provider_.method_mi && !provider_.property_mi)
        throw LoadError("provider library " + file_ + ": " + missing_factories(handle_, name));
}

} // namespace cmpihost
