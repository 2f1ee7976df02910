// What a CIM-XML request asks for.
#pragma once

#include "host/cim/object.h"

namespace cmpihost::cimxml {

/// The name of a class, where a class is meant and no instance.
struct ClassName {
    std::string name;

    bool operator==(const ClassName&) const = default;
};

/// A class or qualifier declaration that a client sent. Its content is not kept: declarations come from MOF.
struct Declaration {
    std::string name;

    bool operator==(const Declaration&) const = default;
};

/// What a method is called on.
using Target = std::variant<ClassName, Object>;

/// A parameter of an intrinsic operation. A property list and an array of texts are a vector.
using Argument =
    std::variant<bool, std::uint32_t, std::string, std::vector<std::string>, ClassName, Object, Declaration>;

struct Parameter {
    std::string name; ///< as the standard spells it
    Argument value;
};

/// What a request tells before its parameters.
struct Envelope {
    std::string message_id;
    std::string protocol_version;
    std::string operation; ///< as sent
    std::string name_space;
    std::optional<Target> target; ///< of an extrinsic method; empty for an intrinsic operation
};

/// A request. Parameters that are NULL are left out.
struct Call {
    Envelope envelope;
    std::vector<Parameter> parameters;       ///< of an intrinsic operation
    std::vector<Property> method_parameters; ///< of an extrinsic method
};

/// The parameter of this name; null if it is absent or no T.
template <class T>
const T* argument(const Call& call, std::string_view name);

/// CIM status codes that requests are refused with.
enum class CimStatus : std::uint8_t { invalid_parameter = 4, not_supported = 7 };

/// Why there is no call. http_status is 400 or 501 with the text of a CIMError header; or 200 with a CIM error to
/// answer, and then the envelope holds what the reply repeats.
struct Refusal {
    unsigned http_status = 200;
    std::string cim_error{};
    Envelope envelope{};
    unsigned code = 0;
    std::string description{};
    bool of_target = false; ///< what a method is called on cannot be read; of it the envelope has the class
};

} // namespace cmpihost::cimxml
