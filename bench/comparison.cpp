#include "bench/comparison.h"

#include "platform/services.h"
#include "simulator/switchsim.h"

#include <cstring>
#include <iterator>
#include <stdexcept>
#include <string>

extern "C" CMPIInstanceMI* FCIPProvider_Create_InstanceMI(const CMPIBroker* broker, const CMPIContext* context);
extern "C" CMPIAssociationMI* FCIPProvider_Create_AssociationMI(const CMPIBroker* broker, const CMPIContext* context);

namespace bench {

namespace {

constexpr const char* name_space = "root/cimv2";

const cmpihost::Provider& provider() {
    static const cmpihost::Provider made{FCIPProvider_Create_InstanceMI(cmpihost::broker(), nullptr),
                                         FCIPProvider_Create_AssociationMI(cmpihost::broker(), nullptr)};
    return made;
}

/// Makes it so many profiles, in which the tunnels have no part.
void add_profiles(switchsim::Switch& filled, unsigned wanted) {
    const FcipEntityEntry model = filled.profiles.rbegin()->second;
    for (auto id = static_cast<std::uint32_t>(filled.profiles.size()) + 1; id <= wanted; ++id)
        filled.profiles.emplace(id, model).first->second.entity_id = id;
}

/// Makes it so many Ethernet ports, the last tunnel over the last one, so that a lookup by it walks all tunnels.
void add_ethernet_ports(switchsim::Switch& filled, unsigned wanted) {
    constexpr std::uint32_t ethernet_base = 0x83000000;
    constexpr std::uint32_t first_added = 0x83030000; // a third slot's, as the line cards of two slots have few ports
    const auto first = filled.ports.lower_bound(ethernet_base);
    const switchsim::Port model = first->second;
    const auto present = static_cast<std::uint32_t>(std::distance(first, filled.ports.end()));
    for (std::uint32_t number = present; number < wanted; ++number)
        filled.ports.emplace(first_added + number, model);
    filled.links.rbegin()->second.ethernet_if_index = filled.ports.rbegin()->first;
}

void fill_switch(unsigned tunnels) {
    static unsigned filled = 0;
    if (filled == tunnels)
        return;
    switchsim::generate(tunnels);
    add_profiles(switchsim::the_switch(), tunnels);
    add_ethernet_ports(switchsim::the_switch(), tunnels);
    filled = tunnels;
}

/// An answer and the platform calls that led to it.
struct Run {
    cmpihost::Answer answer;
    std::vector<std::string> calls;
};

Run recorded(const cmpihost::Provider& side, const cmpihost::Request& request) {
    switchsim::clear_counts();
    switchsim::record_calls(true);
    Run run;
    run.answer = cmpihost::run(side, request);
    run.calls = switchsim::recorded_calls();
    switchsim::record_calls(false);
    switchsim::clear_counts();
    return run;
}

/// Where the two sides part, for a message.
std::string first_difference(const std::vector<std::string>& provider, const std::vector<std::string>& bare) {
    std::size_t position = 0;
    while (position < provider.size() && position < bare.size() && provider[position] == bare[position])
        ++position;
    const auto at = [position](const std::vector<std::string>& calls) {
        return position < calls.size() ? calls[position] : std::string("none");
    };
    return "call " + std::to_string(position + 1) + " is " + at(bare) + ", expected " + at(provider);
}

} // namespace

Comparison::Comparison(const Case& measured, unsigned tunnels)
    : case_(measured), instance_functions_(instance_functions()), association_functions_(association_functions()),
      instance_mi_{this, &instance_functions_}, association_mi_{this, &association_functions_} {
    provider(); // opens the queue
    fill_switch(tunnels);
    wanted_ = {tunnels - 1, tunnels, switchsim::the_switch().ports.rbegin()->first};
    request_.operation = case_.operation;
    request_.path.class_name = case_.class_name;
    request_.path.name_space = name_space;
    if (case_.association != nullptr)
        request_.assoc_class = case_.association;
    if (case_.key != nullptr)
        ask_for_last();
    check();
}

void Comparison::ask_for_last() {
    cmpihost::Request names;
    names.operation = Operation::enumerate_instance_names;
    names.path = request_.path;
    request_.path = cmpihost::run(provider(), names).objects.back();
}

void Comparison::check() {
    Run ours = recorded(provider(), request_);
    const std::string where = std::string(case_.class_name) + ": ";
    if (ours.answer.objects.empty() || ours.answer.null_results > 0)
        throw std::runtime_error(where + "the provider answered nothing");
    recorded_ = std::move(ours.answer);
    for (const cmpihost::Object& object : recorded_.objects)
        replays_.emplace_back(object);
    const Run bare = recorded({&instance_mi_, &association_mi_}, request_);
    if (recorded_.objects != bare.answer.objects)
        throw std::runtime_error(where + "the bare loop gives another answer than the provider");
    if (ours.calls != bare.calls)
        throw std::runtime_error(where + "the bare loop makes other platform calls than the provider: " +
                                 first_difference(ours.calls, bare.calls));
}

void Comparison::run_provider() {
    cmpihost::run(provider(), request_);
}

void Comparison::run_bare() {
    cmpihost::run({&instance_mi_, &association_mi_}, request_);
}

/// Reads the path's keys up to the one that names the object.
void Comparison::read_key(const CMPIObjectPath* path) const {
    const CMPICount count = CMGetKeyCount(path, nullptr);
    for (CMPICount index = 0; index < count; ++index) {
        CMPIString* name = nullptr;
        const CMPIData key = CMGetKeyAt(path, index, &name, nullptr);
        if (std::strcmp(CMGetCharsPtr(name, nullptr), case_.key) != 0)
            continue;
        CMGetCharsPtr(key.value.string, nullptr);
        return;
    }
}

/// What a request asks of CMPI before the loop: class and namespace of its path, and the path's keys.
CMPIStatus Comparison::answer(const CMPIResult* result, const CMPIObjectPath* path, const char** properties) const {
    CMGetCharsPtr(CMGetClassName(path, nullptr), nullptr);
    CMGetCharsPtr(CMGetNameSpace(path, nullptr), nullptr);
    if (case_.key != nullptr)
        read_key(path);
    mutex_lock();
    BareAnswer(case_, replays_, result, properties).run(wanted_);
    mutex_unlock();
    return {CMPI_RC_OK, nullptr};
}

CMPIInstanceMIFT Comparison::instance_functions() {
    CMPIInstanceMIFT functions{};
    functions.enumerateInstances = [](CMPIInstanceMI* mi, const CMPIContext*, const CMPIResult* result,
                                      const CMPIObjectPath* path, const char** properties) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, properties);
    };
    functions.enumerateInstanceNames = [](CMPIInstanceMI* mi, const CMPIContext*, const CMPIResult* result,
                                          const CMPIObjectPath* path) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, nullptr);
    };
    functions.getInstance = functions.enumerateInstances;
    return functions;
}

CMPIAssociationMIFT Comparison::association_functions() {
    CMPIAssociationMIFT functions{};
    functions.associators = [](CMPIAssociationMI* mi, const CMPIContext*, const CMPIResult* result,
                               const CMPIObjectPath* path, const char*, const char*, const char*, const char*,
                               const char** properties) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, properties);
    };
    functions.associatorNames = [](CMPIAssociationMI* mi, const CMPIContext*, const CMPIResult* result,
                                   const CMPIObjectPath* path, const char*, const char*, const char*, const char*) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, nullptr);
    };
    functions.references = [](CMPIAssociationMI* mi, const CMPIContext*, const CMPIResult* result,
                              const CMPIObjectPath* path, const char*, const char*, const char** properties) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, properties);
    };
    functions.referenceNames = [](CMPIAssociationMI* mi, const CMPIContext*, const CMPIResult* result,
                                  const CMPIObjectPath* path, const char*, const char*) {
        return static_cast<const Comparison*>(mi->hdl)->answer(result, path, nullptr);
    };
    return functions;
}

} // namespace bench
