#include "host/http/tls.h"

#include <filesystem>
#include <stdexcept>

namespace cmpihost::http {

namespace {

namespace ssl = boost::asio::ssl;

void check(const std::string& file, const boost::system::error_code& error) {
    if (error)
        throw std::runtime_error(file + ": cannot be used for TLS: " + error.message());
}

/// A pipe that nobody writes to would be waited for, on the event loop's thread. What is not there is told when it is
/// read.
void check_kind(const std::string& file) {
    std::error_code unknown;
    const auto status = std::filesystem::status(file, unknown);
    if (!unknown && std::filesystem::exists(status) && !std::filesystem::is_regular_file(status))
        throw std::runtime_error(file + ": cannot be used for TLS: expected a file");
}

/// A key that is locked by a passphrase would be asked for on a terminal.
int no_passphrase(char*, int, int, void*) {
    return 0;
}

} // namespace

std::shared_ptr<ssl::context> make_tls(const TlsFiles& files) {
    auto context = std::make_shared<ssl::context>(ssl::context::tls_server);
    SSL_CTX* handle = context->native_handle();
    SSL_CTX_set_min_proto_version(handle, TLS1_2_VERSION);
    SSL_CTX_set_options(handle, SSL_OP_NO_COMPRESSION | SSL_OP_NO_RENEGOTIATION | SSL_OP_CIPHER_SERVER_PREFERENCE);
    SSL_CTX_set_mode(handle, SSL_MODE_RELEASE_BUFFERS);
    SSL_CTX_set_default_passwd_cb(handle, no_passphrase);
    for (const std::string& file : {files.certificate, files.key})
        check_kind(file);
    boost::system::error_code error;
    context->use_certificate_chain_file(files.certificate, error);
    check(files.certificate, error);
    context->use_private_key_file(files.key, ssl::context::pem, error);
    check(files.key, error);
    return context;
}

} // namespace cmpihost::http
