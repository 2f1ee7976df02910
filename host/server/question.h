// What a listener hands over for a request, and what it gets back.
#pragma once

#include "host/cimxml/call.h"

#include <chrono>

namespace cmpihost::server {

/// What a listener knows of itself.
struct ServerFigures {
    std::uint64_t since = 0;    ///< when it began, in seconds since 1970
    std::uint64_t requests = 0; ///< answered or refused so far
    std::uint64_t failures = 0; ///< of these those that did not end well
    std::uint64_t restarts = 0; ///< of the process that runs the providers
    std::uint64_t connections = 0;
};

/// A request for a page or for metrics, in place of an operation.
struct PageRequest {
    std::string target;               ///< path and query as sent
    std::chrono::milliseconds time{}; ///< that the client waits; 0: it did not say
    ServerFigures figures{};
};

/// A request, as HTTP brought it.
struct Question {
    std::string cim_method; ///< the header CIMMethod as sent
    std::string cim_object; ///< the header CIMObject as sent
    std::string host;       ///< what paths in the reply name as their host
    std::string body;
    std::optional<PageRequest> page{}; ///< what else is asked for; nothing: the operation in the body
};

/// What a request is about. Known once its body has been read; error replies repeat it, the log tells it.
struct Subject {
    cimxml::Envelope envelope;
    std::string class_name; ///< that the request names; empty if it names none
};

/// How a request ended.
struct Outcome {
    unsigned http_status = 200;       ///< with 400 and 501 there is no body
    std::string cim_error{};          ///< text of the header CIMError; empty for none
    unsigned cim_status = 0;          ///< the status code that the body tells
    std::uint64_t objects = 0;        ///< in the body
    std::vector<std::string> notes{}; ///< what the log is to say besides, one line each
    std::string content_type{};       ///< of a page: it has its body whatever the status
};

/// Takes a reply's body while it is made. Called by one thread at a time.
class ReplySink {
  public:
    virtual ~ReplySink() = default;

    /// Called once at most, before anything is appended.
    virtual void subject(const Subject& subject) = 0;

    /// The next part of the body.
    virtual void append(std::string_view part) = 0;

    /// What was appended so far is void: an error came after it.
    virtual void discard() = 0;
};

} // namespace cmpihost::server
