#include "simulator/call.h"
#include "simulator/state.h"
#include "simulator/table.h"

using namespace switchsim;

namespace {

constexpr std::size_t entry_size = 4096;

/// How the entries of both services look: an entry that was never filled has no mark.
struct Entry {
    std::uint32_t vsan_id;
    std::uint32_t mark;
    char text[text_size];
};
static_assert(sizeof(Entry) <= entry_size);

constexpr std::uint32_t vsan_mark = 0x5653414E;
constexpr std::uint32_t domain_mark = 0x444F4D4E;

void fill(void* storage, std::uint32_t vsan_id, std::uint32_t mark, std::string_view text) {
    Entry entry{vsan_id, mark, {}};
    write_text(entry.text, text);
    std::memcpy(storage, &entry, sizeof entry);
}

/// Writes an entry's text as the key; an entry that was not filled has none.
int write_key(char* key, const void* storage, std::uint32_t mark) {
    Entry entry;
    std::memcpy(&entry, storage, sizeof entry);
    if (entry.mark != mark)
        return failed;
    write_text(key, entry.text);
    return 0;
}

const Vsan* find_vsan(std::uint32_t vsan_id) {
    const auto* row = find_row(current().vsans, true, vsan_id);
    return row ? &row->second : nullptr;
}

} // namespace

int vsan_cim_get_vsanEntry(mts_queue queue, int operation, void* vsan_entry) {
    const Call call(Function::vsan_cim_get_vsanEntry);
    if (!call.expect_queue(queue) || !call.expect("the operation", operation, {platform_exact}) ||
        !call.expect_pointer("the VSAN entry", vsan_entry))
        return failed;
    std::uint32_t vsan_id = 0;
    std::memcpy(&vsan_id, vsan_entry, sizeof vsan_id);
    if (const auto fault = call.fault_on_storage(vsan_entry, entry_size))
        return *fault;
    const Vsan* vsan = find_vsan(vsan_id);
    if (!vsan)
        return failed;
    fill(vsan_entry, vsan_id, vsan_mark, vsan->name);
    return 0;
}

int vsan_cim_get_vsan_key(char* key, const void* vsan_entry, const void* domain_entry) {
    const Call call(Function::vsan_cim_get_vsan_key);
    if (!call.expect_pointer("the key", key) || !call.expect_pointer("the VSAN entry", vsan_entry) ||
        !call.expect_pointer("the domain entry", domain_entry))
        return failed;
    if (const auto fault = call.fault_on_storage(key, text_size))
        return *fault;
    return write_key(key, vsan_entry, vsan_mark);
}

int vsan_cim_get_vsan_admindomain_key(char* key, const void* domain_entry) {
    const Call call(Function::vsan_cim_get_vsan_admindomain_key);
    if (!call.expect_pointer("the key", key) || !call.expect_pointer("the domain entry", domain_entry))
        return failed;
    if (const auto fault = call.fault_on_storage(key, text_size))
        return *fault;
    return write_key(key, domain_entry, domain_mark);
}

int dm_cim_get_dmEntry(mts_queue queue, std::uint32_t vsan_id, int constant_1, void* domain_entry) {
    const Call call(Function::dm_cim_get_dmEntry);
    if (!call.expect_queue(queue) || !call.expect("the constant", constant_1, {1}) ||
        !call.expect_pointer("the domain entry", domain_entry))
        return failed;
    if (const auto fault = call.fault_on_storage(domain_entry, entry_size))
        return *fault;
    const Vsan* vsan = find_vsan(vsan_id);
    if (!vsan || !vsan->domain)
        return failed;
    fill(domain_entry, vsan_id, domain_mark, *vsan->domain);
    return 0;
}
