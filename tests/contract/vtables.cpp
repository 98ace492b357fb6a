// What the virtual tables are dumped from: the public classes, and a class of a host's that fills
// the pure operations of each abstract one, so that the dump shows which slot is which.
#include "kobase.h"

namespace probe {

struct token_t : ko::alg::token_t {
    token_t();
    bool construct(ko::alg::list_t& list, std::list<ko::alg::token_t*>::iterator& position,
                   std::string& error) override;
    ko::alg::result_t evaluate(ko::alg::algebra_t& algebra) const override;
    using ko::alg::token_t::evaluate;
    void assign(ko::alg::algebra_t& algebra, const ko::alg::result_t& value) const override;
    ko::alg::token_t* replicate() const override;
};

struct xbase_t : ko::lxml::xbase_t {
    void matches(ko::lxml::node_t* context, std::list<ko::lxml::node_t*>& out) const override;
};

struct plugin_t : ko::xpp::plugin_t {
    ko::lxml::element_t* generate(ko::lxml::element_t* directive) override;
};

} // namespace probe
