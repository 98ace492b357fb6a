/// @file
/// Checks of exceptions: type, whole message and code.
#pragma once

#include <gtest/gtest.h>

#include <string>
#include <typeinfo>

#include "errorcode/errorcode.h"
#include "exception/exception.h"

namespace test {

/// Succeeds when `action` throws exactly a `ko::exception_t` with this whole message.
template <class A> testing::AssertionResult throws(A&& action, const std::string& message) {
    try {
        action();
    } catch (const ko::exception_t& e) {
        if (typeid(e) != typeid(ko::exception_t)) {
            return testing::AssertionFailure()
                   << "threw " << typeid(e).name() << ": " << e.what();
        }
        if (e.what() != message) {
            return testing::AssertionFailure() << "threw \"" << e.what() << "\"";
        }
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "threw nothing";
}

/// Succeeds when `action` throws a `ko::errorcode_t` with this code and whole message.
template <class A>
testing::AssertionResult throws(A&& action, unsigned long code, const std::string& message) {
    try {
        action();
    } catch (const ko::errorcode_t& e) {
        if (e.code_get() != code || e.what() != message) {
            return testing::AssertionFailure()
                   << "threw code 0x" << std::hex << e.code_get() << " \"" << e.what() << "\"";
        }
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "threw nothing";
}

/// The code of what `action` throws, `ko::errorcode::no_error` when it throws no
/// `ko::errorcode_t`.
template <class A> unsigned long code_of(A&& action) {
    try {
        action();
    } catch (const ko::errorcode_t& e) {
        return e.code_get();
    }
    return ko::errorcode::no_error;
}

} // namespace test

/// Expects that a statement throws a `ko::exception_t` with a whole message, or, with a code
/// before it, a `ko::errorcode_t`. Usage: EXPECT_THROWS(cache.get(""), "empty name")
#define EXPECT_THROWS(action, ...) EXPECT_TRUE(test::throws([&] { action; }, __VA_ARGS__))
