// Small MOF files for the command line's tests, in a folder of their own.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <string>

#include <unistd.h>

namespace cmpihost {

/// What the good provider serves, with a superclass and a class that has no keys.
inline constexpr const char* things_mof = "[Abstract] class Test_Named {\n"
                                          "    [Key] string Name;\n"
                                          "    boolean Flag;\n"
                                          "};\n"
                                          "class Test_Base : Test_Named {\n"
                                          "};\n"
                                          "class Test_Thing {\n"
                                          "    [Key] string Name;\n"
                                          "    boolean Flag;\n"
                                          "    [Key] uint32 Number;\n"
                                          "    uint8 U8;\n"
                                          "    uint64 U64;\n"
                                          "    sint64 S64;\n"
                                          "    real64 Real;\n"
                                          "    char16 Letter;\n"
                                          "    string Missing;\n"
                                          "    datetime Since;\n"
                                          "    uint16 List[];\n"
                                          "    string Text;\n"
                                          "};\n"
                                          "[Association] class Test_Pair {\n"
                                          "    [Key] Test_Thing REF First;\n"
                                          "    [Key] Test_Thing REF Second;\n"
                                          "};\n"
                                          "class Test_Loose {\n"
                                          "    string Text;\n"
                                          "};\n";

/// A folder that is removed with its files at the end of the test.
class SchemaFolder {
  public:
    SchemaFolder() : path_(testing::TempDir() + "cmpihost-" + unique_name()) {
        std::filesystem::create_directories(path_);
    }
    ~SchemaFolder() { std::filesystem::remove_all(path_); }
    SchemaFolder(const SchemaFolder&) = delete;
    SchemaFolder& operator=(const SchemaFolder&) = delete;

    /// Writes a file and gives its path.
    std::string file(const std::string& name, const std::string& content) const {
        std::ofstream(path_ + "/" + name) << content;
        return path_ + "/" + name;
    }

  private:
    static std::string unique_name() {
        const testing::TestInfo* test = testing::UnitTest::GetInstance()->current_test_info();
        return std::string(test->test_suite_name()) + "-" + test->name() + "-" + std::to_string(getpid());
    }

    std::string path_;
};

} // namespace cmpihost
