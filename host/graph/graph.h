// Walks from object to object along the associations.
#pragma once

#include "host/broker/broker.h"
#include "host/mof/schema.h"

#include <functional>
#include <map>
#include <unordered_map>

namespace cmpihost {

struct GraphEdge {
    std::string association; ///< its class
    std::size_t from;        ///< the object that was asked
    std::size_t to;          ///< the object that it answered
    bool both;               ///< the other one answers the same
};

/// Objects in the order in which they were found, and what ties them.
struct Graph {
    std::vector<Object> objects;
    std::vector<GraphEdge> edges;
};

/// A text that all spellings of an object have in common, and no other object.
std::string identity(const Object& object);

/// Objects are the same if their classes and keys are: host, namespace, the order of keys, and upper or lower case of
/// names do not count. Every object is asked for its associator names once per association class of the schema.
///
/// A provider may answer some object to whatever it is asked. So each object is first asked for an association class
/// that does not exist; what it answers to that is drawn only where its reference names of the association asked for
/// name the same object.
///
/// Asking a large system's objects one by one would take time by the square of their number. Once there are more than a
/// thousand, the ties of all that are not yet asked are those that the instance names of the associations tell.
class GraphWalk {
  public:
    using Ask = std::function<Answer(const Request& request)>;

    /// What happened beside the graph.
    struct Notes {
        unsigned null_results = 0;
        unsigned invalid_results = 0;
        unsigned left_out = 0;   ///< answers that the object gives to any association
        unsigned errors = 0;     ///< CIM errors other than that a class or operation is not served
        std::string first_error; ///< empty without errors
        bool limited = false;    ///< there are more objects than the limit
        bool enumerated = false; ///< ties were taken from the instance names of the associations
    };

    /// @param limit of objects. Where it is too low for all, half of it is for the neighbours of the first ones.
    GraphWalk(const mof::Schema& schema, Ask ask, std::string name_space, std::size_t limit);

    /// Starts at the instances of every class that is no association.
    void start_everywhere();

    /// Starts at the instances of a class that have these keys; if there are none, at the object itself if it has keys.
    void start_at(const Object& object);

    /// Starts at an object, without a look whether it is there.
    void start_with(const Object& object) { place_of(object); }

    /// Asks the objects that it started at, and not those that it finds.
    void run_once();

    /// Goes on from there until nothing new is found.
    void run();

    const Graph& graph() const { return graph_; }
    const Notes& notes() const { return notes_; }

  private:
    std::vector<Object> names(Request::Operation operation, const Object& path, const std::string& association);
    void note_status(const Request& request, const Answer& answer);
    std::optional<std::size_t> place_of(const Object& object);
    void leave_room();
    void visit(std::size_t source);
    void ask(std::size_t source);
    void look_up(std::size_t source);
    void read_ties();
    std::size_t end_of(const Object& object);
    bool is_confirmed(std::size_t source, const std::string& association, const Object& target);
    void add_edge(std::size_t source, const std::string& association, const Object& target);
    void drop_inherited();

    /// An end of associations as their instance names tell it.
    struct End {
        Object object;
        std::vector<std::pair<const std::string*, std::size_t>> ties; ///< association, and which end is the other one
    };

    const mof::Schema& schema_;
    Ask ask_;
    std::string name_space_;
    std::size_t limit_;
    Graph graph_;
    Notes notes_;
    std::unordered_map<std::string, std::size_t> places_; ///< of each object in graph_.objects
    std::vector<End> ends_;
    std::unordered_map<std::string, std::size_t> end_places_;                        ///< of each end in ends_
    std::map<std::tuple<std::string, std::size_t, std::size_t>, std::size_t> edges_; ///< likewise, lower end first
};

} // namespace cmpihost
