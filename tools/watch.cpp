#include "watch.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include "exception/exception.h"

namespace tool {

namespace {

/// How long nothing more must happen until a change counts as finished, in milliseconds.
constexpr int rest_ms = 50;

std::string folder_of(const std::string& file) {
    const std::size_t slash = file.rfind('/');
    return slash == std::string::npos ? "." : file.substr(0, slash + 1);
}

bool readable(int descriptor, int timeout_ms) {
    pollfd waited{descriptor, POLLIN, 0};
    return poll(&waited, 1, timeout_ms) > 0;
}

} // namespace

watch_t::watch_t() : descriptor(inotify_init1(IN_CLOEXEC)) {
    if (descriptor < 0) {
        throw ko::exception_t("files cannot be watched here");
    }
}

watch_t::~watch_t() {
    close(descriptor);
}

void watch_t::files_set(const std::vector<std::string>& files) {
    entries.clear();
    for (const std::string& file : files) {
        // The same folder gives the same number again.
        const int folder =
            inotify_add_watch(descriptor, folder_of(file).c_str(),
                              IN_CLOSE_WRITE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE);
        if (folder >= 0) {
            entries.push_back({folder, file.substr(file.rfind('/') + 1)});
        }
    }
}

bool watch_t::changed() {
    alignas(inotify_event) std::array<char, 16384> buffer{};
    const ssize_t size = read(descriptor, buffer.data(), buffer.size());
    bool found = false;
    for (std::size_t at = 0; size > 0 && at < static_cast<std::size_t>(size);) {
        inotify_event event{};
        std::memcpy(&event, buffer.data() + at, sizeof event);
        const char* const name = buffer.data() + at + sizeof event;
        // Events of a folder itself carry no name.
        const entry_t file{event.wd, event.len > 0 ? name : ""};
        found = found || std::find(entries.begin(), entries.end(), file) != entries.end();
        at += sizeof event + event.len;
    }
    return found;
}

bool watch_t::wait() {
    while (readable(descriptor, -1)) {
        if (changed()) {
            while (readable(descriptor, rest_ms)) {
                changed();
            }
            return true;
        }
    }
    return false;
}

} // namespace tool
