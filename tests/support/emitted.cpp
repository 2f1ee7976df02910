#include "tests/support/emitted.h"

#include "host/mof/deviations.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iostream>
#include <mutex>
#include <set>

namespace test {

namespace {

using namespace cmpihost::mof;

const std::string schema_folder = FCIP_SOURCE_DIR "/schema/";

template <typename T>
T must(std::variant<T, Error> read) {
    if (const auto* error = std::get_if<Error>(&read)) {
        std::cerr << error->text() << '\n';
        std::abort();
    }
    return std::get<T>(std::move(read));
}

const Deviations& deviations() {
    static const Deviations known = must(Deviations::read(schema_folder + "deviations.txt"));
    return known;
}

/// What this program emitted: classes in their declared spelling.
class Emitted : public ::testing::Environment {
  public:
    void note(const std::string& line) {
        const std::lock_guard lock(mutex_);
        lines_.insert(line);
    }

    void TearDown() override {
        const auto program = std::filesystem::read_symlink("/proc/self/exe").filename();
        std::ofstream file(std::filesystem::path(FCIP_BINARY_DIR) / "emitted" / program);
        for (const auto& line : lines_)
            file << line << '\n';
        EXPECT_TRUE(file.good());
    }

  private:
    std::mutex mutex_;
    std::set<std::string> lines_;
};

Emitted* const emitted = static_cast<Emitted*>(::testing::AddGlobalTestEnvironment(new Emitted));

} // namespace

const Schema& schema() {
    static const Schema read = [] {
        const std::string files[] = {schema_folder + "dmtf.mof", schema_folder + "fcip.mof"};
        return must(Schema::read(files));
    }();
    return read;
}

std::vector<std::string> findings_of(const cmpihost::Object& object, Kind kind) {
    if (const auto* declared = schema().find(object.class_name))
        emitted->note("class " + declared->name);
    return deviations().unexpected(check(schema(), object, kind));
}

} // namespace test
