#include "simulator/commands.h"
#include "simulator/scenario_parts.h"

namespace switchsim {

void read_clock(TableReader& root, Switch& contents) {
    auto reader = root.table("clock");
    if (!reader)
        return;
    contents.now = reader->seconds("now").value_or(0);
    contents.seed = reader->integer("seed", 0, std::numeric_limits<std::uint64_t>::max()).value_or(0);
    reader->finish();
}

void read_events(TableReader& root, Switch& contents) {
    for (TableReader& reader : root.tables("event")) {
        Event event;
        const auto at = reader.seconds("at");
        if (!at)
            reader.missing("at", "seconds from 0 to 1000000000");
        event.at = at.value_or(0);
        event.lasts = reader.seconds("for");
        const auto command = reader.text("do");
        if (!command)
            reader.missing("do", "a command like \"set tunnel 1 status down\"");
        event.command = command.value_or("");
        event.rows = reader.text("rows").value_or("");
        if (command && !is_event_command(words_of(event)))
            reader.fail("do", "a command like \"set tunnel 1 status down\", or \"add\" with rows");
        reader.finish();
        contents.events.push_back(std::move(event));
    }
}

} // namespace switchsim
