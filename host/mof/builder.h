// Puts declarations together to a schema.
#pragma once

#include "host/mof/schema.h"

#include <set>

namespace cmpihost::mof {

/// Takes declarations in the order of the files and holds each against what is known so far. Throws Refusal.
class Builder {
  public:
    Builder();

    /// Adds a class that has its own qualifiers, properties and methods only; those of its superclass are added.
    void add(ClassDeclaration declaration);
    void add(InstanceDeclaration declaration) { schema_.instances_.push_back(std::move(declaration)); }
    void add(QualifierDeclaration declaration);

    /// A qualifier with the type and flavors of its declaration.
    /// @param value nothing: the name stands alone, which means true, or NULL where it is no boolean
    Qualifier qualifier(const std::string& name, std::optional<Value> value, const Place& place) const;

    /// Whether this file (by its canonical path) is read for the first time.
    bool is_new_file(const std::string& path) { return files_.insert(path).second; }

    /// Ends the reading: every class that a property admits must be known now; those of parameters need not.
    Schema finish();

  private:
    const ClassDeclaration* superclass_of(const ClassDeclaration& declaration) const;
    void check_scope(const std::vector<Qualifier>& qualifiers, Scope scope, const Place& place,
                     const std::string& described) const;
    void check_scopes(const ClassDeclaration& declaration) const;
    void check_own_property(const ClassDeclaration& declaration, PropertyDeclaration& own,
                            const ClassDeclaration* parent) const;

    Schema schema_;
    std::set<std::string> files_;
};

} // namespace cmpihost::mof
