// A thermostat whose behaviour is written in expressions: thermostat CONTROL.xml
//
// A resolver answers the names of the sensors, a function of the host asks the clock. The
// expressions of the control file are parsed once and evaluated for each reading. Here the
// readings come from a table, in the order of time.
#include <iostream>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "algebra/algebra.h"
#include "exception/exception.h"
#include "lxml/lxml.h"

namespace {

using ko::alg::algebra_t;
using ko::alg::result_t;
using arguments_t = std::vector<result_t>;

struct reading_t {
    const char* time;
    double room;
    double outside;
};

const reading_t readings[] = {
    {"06:00", 17.5, 2.0}, {"08:00", 19.0, 4.5}, {"12:00", 22.5, 11.0}, {"22:00", 20.5, 3.0}};

struct output_t {
    std::string name;
    ko::alg::list_t program;
};

// The control file: variables, then outputs, each with its expression. The evaluator asks this
// object for sensors and time, so it is neither copied nor moved.
class control_t {
public:
    explicit control_t(const std::string& file) : now() {
        algebra.resolver_set(
            [this](const std::string& name, result_t& value) { return sensor(name, value); });
        algebra.define(
            "between",
            [this](algebra_t&, const arguments_t& limits) {
                return between(limits[0].int_get(), limits[1].int_get());
            },
            2, 2);
        document.root = document.load_raw(file);
        for (const ko::lxml::element_t* child : document.root->children) {
            const std::string value = child->attribute_get_value("value", "");
            if (child->name_get() == "set") {
                algebra.assign(child->attribute_get_value("name", ""), algebra.evaluate(value));
            } else {
                output_add(child->attribute_get_value("name", ""), value);
            }
        }
    }

    control_t(const control_t&) = delete;
    control_t& operator=(const control_t&) = delete;

    // Prints all outputs for one reading.
    void print(const reading_t& reading) {
        now = reading;
        std::cout << now.time;
        for (const auto& output : outputs) {
            std::cout << "  " << output->name << '='
                      << algebra.evaluate(output->program).string_get(false, 0);
        }
        std::cout << '\n';
    }

private:
    // Asked for each name that is no variable.
    bool sensor(const std::string& name, result_t& value) const {
        if (name == "room") {
            value = now.room;
        } else if (name == "outside") {
            value = now.outside;
        } else {
            return false;
        }
        return true;
    }

    // The hour of the clock: `between(7, 22)` holds from 7 o'clock until before 22.
    bool between(int from, int to) const {
        const int hour = std::stoi(now.time);
        return hour >= from && hour < to;
    }

    void output_add(const std::string& name, const std::string& expression) {
        auto output = std::make_unique<output_t>();
        output->name = name;
        if (!algebra.parse(expression, output->program)) {
            throw ko::exception_t(name + ": " + algebra.parse_error_get());
        }
        outputs.push_back(std::move(output));
    }

    reading_t now;
    ko::lxml::document_t document;
    algebra_t algebra;
    std::vector<std::unique_ptr<output_t>> outputs;
};

int run(const std::string& file) {
    try {
        control_t control(file);
        for (const reading_t& reading : readings) {
            control.print(reading);
        }
        return 0;
    } catch (const ko::exception_t& e) {
        std::cerr << "thermostat: " << e.what() << '\n';
        return 1;
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: thermostat CONTROL.xml\n";
        return 2;
    }
    return run(argv[1]);
}
