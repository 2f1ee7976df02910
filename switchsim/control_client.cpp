#include "switchsim/control_client.h"

#include <cerrno>
#include <cstring>
#include <string_view>

#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

namespace switchsim_program {

namespace {

/// A connection that is closed at the end.
struct Connection {
    int socket = ::socket(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0);

    Connection() = default;
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection() {
        if (socket >= 0)
            close(socket);
    }
};

Reply failed(const std::string& file, int error) {
    return {false, file + ": " + std::strerror(error)};
}

bool send_all(int socket, std::string_view text) {
    while (!text.empty()) {
        const ssize_t sent = send(socket, text.data(), text.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            return false;
        text.remove_prefix(static_cast<std::size_t>(sent));
    }
    return shutdown(socket, SHUT_WR) == 0;
}

} // namespace

Reply ask(const std::string& file, const std::vector<std::string>& words) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    if (file.size() >= sizeof address.sun_path)
        return failed(file, ENAMETOOLONG);
    std::memcpy(address.sun_path, file.c_str(), file.size());
    const Connection connection;
    if (connect(connection.socket, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return failed(file, errno);
    std::string command;
    for (const std::string& word : words)
        command += word + '\0';
    if (!send_all(connection.socket, command))
        return failed(file, errno);
    std::string answer;
    char block[16384];
    ssize_t got = 0;
    while ((got = read(connection.socket, block, sizeof block)) > 0)
        answer.append(block, static_cast<std::size_t>(got));
    if (got < 0)
        return failed(file, errno);
    if (answer.empty())
        return {false, file + ": the switch gave no answer"};
    if (answer.back() != '\0') // which ends every answer
        return {false, file + ": the switch's answer broke off after " + std::to_string(answer.size()) + " bytes"};
    return {answer[0] == '0', answer.substr(1, answer.size() - 2)};
}

} // namespace switchsim_program
