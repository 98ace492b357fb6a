#include "version.h"

namespace ko {

const char* version() {
    return KO_VERSION_STRING;
}

} // namespace ko
