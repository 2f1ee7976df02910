// Requests as bytes over a socket.
#pragma once

#include <string>
#include <string_view>

namespace cmpihost {

/// A reply, as it came.
struct RawReply {
    int status = 0;     ///< 0: the server closed without one
    std::string head{}; ///< status line and headers
    std::string body{};

    /// The value of a header, in any case; empty if it is absent.
    std::string header(std::string_view name) const;
};

/// Sends bytes to a port of this machine.
/// @return the connection, which is the caller's to close
int send_to(int port, std::string_view bytes);

/// Sends bytes to a port of this machine and reads until the server closes.
/// @param half_close whether the sending side is closed behind them
RawReply exchange(int port, std::string_view bytes, bool half_close = false);

/// The body of a request for the names of the simulator's tunnels, and variations of it.
struct RequestBody {
    std::string operation = "EnumerateInstanceNames";
    std::string parameters =
        R"(<IPARAMVALUE NAME="ClassName"><CLASSNAME NAME="ZANTO_FCIPProtocolEndPoint"></CLASSNAME></IPARAMVALUE>)";
    std::string cim_version = "2.0";
    std::string dtd_version = "2.0";
    std::string protocol_version = "1.0";
    std::string name_space = "cimv2"; ///< below root

    std::string text() const;
};

/// A request over HTTP: the head's lines, and the body behind a Content-Length.
struct RawRequest {
    std::string line = "POST /cimom HTTP/1.1";
    std::string host = "Host: localhost\r\n";
    std::string type = "Content-Type: application/xml; charset=\"utf-8\"\r\n";
    std::string cim = "CIMOperation: MethodCall\r\nCIMMethod: EnumerateInstanceNames\r\nCIMObject: root/cimv2\r\n";
    std::string more = "Connection: close\r\n";
    std::string body = RequestBody{}.text();

    std::string text() const;
};

} // namespace cmpihost
