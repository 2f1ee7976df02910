// libswitchsim: the switch platform off the switch. This is the interface for programs that want to look at the
// simulated switch, change it, break it or count what is asked of it; the platform functions themselves are declared
// in platform/services.h.
//
// There is one switch per process. It is filled from a scenario file (docs/scenarios.md): the one that the environment
// variable SWITCHSIM_SCENARIO names, or the built-in two-site switch, on the first platform call; or by load() below.
#pragma once

#include "platform/records.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>
#include <vector>

#define SWITCHSIM_API __attribute__((visibility("default")))

namespace switchsim {

/// Interface kinds, the first byte that if_index_get_type() writes.
enum : std::uint8_t { kind_fibre_channel = 1, kind_ethernet = 2, kind_fcip = 3, kind_port_channel = 5 };

/// How long the texts are that the platform writes into buffers of its callers, bytes without the terminator. Longer
/// ones are cut when they are read.
inline constexpr std::size_t longest_text = 255;

/// A row of the port table: every interface that has an interface index, FCIP interfaces included.
struct Port {
    std::uint8_t kind = kind_ethernet;
    bool type_known = true;           ///< false: if_index_get_type() fails
    std::string name;                 ///< display name: sprintf_if_index(), fcip_if_str()
    std::string kernel_name;          ///< netcfg_print_ifname()
    std::optional<std::uint8_t> slot; ///< line card; none: if_index_get_slot() fails
    std::optional<std::uint8_t> port; ///< number on the line card; none: if_index_get_port() fails
    std::uint32_t vsan_id = 1;
    std::optional<std::uint32_t> config_word;               ///< beside the configuration's VSAN id; none: the same
    std::uint32_t mtu = 1500;                               ///< bytes
    std::string network_address;                            ///< pm_cim_get_network_address(); empty: nothing written
    bool fc_interface = false;                              ///< pm_cim_find_interface() finds it
    std::optional<std::array<std::uint8_t, 4>> subnet_mask; ///< network order
    std::optional<std::uint8_t> prefix_length;
    std::optional<std::uint32_t> eth_stats_mtu;            ///< pm_get_clear_eth_stats(); none: the call fails
    std::optional<PmPortCounters> counters;                ///< big-endian as on the switch
    std::vector<std::uint8_t> mac_statistics;              ///< reply payload from offset 0 (256 bytes); empty: no reply
    std::vector<std::uint8_t> ip_statistics;               ///< reply payload (172 bytes); empty: no reply
    std::vector<std::vector<std::uint8_t>> tcp_statistics; ///< first reply (1352 bytes), then continuations (38 bytes)
};

/// A VSAN. `domain` = its administrative-domain key; none: dm_cim_get_dmEntry() fails.
struct Vsan {
    std::string name;                  ///< vsan_cim_get_vsan_key()
    std::optional<std::string> domain; ///< vsan_cim_get_vsan_admindomain_key()
};

/// What the line-card and configuration services answer besides the tables.
struct IpConfiguration {
    std::uint32_t forwarding = 0;
    std::uint8_t default_ttl = 64;
};

using Wwn = std::array<std::uint8_t, 8>;

using LinkKey = std::pair<std::uint32_t, std::uint32_t>; ///< {entity id, link index}
using ConnectionKey = std::tuple<std::uint32_t, std::uint32_t, std::uint16_t, std::uint16_t>;

/// Where a counter is: the record by its table and key, then its place in the record.
enum class CounterTable : std::uint8_t { port_counters, mac_statistics, ip_statistics, tcp_statistics, link_errors };
struct CounterPlace {
    CounterTable table;
    LinkKey row; ///< of link_errors; else {interface index, 0}
    std::size_t offset;
    unsigned bits; ///< 32 or 64

    bool operator<(const CounterPlace& other) const {
        return std::tie(table, row, offset, bits) < std::tie(other.table, other.row, other.offset, other.bits);
    }
};

/// A counter that moves: at the end of each period by what the rate makes of it. It wraps at its width.
struct Rate {
    std::uint64_t start = 0;      ///< the value at time `since`
    std::uint64_t per_second = 0; //
    std::uint32_t period = 1000;  ///< milliseconds
    std::uint8_t jitter = 0;      ///< percent of a period's amount that a value may be ahead by
    std::uint64_t since = 0;      ///< milliseconds

    bool operator==(const Rate& other) const = default;
};

/// What happens to the switch at a time of its own clock. `command` is one that switchsim::command() takes.
struct Event {
    std::uint64_t at = 0; ///< milliseconds
    std::string command;
    std::optional<std::uint64_t> lasts; ///< milliseconds, after which it is undone
    std::string rows; ///< of "add": the rows, as a scenario has them; of "set": "KEY VALUE" in a line each
};

/// The switch: its tables, keyed as the platform keys them. Edit freely; the next platform call sees the change.
struct Switch {
    std::string name = "switch";          ///< getCSName()
    std::string system_name;              ///< CSgetName(); empty: same as name
    bool has_name = true;                 ///< false: getCSName() and CSgetName() answer null
    Wwn wwn{};                            ///< system_cim_get_switch_wwn()
    std::map<Wwn, std::string> wwn_texts; ///< cim_sprintf_wwn(); of those that are not here: the bytes in hexadecimal
    std::map<std::uint32_t, FcipEntityEntry> profiles;
    std::map<LinkKey, FcipLinkEntry> links;
    std::map<ConnectionKey, FcipTcpConnEntry> connections;
    std::map<LinkKey, FcipLinkErrors> link_errors;
    std::map<std::uint32_t, Port> ports;
    std::map<std::uint32_t, Vsan> vsans;
    std::vector<std::uint8_t> slots; ///< slots with a line card; requests to another slot's node time out
    std::optional<IpConfiguration> ip_configuration;
    std::uint64_t now = 0;  ///< the switch's clock, milliseconds
    std::uint64_t seed = 0; ///< of jitter
    std::map<CounterPlace, Rate> rates;
    std::vector<Event> events; ///< those to come, in any order
};

/// The running switch, loaded first if it was not yet. Hold the process-wide lock, or let nobody else call.
SWITCHSIM_API Switch& the_switch();

/// Replaces the switch by an empty one, removes all faults, zeroes all counts and forgets complaints.
SWITCHSIM_API void reset();

/// Replaces the switch by the scenario in `file`. On error the old switch stays and the result is one line
/// "FILE:LINE:COLUMN: KEY: what was expected", with " (and N more)" behind it if there are more; empty on success.
SWITCHSIM_API std::string load(const std::string& file);

/// The same for a scenario given as text; `origin` stands for the file's name in messages.
SWITCHSIM_API std::string load_text(std::string_view toml, const std::string& origin);

/// All that is wrong with a scenario, a line each, in order of place.
SWITCHSIM_API std::vector<std::string> scenario_errors(std::string_view toml, const std::string& origin);

/// The two-site scenario that is built in, as TOML.
SWITCHSIM_API std::string_view built_in_scenario();

/// Replaces the switch by a generated one with so many tunnels, as a scenario's [generate] does; 0 = an empty one.
SWITCHSIM_API void generate(unsigned tunnels);

/// The IPC node of a slot's line card: the address that requests for its interfaces go to.
SWITCHSIM_API std::uint32_t node_of_slot(std::uint8_t slot);

/// A request as it was sent with mts_send().
struct SentRequest {
    mts_addr destination{};
    std::uint32_t opcode = 0;
    std::vector<std::uint8_t> payload;
};

/// The last request that mts_send() took; its opcode is 0 if there was none since reset().
SWITCHSIM_API const SentRequest& last_request();

/// Messages, sent or received, that the caller holds and has not dropped.
SWITCHSIM_API unsigned undropped_messages();

// ---------------------------------------------------------------------------------------------- time and commands

/// Lets the switch's clock stand still, but for step(); the environment's SWITCHSIM_CLOCK=manual does so from the
/// start. Otherwise it goes with the wall clock.
SWITCHSIM_API void stop_clock(bool stopped);

/// Moves the clock on, and with it counters and events.
SWITCHSIM_API void step(std::uint64_t milliseconds);

/// What a command came to.
struct CommandResult {
    bool good = false;
    std::string text; ///< what was asked for; or one line that says what is wrong, and nothing was done
};

/// Looks at the switch or changes it (docs/scenarios.md lists the commands). The caller holds the process-wide lock.
/// @param words the command, word by word; of "add" the last one is the text of the rows
SWITCHSIM_API CommandResult command(const std::vector<std::string>& words);

// ---------------------------------------------------------------------------------------------- faults and counts

/// How a platform call misbehaves.
enum class Fault {
    fail,                   ///< returns `code` (or null), sets no record
    fail_leaving_record,    ///< returns `code` (or null), leaves a zeroed record of full size
    succeed_without_record, ///< returns 0 (or null), sets no record
    short_reply,            ///< replies (IPC, configuration, interface list) are cut to `code` bytes
    wrong_status,           ///< IPC replies carry the status `code`
    no_reply,               ///< requests are accepted and never answered
};

/// Every call of a function, for `nth` below.
inline constexpr unsigned every_call = 0;

/// Makes a platform function misbehave. Throws std::invalid_argument for a name that is none. @param nth its n-th call
/// from now on (1 = the next), or every_call.
/// @param code the int that a failing call returns, or what the fault says
SWITCHSIM_API void inject(std::string_view function, Fault fault, unsigned nth = every_call, int code = -1);

/// Makes the n-th platform call from now on misbehave, whatever function it is. Functions to which the fault does not
/// apply (those that cannot fail) behave as ever. The lock functions do not count.
SWITCHSIM_API void inject_at(unsigned nth, Fault fault, int code = -1);

/// Makes every call of a platform function take so much longer; 0 = no longer. Throws as inject() does.
SWITCHSIM_API void delay(std::string_view function, unsigned milliseconds);

/// Removes all faults and delays.
SWITCHSIM_API void clear_faults();

/// How often a platform function was called since the last reset() or clear_counts().
SWITCHSIM_API unsigned calls(std::string_view function);

/// All platform calls since then, the lock functions not counted.
SWITCHSIM_API unsigned total_calls();

/// The names of all platform calls since then, in order, when recording was switched on; without the lock functions.
SWITCHSIM_API void record_calls(bool on);
SWITCHSIM_API const std::vector<std::string>& recorded_calls();
SWITCHSIM_API void clear_counts();

/// Heap records that the platform handed out and nobody has freed are not counted here: the sanitizers do that.

// ---------------------------------------------------------------------------------------------- complaints

/// What callers did wrong: a call without the process-wide lock, an unknown constant, a key of the wrong shape. One
/// line each, beginning with the function's name; the first 1,000 of them.
SWITCHSIM_API const std::vector<std::string>& complaints();
SWITCHSIM_API void clear_complaints();

/// Abort the process at the first complaint instead of only noting it.
SWITCHSIM_API void complaints_are_fatal(bool on);

/// Whether the process-wide lock is held by the calling thread.
SWITCHSIM_API bool lock_held_here();

/// Whether the process-wide lock is held by anyone.
SWITCHSIM_API bool lock_held();

} // namespace switchsim

/// C entry for loaders: loads a scenario file; 0, or -1 with the one-line message in `message` (cut to `size`).
extern "C" SWITCHSIM_API int switchsim_load_scenario(const char* file, char* message, std::size_t size);
