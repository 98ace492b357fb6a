#include "output.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <iostream>
#include <sys/stat.h>
#include <unistd.h>

#include "exception/exception.h"

namespace tool {

namespace {

/// A file that is being written, removed again unless it took the place of another.
class new_file_t {
public:
    explicit new_file_t(const std::string& file) : path(file + ".XXXXXX"), target(file) {
        descriptor = mkstemp(path.data());
        if (descriptor < 0) {
            throw ko::exception_t("error opening file " + file);
        }
    }
    new_file_t(const new_file_t&) = delete;
    new_file_t& operator=(const new_file_t&) = delete;
    ~new_file_t() {
        if (descriptor >= 0) {
            close(descriptor);
        }
        if (!path.empty()) {
            unlink(path.c_str());
        }
    }

    bool write(const std::string& text) {
        for (std::size_t done = 0; done < text.size();) {
            const ssize_t count = ::write(descriptor, text.data() + done, text.size() - done);
            if (count < 0 && errno != EINTR) {
                return false;
            }
            done += count < 0 ? 0 : static_cast<std::size_t>(count);
        }
        return fsync(descriptor) == 0;
    }

    /// Gives the file its mode and its name.
    bool put_in_place(mode_t mode) {
        const bool closed = fchmod(descriptor, mode) == 0 && close(descriptor) == 0;
        descriptor = -1;
        if (!closed || std::rename(path.c_str(), target.c_str()) != 0) {
            return false;
        }
        path.clear();
        return true;
    }

private:
    std::string path;
    std::string target;
    int descriptor;
};

/// The mode of a file that a program makes.
mode_t new_mode() {
    const mode_t mask = umask(0);
    umask(mask);
    return static_cast<mode_t>(0666) & ~mask;
}

/// The file that a link leads to.
std::string link_target(const std::string& file) {
    char* const resolved = realpath(file.c_str(), nullptr);
    std::string target = resolved == nullptr ? file : resolved;
    std::free(resolved);
    return target;
}

void write_in_place(const std::string& file, const std::string& text) {
    std::FILE* const stream = std::fopen(file.c_str(), "wb");
    if (stream == nullptr) {
        throw ko::exception_t("error opening file " + file);
    }
    const bool written = std::fwrite(text.data(), 1, text.size(), stream) == text.size();
    const bool closed = std::fclose(stream) == 0;
    if (!written || !closed) {
        throw ko::exception_t("error writing file " + file);
    }
}

} // namespace

void file_write(const std::string& file, const std::string& text) {
    // A file that may not grow further is an error here, which removes what was written.
    std::signal(SIGXFSZ, SIG_IGN);
    struct stat status {};
    const bool exists = stat(file.c_str(), &status) == 0;
    if (exists && !S_ISREG(status.st_mode)) {
        write_in_place(file, text);
        return;
    }
    const mode_t mode = exists ? status.st_mode & static_cast<mode_t>(07777) : new_mode();
    new_file_t next(link_target(file));
    if (!next.write(text) || !next.put_in_place(mode)) {
        throw ko::exception_t("error writing file " + file);
    }
}

void text_write(const std::string& file, const std::string& text) {
    if (!file.empty() && file != "-") {
        file_write(file, text);
    } else if (!(std::cout << text).flush()) {
        throw ko::exception_t("error writing standard output");
    }
}

} // namespace tool
