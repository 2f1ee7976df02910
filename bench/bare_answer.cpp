#include "bench/bare_answer.h"

#include "bench/calls.h"

namespace bench {

bool gives_instances(Operation operation) {
    return operation != Operation::enumerate_instance_names && operation != Operation::associator_names &&
           operation != Operation::reference_names;
}

void BareAnswer::run(const Wanted& wanted) {
    switch (case_.walk) {
    case Walk::every_link:
        return walk_links();
    case Walk::every_profile:
        return walk_profiles();
    case Walk::every_port:
    case Walk::every_port_with_statistics:
        return walk_ports();
    case Walk::last_link:
    case Walk::last_link_by_address:
        return find_link(wanted.link_index);
    case Walk::last_profile:
        return find_profile(wanted);
    case Walk::last_port:
        return read_port(wanted.port);
    }
}

void BareAnswer::answer(const Row& row) {
    case_.calls(row);
    const Replay& object = objects_[next_++];
    if (gives_instances(case_.operation))
        object.return_instance(cmpihost::broker(), result_, case_.filtered, properties_);
    else
        object.return_path(cmpihost::broker(), result_);
}

void BareAnswer::walk_links() {
    for_each_link([this](const FcipLinkEntry& link) {
        answer({&link, nullptr, 0});
        return true;
    });
}

void BareAnswer::walk_profiles() {
    std::uint32_t entity_id = 0;
    while (FcipEntityEntry* profile = next_profile(entity_id)) {
        answer({nullptr, profile, 0});
        entity_id = profile->entity_id;
        std::free(profile);
    }
}

void BareAnswer::walk_ports() {
    std::uint32_t if_index = 0x82FFFFFF; // behind it come the Ethernet ports
    while (PmPortInfo* record = port(platform_next_port, if_index)) {
        if_index = if_index_of(*record);
        const bool is_ethernet = kind_of(if_index) == 2;
        if (is_ethernet)
            answer({nullptr, nullptr, if_index});
        std::free(record);
        if (!is_ethernet && case_.walk == Walk::every_port)
            return;
    }
}

void BareAnswer::find_link(std::uint32_t link_index) {
    for_each_link([&](const FcipLinkEntry& link) {
        if (case_.walk == Walk::last_link_by_address)
            write_address(link.remote_address);
        if (link.link_index != link_index)
            return true;
        answer({&link, nullptr, 0});
        return false;
    });
}

void BareAnswer::find_profile(const Wanted& wanted) {
    bench::find_link(wanted.link_index);
    FcipEntityEntry* found = nullptr;
    std::uint32_t entity_id = 0;
    while (FcipEntityEntry* profile = next_profile(entity_id)) {
        entity_id = profile->entity_id;
        if (entity_id == wanted.profile)
            found = profile;
        else
            std::free(profile);
    }
    answer({nullptr, found, 0});
    std::free(found);
}

void BareAnswer::read_port(std::uint32_t if_index) {
    PmPortInfo* record = port(platform_exact, if_index);
    answer({nullptr, nullptr, if_index});
    std::free(record);
}

} // namespace bench
