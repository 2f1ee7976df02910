// Help and completion of the verbs that a build without a server does not have.
#include "host/cli/complete_verb.h"
#include "host/cli/help_verb.h"

#include <gtest/gtest.h>

namespace cmpihost {
namespace {

using Words = std::vector<std::string>;

TEST(ServeHelp, IsTheVerbsOwn) {
    for (const std::string verb : {"serve", "passwd"})
        EXPECT_NE(help_text(verb).find("Usage: cmpihost " + verb + " "), std::string::npos) << help_text(verb);
}

TEST(ServeHelp, CompletesTheVerbsOwnOptions) {
    EXPECT_EQ(completions({"serve", "--no-"}), (Words{"--no-tls", "--no-users"}));
    EXPECT_EQ(completions({"serve", "--listen", ""}), Words());
    EXPECT_EQ(completions({"passwd", "--del"}), Words{"--delete"});
    EXPECT_EQ(completions({"passwd", "ZANTO_"}), Words());
}

} // namespace
} // namespace cmpihost
