#include "host/cli/graph_verb.h"

#include "host/cli/answer_check.h"
#include "host/cli/call_text.h"
#include "host/cli/graph_output.h"
#include "host/cli/output.h"
#include "host/cli/progress.h"
#include "host/cli/schema_files.h"
#include "host/cli/session.h"

#include <stdexcept>

namespace cmpihost {

namespace {

/// @throws std::runtime_error: a class that no graph can start at
void check_start(const mof::Schema& schema, const std::optional<Object>& start) {
    if (!start)
        return;
    const mof::ClassDeclaration* declaration = schema.find(start->class_name);
    if (declaration == nullptr)
        throw std::runtime_error("OBJECT: class " + start->class_name + " is not declared in the schema");
    if (declaration->association)
        throw std::runtime_error("OBJECT: class " + start->class_name + " is an association, expected one of objects");
}

void note(std::FILE* err, unsigned count, const char* what, const char* more) {
    if (count > 0)
        std::fprintf(err, "note: %u %s%s%s\n", count, what, count == 1 ? "" : "s", more);
}

void tell(const GraphWalk::Notes& notes, std::size_t limit, std::FILE* err) {
    note(err, notes.null_results, "null result", "");
    note(err, notes.invalid_results, "invalid result", "");
    note(err, notes.left_out, "answer", " left out: given to any association, and not among the reference names");
    if (notes.limited)
        std::fprintf(err, "note: there are more than %zu objects; --limit takes another number\n", limit);
    if (notes.enumerated)
        std::fprintf(err, "note: of so many objects, ties are those that the associations' instance names tell\n");
    if (notes.errors > 0)
        std::fprintf(err, "%u request%s failed, the first: %s\n", notes.errors, notes.errors == 1 ? "" : "s",
                     printable(notes.first_error).c_str());
}

std::string shown(const Graph& graph, const mof::Schema& schema, GraphFormat format) {
    switch (format) {
    case GraphFormat::dot:
        return dot_of(graph, schema);
    case GraphFormat::json:
        return json_of(graph);
    case GraphFormat::text:
        break;
    }
    return text_of(graph, schema);
}

int print_graph(const Options& options, const Streams& streams, const mof::Schema& schema, const GraphWalk& walk,
                const AnswerCheck& check) {
    if (print(streams, shown(walk.graph(), schema, options.graph_format)) != exit_ok)
        return exit_output;
    tell(walk.notes(), options.limit, streams.err);
    check.tell(streams.err);
    if (walk.notes().errors > 0)
        return exit_cim_error;
    return check.found() ? exit_findings : exit_ok;
}

/// Asks a provider for whole answers, which are checked.
GraphWalk::Ask ask_by(Session& session, AnswerCheck& check, Progress& progress) {
    return [&session, &check, &progress](const Request& request) {
        progress.tell(call_text(request));
        std::vector<Object> objects;
        Answer answer = session.ask(request, [&](Object object, bool is_instance) {
            check.add(request, object, is_instance);
            objects.push_back(std::move(object));
        });
        check.add(request, answer);
        answer.objects = std::move(objects);
        return answer;
    };
}

} // namespace

int show_graph(const Options& options, const Streams& streams) {
    Progress progress(streams.err);
    const mof::Schema schema = load_schema(options);
    check_start(schema, options.start);
    AnswerCheck check(options);
    Session session(options, streams);
    GraphWalk walk(schema, ask_by(session, check, progress), options.name_space, options.limit);
    options.start ? walk.start_at(*options.start) : walk.start_everywhere();
    walk.run();
    session.close();
    progress.end();
    return print_graph(options, streams, schema, walk, check);
}

} // namespace cmpihost
