// What TLS needs: certificate, key, versions.
#pragma once

#include "host/http/options.h"

#include <boost/asio/ssl/context.hpp>

#include <memory>

namespace cmpihost::http {

/// Reads certificate and key for TLS 1.2 and newer.
/// @throws std::runtime_error "FILE: ...", one line
std::shared_ptr<boost::asio::ssl::context> make_tls(const TlsFiles& files);

} // namespace cmpihost::http
