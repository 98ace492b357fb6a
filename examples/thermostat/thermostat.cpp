// A thermostat whose behaviour is written in expressions: thermostat CONTROL.xml
//
// The sensors are functions that the host defines; the expressions of the control file are parsed
// once and evaluated for each reading. Here the readings come from a table, in the order of time.
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

struct reading_t {
    const char* time;
    double room;
    double outside;
};

const reading_t readings[] = {
    {"06:00", 17.5, 2.0}, {"08:00", 19.0, 4.5}, {"12:00", 22.5, 11.0}, {"22:00", 20.5, 3.0}};

// What the sensors read at the moment; functions of the host take no data of their own.
reading_t now = readings[0];

result_t room_f(algebra_t&) {
    return now.room;
}

result_t outside_f(algebra_t&) {
    return now.outside;
}

// The hour of the clock; `between(7, 22)` holds from 7 o'clock until before 22.
result_t between_f(algebra_t&, result_t from, result_t to) {
    const int hour = std::stoi(now.time);
    return hour >= from.int_get() && hour < to.int_get();
}

struct output_t {
    std::string name;
    ko::alg::list_t program;
};

// The control file: variables, then outputs, each with its expression.
class control_t {
public:
    explicit control_t(const std::string& file) {
        algebra.define("room", room_f);
        algebra.define("outside", outside_f);
        algebra.define("between", between_f);
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

    void print() {
        std::cout << now.time;
        for (const auto& output : outputs) {
            std::cout << "  " << output->name << '='
                      << algebra.evaluate(output->program).string_get(false, 0);
        }
        std::cout << '\n';
    }

private:
    void output_add(const std::string& name, const std::string& expression) {
        auto output = std::make_unique<output_t>();
        output->name = name;
        if (!algebra.parse(expression, output->program)) {
            throw ko::exception_t(name + ": " + algebra.parse_error_get());
        }
        outputs.push_back(std::move(output));
    }

    ko::lxml::document_t document;
    algebra_t algebra;
    std::vector<std::unique_ptr<output_t>> outputs;
};

int run(const std::string& file) {
    try {
        control_t control(file);
        for (const reading_t& reading : readings) {
            now = reading;
            control.print();
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
