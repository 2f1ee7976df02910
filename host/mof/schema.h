// CIM classes as MOF files declare them.
#pragma once

#include "host/cim/names.h"
#include "host/cim/object.h"

#include <span>

namespace cmpihost::mof {

/// Where something stands in a MOF file. Lines and columns (bytes) begin with 1; line 0 means the file as a whole.
struct Place {
    std::string file;
    unsigned line = 0;
    unsigned column = 0;

    std::string text() const; ///< "FILE:LINE:COLUMN"
};

/// Why a MOF file could not be read.
struct Error {
    Place place;
    std::string what; ///< what is wrong, and what was expected

    std::string text() const; ///< one line: "FILE:LINE:COLUMN: WHAT"
};

/// A qualifier, or a property of a declared instance. A name alone has the value true.
struct NamedValue {
    std::string name;
    Value value;
};

/// A property or reference of a class.
struct PropertyDeclaration {
    std::string name;
    std::string type;            ///< as in cmpihost::Property: "uint16", "string[]", "reference"
    std::string reference_class; ///< the class that a reference admits; empty for other types
    std::vector<NamedValue> qualifiers;
    Value default_value;
    bool key = false;
    bool required = false; ///< instances give it a value other than NULL
    std::string origin;    ///< the class that declared it first
    Place place;
};

/// A class, with everything that it inherits.
struct ClassDeclaration {
    std::string name;
    std::string superclass; ///< empty for none
    std::vector<NamedValue> qualifiers;
    std::vector<PropertyDeclaration> properties; ///< inherited ones first
    bool association = false;
    bool abstract = false;
    Place place;
    NameMap<std::size_t> property_index;

    /// The property of this name, in any case; null if there is none.
    const PropertyDeclaration* property(std::string_view property_name) const;
};

/// An instance that a MOF file declares. It is not checked against its class, which need not be known.
struct InstanceDeclaration {
    std::string class_name;
    std::vector<NamedValue> properties;
    Place place;

    /// The value of this name, in any case; null if there is none.
    const Value* value(std::string_view property_name) const;
};

/// The classes of some MOF files. Methods, qualifier declarations and pragmas other than include are read over.
class Schema {
  public:
    /// Reads MOF files in order. A superclass must be declared before its subclasses, here or in an earlier file.
    /// A file is read once, however often it is included.
    static std::variant<Schema, Error> read(std::span<const std::string> files);

    /// Reads MOF text; `name` stands for the file in messages, and its folder is where included files are looked for.
    static std::variant<Schema, Error> read_text(const std::string& name, std::string_view text);

    /// The class of this name, in any case; null if it is not declared.
    const ClassDeclaration* find(std::string_view name) const;

    /// Whether a declared class is `ancestor` or derives from it.
    bool is_a(std::string_view name, std::string_view ancestor) const;

    /// All classes in the order of their declaration.
    const std::vector<ClassDeclaration>& classes() const { return classes_; }

    /// All declared instances in their order.
    const std::vector<InstanceDeclaration>& instances() const { return instances_; }

  private:
    friend class Builder;

    std::vector<ClassDeclaration> classes_;
    NameMap<std::size_t> index_;
    std::vector<InstanceDeclaration> instances_;
};

} // namespace cmpihost::mof
