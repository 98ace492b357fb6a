#include "lxpath/lxpath.h"

#include "lxpath/evaluation.h"

namespace ko::lxml {

xbase_t::xbase_t() = default;
xbase_t::~xbase_t() = default;

void xbase_t::multi_matches(const std::list<node_t*>& in, std::list<node_t*>& out) const {
    // Counted, since `in` and `out` may be one list that grows meanwhile.
    auto node = in.begin();
    for (std::size_t left = in.size(); left != 0; --left) {
        matches(*node++, out);
    }
}

xpath_t::xpath_t() = default;
xpath_t::~xpath_t() = default;

void xpath_t::matches(node_t* context, std::list<node_t*>& out) const {
    if (evaluation_t::can_evaluate(*this)) {
        evaluation_t(*this).all(context, out);
        return;
    }
    std::list<node_t*> selected = {context};
    for (const auto& step : steps) {
        std::list<node_t*> next;
        step->multi_matches(selected, next);
        selected.swap(next);
    }
    out.splice(out.end(), selected);
}

xnode_t::xnode_t() = default;
xnode_t::~xnode_t() = default;

void xnode_t::matches(node_t* context, std::list<node_t*>& out) const {
    evaluation_t(*this).all(context, out);
}

xname_t::xname_t() : kind(false), quoted(false) {}
xname_t::~xname_t() = default;

void xname_t::matches(node_t* context, std::list<node_t*>& out) const {
    evaluation_t(*this).all(context, out);
}

xfilter_t::xfilter_t() = default;
xfilter_t::~xfilter_t() = default;

void xfilter_t::matches(node_t* context, std::list<node_t*>& out) const {
    if (evaluation_t(*this).passes(context)) {
        out.push_back(context);
    }
}

} // namespace ko::lxml
