#include "host/http/request_reader.h"

#include "host/http/request_line.h"
#include "host/http/text.h"

#include <boost/beast/http/basic_parser.hpp>

#include <algorithm>
#include <cstring>

namespace cmpihost::http {

namespace beast = boost::beast;

namespace {

constexpr std::size_t first_room = 4096;
constexpr std::size_t body_room = std::size_t{64} << 10;
constexpr std::size_t shortest_chunk_end = 5; ///< "0", a line's end and an empty line

unsigned status_of(const beast::error_code& error) {
    if (error == beast::http::error::header_limit)
        return 431;
    if (error == beast::http::error::body_limit)
        return 413;
    return 400;
}

} // namespace

/// Takes what the parser finds.
class RequestReader::Parser : public beast::http::basic_parser<true> {
  public:
    Parser(std::size_t header_bytes, std::size_t body_bytes) {
        eager(false);
        header_limit(static_cast<std::uint32_t>(header_bytes));
        body_limit(body_bytes);
    }

    RequestHead head;
    std::string body;
    bool begun = false;
    std::size_t head_bytes = 0; ///< taken so far
    bool head_told = false;

  private:
    using View = beast::string_view;
    using Error = beast::error_code;

    void on_request_impl(beast::http::verb, View method, View target, int version, Error&) override {
        head.method = std::string(method);
        head.target = std::string(target);
        head.version_1_1 = version == 11;
    }
    void on_response_impl(int, View, int, Error&) override {}
    void on_field_impl(beast::http::field name, View text, View value, Error&) override {
        if (is_header_done())
            return; // a trailer says nothing that we ask for
        if (name == beast::http::field::authorization)
            head.authorizations.emplace_back(std::string_view(value.data(), value.size()));
        else
            head.fields.push_back({std::string(text), std::string(value)});
    }
    void on_header_impl(Error&) override {}
    void on_body_init_impl(const boost::optional<std::uint64_t>&, Error&) override {}
    std::size_t on_body_impl(View part, Error&) override {
        body.append(part.data(), part.size());
        return part.size();
    }
    void on_chunk_header_impl(std::uint64_t, View, Error&) override {}
    std::size_t on_chunk_body_impl(std::uint64_t, View part, Error&) override {
        body.append(part.data(), part.size());
        return part.size();
    }
    void on_finish_impl(Error&) override {}
};

RequestReader::RequestReader(std::size_t header_bytes, std::size_t body_bytes)
    : header_bytes_(header_bytes), body_bytes_(body_bytes),
      parser_(std::make_unique<Parser>(header_bytes, body_bytes)) {}

RequestReader::~RequestReader() {
    OPENSSL_cleanse(bytes_.data(), bytes_.size());
}

std::span<char> RequestReader::room() {
    if (begin_ > 0) {
        std::memmove(bytes_.data(), bytes_.data() + begin_, end_ - begin_);
        end_ -= begin_;
        begin_ = 0;
    }
    const std::size_t wanted = parser_->is_header_done() ? body_room : std::min(end_ * 2, header_bytes_ + 1);
    if (bytes_.size() < std::max(wanted, first_room)) {
        std::vector<char> larger(std::max(wanted, first_room));
        std::copy_n(bytes_.begin(), end_, larger.begin());
        OPENSSL_cleanse(bytes_.data(), bytes_.size());
        bytes_.swap(larger);
    }
    return std::span(bytes_).subspan(end_);
}

void RequestReader::received(std::size_t count) {
    end_ += count;
}

void RequestReader::take(std::size_t count) {
    begin_ += count;
}

RequestReader::Progress RequestReader::refuse(unsigned status) {
    status_ = status;
    return Progress::refused;
}

RequestReader::Progress RequestReader::advance() {
    if (status_ != 0)
        return Progress::refused;
    return parser_->head_told ? read_body() : read_head();
}

RequestReader::Progress RequestReader::read_head() {
    while (!parser_->begun && begin_ < end_ && (bytes_[begin_] == '\r' || bytes_[begin_] == '\n'))
        take(1); // some clients end a body by an empty line
    if (begin_ == end_)
        return Progress::wants_more;
    parser_->begun = true;
    const std::span there = std::span(bytes_).subspan(begin_, end_ - begin_);
    const unsigned fault = parser_->head_bytes == 0 ? fault_of_first_line({there.data(), there.size()}) : 0;
    if (fault != 0)
        return refuse(fault);
    beast::error_code error;
    const std::size_t taken = parser_->put({there.data(), there.size()}, error);
    OPENSSL_cleanse(there.data(), taken); // there may be a password in it
    take(taken);
    parser_->head_bytes += taken;
    const bool wants_more = error == beast::http::error::need_more;
    if (parser_->head_bytes + (wants_more ? there.size() - taken : 0) > header_bytes_)
        return refuse(431);
    if (wants_more)
        return Progress::wants_more;
    if (error)
        return refuse(status_of(error));
    if (const auto length = parser_->content_length())
        parser_->head.length = *length;
    parser_->head.keep_alive = parser_->keep_alive();
    parser_->head_told = true;
    return Progress::head;
}

RequestReader::Progress RequestReader::read_body() {
    while (!parser_->is_done()) {
        const std::size_t there = end_ - begin_;
        // The parser must not be asked twice about less than the shortest end.
        if (there == 0 || (parser_->chunked() && there < shortest_chunk_end))
            return Progress::wants_more;
        beast::error_code error;
        take(parser_->put({bytes_.data() + begin_, there}, error));
        if (error == beast::http::error::need_more)
            return end_ - begin_ >= header_bytes_ ? refuse(400) : Progress::wants_more;
        if (error)
            return refuse(status_of(error));
    }
    return Progress::complete;
}

void RequestReader::next() {
    parser_ = std::make_unique<Parser>(header_bytes_, body_bytes_);
    if (bytes_.size() > body_room / 2 && begin_ == end_) { // idle connections keep little
        begin_ = end_ = 0;
        std::vector<char>().swap(bytes_);
    }
}

bool RequestReader::has_begun() const {
    return parser_->begun;
}

bool RequestReader::is_complete() const {
    return status_ == 0 && parser_->is_done();
}

RequestHead& RequestReader::head() {
    return parser_->head;
}

std::string& RequestReader::body() {
    return parser_->body;
}

} // namespace cmpihost::http
