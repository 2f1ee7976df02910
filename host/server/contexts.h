// Open enumerations: what the pull operations go on with.
#pragma once

#include "host/server/settings.h"
#include "host/server/status.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <string_view>
#include <unordered_map>

namespace cmpihost::server {

/// Encoded objects, one after the other.
struct EncodedObjects {
    std::string bytes{};
    std::vector<std::size_t> ends{}; ///< where each object ends in `bytes`
};

/// Which operation a context is pulled with.
enum class PullKind : std::uint8_t { instances_with_path, instance_paths };

/// The open enumerations of all clients. Several threads may use it.
class Contexts {
  public:
    using Clock = std::function<std::chrono::steady_clock::time_point()>;

    /// @param settings limits; must outlive this
    explicit Contexts(const Settings& settings, Clock clock = std::chrono::steady_clock::now);
    ~Contexts();

    /// The time for which a context is kept between operations, of what the client asked for.
    /// @return nothing: the client asked for 0 (never expires) or for longer than is granted
    std::optional<std::chrono::seconds> granted(const std::uint32_t* operation_timeout) const;

    /// What an opening or pulling operation answers with.
    struct Pulled {
        Status status{};
        std::string bytes{};
        std::size_t objects = 0;
        std::string context{}; ///< empty at the end of the sequence
    };

    /// Answers the first objects, and keeps the others for later.
    /// @param most how many the client takes at once
    Pulled open(PullKind kind, std::string_view name_space, EncodedObjects objects, std::size_t most,
                std::chrono::seconds timeout);

    /// Answers the next objects. An unknown or expired context, and one of another kind or namespace, are invalid.
    Pulled pull(std::string_view context, PullKind kind, std::string_view name_space, std::size_t most);

    /// Ends an enumeration.
    Status close(std::string_view context, std::string_view name_space);

  private:
    struct Context;
    using Map = std::unordered_map<std::string, std::unique_ptr<Context>>;

    Map::iterator find(std::string_view context, std::string_view name_space);
    void expire();
    Pulled take(Context& context, std::size_t most) const;
    void forget(Map::iterator at);

    const Settings& settings_;
    Clock clock_;
    std::mutex mutex_;
    Map contexts_;
    std::size_t bytes_ = 0; ///< that all contexts hold
};

} // namespace cmpihost::server
