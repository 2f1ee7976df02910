// The users file and its hashes.
#include "host/http/users.h"
#include "host/http/password_hash.h"
#include "tests/host/http/http_test.h"

#include <sys/stat.h>

namespace cmpihost::http {
namespace {

std::string error_of(const std::function<void()>& action) {
    try {
        action();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return "(none)";
}

/// A hash of this form. It is no password's.
std::string shaped(const std::string& prefix) {
    return prefix + "saltsalt$" + std::string(43, 'a');
}

TEST(PasswordHashes, MatchTheirPasswordOnly) {
    const std::string hash = hash_password(Secret("secret"));
    EXPECT_TRUE(is_usable_hash(hash)) << hash;
    EXPECT_TRUE(matches(Secret("secret"), hash));
    EXPECT_FALSE(matches(Secret("Secret"), hash));
    EXPECT_FALSE(matches(Secret(""), hash));
    EXPECT_FALSE(matches(Secret("secret"), decoy_of(hash)));
    EXPECT_NE(hash, hash_password(Secret("secret"))) << "each has a salt of its own";
}

TEST(PasswordHashes, CostIsBounded) {
    for (const char* prefix : {"$y$j75$", "$y$j85$", "$y$j7T$", "$y$j8T$", "$y$j9T$", "$y$jAT$", "$y$jBT$"})
        EXPECT_TRUE(is_usable_hash(shaped(prefix))) << prefix;
    for (const char* prefix : {"$y$jCT$", "$y$jFT$", "$y$j9U$", "$y$k9T$", "$6$", "$2b$", "", "x"})
        EXPECT_FALSE(is_usable_hash(shaped(prefix))) << prefix;
    EXPECT_LT(cost_of(shaped("$y$j75$")), cost_of(shaped("$y$j9T$")));
}

TEST(PasswordHashes, OfAnotherFormAreNone) {
    const std::string good = shaped("$y$j9T$");
    EXPECT_TRUE(is_usable_hash(good));
    EXPECT_FALSE(is_usable_hash(good + "a"));
    EXPECT_FALSE(is_usable_hash(good.substr(0, good.size() - 1)));
    EXPECT_FALSE(is_usable_hash(good.substr(0, good.size() - 1) + "*"));
    EXPECT_FALSE(is_usable_hash("$y$j9T$$" + std::string(43, 'a')));
    EXPECT_FALSE(is_usable_hash("$y$j9T$" + std::string(87, 's') + "$" + std::string(43, 'a')));
    EXPECT_FALSE(is_usable_hash("$y$j9T$salt"));
}

TEST(UsersFiles, AreRead) {
    const std::string text = "# people\n\nanna:" + shaped("$y$j75$") + "\nb b:" + shaped("$y$j9T$");
    const Users users = Users::read_text("users", text);
    ASSERT_NE(users.hash_of("anna"), nullptr);
    EXPECT_EQ(*users.hash_of("anna"), shaped("$y$j75$"));
    EXPECT_NE(users.hash_of("b b"), nullptr);
    EXPECT_EQ(users.hash_of("Anna"), nullptr);
    EXPECT_EQ(users.hash_of(""), nullptr);
    EXPECT_TRUE(users.decoy().starts_with("$y$j9T$")) << "as costly as the costliest";
}

TEST(UsersFiles, FaultsAreToldWithTheirLine) {
    const std::string good = "anna:" + shaped("$y$j75$") + "\n";
    const auto fault = [](const std::string& text) { return error_of([&] { Users::read_text("users", text); }); };
    EXPECT_EQ(fault(good), "(none)");
    EXPECT_EQ(fault(good + "bert\n"), "users:2: expected USER:HASH");
    EXPECT_EQ(fault(":" + shaped("$y$j75$")), "users:1: expected USER:HASH");
    EXPECT_EQ(fault("b\tb:" + shaped("$y$j75$")), "users:1: expected USER:HASH");
    EXPECT_EQ(fault(good + "\n" + good), "users:3: the user is there already");
    EXPECT_EQ(fault("bert:secret"), "users:1: expected a yescrypt hash of bounded cost, as cmpihost passwd makes it");
    EXPECT_EQ(fault("bert:" + shaped("$y$jFT$")),
              "users:1: expected a yescrypt hash of bounded cost, as cmpihost passwd makes it");
}

TEST(UsersFiles, OthersMustNotReadThem) {
    for (const unsigned mode : {0600U, 0640U, 0400U}) {
        const TestFile file("", mode);
        EXPECT_EQ(error_of([&] { Users::read(file.name()); }), "(none)") << mode;
    }
    for (const unsigned mode : {0644U, 0604U, 0660U, 0602U, 0601U}) {
        const TestFile file("", mode);
        EXPECT_EQ(error_of([&] { Users::read(file.name()); }),
                  file.name() + ": others may read or change it, expected mode 0600 or 0640");
    }
}

TEST(UsersFiles, ThatCannotBeReadAreToldSo) {
    EXPECT_EQ(error_of([] { Users::read("/nowhere/users"); }),
              "/nowhere/users: cannot be read: No such file or directory");
    EXPECT_EQ(error_of([] { Users::read("/dev/null"); }), "/dev/null: expected a file of at most 1048576 bytes");
    const TestFile file(std::string(1'048'577, '\n'));
    EXPECT_EQ(error_of([&] { Users::read(file.name()); }), file.name() + ": expected a file of at most 1048576 bytes");
}

unsigned mode_of(const std::string& file) {
    struct stat status {};
    EXPECT_EQ(stat(file.c_str(), &status), 0);
    return status.st_mode & 07777;
}

TEST(UsersFiles, UsersAreSetAndDeleted) {
    const std::string one = shaped("$y$j75$");
    const std::string other = shaped("$y$j85$");
    const TestFile file;
    std::filesystem::remove(file.name());
    set_user(file.name(), "anna", one);
    EXPECT_EQ(file.text(), "anna:" + one + "\n");
    EXPECT_EQ(mode_of(file.name()), 0600U);
    set_user(file.name(), "bert", one);
    set_user(file.name(), "anna", other);
    EXPECT_EQ(file.text(), "bert:" + one + "\nanna:" + other + "\n");
    delete_user(file.name(), "bert");
    EXPECT_EQ(file.text(), "anna:" + other + "\n");
    EXPECT_EQ(error_of([&] { delete_user(file.name(), "bert"); }), file.name() + ": there is no user bert");
}

TEST(UsersFiles, CommentsAndModeAreKept) {
    const TestFile file("# ours\nanna:x\n", 0640);
    file.write("# ours\n");
    set_user(file.name(), "anna", shaped("$y$j75$"));
    EXPECT_EQ(file.text(), "# ours\nanna:" + shaped("$y$j75$") + "\n");
    EXPECT_EQ(mode_of(file.name()), 0640U);
}

TEST(UsersFiles, FaultyOnesAreNotWrittenAnew) {
    const TestFile file("nonsense\n");
    EXPECT_EQ(error_of([&] { set_user(file.name(), "anna", shaped("$y$j75$")); }),
              file.name() + ":1: expected USER:HASH");
    EXPECT_EQ(file.text(), "nonsense\n");
}

TEST(UsersFiles, NamesThatCannotStandThere) {
    for (const char* name : {"anna", "b b", "\xc3\xa9", "a#"})
        EXPECT_TRUE(is_user_name(name)) << name;
    for (const std::string& name :
         {std::string(), std::string("a:b"), std::string("#a"), std::string("a\n"), std::string(256, 'a')})
        EXPECT_FALSE(is_user_name(name)) << name;
}

} // namespace
} // namespace cmpihost::http
