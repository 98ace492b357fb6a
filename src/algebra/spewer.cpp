#include "algebra/spewer.h"

namespace ko::alg {

[[gnu::used]] const spewer_t header_spew{"algebra.cpp header"};
[[gnu::used]] const spewer_t footer_spew{"algebra.cpp footer"};

} // namespace ko::alg
