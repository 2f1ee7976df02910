#include "host/cli/count_verb.h"

#include "host/cli/answer.h"
#include "host/cli/classes.h"
#include "host/cli/schema_files.h"
#include "host/cli/session.h"
#include "host/cli/table.h"

namespace cmpihost {

namespace {

/// A row for each class; what a class answers with an error instead of names is told in place of the number.
std::vector<Row> count_rows(Session& session, const mof::Schema& schema, const std::string& name_space) {
    std::vector<Row> rows{{"CLASS", "INSTANCES"}};
    for (const mof::ClassDeclaration& declaration : schema.classes()) {
        if (!is_listed(declaration))
            continue;
        Request request;
        request.operation = Request::Operation::enumerate_instance_names;
        request.path.class_name = declaration.name;
        request.path.name_space = name_space;
        std::size_t count = 0;
        const Answer answer = session.ask(request, [&count](const Object&, bool) { ++count; });
        rows.push_back(
            {declaration.name, answer.rc == CMPI_RC_OK ? std::to_string(count) : std::string(rc_name(answer.rc))});
    }
    return rows;
}

} // namespace

int count_instances(const Options& options, const Streams& streams) {
    if (!options.request.path.class_name.empty())
        return answer_request(options, streams);
    const mof::Schema schema = load_schema(options);
    Session session(options, streams);
    const std::vector<Row> rows = count_rows(session, schema, options.name_space);
    session.close();
    return print(streams, table_text(rows, wants_colour(options.colour, streams.out)));
}

} // namespace cmpihost
