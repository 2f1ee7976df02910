#include "host/http/places.h"

#include <algorithm>

namespace cmpihost::http {

Places::Place::Place(Places& places, const Source& source, bool counted, std::function<void()> close)
    : places_(places), source_(source), counted_(counted), close_(std::move(close)) {
    ++places_.taken_;
    if (counted_)
        ++places_.taken_by_[source_];
}

Places::Place::~Place() {
    if (idle_)
        places_.idle_.erase(at_);
    --places_.taken_;
    if (counted_ && --places_.taken_by_[source_] == 0)
        places_.taken_by_.erase(source_);
    places_.tell();
}

void Places::Place::set_idle(bool idle) {
    if (idle == idle_)
        return;
    idle_ = idle;
    if (!idle) {
        places_.idle_.erase(at_);
        return;
    }
    at_ = places_.idle_.insert(places_.idle_.end(), this);
    places_.tell();
}

Places::Room Places::make_room(const Source& source, bool counted) {
    const auto found = counted ? taken_by_.find(source) : taken_by_.end();
    if (found != taken_by_.end() && found->second >= limits_.connections_per_address && !close_idle(&source))
        return Room::none_for_address;
    return taken_ < limits_.connections || close_idle(nullptr) ? Room::yes : Room::no;
}

/// Closing drops the place. @param source null: wherever it came from
bool Places::close_idle(const Source* source) {
    const auto found = std::ranges::find_if(idle_, [source](const Place* place) {
        return source == nullptr || (place->counted_ && place->source_ == *source);
    });
    if (found == idle_.end())
        return false;
    const auto close = (*found)->close_;
    close();
    return true;
}

void Places::tell() const {
    if (changed_)
        changed_();
}

} // namespace cmpihost::http
