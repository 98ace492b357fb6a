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

/// Bytes of the longest path: each element is told with its own, whole.
constexpr std::size_t path_max = 16384;

/// How many directives around an element are kept, the innermost ones.
constexpr std::size_t chain_max = 100;

struct node_t {
    const ko::lxml::element_t* element;
    std::string step; ///< of its path
    std::size_t depth;
};

/// The path of one element after another, in document order.
class path_t {
public:
    void go(const node_t& node) {
        ends.resize(node.depth);
        text.resize(ends.empty() ? 0 : ends.back());
        text += '/' + node.step;
        if (text.size() > path_max) {
            throw ko::exception_t(
                "the output is nested too deeply for a map: a path of more than " +
                std::to_string(path_max) + " bytes");
        }
        ends.push_back(text.size());
    }
    const std::string& text_get() const { return text; }

private:
    std::string text;
    std::vector<std::size_t> ends; ///< of the steps in it
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

/// Adds the children of an element, the last one first.
void children_push(const node_t& node, std::vector<node_t>& pending) {
    std::map<std::string, unsigned> counts;
    const std::size_t start = pending.size();
    for (const ko::lxml::element_t* child : node.element->children) {
        std::string step = child->name_get();
        const unsigned number = ++counts[step];
        step += '[';
        step += std::to_string(number);
        step += ']';
        pending.push_back({child, std::move(step), node.depth + 1});
    }
    std::reverse(pending.begin() + static_cast<std::ptrdiff_t>(start), pending.end());
}

/// Adds an object to the text of an array.
void entry_write(const json_t& entry, std::string& text) {
    text += text.empty() ? "[\n  " : ",\n  ";
    for (const char c : entry.dump(2, ' ', false, json_t::error_handler_t::replace)) {
        text += c;
        if (c == '\n') {
            text += "  ";
        }
    }
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
    std::string map;
    path_t path;
    std::vector<node_t> pending{{&root, root.name_get(), 0}};
    while (!pending.empty()) {
        const node_t node = std::move(pending.back());
        pending.pop_back();
        path.go(node);
        const auto found = origins.find(node.element);
        if (found != origins.end()) {
            json_t entry{{"element", path.text_get()}};
            entry.update(place_json(found->second.place));
            entry["loops"] = loops_json(found->second.trace);
            entry["chain"] = chain_json(found->second.trace);
            entry_write(entry, map);
        }
        children_push(node, pending);
    }
    return map.empty() ? "[]\n" : map + "\n]\n";
}

} // namespace tool
