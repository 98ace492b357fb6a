/// @file
/// Waiting for files to change.
#pragma once

#include <string>
#include <vector>

namespace tool {

/// Watches files, whatever way they are written: in place, or by a new file under their names.
///
/// It watches their folders from its construction on, so that no change is lost between a run
/// that reads them and the call that waits.
class watch_t {
public:
    /// @throws ko::exception_t when the system cannot watch
    watch_t();
    watch_t(const watch_t&) = delete;
    watch_t& operator=(const watch_t&) = delete;
    ~watch_t();

    /// Sets the files that count from now on. A folder that is not there is passed over.
    void files_set(const std::vector<std::string>& files);
    /// Waits until one of them is written, made, moved or removed, and the changes have come to
    /// rest. @return false when a signal ended the waiting
    bool wait();

private:
    struct entry_t {
        int folder;
        std::string name;

        bool operator==(const entry_t& other) const {
            return folder == other.folder && name == other.name;
        }
    };

    bool changed();

    int descriptor;
    std::vector<entry_t> entries;
};

} // namespace tool
