// cmpihost graph: what is drawn, and how.
#include "tests/host/cli/command_line_test.h"
#include "tests/host/mof/schema_file.h"

#include <nlohmann/json.hpp>

#include <cstdio>

namespace cmpihost {
namespace {

constexpr const char* net_mof = "[Abstract] class CIM_LogicalDevice {\n"
                                "};\n"
                                "class Net_Port : CIM_LogicalDevice {\n"
                                "    [Key] string Name;\n"
                                "    [Key] uint32 Slot;\n"
                                "};\n"
                                "class Net_Card {\n"
                                "    [Key] string InstanceID;\n"
                                "};\n"
                                "class Net_Rack {\n"
                                "    [Key] string Row;\n"
                                "};\n"
                                "[Association] class Net_Part {\n"
                                "    [Key] Net_Port REF Port;\n"
                                "    [Key] Net_Card REF Card;\n"
                                "};\n"
                                "[Association] class Net_OnCard : Net_Part {\n"
                                "};\n"
                                "[Association] class Net_Line {\n"
                                "    [Key] Net_Port REF Near;\n"
                                "    [Key] Net_Port REF Far;\n"
                                "};\n"
                                "[Association] class Net_Mounted {\n"
                                "    [Key] Net_Card REF Card;\n"
                                "    [Key] Net_Rack REF Rack;\n"
                                "};\n"
                                "[Association, Abstract] class Net_Tie {\n"
                                "    [Key] Net_Port REF Near;\n"
                                "    [Key] Net_Port REF Far;\n"
                                "};\n";

constexpr const char* whole_graph = "Port Name=p1, Slot=1\n"
                                    "  OnCard  <->  Card card \"1\"\n"
                                    "  Line    ->   Port p2\n"
                                    "\n"
                                    "Port p2\n"
                                    "  Line    <-   Port Name=p1, Slot=1\n"
                                    "  OnCard  <->  Card card \"1\"\n"
                                    "\n"
                                    "Port Name=p1, Slot=2\n"
                                    "  OnCard  <->  Card card \"1\"\n"
                                    "  Line    ->   Port Name=p1, Slot=2\n"
                                    "\n"
                                    "Card card \"1\"\n"
                                    "  OnCard   <->  Port Name=p1, Slot=1\n"
                                    "  OnCard   <->  Port p2\n"
                                    "  OnCard   <->  Port Name=p1, Slot=2\n"
                                    "  Mounted  ->   Rack Row=7\n"
                                    "\n"
                                    "Rack Row=7\n"
                                    "  Mounted  <-  Card card \"1\"\n"
                                    "\n"
                                    "5 objects, 6 associations\n";

constexpr const char* whole_dot =
    R"dot(digraph objects {
    rankdir=LR;
    node [shape=box, style="rounded,filled", fontname="Helvetica", fontsize=11];
    edge [fontname="Helvetica", fontsize=9, color="#666666", fontcolor="#444444"];
    o1 [label="Port\nName=p1, Slot=1", fillcolor="#fce5cd", tooltip="root/net:Net_Port.Name=\"p1\",Slot=1"];
    o2 [label="Port\np2", fillcolor="#fce5cd", tooltip="root/net:Net_Port.Name=\"p2\",Slot=1"];
    o3 [label="Port\nName=p1, Slot=2", fillcolor="#fce5cd", tooltip="root/net:Net_Port.Name=\"p1\",Slot=2"];
    o4 [label="Card\ncard \"1\"", fillcolor="#eeeeee", tooltip="root/net:Net_Card.InstanceID=\"card \\\"1\\\"\""];
    o5 [label="Rack\nRow=7", fillcolor="#eeeeee", tooltip="root/net:Net_Rack.Row=\"7\""];
    o1 -> o4 [label="OnCard", dir=both];
    o1 -> o2 [label="Line"];
    o2 -> o4 [label="OnCard", dir=both];
    o3 -> o4 [label="OnCard", dir=both];
    o3 -> o3 [label="Line"];
    o4 -> o5 [label="Mounted"];
}
)dot";

constexpr const char* one_left_out =
    "note: 1 answer left out: given to any association, and not among the reference names\n";

class Graphs : public CommandLines {
  protected:
    Outcome graph(std::vector<std::string> arguments) const {
        arguments.insert(arguments.begin(), {"--provider", graph_provider, "--name", "Net", "--schema", net_, "graph"});
        return cmpihost_with(arguments);
    }

    /// A MOF file with one more association between ports.
    std::string association(const std::string& name) const {
        return folder_.file(name + ".mof", "[Association] class " + name +
                                               " {\n    [Key] Net_Port REF A;\n    [Key] Net_Port REF B;\n};\n");
    }

    SchemaFolder folder_;
    std::string net_ = folder_.file("net.mof", net_mof);
};

void expect_graph(const Outcome& outcome, const std::string& out) {
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, out);
    EXPECT_EQ(outcome.err, one_left_out);
}

void expect_refusal(const Outcome& outcome, const std::string& err) {
    EXPECT_EQ(outcome.exit_code, 2);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "cmpihost: " + err + "\n");
}

TEST_F(Graphs, AreText) {
    expect_graph(graph({}), whole_graph);
    expect_graph(graph({"--format", "text"}), whole_graph);
}

TEST_F(Graphs, AreForGraphvizOnRequest) {
    expect_graph(graph({"--format", "dot"}), whole_dot);
}

TEST_F(Graphs, AreJsonOnRequest) {
    const Outcome outcome = graph({"-o", "json"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out.find("{\n  \"objects\": [\n    {\n      \"class\": \"Net_Port\","), 0u);
    EXPECT_NE(outcome.out.find("\"associations\": [\n    {\n      \"class\": \"Net_OnCard\",\n      \"from\": 0,\n"
                               "      \"to\": 3,\n      \"both\": true\n    },"),
              std::string::npos)
        << outcome.out;
}

// ------------------------------------------------------------------------------- an object's associations, one by one

TEST_F(Graphs, EachAssociationIsAskedForOnRequest) {
    const auto ask_all = [this](const char* format) {
        return cmpihost_with({"--provider", graph_provider, "--name", "Net", "--schema", net_, "-o", format, "--ac",
                              "all", "ain", "Net_Port.Name=\"p2\",Slot=1"});
    };
    const std::string card = "CLASS     InstanceID\nNet_Card  card \"1\"\n\n1 object\n";
    const Outcome text = ask_all("text");
    EXPECT_EQ(text.exit_code, 0);
    EXPECT_EQ(text.out, "Net_Part:\n" + card + "Net_OnCard:\n" + card);
    EXPECT_EQ(text.err, "");
    EXPECT_EQ(ask_all("mof").out, "// Net_Part\n// root/net:Net_Card.InstanceID=\"card \\\"1\\\"\"\n"
                                  "// Net_OnCard\n// root/net:Net_Card.InstanceID=\"card \\\"1\\\"\"\n");
    const auto json = nlohmann::json::parse(ask_all("json").out);
    EXPECT_EQ(json.size(), 4u);
    EXPECT_EQ(json.at("Net_OnCard").at("objects").size(), 1u);
    EXPECT_EQ(json.at("Net_Line").at("objects").size(), 0u);
}

TEST_F(Graphs, StartAtAnObject) {
    const Outcome outcome = graph({R"(Net_Card.InstanceID="card \"1\"")"});
    EXPECT_EQ(outcome.out.find("Card card \"1\"\n"
                               "  OnCard   <->  Port SLOT=1, Name=p1\n"
                               "  OnCard   <->  Port p2\n"
                               "  OnCard   <->  Port SLOT=2, Name=p1\n"
                               "  Mounted  ->   Rack Row=7\n"
                               "\n"),
              0u)
        << outcome.out;
    EXPECT_TRUE(outcome.out.ends_with("\n5 objects, 6 associations\n")) << outcome.out;
}

TEST_F(Graphs, FindTheObjectByTheKeysThatAreGiven) {
    EXPECT_EQ(graph({"net_port.name=\"p2\""}).out.find("Port p2\n  OnCard  <->  Card"), 0u);
    EXPECT_EQ(graph({"Net_Port.Slot=2"}).out.find("Port Name=p1, Slot=2\n"), 0u);
    EXPECT_EQ(graph({"Net_Port"}).out, whole_graph);
}

TEST_F(Graphs, StartAtAnObjectThatIsNotEnumerated) {
    const Outcome outcome = graph({"Net_Rack.Row=\"9\""});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, "Rack Row=9\n\n1 object, 0 associations\n");
    EXPECT_EQ(outcome.err, "");
    EXPECT_EQ(graph({"Net_Rack"}).out, "0 objects, 0 associations\n");
}

TEST_F(Graphs, AskForOneAssociationAtATime) {
    const Outcome outcome = graph({"--trace", "-", "--limit", "1", "Net_Port.Name=\"p2\""});
    EXPECT_EQ(outcome.err, "port 2 by CMPIHOST_NoSuchAssociation\n"
                           "port 2 by Net_Part\n"
                           "port 2 by Net_OnCard\n"
                           "port 2 by Net_Line\n"
                           "port 2 by Net_Mounted\n"
                           "note: there are more than 1 objects; --limit takes another number\n");
}

TEST_F(Graphs, StopAtALimitWithRoomForNeighbours) {
    const Outcome outcome = graph({"--limit", "2"});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, "Port p1\n"
                           "  OnCard  <->  Card card \"1\"\n"
                           "\n"
                           "Card card \"1\"\n"
                           "  OnCard  <->  Port p1\n"
                           "\n"
                           "2 objects, 1 association\n");
    EXPECT_EQ(outcome.err,
              std::string(one_left_out) + "note: there are more than 2 objects; --limit takes another number\n");
    expect_graph(graph({"--limit", "5"}), whole_graph);
}

TEST_F(Graphs, CountNullAndInvalidResults) {
    const Outcome outcome = graph({"--schema", association("Net_Null")});
    EXPECT_EQ(outcome.exit_code, 0);
    EXPECT_EQ(outcome.out, whole_graph);
    EXPECT_EQ(outcome.err, "note: 3 null results\nnote: 3 invalid results\n"
                           "note: 2 answers left out: given to any association, and not among the reference names\n");
}

TEST_F(Graphs, TellOfRequestsThatFail) {
    const Outcome outcome = graph({"--schema", association("Net_Broken")});
    EXPECT_EQ(outcome.exit_code, 1);
    EXPECT_EQ(outcome.out, whole_graph);
    EXPECT_EQ(outcome.err, "note: 2 answers left out: given to any association, and not among the reference names\n"
                           "3 requests failed, the first: root/net:Net_Port.Name=\"p1\",Slot=1 by Net_Broken: CIM "
                           "error 1 (FAILED)\n");
}

TEST_F(Graphs, AreCheckedOnRequest) {
    folder_.file("deviations.txt", "enumerateInstanceNames: no returnDone\nassociatorNames: no returnDone\n"
                                   "referenceNames: no returnDone\n");
    const Outcome clean = graph({"--check"});
    expect_graph(clean, whole_graph);
    const std::string other = folder_.file("other.mof", "class Net_Port {\n    [Key] string Name;\n};\n"
                                                        "class Net_Card {\n    [Key] string InstanceID;\n};\n"
                                                        "[Association] class Net_OnCard {\n"
                                                        "    [Key] Net_Port REF Port;\n"
                                                        "    [Key] Net_Card REF Card;\n};\n");
    const Outcome outcome =
        cmpihost_with({"--provider", graph_provider, "--name", "Net", "--schema", other, "--check", "graph"});
    EXPECT_EQ(outcome.exit_code, 4);
    EXPECT_EQ(outcome.err, "check: Net_Port.Slot: is not declared (3 objects)\n"
                           "check: Net_Rack: class is not declared (1 object)\n"
                           "check: Net_Port.SLOT: is not declared (3 objects)\n");
}

TEST_F(Graphs, NeedAnObjectOfADeclaredClass) {
    expect_refusal(graph({"No_Such.Name=\"x\""}), "OBJECT: class No_Such is not declared in the schema");
    expect_refusal(graph({"Net_Line"}), "OBJECT: class Net_Line is an association, expected one of objects");
}

TEST_F(Graphs, NeedASchemaAndAProviderThatCanBeRead) {
    expect_refusal(cmpihost_with({"--schema", "/no/such.mof", "graph"}),
                   "/no/such.mof: cannot be read: No such file or directory");
    expect_refusal(cmpihost_with({"--provider", "/no/such.so", "--schema", net_, "graph"}),
                   "provider library /no/such.so: no such file");
}

TEST_F(Graphs, ThatCannotBeWrittenAreAnError) {
    std::FILE* full = std::fopen("/dev/full", "w");
    std::FILE* err = std::tmpfile();
    EXPECT_EQ(run_command_line({"--provider", graph_provider, "--name", "Net", "--schema", net_, "graph"}, full, err),
              3);
    EXPECT_EQ(content_of(err), "cmpihost: output could not be written: No space left on device\n");
    std::fclose(err);
    std::fclose(full);
}

} // namespace
} // namespace cmpihost
