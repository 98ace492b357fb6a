/// @file
/// Calls to the system that a test looks at; for tests of private parts only.
#pragma once

#include <string>
#include <vector>

#include "lxml/file_replacement.h"

namespace test {

/// The calls as they are, noted down; before each one `may` is asked whether it may be made.
class watched_calls_t : public ko::lxml::file_calls_t {
public:
    std::vector<std::string> made;
    bool has_links = true;

    int open_folder(const std::string& path) override {
        return note("open_folder") ? file_calls_t::open_folder(path) : -1;
    }
    int create(const std::string& path, mode_t mode) override {
        return note("create") ? file_calls_t::create(path, mode) : -1;
    }
    int open(const std::string& path) override {
        return note("open") ? file_calls_t::open(path) : -1;
    }
    ssize_t read(int file, char* bytes, std::size_t size) override {
        return note("read") ? file_calls_t::read(file, bytes, size) : -1;
    }
    ssize_t write(int file, const char* bytes, std::size_t size) override {
        return note("write") ? file_calls_t::write(file, bytes, size) : -1;
    }
    int take_owner(int file, uid_t owner, gid_t group) override {
        return note("take_owner") ? file_calls_t::take_owner(file, owner, group) : -1;
    }
    int set_mode(int file, mode_t mode) override {
        return note("set_mode") ? file_calls_t::set_mode(file, mode) : -1;
    }
    int flush(int file) override { return note("flush") ? file_calls_t::flush(file) : -1; }
    int close(int file) override {
        const int result = file_calls_t::close(file);
        return note("close") ? result : -1;
    }
    int link(const std::string& from, const std::string& to) override {
        return note("link") && has_links ? file_calls_t::link(from, to) : -1;
    }
    int rename(const std::string& from, const std::string& to) override {
        return note("rename") ? file_calls_t::rename(from, to) : -1;
    }
    int remove(const std::string& path) override {
        return note("remove") ? file_calls_t::remove(path) : -1;
    }

protected:
    virtual bool may(const std::string&) { return true; }

private:
    bool note(const char* call) {
        made.emplace_back(call);
        return may(made.back());
    }
};

} // namespace test
