#include "arguments.h"

#include <algorithm>
#include <iostream>

#include "kobase.h"

namespace tool {

void arguments_prepare(CLI::App& app, const std::string& program) {
    app.name(program);
    app.set_help_flag("-h,--help", "show this text");
    app.set_version_flag("--version", program + " " + ko::version(), "show the version");
    app.allow_extras();
}

CLI::Option* list_option_add(CLI::App& app, const std::string& names,
                             std::vector<std::string>& values, const std::string& help) {
    return app.add_option(names, values, help)->expected(1)->allow_extra_args(false)->take_all();
}

bool arguments_read(CLI::App& app, std::vector<std::string> words) {
    std::reverse(words.begin(), words.end());
    try {
        app.parse(words);
    } catch (const CLI::CallForHelp&) {
        std::cout << app.help();
        return false;
    } catch (const CLI::CallForVersion&) {
        std::cout << app.version() << '\n';
        return false;
    } catch (const CLI::ParseError& e) {
        throw usage_error_t(e.what());
    }
    for (const std::string& word : app.remaining()) {
        // The word after which no options come is among what remains.
        if (word != "--") {
            throw usage_error_t("unknown option " + word);
        }
    }
    return true;
}

int program_run(const std::string& program, const std::function<int()>& body) {
    int status = status_failed;
    try {
        status = body();
        if (!std::cout.flush()) {
            throw std::runtime_error("error writing standard output");
        }
    } catch (const usage_error_t& e) {
        std::cerr << program << ": " << e.what() << "\nTry " << program << " --help.\n";
        return status_usage;
    } catch (const std::exception& e) {
        std::cerr << program << ": " << e.what() << '\n';
        return status_failed;
    }
    return status;
}

} // namespace tool
