/// @file
/// Reads the input as a path and selects with it in a fixed document.

#include <list>
#include <string>

#include "lxml/lxml.h"
#include "lxpath/lxpath.h"
#include "support/target.h"

namespace {

using nodes_t = std::list<ko::lxml::node_t*>;

constexpr const char* rack = R"(<rack xmlns:p="urn:p" id="1" name="main">
  <amp id="1" p:mode="bridge"><channel gain="-6"/><channel gain="0"><p:filter q="2"/></channel>
  </amp>
  <amp id="2"><channel gain="-6"><amp id="3"/></channel></amp>
  <p:zone name="hall"><p:zone name="stage"/></p:zone>
  <zone xmlns="urn:d" name="foyer"><inner/></zone>
</rack>)";

void check_single(const ko::lxml::element_t& from, const std::string& path,
                  const nodes_t& selected) {
    const ko::lxml::node_t* const first = selected.empty() ? nullptr : selected.front();
    fuzz::require(from.select_single_node(path) == first, "the first node is another one");
}

/// A path that is parsed once selects the same.
void check_parsed(ko::lxml::element_t& from, const std::string& path, const nodes_t& selected) {
    ko::lxml::xpath_t parsed;
    parsed.parse(path.c_str());
    nodes_t again;
    parsed.matches(&from, again);
    parsed.multi_matches(selected, again);
    again.resize(selected.size());
    fuzz::require(again == selected, "a parsed path selects other nodes");
}

void run(const std::string& input) {
    ko::lxml::document_t document;
    document.load_from_string(rack);
    fuzz::attempt([&] {
        const std::string path = input.substr(0, input.find('\0'));
        nodes_t selected;
        document.root->select_nodes(path, selected);
        check_single(*document.root, path, selected);
        check_parsed(*document.root, path, selected);
    });
    fuzz::attempt([&] { ko::lxml::element_find(document, input, true); });
    fuzz::attempt([&] { document.root->select_single_node(input); });
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::run_limited(run, data, size);
    return 0;
}
