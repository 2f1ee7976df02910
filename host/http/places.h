// How many clients there may be.
#pragma once

#include "host/http/address.h"

#include <functional>
#include <list>
#include <map>

namespace cmpihost::http {

/// The places of all connections. One that is idle gives way to a new one when there are too many.
class Places {
  public:
    explicit Places(const Limits& limits) : limits_(limits) {}
    Places(const Places&) = delete;
    Places& operator=(const Places&) = delete;

    /// A connection's place, until it is dropped.
    class Place {
      public:
        Place(Places& places, const Source& source, bool counted, std::function<void()> close);
        ~Place();
        Place(const Place&) = delete;
        Place& operator=(const Place&) = delete;

        /// Whether the connection may be closed to make room.
        void set_idle(bool idle);

      private:
        friend class Places;
        Places& places_;
        Source source_;
        bool counted_; ///< by address
        bool idle_ = false;
        std::function<void()> close_;
        std::list<Place*>::iterator at_;
    };

    enum class Room { yes, no, none_for_address };

    /// Whether one more may come from there. May close an idle one for it.
    Room make_room(const Source& source, bool counted);

    std::size_t taken() const { return taken_; }

    /// Called whenever a place became free or idle.
    void on_change(std::function<void()> changed) { changed_ = std::move(changed); }

  private:
    bool close_idle(const Source* source);
    void tell() const;

    Limits limits_;
    std::list<Place*> idle_; ///< the one that is idle for the longest time in front
    std::size_t taken_ = 0;
    std::map<Source, std::size_t> taken_by_;
    std::function<void()> changed_;
};

} // namespace cmpihost::http
