#include "host/broker/loader.h"

#include <dlfcn.h>
#include <unistd.h>

#include <algorithm>
#include <array>

namespace cmpihost {

namespace {

constexpr CMPIVersion newest_version = 200;
constexpr const char* scenario_function = "switchsim_load_scenario";

/// As servers call factories: those of version 100 take the first two arguments and do not see the third.
template <class Mi>
using Factory = Mi* (*)(const CMPIBroker*, const CMPIContext*, CMPIStatus*);

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

/// Calls a factory; null if the library has none.
template <class Mi>
Mi* create_mi(void* factory, const std::string& name) {
    if (factory == nullptr)
        return nullptr;
    const CallScope scope;
    CMPIStatus status{CMPI_RC_OK, nullptr};
    Mi* mi = reinterpret_cast<Factory<Mi>>(factory)(broker(), scope.context(), &status);
    if (mi == nullptr)
        throw LoadError(name + "() made no MI");
    if (mi->ft == nullptr)
        throw LoadError("the MI of " + name + "() has no function table");
    check_version("ftVersion of the MI of " + name + "()", mi->ft->ftVersion);
    check_version("miVersion of the MI of " + name + "()", mi->ft->miVersion);
    return mi;
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
    if (!instances_stay && !associations_stay && !methods_stay)
        dlclose(handle_);
}

void* Library::symbol(const std::string& name) const {
    return dlsym(handle_, name.c_str());
}

bool Library::takes_scenario() const {
    return symbol(scenario_function) != nullptr;
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
    const std::string instance_factory = name + "_Create_InstanceMI";
    const std::string association_factory = name + "_Create_AssociationMI";
    const std::string method_factory = name + "_Create_MethodMI";
    void* instances = symbol(instance_factory);
    void* associations = symbol(association_factory);
    void* methods = symbol(method_factory);
    if (instances == nullptr && associations == nullptr && methods == nullptr)
        throw LoadError("provider library " + file_ + ": has neither " + instance_factory + " nor " +
                        association_factory + " nor " + method_factory);
    provider_.instance_mi = create_mi<CMPIInstanceMI>(instances, instance_factory);
    provider_.association_mi = create_mi<CMPIAssociationMI>(associations, association_factory);
    provider_.method_mi = create_mi<CMPIMethodMI>(methods, method_factory);
}

} // namespace cmpihost
