// The verbs of a build without a server.
#include "host/cli/passwd_verb.h"
#include "host/cli/serve_verb.h"
#include "host/cli/worker_verb.h"

namespace cmpihost {

namespace {

int refuse_all(const Streams& streams) {
    return refuse(streams, "this build has no server");
}

} // namespace

int serve(const std::vector<std::string>&, const Streams& streams) {
    return refuse_all(streams);
}

int work(const std::vector<std::string>&, const Streams& streams) {
    return refuse_all(streams);
}

int set_password(const std::vector<std::string>&, const Streams& streams) {
    return refuse_all(streams);
}

} // namespace cmpihost
