#include "host/server/registration.h"

#include <algorithm>
#include <fstream>
#include <sstream>
#include <stdexcept>

namespace cmpihost::server {

namespace {

constexpr std::string_view blanks = " \t\r";

std::string_view trimmed(std::string_view text) {
    const std::size_t first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> result;
    for (text = trimmed(text); !text.empty();) {
        const std::string_view word = text.substr(0, text.find_first_of(blanks));
        result.emplace_back(word);
        text = trimmed(text.substr(word.size()));
    }
    return result;
}

/// Reads a file line by line.
class Reader {
  public:
    explicit Reader(const std::string& file) : file_(file) {}

    void line(std::string_view text) {
        ++number_;
        text = trimmed(text);
        if (text.empty())
            return;
        if (text.front() == '#')
            end_stanza();
        else if (text.front() == '[')
            begin_stanza(text);
        else
            entry(text);
    }

    std::vector<RegisteredClass> finish() {
        end_stanza();
        return std::move(classes_);
    }

  private:
    [[noreturn]] void refuse(const std::string& what) const { refuse(number_, what); }
    [[noreturn]] void refuse(unsigned number, const std::string& what) const {
        throw std::runtime_error(file_ + ":" + std::to_string(number) + ": " + what);
    }

    void begin_stanza(std::string_view text) {
        end_stanza();
        const std::string_view name = trimmed(text.substr(1, text.size() - 2));
        if (text.back() != ']' || name.empty())
            refuse("expected [CLASS]");
        classes_.push_back({std::string(name), {}, {}, {}, {}});
        begin_ = number_;
    }

    void entry(std::string_view text) {
        if (begin_ == 0)
            refuse("expected [CLASS] before this");
        const std::size_t colon = text.find(':');
        if (colon == std::string_view::npos)
            refuse("expected KEY: VALUE");
        const std::string_view key = trimmed(text.substr(0, colon));
        const std::string_view value = trimmed(text.substr(colon + 1));
        RegisteredClass& stanza = classes_.back();
        if (key == "provider")
            stanza.provider = value;
        else if (key == "location")
            stanza.location = value;
        else if (key == "type")
            stanza.types = words(value);
        else if (key == "namespace")
            stanza.namespaces = words(value);
    }

    void end_stanza() {
        if (begin_ == 0)
            return;
        const RegisteredClass& stanza = classes_.back();
        const auto check = [&](bool given, const char* key) {
            if (!given)
                refuse(begin_, "[" + stanza.class_name + "] has no " + key + ": line");
        };
        check(!stanza.provider.empty(), "provider");
        check(!stanza.location.empty(), "location");
        check(!stanza.types.empty(), "type");
        check(!stanza.namespaces.empty(), "namespace");
        begin_ = 0;
    }

    const std::string& file_;
    unsigned number_ = 0;
    unsigned begin_ = 0; // line of the open stanza; 0: none is open
    std::vector<RegisteredClass> classes_;
};

} // namespace

std::string library_file(const std::string& folder, const RegisteredClass& registered) {
    const std::string file = "lib" + registered.location + ".so";
    return folder.empty() ? file : folder + '/' + file;
}

std::vector<RegisteredClass> read_registration(const std::string& file, std::string_view text) {
    Reader reader(file);
    while (!text.empty()) {
        const std::string_view line = text.substr(0, text.find('\n'));
        reader.line(line);
        text.remove_prefix(std::min(line.size() + 1, text.size()));
    }
    return reader.finish();
}

std::vector<RegisteredClass> read_registration_file(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    std::ostringstream text;
    if (!stream || !(text << stream.rdbuf()))
        throw std::runtime_error(file + ": cannot be read, expected a file with text");
    return read_registration(file, text.str());
}

} // namespace cmpihost::server
