#include "host/cli/schema_files.h"

#include <filesystem>
#include <stdexcept>

namespace cmpihost {

namespace {

namespace fs = std::filesystem;

template <class Read>
Read value_or_throw(std::variant<Read, mof::Error> result) {
    if (const auto* error = std::get_if<mof::Error>(&result))
        throw std::runtime_error(error->text());
    return std::get<Read>(std::move(result));
}

std::vector<std::string> schema_files(const Options& options) {
    return options.schema.empty() ? default_schema_files() : options.schema;
}

} // namespace

std::string default_schema_folder() {
    std::error_code error;
    const fs::path folder = fs::read_symlink("/proc/self/exe", error).parent_path();
    for (const fs::path& candidate : {folder / CMPIHOST_SCHEMA_FOLDER, folder / ".." / "schema"})
        if (fs::exists(candidate / "fcip.mof", error))
            return candidate.lexically_normal().string();
    return {};
}

std::vector<std::string> default_schema_files() {
    const std::string folder = default_schema_folder();
    if (folder.empty())
        throw std::runtime_error("no schema is beside this program, expected --schema FILE");
    return {folder + "/dmtf.mof", folder + "/fcip.mof"};
}

mof::Schema load_schema(const Options& options) {
    return value_or_throw(mof::Schema::read(schema_files(options)));
}

std::optional<mof::Schema> schema_if_there(const Options& options) {
    if (options.schema.empty() && default_schema_folder().empty())
        return std::nullopt;
    return load_schema(options);
}

mof::Deviations load_deviations(const Options& options) {
    if (!options.deviations.empty())
        return value_or_throw(mof::Deviations::read(options.deviations));
    const fs::path beside = fs::path(schema_files(options).back()).parent_path() / "deviations.txt";
    std::error_code error;
    return fs::exists(beside, error) ? value_or_throw(mof::Deviations::read(beside.string())) : mof::Deviations();
}

} // namespace cmpihost
