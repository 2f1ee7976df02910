// A class with counters whose objects the test makes up, without a provider.
#pragma once

#include "host/broker/held.h"
#include "host/metrics/scrape.h"
#include "host/server/catalogue.h"
#include "host/server/settings.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

namespace cmpihost::metrics {

inline const char* const measured_classes = R"(
class Test_Port {
    [Key] string DeviceID;
    [Key] string CreationClassName;
    [Key] uint32 Instance;
    string ElementName;
    [Counter, Description("Frames that came.")] uint64 Frames;
    [Counter, Description("Bytes."), PUnit("byte")] uint64 BytesReceived;
    [Gauge, PUnit("bit / second * 10^3")] uint32 Rate;
    [Gauge, PUnit("second * 10^-3"), Description("Line\none, \\ and two.")] uint32 Delay;
    [Gauge] sint32 Balance;
    [Gauge] real64 Load;
    [Gauge] boolean Up;
    [Gauge] string Text; // marked, but no number
    uint16 Status[];
    uint32 Unmarked;
};
class Test_SubPort : Test_Port {
};
class Test_Plain {
    [Key] string Name;
};
)";

/// A file of a test, gone at its end.
class TextFile {
  public:
    TextFile(const std::string& name, const std::string& text) : name_(testing::TempDir() + name) {
        std::ofstream(name_) << text;
    }
    ~TextFile() { std::filesystem::remove(name_); }
    TextFile(const TextFile&) = delete;
    TextFile& operator=(const TextFile&) = delete;
    const std::string& name() const { return name_; }

  private:
    std::string name_;
};

inline mof::Schema schema_of(const std::string& text) {
    auto read = mof::Schema::read_text("test.mof", text);
    EXPECT_TRUE(std::holds_alternative<mof::Schema>(read));
    return std::get<mof::Schema>(std::move(read));
}

/// The switch's classes and provider.
inline server::Settings switch_settings() {
    server::Settings settings;
    settings.schema = {FCIP_SOURCE_DIR "/schema/dmtf.mof", FCIP_SOURCE_DIR "/schema/fcip.mof"};
    settings.providers = {{FCIP_PROVIDER, "FCIPProvider"}};
    return settings;
}

inline std::string text_of(const Scraped& scraped) {
    std::string text;
    scraped.give([&text](std::string_view piece) { text += piece; });
    return text;
}

} // namespace cmpihost::metrics
