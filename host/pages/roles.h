// What the ends of an association are called.
#pragma once

#include "host/pages/timed_ask.h"

namespace cmpihost::pages {

/// The properties of an association that name an object and its neighbour; both empty if they are not known.
struct EndNames {
    std::string own;
    std::string other;
};

/// The ends of the ties of one association that lead from an object.
class Roles {
  public:
    /// @param space, path outlive it
    Roles(TimedAsk& ask, const server::Namespace& space, const Object& path, const std::string& association);

    /// As a reference's name tells them that has the neighbour in it, or else as the association declares them, if only
    /// one way fits the classes of both.
    EndNames of(const Object& neighbour) const;

  private:
    EndNames told(const Object& neighbour) const;
    EndNames declared(const Object& neighbour) const;

    const server::Namespace& space_;
    const Object& path_;
    const mof::ClassDeclaration* association_; ///< null: it is not declared
    std::vector<Object> references_;
};

} // namespace cmpihost::pages
