/// @file
/// The one kind of exception that reading a file lets out.
#pragma once

#include <cxxabi.h>
#include <exception>

#include "errorcode/errorcode.h"

namespace ko::xml {

/// Runs `action` and lets out whatever it throws as a `ko::errorcode_t`: one of that class
/// unchanged, another `std::exception` as `xml_rethrow_exception` with its text, anything else as
/// `xml_unknown_exception`. A thread that is cancelled goes on unwinding.
template <class A> void map_exceptions(A&& action) {
    try {
        action();
    } catch (const abi::__forced_unwind&) {
        throw;
    } catch (const errorcode_t&) {
        throw;
    } catch (const std::exception& e) {
        throw errorcode_t(errorcode::xml_rethrow_exception, e.what());
    } catch (...) {
        throw errorcode_t(errorcode::xml_unknown_exception);
    }
}

} // namespace ko::xml
