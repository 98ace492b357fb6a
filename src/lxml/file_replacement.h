/// @file
/// Replacing a file in one step. The new content goes to a file beside the old one, whose name is
/// renamed once everything is on the device. The calls, in order:
///
///     open_folder    the folder, to be flushed at the end
///     create         the new file, under a name of its own that nobody has yet
///     write ...      the content
///     take_owner     owner and group of the old file, where that is allowed
///     set_mode       mode of the old file
///     flush          the new file
///     close          the new file
///     link           a second name for the old file; where the file system knows no such
///                    names: create, open, read and write in turn, take_owner, set_mode, flush,
///                    close for a copy of it, and close for itself
///     rename         the new file takes the place of the old one
///     flush          the folder
///     remove         the second name of the old file
///
/// Invariants: at each moment the file is the old one or the new one, whole. When a call fails,
/// those before it are undone in reverse order; the second name, or the copy, brings the old file
/// back where the folder cannot be flushed at the end. A process that is killed leaves at most
/// two files with random names behind, which nobody looks for.
#pragma once

#include <sys/types.h>

#include <ostream>
#include <streambuf>
#include <string>

namespace ko::lxml {

/// The calls to the system, as they are; tests let each fail. They give -1 and set `errno` where
/// they fail.
class file_calls_t {
public:
    virtual ~file_calls_t();
    virtual int open_folder(const std::string& path);
    virtual int create(const std::string& path, mode_t mode);
    virtual int open(const std::string& path);
    virtual ssize_t read(int file, char* bytes, std::size_t size);
    virtual ssize_t write(int file, const char* bytes, std::size_t size);
    virtual int take_owner(int file, uid_t owner, gid_t group);
    virtual int set_mode(int file, mode_t mode);
    virtual int flush(int file);
    virtual int close(int file);
    virtual int link(const std::string& from, const std::string& to);
    virtual int rename(const std::string& from, const std::string& to);
    virtual int remove(const std::string& path);
};

/// A stream buffer without a buffer in front of a descriptor that others own. After an error it
/// takes nothing any more.
class descriptor_buffer_t : public std::streambuf {
public:
    explicit descriptor_buffer_t(file_calls_t& system) : calls(system) {}

    int file = -1;

protected:
    std::streamsize xsputn(const char* bytes, std::streamsize size) override;
    int_type overflow(int_type c) override;

private:
    file_calls_t& calls;
};

/// One replacement. Its destructor undoes what was not committed.
class file_replacement_t {
public:
    /// Makes the new file. A symbolic link is followed.
    /// @throws ko::exception_t "error opening file %s": no file can be made beside the old one,
    ///         which may also be none that can be written, or none of bytes
    file_replacement_t(const std::string& path, file_calls_t& system);
    file_replacement_t(const file_replacement_t&) = delete;
    file_replacement_t& operator=(const file_replacement_t&) = delete;
    ~file_replacement_t();

    /// Takes the content. Its errors are found by `commit`.
    std::ostream& stream() { return out; }

    /// Puts the new file in the place of the old one.
    /// @throws ko::exception_t "error writing file %s"; the old file is in its place, or none where
    ///         there was none. Only where the new name cannot be undone, the new one is, whole
    void commit();

private:
    /// What the new file takes from the old one.
    struct origin_t {
        bool exists = false;
        uid_t owner = 0;
        gid_t group = 0;
        mode_t mode = 0;
    };

    void look_at_target();
    void open_folder();
    int create_beside(std::string& path, mode_t mode);
    bool finish(int& file);
    bool publish();
    bool keep_old();
    bool copy_old();
    bool copy_content(int source, std::streambuf& copy);
    bool flush_folder();
    void close(int& file);
    void remove(std::string& path);
    std::string beside() const;
    [[noreturn]] void fail(const char* action) const;

    const std::string name; ///< as the caller wrote it
    file_calls_t& calls;
    std::string target; ///< `name` with its links followed
    origin_t origin;
    int folder = -1;
    std::string fresh; ///< path of the new file; empty when there is none
    std::string old;   ///< path of the old file's second name or copy; empty when there is none
    descriptor_buffer_t buffer;
    std::ostream out;
};

} // namespace ko::lxml
