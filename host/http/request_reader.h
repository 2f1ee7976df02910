// The bytes that a client sends, to requests.
#pragma once

#include "host/http/request_head.h"

#include <cstddef>
#include <memory>
#include <span>

namespace cmpihost::http {

/// Reads one request after the other from a stream of bytes. No sockets, no time: who calls it brings the bytes.
///
///     fill room(), tell received(); advance() until it wants more; after `complete`, next()
class RequestReader {
  public:
    /// What became of the bytes so far.
    enum class Progress {
        wants_more,
        head,     ///< head() is there; the body comes with the next calls
        complete, ///< body() is there, too
        refused,  ///< status() says why; nothing further can be read
    };

    RequestReader(std::size_t header_bytes, std::size_t body_bytes);
    ~RequestReader();
    RequestReader(const RequestReader&) = delete;
    RequestReader& operator=(const RequestReader&) = delete;

    /// Where the next bytes go. Never empty while more is wanted.
    std::span<char> room();
    void received(std::size_t count);

    Progress advance();

    /// Goes on to the next request, of which some bytes may be there already.
    void next();

    /// Whether bytes of the current request came.
    bool has_begun() const;

    /// Whether bytes came that were not looked at yet.
    bool has_more() const { return begin_ < end_; }

    /// Whether nothing more belongs to the current request.
    bool is_complete() const;

    RequestHead& head();
    std::string& body();

    /// Of a refused request: the status of HTTP that answers it.
    unsigned status() const { return status_; }

  private:
    class Parser;

    Progress read_head();
    Progress read_body();
    Progress refuse(unsigned status);
    void take(std::size_t count);

    std::size_t header_bytes_;
    std::size_t body_bytes_;
    std::vector<char> bytes_;
    std::size_t begin_ = 0; ///< of what was not looked at yet
    std::size_t end_ = 0;
    unsigned status_ = 0;
    std::unique_ptr<Parser> parser_;
};

} // namespace cmpihost::http
