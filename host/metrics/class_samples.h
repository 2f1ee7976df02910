// The samples of a class's objects.
#pragma once

#include "host/broker/held.h"
#include "host/metrics/lines.h"
#include "host/metrics/plan.h"

namespace cmpihost::metrics {

/// The text of a scrape, in parts.
using Parts = std::vector<std::string>;

/// Gives the memory of one text after the other.
class Spare {
  public:
    explicit Spare(Parts parts) : parts_(std::move(parts)) {}

    /// An empty text.
    std::string take();

  private:
    Parts parts_;
    std::size_t next_ = 0;
};

/// Finds a property of one class's objects, which mostly have it at the same place.
class Finder {
  public:
    explicit Finder(std::string_view name) : name_(name) {}

    /// Null if there is none.
    const HeldProperty* find(const HeldProperties& properties) {
        if (place_ < properties.count && properties[place_].name == known_)
            return &properties[place_];
        return look_for(properties);
    }

    /// Objects of another call come, with other names.
    void begin_call() { known_ = nullptr; }

  private:
    const HeldProperty* look_for(const HeldProperties& properties);

    std::string_view name_;
    const Name* known_ = nullptr;
    std::size_t place_ = 0;
};

class ClassSamples {
  public:
    /// @param plan outlives this
    /// @param lines likewise; memory for labels
    ClassSamples(const ClassPlan& plan, Spare& spare, Lines& lines);

    /// Objects come that live in another call than those before.
    void begin_call();

    void add(const HeldObject& object);

    std::uint64_t objects() const { return objects_; }
    std::uint64_t doubles() const { return doubles_; } ///< left out: their labels are those of another object

    /// Hands over the texts of all metrics, those without samples empty.
    void move_to(Parts& parts);

  private:
    /// A metric's samples while they come.
    struct Family {
        const Metric* metric;
        Finder finder;
        std::string text;
    };

    bool write_labels(const HeldObject& object);
    void add(Family& family, const HeldProperty& property) const;
    void add_states(Family& family, const HeldProperty& property) const;

    std::vector<Family> families_;
    std::vector<std::pair<const Label*, Finder>> labels_;
    Lines& lines_; ///< labels of each object, from brace to brace and with the blank after them
    std::uint64_t objects_ = 0;
    std::uint64_t doubles_ = 0;
};

} // namespace cmpihost::metrics
