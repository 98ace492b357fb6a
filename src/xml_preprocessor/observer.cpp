#include "xml_preprocessor/observer.h"

namespace ko::xpp {

void observer_t::file_opened(const std::string& /*path*/) {}

void observer_t::expression_failed(const place_t& /*place*/, const std::string& /*expression*/,
                                   const std::string& /*message*/) {}

void observer_t::directive_unknown(const place_t& /*place*/, const std::string& /*name*/) {}

void observer_t::text_dropped(const place_t& /*place*/) {}

void observer_t::element_made(const lxml::element_t& /*source*/,
                              const lxml::element_t& /*output*/) {}

observer_t::~observer_t() = default;

void observer_t::pass_begun(const lxml::element_t& /*loop*/) {}

} // namespace ko::xpp
