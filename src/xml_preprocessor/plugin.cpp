#include "xml_preprocessor/plugin.h"

namespace ko::xpp {

plugin_t::~plugin_t() = default;

} // namespace ko::xpp
