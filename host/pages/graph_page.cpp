// All objects and what ties them, as far as they can be drawn.
#include "host/pages/html.h"
#include "host/pages/objects.h"
#include "host/pages/site_parts.h"
#include "host/pages/svg.h"
#include "host/pages/timed_ask.h"

namespace cmpihost::pages {

namespace {

constexpr std::size_t most_objects = 300;

std::string notes_of(const GraphWalk& walk, bool late) {
    const Graph& graph = walk.graph();
    std::string text =
        counted(graph.objects.size(), "object") + ", " + counted(graph.edges.size(), "association") + ".";
    if (walk.notes().limited)
        text += " There are more objects: these are the first ones and their neighbours. The page of an object draws "
                "what is around it.";
    if (late)
        text += " Not all were asked, since that takes long.";
    if (walk.notes().errors > 0)
        text += " " + counted(walk.notes().errors, "request") + " failed, the first: " + walk.notes().first_error;
    return "<p>" + escaped(text) + "</p>\n";
}

} // namespace

Page graph_page(const Visit& visit) {
    TimedAsk timed(visit.main, visit.settings);
    GraphWalk walk(
        visit.main.schema, [&timed](const Request& request) { return timed(request); }, visit.main.name, most_objects);
    walk.start_everywhere();
    walk.run();
    std::string body = notes_of(walk, timed.is_late());
    if (!walk.graph().objects.empty())
        body += scrolled(
            "Drawing", svg_of(walk.graph(), layout_of(walk.graph()), visit.main.schema, "Objects and associations",
                              [&visit](const Object& object) { return object_link(visit.main, visit.main, object); }));
    return {200, "text/html; charset=utf-8", page("Graph", link("/", "Classes"), body)};
}

} // namespace cmpihost::pages
