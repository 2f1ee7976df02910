// The fixture of the association tests: the small switch with one more tunnel, its objects' paths as they must read,
// and calls of the members.
#pragma once

#include "provider/associations/associators.h"
#include "provider/associations/references.h"
#include "tests/support/corpus.h"

#include <functional>
#include <string>
#include <variant>
#include <vector>

namespace test {

/// A tunnel whose FCIP interface has the index of the second Ethernet port, and which the first one carries: so a
/// port's key names a link, and what comes from the key differs from what comes from the link.
inline constexpr switchsim::LinkKey tunnel_8{7, 7}; // IPv6, 2001:db8::1 to 2001:db8::9

/// An object, by the keys that its path must carry; called with the class text of the path, it is the whole path.
struct Thing {
    std::string keys;
    std::string operator()(const std::string& class_name) const { return "root/cimv2:" + class_name + "." + keys; }
};

extern const Thing fcip_endpoint_1, fcip_endpoint_3, fcip_endpoint_8;
extern const Thing ip_endpoint_1, ip_endpoint_3, ip_endpoint_7;
extern const Thing tcp_endpoint_3;
extern const Thing remote_fcip_port_3, remote_ip_port_3, remote_tcp_port_3;
extern const Thing instance_of_tunnel_3; ///< settings and statistics
extern const Thing profile_3;
extern const Thing lan_endpoint_1, lan_endpoint_2;
extern const Thing statistics_of_ethernet_2, statistics_of_ethernet_1;
extern const Thing ethernet_port_1, ethernet_port_2, fc_port_of_tunnel_3;
extern const Thing vsan_1, physical_switch;

/// A source class with the key of one object of it: of tunnel 3 where it can be.
struct Source {
    const char* class_name;
    const char* key_name;
    const char* key_value;

    cmpihost::Object path() const { return path_of(class_name, {{key_name, key_value}}); }
};

/// The fifteen source classes that have a key.
const std::vector<Source>& sources();
const Source& source(const std::string& class_name);

/// How the member reads the key, by what it prints while it does.
namespace key {
inline constexpr const char* tunnel = "Entering get_fcip_link_entry_from\ntunnel id : ";
inline constexpr const char* if_index =
    "Entering get_fcip_link_entry_from\n Function : get_fcip_link_entry_from Line 76 \nif_index : ";
inline constexpr const char* if_index_only = "Entering get_fcip_link_entry_from\nif_index : ";
inline constexpr const char* ethernet =
    "Entering get_fcip_link_entry_from\n Function : get_fcip_link_entry_from Line 113 \nif_index : ";
inline constexpr const char* entity = "Entering get_fcip_link_entry_from\nEntry Found";
inline constexpr const char* peer_address =
    "Entering get_fcip_link_entry_from\n Function : get_fcip_link_entry_from Line 151 \nif_index : 0 \n";
inline constexpr const char* peer_if_index =
    "Entering get_fcip_link_entry_from\n Function : get_fcip_link_entry_from Line 193 \nif_index : 0 \nfcipifidx : ";
inline constexpr const char* ethernet_token = "Entering get_eth_ifidx_from_keyvalue\n";
inline constexpr const char* number = ""; // asks nobody
} // namespace key

/// Whether a member's trace shows that it read the key so.
bool reads_key(const std::string& trace, const std::string& before, const char* key);

/// What a call of a member came to.
struct Outcome {
    int status = 0;
    cmpihost::Answer answer;
};

class AssociationTest : public RequestTest {
  protected:
    void SetUp() override;

    /// Calls a member as the operations do; what it printed is in `trace`.
    Outcome run(fcip::associators_member* member, const char* key_value, const char* association_class);
    Outcome run(fcip::associator_names_member* member, const char* key_value, const char* association_class);
    Outcome run(fcip::references_member* member, const char* key_value, const char* association_class);
    Outcome run(fcip::reference_names_member* member, const char* key_value, const char* association_class);

    /// What `f`, called under the lock, returned through the scope's result.
    Outcome outcome_of(const std::function<int()>& f);

    FcipLinkEntry* tunnel(const switchsim::LinkKey& key) { return &the_switch().links.at(key); }
};

/// A member under its name, callable whatever its family.
struct Member {
    std::string name;
    std::variant<fcip::associators_member*, fcip::associator_names_member*, fcip::references_member*,
                 fcip::reference_names_member*>
        function;

    bool is_associator() const { return function.index() < 2; } ///< also of the names
};

/// All 62 members.
const std::vector<Member>& members();

/// The object's class and its keys or properties, one per line.
std::string text_of_object(const cmpihost::Object& object);

} // namespace test
