// The listener under TLS.
#include "tests/host/http/http_test.h"
#include "tests/host/http/tls_files.h"

#include <openssl/err.h>
#include <openssl/ssl.h>

#include <csignal>

#include <sys/stat.h>

namespace cmpihost::http {
namespace {

/// A client that speaks TLS on a socket.
class TlsClient {
  public:
    explicit TlsClient(std::uint16_t port, int version = 0) : raw_(port), context_(SSL_CTX_new(TLS_client_method())) {
        if (version != 0) {
            SSL_CTX_set_min_proto_version(context_, version);
            SSL_CTX_set_max_proto_version(context_, version);
            SSL_CTX_set_security_level(context_, 0);
        }
        ssl_ = SSL_new(context_);
        SSL_set_fd(ssl_, raw_.socket());
        connected_ = SSL_connect(ssl_) == 1;
    }
    ~TlsClient() {
        SSL_free(ssl_);
        SSL_CTX_free(context_);
    }
    TlsClient(const TlsClient&) = delete;
    TlsClient& operator=(const TlsClient&) = delete;

    bool connected() const { return connected_; }
    void send(const std::string& bytes) { SSL_write(ssl_, bytes.data(), static_cast<int>(bytes.size())); }

    std::string read(std::size_t size) {
        std::string bytes(size, '\0');
        std::size_t done = 0;
        while (done < size) {
            const int count = SSL_read(ssl_, bytes.data() + done, static_cast<int>(size - done));
            if (count <= 0)
                break;
            done += static_cast<std::size_t>(count);
        }
        bytes.resize(done);
        return bytes;
    }

    /// The status of the next reply whose body has so many bytes.
    std::string read_reply(std::size_t body) {
        std::string head;
        while (!head.ends_with("\r\n\r\n")) {
            const std::string next = read(1);
            if (next.empty())
                return head;
            head += next;
        }
        return head + read(body);
    }

    /// Whether the server says that it ends.
    bool is_told_the_end() {
        char byte = 0;
        const int count = SSL_read(ssl_, &byte, 1);
        return count == 0 && SSL_get_error(ssl_, count) == SSL_ERROR_ZERO_RETURN;
    }

    std::string certificate_name() {
        X509* certificate = SSL_get1_peer_certificate(ssl_);
        char name[100] = "";
        X509_NAME_get_text_by_NID(X509_get_subject_name(certificate), NID_commonName, name, sizeof name);
        X509_free(certificate);
        return name;
    }

    RawClient& raw() { return raw_; }

  private:
    RawClient raw_;
    SSL_CTX* context_;
    SSL* ssl_ = nullptr;
    bool connected_ = false;
};

class TlsListeners : public ListenerTest {
  protected:
    TlsListeners() {
        std::signal(SIGPIPE, SIG_IGN); // OpenSSL writes as if it were set
        write_tls_files("first", certificate, key);
        options.tls = TlsFiles{certificate.name(), key.name()};
    }

    TestFile certificate;
    TestFile key;
};

TEST_F(TlsListeners, ServeOverTls) {
    start();
    EXPECT_TRUE(listener->urls()[0].starts_with("https://127.0.0.1:"));
    TlsClient client(port);
    ASSERT_TRUE(client.connected());
    for (int i = 0; i < 2; ++i) {
        client.send(post());
        const std::string reply = client.read_reply(9);
        EXPECT_TRUE(reply.starts_with("HTTP/1.1 200 OK\r\n")) << reply;
        EXPECT_TRUE(reply.ends_with("<answer/>"));
    }
    EXPECT_EQ(backend.questions().size(), 2U);
}

TEST_F(TlsListeners, SendLargeReplies) {
    backend.reply.body = std::vector<std::string>(50, std::string(65'536, 'x'));
    start();
    TlsClient client(port);
    client.send(post());
    EXPECT_EQ(client.read_reply(std::size_t{50} * 65'536).substr(0, 12), "HTTP/1.1 200");
}

TEST_F(TlsListeners, TakeVersion12AndNewer) {
    start();
    EXPECT_TRUE(TlsClient(port, TLS1_2_VERSION).connected());
    EXPECT_TRUE(TlsClient(port, TLS1_3_VERSION).connected());
    EXPECT_FALSE(TlsClient(port, TLS1_1_VERSION).connected());
}

TEST_F(TlsListeners, PlainRequestsAreNotServed) {
    start();
    RawClient client(port);
    client.send(post());
    EXPECT_TRUE(client.is_closed());
    EXPECT_TRUE(backend.questions().empty());
}

TEST_F(TlsListeners, HandshakeHasADeadline) {
    options.limits.handshake = milliseconds{100};
    start();
    RawClient client(port);
    EXPECT_TRUE(client.is_closed());
}

TEST_F(TlsListeners, EndsAreTold) {
    start();
    TlsClient client(port);
    client.send("GET /x HTTP/1.0\r\n\r\n");
    EXPECT_TRUE(client.read_reply(0).starts_with("HTTP/1.1 404 "));
    EXPECT_TRUE(client.is_told_the_end());
}

TEST_F(TlsListeners, ShutdownHasADeadline) {
    options.limits.connections = 1;
    options.limits.linger_silent = milliseconds{100};
    options.limits.idle = milliseconds{100};
    start();
    TlsClient client(port); // and never says that it ends
    client.send(post());
    client.read_reply(9);
    EXPECT_TRUE(client.is_told_the_end());
    EXPECT_TRUE(client.raw().is_closed());
}

TEST_F(TlsListeners, RefusedUploadStillReadsItsReply) {
    start();
    TlsClient client(port);
    client.send(post(std::string(2'000'000, 'x')).substr(0, 200'000));
    EXPECT_TRUE(client.read_reply(0).starts_with("HTTP/1.1 413 "));
}

TEST_F(TlsListeners, HeaderByteByByteIsNotWaitedFor) {
    options.limits.header = milliseconds{300};
    start();
    std::string reply;
    EXPECT_TRUE(comes_true([&] { // on a busy machine, too, where the first byte of some may come too late
        TlsClient client(port);
        client.send("POST /ci");
        reply = client.read_reply(0);
        return !reply.empty();
    }));
    EXPECT_TRUE(reply.starts_with("HTTP/1.1 408 ")) << reply;
}

TEST_F(TlsListeners, ReloadTakesTheNewCertificate) {
    start();
    EXPECT_EQ(TlsClient(port).certificate_name(), "first");
    write_tls_files("second", certificate, key);
    EXPECT_EQ(TlsClient(port).certificate_name(), "first");
    TlsClient old(port);
    on_loop([this] { listener->reload(); });
    EXPECT_EQ(TlsClient(port).certificate_name(), "second");
    old.send(post());
    EXPECT_TRUE(old.read_reply(9).starts_with("HTTP/1.1 200 ")) << "connections go on";
}

TEST_F(TlsListeners, FailedReloadKeepsTheCertificate) {
    start();
    key.write("nonsense");
    on_loop([this] { listener->reload(); });
    EXPECT_EQ(TlsClient(port).certificate_name(), "first");
    finish();
    EXPECT_NE(log_file.text().find(" note certificate and key stay as they were: " + key.name() + ": "),
              std::string::npos)
        << log_file.text();
}

TEST_F(TlsListeners, ReloadWaitsForNoPipe) {
    start();
    std::filesystem::remove(certificate.name());
    ASSERT_EQ(mkfifo(certificate.name().c_str(), 0600), 0);
    on_loop([this] { listener->reload(); });
    EXPECT_EQ(TlsClient(port).certificate_name(), "first");
    finish();
    EXPECT_NE(log_file.text().find(" note certificate and key stay as they were: " + certificate.name() +
                                   ": cannot be used for TLS: expected a file\n"),
              std::string::npos)
        << log_file.text();
}

TEST_F(TlsListeners, KeyOfAnotherCertificateIsRefused) {
    TestFile other_certificate;
    TestFile other_key;
    write_tls_files("other", other_certificate, other_key);
    options.tls->key = other_key.name();
    try {
        start();
        ADD_FAILURE();
    } catch (const std::runtime_error& error) {
        EXPECT_TRUE(std::string(error.what()).starts_with(other_key.name() + ": cannot be used for TLS: "))
            << error.what();
    }
}

TEST_F(TlsListeners, FilesThatAreNotThereAreNamed) {
    options.tls->certificate = "/nowhere/cert.pem";
    EXPECT_THROW(
        try { start(); } catch (const std::runtime_error& error) {
            EXPECT_STREQ(error.what(), "/nowhere/cert.pem: cannot be used for TLS: No such file or directory");
            throw;
        },
        std::runtime_error);
}

} // namespace
} // namespace cmpihost::http
