// The objects of a reply as elements, straight from what the broker holds.
#pragma once

#include "host/server/path_encoder.h"

#include <functional>

namespace cmpihost::server {

/// Which element an object becomes.
enum class Form : std::uint8_t {
    instance_name,
    named_instance,
    instance,
    object_path,
    object_with_path,
    instance_path,
    instance_with_path,
};

/// Whether objects of this form are instances, or else paths.
bool has_instance(Form form);

/// Which properties are written.
struct Selection {
    const std::vector<std::string>* properties = nullptr; ///< null: all
    /// Properties that only subclasses of this class have are left out; null: none is.
    const mof::ClassDeclaration* shallow = nullptr;
};

/// Told of a property whose type is not the declared one, once for each class.
using TypeNote = std::function<void(const std::string& line)>;

/// Writes what cimxml's writers do. For the objects of one scope: it knows names by their addresses.
class ObjectEncoder {
  public:
    /// @param place, note must outlive the encoder
    ObjectEncoder(Form form, const cimxml::ReplyPlace& place, const Selection& selection, const TypeNote& note);

    /// Appends an object. @return where its path ends in `out`; where `out` ended before if the form has no path
    std::size_t append(std::string& out, const HeldObject& object);

  private:
    enum class Way : std::uint8_t { left_out, text, reference, other };

    /// How the n-th property is written, as long as it is of this name and type.
    struct Step {
        const Name* name = nullptr;
        CMPIType type = CMPI_null;
        Way way = Way::left_out;
        std::string begin{};
    };

    struct Plan {
        const Name* class_name;
        const mof::ClassDeclaration* declaration; ///< null: not declared
        std::string begin;
        std::vector<Step> steps{};
    };

    Plan& plan_for(const HeldObject& object);
    Step make_step(const Plan& plan, const HeldProperty& property) const;
    bool is_selected(const Plan& plan, std::string_view name) const;
    void check_type(const Plan& plan, const HeldProperty& property) const;
    std::size_t append_path(std::string& out, const HeldObject& object);
    void append_instance(std::string& out, const HeldObject& object);
    void append_property(std::string& out, const Plan& plan, const Step& step, const HeldProperty& property);

    Form form_;
    const cimxml::ReplyPlace& place_;
    Selection selection_;
    const TypeNote& note_;
    PathEncoder paths_;
    std::vector<Plan> plans_;
    std::size_t last_ = 0; ///< the plan used last
};

} // namespace cmpihost::server
