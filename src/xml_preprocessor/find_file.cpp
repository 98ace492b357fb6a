#include "xml_preprocessor/find_file.h"

#include <unistd.h>

namespace ko {

bool find_file(const std::string& name, const std::list<std::string>& dirs, std::string& found) {
    for (const std::string& dir : dirs) {
        const std::string candidate = dir + name;
        if (access(candidate.c_str(), R_OK) == 0) {
            found = candidate;
            return true;
        }
    }
    return false;
}

} // namespace ko
