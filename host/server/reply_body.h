// Where the bytes of a reply go while it is made.
#pragma once

#include "host/server/contexts.h"
#include "host/server/question.h"

namespace cmpihost::server {

/// Takes encoded objects: each is appended to the buffer and then told.
class ObjectOutput {
  public:
    virtual ~ObjectOutput() = default;

    virtual std::string& buffer() = 0;

    /// What was appended since the last call is an object.
    virtual void object_ended() = 0;

    /// Whether it took more than it may. What it held is gone then, and what comes is thrown away.
    virtual bool is_full() const = 0;
};

/// A reply's body on its way to a sink, in parts of about 96 KiB.
class ReplyBody : public ObjectOutput {
  public:
    /// @param limit bytes of the whole body
    ReplyBody(ReplySink& sink, std::size_t limit);

    std::string& buffer() override { return buffer_; }
    void object_ended() override;
    bool is_full() const override { return full_; }

    /// Passes bytes on that are there already.
    void append(std::string_view bytes);

    /// Makes void what was written so far.
    void discard();

    /// Passes on what is left in the buffer.
    void finish();

  private:
    ReplySink& sink_;
    std::size_t limit_;
    std::string buffer_;
    std::size_t passed_on_ = 0;
    bool full_ = false;
};

/// The objects of an enumeration that is being opened.
class OpenedObjects : public ObjectOutput {
  public:
    /// @param limit bytes of all objects
    explicit OpenedObjects(std::size_t limit) : limit_(limit) {}

    std::string& buffer() override { return objects_.bytes; }
    void object_ended() override;
    bool is_full() const override { return full_; }

    EncodedObjects take() { return std::move(objects_); }

  private:
    std::size_t limit_;
    EncodedObjects objects_;
    bool full_ = false;
};

} // namespace cmpihost::server
