#include "algebra/identity.h"

#include <sys/random.h>

#include "exception/exception.h"

namespace ko::alg {

std::uint64_t identity_make() {
    // A counter would be state that all evaluators share; 64 random bits are not met twice.
    std::uint64_t number = 0;
    while (number == 0) {
        if (getentropy(&number, sizeof number) != 0) {
            throw exception_t(std::string("algebra_t -- the system gives no random numbers"));
        }
    }
    return number;
}

} // namespace ko::alg
