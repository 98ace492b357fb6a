#include "algebra/identity.h"

#include <atomic>

namespace ko::alg {

std::uint64_t identity_make() {
    static std::atomic<std::uint64_t> last{0};
    return last.fetch_add(1, std::memory_order_relaxed) + 1;
}

} // namespace ko::alg
