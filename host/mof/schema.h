// CIM classes as MOF files declare them.
#pragma once

#include "host/cim/names.h"
#include "host/mof/qualifiers.h"

namespace cmpihost::mof {

/// Why a MOF file could not be read.
struct Error {
    Place place;
    std::string what; ///< what is wrong, and what was expected

    std::string text() const; ///< one line: "FILE:LINE:COLUMN: WHAT"
};

/// Whether a string holds an object, as the qualifiers EmbeddedObject and EmbeddedInstance say.
enum class Embedded : std::uint8_t { no, object, instance };

/// A property or reference of a class.
struct PropertyDeclaration {
    std::string name;
    std::string type;                  ///< as in cmpihost::Property: "uint16", "string[]", "reference"
    std::string reference_class;       ///< the class that a reference admits; empty for other types
    std::uint32_t array_size = 0;      ///< 0: any
    std::vector<Qualifier> qualifiers; ///< own ones first, then those of the property that it overrides
    Value default_value;               ///< of the type
    Embedded embedded = Embedded::no;
    bool key = false;
    bool required = false;   ///< instances give it a value other than NULL
    std::string origin;      ///< the class that declared it first
    bool propagated = false; ///< from a superclass, and not overridden
    Place place;
};

/// A parameter of a method.
struct ParameterDeclaration {
    std::string name;
    std::string type; ///< also "reference[]"
    std::string reference_class;
    std::uint32_t array_size = 0; ///< 0: any
    std::vector<Qualifier> qualifiers;
};

/// A method of a class.
struct MethodDeclaration {
    std::string name;
    std::string type; ///< of what it returns; no array, no reference
    std::vector<ParameterDeclaration> parameters;
    std::vector<Qualifier> qualifiers;
    std::string origin;
    bool propagated = false;
    Place place;
};

/// A class, with everything that it inherits.
struct ClassDeclaration {
    std::string name;
    std::string superclass;                      ///< empty for none
    std::vector<Qualifier> qualifiers;           ///< own ones first
    std::vector<PropertyDeclaration> properties; ///< inherited ones first
    std::vector<MethodDeclaration> methods;      ///< inherited ones first
    bool association = false;
    bool abstract = false;
    Place place;
    NameMap<std::size_t> property_index;

    /// The property of this name, in any case; null if there is none.
    const PropertyDeclaration* property(std::string_view property_name) const;

    /// The method of this name, in any case; null if there is none.
    const MethodDeclaration* method(std::string_view method_name) const;
};

/// A property of a declared instance.
struct NamedValue {
    std::string name;
    Value value;
};

/// An instance that a MOF file declares. It is not checked against its class, which need not be known.
struct InstanceDeclaration {
    std::string class_name;
    std::string alias; ///< with its $; empty for none. A value that is an alias is its text.
    std::vector<NamedValue> properties;
    Place place;

    /// The value of this name, in any case; null if there is none.
    const Value* value(std::string_view property_name) const;
};

/// The classes of some MOF files. Pragmas other than include are read over.
///
/// A qualifier has the type and flavors of its declaration, which must stand before its first use. One that nobody
/// declared is taken for what its value is, and for one that spreads and may be overridden.
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

    /// The qualifier declaration of this name, in any case; null if there is none.
    const QualifierDeclaration* qualifier(std::string_view name) const;

    /// All qualifier declarations: this program's own, unless a file declares them, then those of the files.
    const std::vector<QualifierDeclaration>& qualifiers() const { return qualifiers_; }

    /// All declared instances in their order.
    const std::vector<InstanceDeclaration>& instances() const { return instances_; }

  private:
    friend class Builder;

    std::vector<ClassDeclaration> classes_;
    NameMap<std::size_t> index_;
    std::vector<QualifierDeclaration> qualifiers_;
    NameMap<std::size_t> qualifier_index_;
    std::vector<InstanceDeclaration> instances_;
};

} // namespace cmpihost::mof
