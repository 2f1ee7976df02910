// The one file that is installed for CIM servers reads as the files that it is made of.
#include "host/cimxml/write_class.h"

#include <gtest/gtest.h>

#include <array>

namespace cmpihost::cimxml {
namespace {

mof::Schema schema_of(const std::string& fcip) {
    const std::array<std::string, 2> files{FCIP_SOURCE_DIR "/schema/dmtf.mof", fcip};
    std::variant<mof::Schema, mof::Error> read = mof::Schema::read(files);
    if (const auto* error = std::get_if<mof::Error>(&read))
        throw std::runtime_error(error->text());
    return std::get<mof::Schema>(std::move(read));
}

/// All that a class declares, with what it inherits.
std::string whole(const mof::Schema& schema, const mof::ClassDeclaration& declaration) {
    std::string out;
    append_class(out, declaration, {.local_only = false, .class_origin = true}, {"host", "root/cimv2", schema});
    return out;
}

TEST(FlatSchema, ReadsAsItsParts) {
    const mof::Schema parts = schema_of(FCIP_SOURCE_DIR "/schema/fcip.mof");
    const mof::Schema flat = schema_of(FCIP_BINARY_DIR "/flat/fcip.mof");
    ASSERT_EQ(flat.classes().size(), parts.classes().size());
    ASSERT_GT(flat.classes().size(), 34u);
    for (std::size_t i = 0; i < flat.classes().size(); ++i)
        EXPECT_EQ(whole(flat, flat.classes()[i]), whole(parts, parts.classes()[i]));
    EXPECT_EQ(flat.instances().size(), parts.instances().size());
    EXPECT_EQ(flat.qualifiers().size(), parts.qualifiers().size());
}

} // namespace
} // namespace cmpihost::cimxml
