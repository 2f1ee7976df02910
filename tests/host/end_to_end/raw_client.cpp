#include "tests/host/end_to_end/raw_client.h"

#include "host/cim/names.h"

#include <array>

#include <arpa/inet.h>
#include <sys/socket.h>
#include <unistd.h>

namespace cmpihost {

std::string RawReply::header(std::string_view name) const {
    for (std::size_t line = head.find("\r\n"); line != std::string::npos; line = head.find("\r\n", line + 2)) {
        const std::size_t colon = head.find(": ", line);
        if (colon != std::string::npos && same_name(std::string_view(head).substr(line + 2, colon - line - 2), name))
            return head.substr(colon + 2, head.find("\r\n", colon) - colon - 2);
    }
    return {};
}

int send_to(int port, std::string_view bytes) {
    const int connection = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    if (connect(connection, reinterpret_cast<const sockaddr*>(&address), sizeof address) != 0)
        return connection;
    while (!bytes.empty()) {
        const ssize_t sent = send(connection, bytes.data(), bytes.size(), MSG_NOSIGNAL);
        if (sent <= 0)
            break;
        bytes.remove_prefix(static_cast<std::size_t>(sent));
    }
    return connection;
}

RawReply exchange(int port, std::string_view bytes, bool half_close) {
    const int connection = send_to(port, bytes);
    if (half_close)
        shutdown(connection, SHUT_WR);
    std::string text;
    std::array<char, 65536> block{};
    for (ssize_t got = 1; got > 0;) {
        got = recv(connection, block.data(), block.size(), 0);
        text.append(block.data(), static_cast<std::size_t>(got > 0 ? got : 0));
    }
    close(connection);
    RawReply reply;
    const std::size_t end = text.find("\r\n\r\n");
    if (!text.starts_with("HTTP/1.") || end == std::string::npos)
        return reply;
    reply.status = std::stoi(text.substr(9, 3));
    reply.head = text.substr(0, end + 2);
    reply.body = text.substr(end + 4);
    return reply;
}

std::string RequestBody::text() const {
    return R"(<?xml version="1.0" encoding="utf-8"?><CIM CIMVERSION=")" + cim_version + R"(" DTDVERSION=")" +
           dtd_version + R"("><MESSAGE ID="7" PROTOCOLVERSION=")" + protocol_version +
           R"("><SIMPLEREQ><IMETHODCALL NAME=")" + operation +
           R"("><LOCALNAMESPACEPATH><NAMESPACE NAME="root"></NAMESPACE><NAMESPACE NAME=")" + name_space +
           R"("></NAMESPACE></LOCALNAMESPACEPATH>)" + parameters + "</IMETHODCALL></SIMPLEREQ></MESSAGE></CIM>";
}

std::string RawRequest::text() const {
    return line + "\r\n" + host + type + cim + more + "Content-Length: " + std::to_string(body.size()) + "\r\n\r\n" +
           body;
}

} // namespace cmpihost
