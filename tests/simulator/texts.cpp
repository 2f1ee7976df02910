// The texts that the platform writes into buffers of its callers: as long as a scenario wants them, up to what callers
// have room for.
#include "tests/simulator/scenario_lines.h"

#include <array>

using Texts = SimulatorTest;

namespace {

constexpr std::size_t lengths[] = {0, 1, 31, 32, 40, 200, 255};

/// A text of a scenario, and the call that writes it.
struct Text {
    const char* what;
    const char* before; ///< the scenario up to the text, whose key ends it, behind the lines of load_lines()
    void (*write)(char* buffer);
    const char* error; ///< for a text that is too long, up to what was expected
};

const char* const port_lines = "[[vsan]]\nid = 1\ndomain = \"d\"\n[[ethernet]]\nslot = 1\nport = 1\n";

void write_network_address(char* buffer) {
    PmPortInfo port{};
    std::memcpy(port.bytes, &gigabit, sizeof gigabit);
    EXPECT_EQ(pm_cim_get_network_address(buffer, &port, 2), 0);
}

void write_vsan_key(char* buffer) {
    const std::uint32_t id = 1;
    std::array<std::uint8_t, 4096> vsan{};
    std::array<std::uint8_t, 4096> domain{};
    std::memcpy(vsan.data(), &id, sizeof id);
    EXPECT_EQ(vsan_cim_get_vsanEntry(mts_q, platform_exact, vsan.data()), 0);
    EXPECT_EQ(dm_cim_get_dmEntry(mts_q, id, 1, domain.data()), 0);
    EXPECT_EQ(vsan_cim_get_vsan_key(buffer, vsan.data(), domain.data()), 0);
}

void write_domain_key(char* buffer) {
    std::array<std::uint8_t, 4096> domain{};
    EXPECT_EQ(dm_cim_get_dmEntry(mts_q, 1, 1, domain.data()), 0);
    EXPECT_EQ(vsan_cim_get_vsan_admindomain_key(buffer, domain.data()), 0);
}

void write_wwn(char* buffer) {
    const std::uint8_t wwn[8] = {0x20, 0, 0, 0, 0x5E, 1, 2, 3};
    EXPECT_EQ(cim_sprintf_wwn(buffer, wwn), 0);
}

const std::string ethernet = port_lines;
const std::string port_name = ethernet + "name = ";
const std::string kernel_name = ethernet + "kernel_name = ";
const std::string network_address = ethernet + "network_address = ";

const Text texts[] = {
    {"display name", port_name.c_str(), [](char* buffer) { EXPECT_EQ(fcip_if_str(gigabit, buffer), buffer); },
     "9:8: ethernet[0].name"},
    {"printable name", port_name.c_str(), [](char* buffer) { EXPECT_EQ(sprintf_if_index(buffer, gigabit), 0); },
     "9:8: ethernet[0].name"},
    {"kernel name", kernel_name.c_str(), [](char* buffer) { EXPECT_EQ(netcfg_print_ifname(buffer, gigabit), 0); },
     "9:15: ethernet[0].kernel_name"},
    {"network address", network_address.c_str(), write_network_address, "9:19: ethernet[0].network_address"},
    {"VSAN key", "[[vsan]]\nid = 1\ndomain = \"d\"\nname = ", write_vsan_key, "6:8: vsan[0].name"},
    {"domain key", "[[vsan]]\nid = 1\ndomain = ", write_domain_key, "5:10: vsan[0].domain"},
    {"WWN", "[[wwn_text]]\nwwn = \"20:00:00:00:5e:01:02:03\"\ntext = ", write_wwn, "5:8: wwn_text[0].text"},
};

std::string quoted(std::size_t length) {
    return "\"" + std::string(length, 'x') + "\"\n";
}

} // namespace

TEST_F(Texts, OfEveryLengthAreWrittenWhole) {
    for (const Text& text : texts) {
        for (const std::size_t length : lengths) {
            SCOPED_TRACE(text.what + std::string(" of ") + std::to_string(length));
            load_ok(text.before + quoted(length));
            char buffer[257] = {};
            buffer[256] = '#';
            text.write(buffer);
            EXPECT_EQ(buffer, std::string(length, 'x'));
            EXPECT_EQ(buffer[256], '#');
        }
    }
}

TEST_F(Texts, Of256BytesAreRefused) {
    for (const Text& text : texts) {
        SCOPED_TRACE(text.what);
        switchsim::the_switch().name = "unchanged";
        EXPECT_EQ(load_lines(text.before + quoted(256)),
                  std::string("test.toml:") + text.error + ": expected a text of at most 255 bytes");
        EXPECT_EQ(switchsim::the_switch().name, "unchanged");
    }
}

TEST_F(Texts, LengthIsCountedInBytes) {
    std::string accents;
    for (int count = 0; count < 128; ++count)
        accents += "\xC3\xA9";
    EXPECT_EQ(load_lines(ethernet + "name = \"" + accents + "\"\n"),
              "test.toml:9:8: ethernet[0].name: expected a text of at most 255 bytes");
    load_ok(ethernet + "name = \"" + accents.substr(2) + "\"\n");
}

TEST_F(Texts, NetworkAddressIsEitherAMacOrAnyText) {
    EXPECT_EQ(load_lines(ethernet + "mac = \"02:00:00:aa:bb:cc\"\nnetwork_address = \"other\"\n"),
              "test.toml:10:19: ethernet[0].network_address: expected either this key or mac");
}

TEST_F(Texts, WwnsWithoutAGivenTextAreEightNumbers) {
    load_ok("[[wwn_text]]\nwwn = \"20:00:00:00:5e:01:02:04\"\ntext = \"other\"\n");
    char buffer[256] = {};
    write_wwn(buffer);
    EXPECT_STREQ(buffer, "20:00:00:00:5e:01:02:03");
}

TEST_F(Texts, WwnTextsAreReadStrictly) {
    const std::string wwn = "[[wwn_text]]\nwwn = \"20:00:00:00:5e:01:02:04\"\n"; // lines 3 and 4
    const std::string text = "text = \"a\"\n";
    EXPECT_EQ(load_lines("[[wwn_text]]\n" + text),
              "test.toml:3:1: wwn_text[0].wwn: expected a WWN, but the key is missing");
    EXPECT_EQ(load_lines(wwn), "test.toml:3:1: wwn_text[0].text: expected a text, but the key is missing");
    EXPECT_EQ(load_lines(wwn + "text = 1\n"), "test.toml:5:8: wwn_text[0].text: expected a text of at most 255 bytes");
    EXPECT_EQ(load_lines(wwn + text + wwn + text),
              "test.toml:7:7: wwn_text[1].wwn: expected a WWN that no other [[wwn_text]] has");
    EXPECT_EQ(load_lines(wwn + text + "length = 1\n"),
              "test.toml:6:1: wwn_text[0].length: expected one of the keys wwn, text");
    EXPECT_EQ(load_lines("[wwn_text]\n"), "test.toml:3:1: wwn_text: expected an array of tables [[wwn_text]]");
}
