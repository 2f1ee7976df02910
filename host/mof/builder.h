// Puts declarations together to a schema.
#pragma once

#include "host/mof/schema.h"

#include <set>

namespace cmpihost::mof {

/// Takes declarations in the order of the files and holds each against what is known so far. Throws Refusal.
class Builder {
  public:
    /// Adds a class that has its own properties only; those of its superclass are put in front of them.
    void add(ClassDeclaration declaration);
    void add(InstanceDeclaration declaration) { schema_.instances_.push_back(std::move(declaration)); }

    /// Whether this file (by its canonical path) is read for the first time.
    bool is_new_file(const std::string& path) { return files_.insert(path).second; }

    /// Ends the reading: every class that a reference admits must be known now.
    Schema finish();

  private:
    void check_own_property(const ClassDeclaration& declaration, PropertyDeclaration& own,
                            const ClassDeclaration* parent) const;
    void check_override(const ClassDeclaration& declaration, PropertyDeclaration& own,
                        const PropertyDeclaration& inherited) const;

    Schema schema_;
    std::set<std::string> files_;
};

} // namespace cmpihost::mof
