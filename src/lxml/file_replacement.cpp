#include "lxml/file_replacement.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <random>
#include <utility>

#include "exception/exception.h"

namespace ko::lxml {

namespace {

/// How often another name is tried for the new file.
constexpr int attempts_max = 100;

/// A name is cut to this many bytes, so that the random part has room.
constexpr std::size_t name_max = 200;

/// The part of a path up to its last slash, that included.
std::string folder_of(const std::string& path) {
    return path.substr(0, path.rfind('/') + 1);
}

/// Calls what a signal may interrupt.
template <class C> auto uninterrupted(C&& call) {
    auto result = call();
    while (result < 0 && errno == EINTR) {
        result = call();
    }
    return result;
}

struct free_t {
    void operator()(char* text) const { std::free(text); }
};

/// An absolute path without links; empty when there is none.
std::string resolved(const std::string& path) {
    const std::unique_ptr<char, free_t> text(::realpath(path.c_str(), nullptr));
    return text ? text.get() : std::string();
}

} // namespace

file_calls_t::~file_calls_t() = default;

int file_calls_t::open_folder(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
}

int file_calls_t::create(const std::string& path, mode_t mode) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, mode);
}

int file_calls_t::open(const std::string& path) {
    return ::open(path.c_str(), O_RDONLY | O_NOFOLLOW | O_CLOEXEC);
}

ssize_t file_calls_t::read(int file, char* bytes, std::size_t size) {
    return ::read(file, bytes, size);
}

ssize_t file_calls_t::write(int file, const char* bytes, std::size_t size) {
    return ::write(file, bytes, size);
}

int file_calls_t::take_owner(int file, uid_t owner, gid_t group) {
    return ::fchown(file, owner, group);
}

int file_calls_t::set_mode(int file, mode_t mode) {
    return ::fchmod(file, mode);
}

int file_calls_t::flush(int file) {
    return ::fsync(file);
}

int file_calls_t::close(int file) {
    return ::close(file);
}

int file_calls_t::link(const std::string& from, const std::string& to) {
    return ::link(from.c_str(), to.c_str());
}

int file_calls_t::rename(const std::string& from, const std::string& to) {
    return ::rename(from.c_str(), to.c_str());
}

int file_calls_t::remove(const std::string& path) {
    return ::unlink(path.c_str());
}

std::streamsize descriptor_buffer_t::xsputn(const char* bytes, std::streamsize size) {
    std::streamsize done = 0;
    while (done != size) {
        const ssize_t count = uninterrupted([&] {
            return calls.write(file, bytes + done, static_cast<std::size_t>(size - done));
        });
        if (count <= 0) {
            break;
        }
        done += count;
    }
    return done;
}

descriptor_buffer_t::int_type descriptor_buffer_t::overflow(int_type c) {
    const char byte = traits_type::to_char_type(c);
    const bool is_taken =
        traits_type::eq_int_type(c, traits_type::eof()) || xsputn(&byte, 1) == 1;
    return is_taken ? traits_type::not_eof(c) : traits_type::eof();
}

file_replacement_t::file_replacement_t(const std::string& path, file_calls_t& system)
    : name(path), calls(system), target(path), buffer(system), out(&buffer) {
    look_at_target();
    folder = calls.open_folder(folder_of(target).empty() ? "." : folder_of(target));
    if (folder < 0) {
        fail("opening");
    }
    try {
        // Nobody else sees what is in a file before it has the mode of the old one.
        buffer.file = create_beside(fresh, origin.exists ? 0600 : 0666);
        if (buffer.file < 0) {
            fail("opening");
        }
    } catch (...) {
        close(folder);
        throw;
    }
}

file_replacement_t::~file_replacement_t() {
    close(buffer.file);
    remove(fresh);
    remove(old);
    close(folder);
}

/// A name may also be that of a device or a folder, which must not be replaced. A file that must
/// not be written is not replaced either, although the system would allow it.
void file_replacement_t::look_at_target() {
    struct stat status = {};
    if (::lstat(name.c_str(), &status) != 0) {
        if (errno != ENOENT || name.empty() || name.back() == '/') {
            fail("opening");
        }
        return;
    }
    if (S_ISLNK(status.st_mode)) {
        target = resolved(name);
    }
    if (::stat(target.c_str(), &status) != 0 || !S_ISREG(status.st_mode) ||
        ::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0) {
        fail("opening");
    }
    origin.exists = true;
    origin.owner = status.st_uid;
    origin.group = status.st_gid;
    origin.mode = status.st_mode & 07777;
}

/// Makes a file in the folder of the target. @return its descriptor; -1, and no path, when there
/// is none
int file_replacement_t::create_beside(std::string& path, mode_t mode) {
    for (int attempt = 0; attempt != attempts_max; ++attempt) {
        path = beside();
        const int file = calls.create(path, mode);
        if (file >= 0) {
            return file;
        }
        if (errno != EEXIST) {
            break;
        }
    }
    path.clear();
    return -1;
}

/// A path for a file of the same folder, with a random part. Beginning with a point, it is none
/// of those that a host looks for by their endings.
std::string file_replacement_t::beside() const {
    std::random_device random;
    const std::string folder_path = folder_of(target);
    std::string path = folder_path + "." + target.substr(folder_path.size(), name_max) + ".";
    for (int i = 0; i != 8; ++i) {
        path += "0123456789abcdefghijklmnopqrstuv"[random() % 32];
    }
    return path;
}

void file_replacement_t::commit() {
    if (!out.flush() || !finish(buffer.file) || !publish()) {
        fail("writing");
    }
}

/// Brings a file that was written to the device, with the mode of the old one.
bool file_replacement_t::finish(int& file) {
    if (origin.exists) {
        // Only the superuser can give a file away.
        static_cast<void>(calls.take_owner(file, origin.owner, origin.group));
        if (calls.set_mode(file, origin.mode) != 0) {
            return false;
        }
    }
    if (uninterrupted([this, file] { return calls.flush(file); }) != 0) {
        return false;
    }
    return calls.close(std::exchange(file, -1)) == 0 || errno == EINTR;
}

/// Puts the new file in its place. The old one is kept as long as that can fail.
bool file_replacement_t::publish() {
    if ((origin.exists && !keep_old()) || calls.rename(fresh, target) != 0) {
        return false;
    }
    fresh.clear();
    if (flush_folder()) {
        return true;
    }
    if (!origin.exists) {
        calls.remove(target);
    } else if (calls.rename(old, target) == 0) {
        old.clear();
    }
    return false;
}

/// Not every file system has links, and not every user may link to a file of others.
bool file_replacement_t::keep_old() {
    old = beside();
    if (calls.link(target, old) == 0) {
        return true;
    }
    old.clear();
    return copy_old();
}

bool file_replacement_t::copy_old() {
    descriptor_buffer_t copy(calls);
    copy.file = create_beside(old, 0600);
    if (copy.file < 0) {
        return false;
    }
    int source = calls.open(target);
    const bool is_done = source >= 0 && copy_content(source, copy) && finish(copy.file);
    close(copy.file);
    close(source);
    return is_done;
}

bool file_replacement_t::copy_content(int source, std::streambuf& copy) {
    char bytes[4096];
    for (;;) {
        const ssize_t count =
            uninterrupted([&] { return calls.read(source, bytes, sizeof bytes); });
        if (count <= 0) {
            return count == 0;
        }
        if (copy.sputn(bytes, count) != count) {
            return false;
        }
    }
}

/// Some file systems cannot flush a folder, and have no need to.
bool file_replacement_t::flush_folder() {
    return uninterrupted([this] { return calls.flush(folder); }) == 0 || errno == EINVAL ||
           errno == ENOTSUP;
}

void file_replacement_t::close(int& file) {
    if (file >= 0) {
        calls.close(file);
        file = -1;
    }
}

void file_replacement_t::remove(std::string& path) {
    if (!path.empty()) {
        calls.remove(path);
        path.clear();
    }
}

void file_replacement_t::fail(const char* action) const {
    throw exception_t("error %s file %s", action, name.c_str());
}

} // namespace ko::lxml
