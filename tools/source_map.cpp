#include "source_map.h"

#include <algorithm>
#include <map>
#include <utility>

#include <nlohmann/json.hpp>

#include "documents.h"
#include "exception/exception.h"
#include "vocabulary.h"

namespace tool {

namespace {

using json_t = nlohmann::ordered_json;

/// How deep an output may be: each element is told with its whole path.
constexpr std::size_t depth_max = 1000;

/// How many directives around an element are kept, the innermost ones.
constexpr std::size_t chain_max = 100;

struct node_t {
    const ko::lxml::element_t* element;
    std::string path;
    std::size_t depth;
};

bool is_loop(const ko::xpp::place_t& place) {
    return place.directive == "for" || place.directive == "repeat" ||
           place.directive == "specify";
}

json_t place_json(const ko::xpp::place_t& place) {
    return {{"file", place.file}, {"line", place.line}, {"column", place.column}};
}

/// What the loops around an element stood at, outermost first: texts such as "n = 3".
json_t loops_json(const std::vector<ko::xpp::place_t>& trace) {
    json_t loops = json_t::array();
    for (auto place = trace.rbegin(); place != trace.rend(); ++place) {
        const std::size_t equals = place->detail.find(" = ");
        if (is_loop(*place) && equals != std::string::npos) {
            loops.push_back({{"variable", place->detail.substr(0, equals)},
                             {"value", place->detail.substr(equals + 3)}});
        }
    }
    return loops;
}

json_t chain_json(const std::vector<ko::xpp::place_t>& trace) {
    json_t chain = json_t::array();
    for (const ko::xpp::place_t& place : trace) {
        json_t entry = place_json(place);
        entry["directive"] = place.directive;
        entry["detail"] = place.detail;
        chain.push_back(std::move(entry));
    }
    return chain;
}

/// Adds the children of an element, the last one first, with their paths.
void children_push(const node_t& node, std::vector<node_t>& pending) {
    if (node.depth >= depth_max && !node.element->children.empty()) {
        throw ko::exception_t("the output is nested too deeply for a map");
    }
    std::map<std::string, unsigned> counts;
    const std::size_t start = pending.size();
    for (const ko::lxml::element_t* child : node.element->children) {
        const std::string& name = child->name_get();
        const std::string number = std::to_string(++counts[name]);
        pending.push_back({child, node.path + "/" + name + "[" + number + "]", node.depth + 1});
    }
    std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(start), pending.end());
}

} // namespace

void source_map_t::add(const ko::lxml::element_t& source, const ko::lxml::element_t& output,
                       const std::vector<ko::xpp::place_t>& trace) {
    origin_t origin{place_of(source), {}};
    for (const ko::xpp::place_t& place : trace) {
        if (directive_find(place.directive) != nullptr && origin.trace.size() < chain_max) {
            origin.trace.push_back(place_shown(place));
        }
    }
    origins[&output] = std::move(origin);
}

std::string source_map_t::text(const ko::lxml::element_t& root) const {
    json_t map = json_t::array();
    std::vector<node_t> pending{{&root, "/" + root.name_get(), 1}};
    while (!pending.empty()) {
        const node_t node = std::move(pending.back());
        pending.pop_back();
        const auto found = origins.find(node.element);
        if (found != origins.end()) {
            json_t entry{{"element", node.path}};
            entry.update(place_json(found->second.place));
            entry["loops"] = loops_json(found->second.trace);
            entry["chain"] = chain_json(found->second.trace);
            map.push_back(std::move(entry));
        }
        children_push(node, pending);
    }
    return map.dump(2, ' ', false, json_t::error_handler_t::replace) + '\n';
}

} // namespace tool
