#include "host/cli/passwd_verb.h"

#include "host/cli/parse_end.h"
#include "host/http/basic.h"
#include "host/http/password_hash.h"
#include "host/http/users.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <stdexcept>

#include <termios.h>
#include <unistd.h>

namespace cmpihost {

namespace {

/// While it lives, a terminal does not show what is typed.
class WithoutEcho {
  public:
    WithoutEcho() {
        tcgetattr(STDIN_FILENO, &usual_);
        termios silent = usual_;
        silent.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &silent);
    }
    ~WithoutEcho() { tcsetattr(STDIN_FILENO, TCSAFLUSH, &usual_); }
    WithoutEcho(const WithoutEcho&) = delete;
    WithoutEcho& operator=(const WithoutEcho&) = delete;

  private:
    termios usual_{};
};

/// A line of standard input, byte by byte, so that no buffer keeps it.
http::Secret read_line() {
    std::array<char, http::max_password + 2> line{};
    std::size_t size = 0;
    while (size < line.size() && read(STDIN_FILENO, &line.at(size), 1) == 1 && line.at(size) != '\n')
        ++size;
    const bool has_controls = std::any_of(line.begin(), line.begin() + static_cast<std::ptrdiff_t>(size),
                                          [](unsigned char c) { return c < 0x20 || c == 0x7f; });
    http::Secret password(std::string_view(line.data(), size));
    OPENSSL_cleanse(line.data(), line.size());
    if (size == 0 || size > http::max_password || has_controls)
        throw std::runtime_error("expected a password of 1 to " + std::to_string(http::max_password) +
                                 " bytes without control characters");
    return password;
}

http::Secret ask(const char* prompt, const Streams& streams) {
    std::fputs(prompt, streams.err);
    std::fflush(streams.err);
    const WithoutEcho without_echo;
    http::Secret password = read_line();
    std::fputs("\n", streams.err);
    return password;
}

http::Secret read_password(const Streams& streams) {
    if (isatty(STDIN_FILENO) != 1)
        return read_line();
    http::Secret password = ask("Password: ", streams);
    if (ask("The same again: ", streams).view() != password.view())
        throw std::runtime_error("the two are not the same");
    return password;
}

void change(const std::string& file, const std::string& user, bool deleted, const Streams& streams) {
    if (!http::is_user_name(user))
        throw std::runtime_error("USER: expected a name of 1 to 255 bytes without colon and control characters");
    if (deleted)
        http::delete_user(file, user);
    else
        http::set_user(file, user, http::hash_password(read_password(streams)));
}

int stopped(const CLI::App& app, const CLI::ParseError& error, const Streams& streams) {
    if (error.get_exit_code() != static_cast<int>(CLI::ExitCodes::Success))
        return refuse(streams, std::string("passwd: ") + error.what());
    return print(streams, parse_end(app, error, "cmpihost passwd").output);
}

} // namespace

int set_password(const std::vector<std::string>& arguments, const Streams& streams) {
    CLI::App app(
        "Sets a user's password in the file that cmpihost serve takes by --users. Asks for it on a terminal, and\n"
        "reads a line of standard input elsewhere. A file that is not there is made.",
        "cmpihost passwd");
    std::string file;
    std::string user;
    bool deleted = false;
    app.add_option("FILE", file, "The users")->type_name("")->required();
    app.add_option("USER", user, "Whose password")->type_name("")->required();
    app.add_flag("--delete", deleted, "Take the user out of the file");
    try {
        app.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        change(file, user, deleted, streams);
    } catch (const CLI::ParseError& error) {
        return stopped(app, error, streams);
    } catch (const std::runtime_error& error) {
        return refuse(streams, error.what());
    }
    return exit_ok;
}

} // namespace cmpihost
