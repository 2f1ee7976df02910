// Kernel counter files: the first byte chooses the file's kind.
#include "provider/access/kernel_counters.h"
#include "fuzz/invariant.h"

#include <algorithm>

namespace {

constexpr std::uint32_t untouched = 0xA5A5A5A5;

/// The bytes as an open file; never empty, as the C library does not open empty memory.
class MemoryFile {
  public:
    MemoryFile(const std::uint8_t* data, std::size_t size)
        : file_(fmemopen(const_cast<std::uint8_t*>(data), size, "r")) {
        fuzz::require(file_ != nullptr, "memory opens as a file");
    }
    ~MemoryFile() { std::fclose(file_); }
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;
    std::FILE* get() const { return file_; }

  private:
    std::FILE* file_;
};

/// A record with a word behind it that nobody may write.
template <typename Counters>
struct Guarded {
    Counters counters;
    std::uint32_t guard = untouched;
    Guarded() { counters.fill(untouched); }
    ~Guarded() { fuzz::require(guard == untouched, "nothing is written behind a record"); }
    Guarded(const Guarded&) = delete;
    Guarded& operator=(const Guarded&) = delete;
};

void read_ipv4(std::FILE* file, bool all) {
    Guarded<fcip::ipv4_counters> ip;
    Guarded<fcip::icmp_counters> icmp;
    Guarded<fcip::tcp_counters> tcp;
    Guarded<fcip::udp_counters> udp;
    fcip::read_ip_counters(file, ip.counters.data(), all ? icmp.counters.data() : nullptr, tcp.counters.data(),
                           all ? udp.counters.data() : nullptr);
    const auto is_untouched = [](std::uint32_t word) { return word == untouched; };
    fuzz::require(
        all || (std::ranges::all_of(icmp.counters, is_untouched) && std::ranges::all_of(udp.counters, is_untouched)),
        "a record that is not given is not filled");
}

void read_ipv6(std::FILE* file, bool per_interface) {
    Guarded<fcip::ipv6_counters> ip;
    Guarded<fcip::icmpv6_counters> icmp;
    fcip::read_ipv6_counters(file, per_interface, ip.counters, icmp.counters);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size < 2)
        return 0;
    fuzz::drop_trace();
    const MemoryFile file(data + 1, size - 1);
    switch (data[0] % 4) {
    case 0:
    case 1:
        read_ipv4(file.get(), data[0] % 4 == 0);
        break;
    default:
        read_ipv6(file.get(), data[0] % 4 == 2);
    }
    return 0;
}
