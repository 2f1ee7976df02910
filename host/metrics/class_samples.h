// The samples of a class's objects.
#pragma once

#include "host/broker/held.h"
#include "host/metrics/lines.h"
#include "host/metrics/plan.h"

namespace cmpihost::metrics {

/// What a sample has.
struct Cell {
    enum class Kind { none, natural, integer, real, truth, states };
    Kind kind = Kind::none;
    std::uint64_t bits = 0; ///< of the number; of states where they begin
};

/// Collects what objects have while a provider gives them, and writes it when all have come: both are faster when
/// neither has the processor's caches in turns with the other. Used again, it needs no more memory.
class ClassSamples {
  public:
    /// @param plan outlives this
    explicit ClassSamples(const ClassPlan& plan);

    /// Forgets all samples.
    void clear();

    /// Objects come that live in another call than those before.
    void begin_call() { names_.clear(); }

    void add(const HeldObject& object);

    /// No more objects come: leaves out those whose labels are those of another object before.
    void end() { doubles_ = lines_.end(); }

    std::uint64_t objects() const { return lines_.size(); }
    std::uint64_t doubles() const { return doubles_; } ///< were left out

    /// Each metric that has samples.
    void write(Pieces& pieces) const;

  private:
    /// Where a class's objects mostly have a property.
    struct Place {
        std::string_view name;
        Text opening;                        ///< what is written before what the property has
        const Metric* with_states = nullptr; ///< whose values it has; null: they are numbers or labels
        bool is_there = false;
        std::size_t index = 0;

        void look_for(const HeldProperties& properties);
        const HeldProperty* in(const HeldProperties& properties) const {
            return is_there ? &properties[index] : nullptr;
        }
    };

    void find_places(const HeldProperties& properties);
    void add_labels(const HeldProperties& properties);
    Cell states_in(const HeldProperty& property, const Metric& metric);
    void write(Pieces& pieces, std::size_t index) const;
    void append_states(Text& out, const Metric& metric, std::string_view line, std::size_t first) const;

    const ClassPlan* plan_;
    std::vector<Place> metrics_;       ///< of each metric of the plan
    std::vector<Place> labels_;        ///< of each label of the plan
    std::vector<const Name*> names_;   ///< of the properties of the object for which the places hold
    Lines lines_;                      ///< labels of each object, from brace to brace and with the blank after them
    std::vector<Cell> cells_;          ///< of each object in turn, one for each metric; then some that are free
    std::vector<std::uint8_t> states_; ///< whether an object is in each of a metric's states
    std::uint64_t doubles_ = 0;
};

} // namespace cmpihost::metrics
