#include "stop.h"

#include <cmath>
#include <csignal>
#include <cstring>
#include <sys/time.h>
#include <unistd.h>

namespace tool {

namespace {

std::atomic<bool> stopped{false};
std::atomic<bool> timed_out{false};

constexpr suseconds_t us_per_s = 1000000;

void timer_set(double seconds) {
    itimerval timer{};
    double whole = 0;
    const double part = std::modf(seconds, &whole);
    timer.it_value.tv_sec = static_cast<time_t>(whole);
    timer.it_value.tv_usec = static_cast<suseconds_t>(part * us_per_s);
    // The second signal is for a run that does not look at the flag.
    timer.it_interval.tv_sec = 1;
    setitimer(ITIMER_REAL, &timer, nullptr);
}

extern "C" void on_alarm(int) {
    if (timed_out.exchange(true)) {
        const char* const message = "kobase-xpp: the time limit was exceeded\n";
        const ssize_t written = write(STDERR_FILENO, message, std::strlen(message));
        static_cast<void>(written);
        _exit(1);
    }
    stopped = true;
}

extern "C" void on_interrupt(int) {
    stopped = true;
}

void handler_set(int signal, void (*handler)(int)) {
    struct sigaction action {};
    action.sa_handler = handler;
    sigaction(signal, &action, nullptr);
}

} // namespace

const std::atomic<bool>& stop_flag() {
    return stopped;
}

bool time_is_up() {
    return timed_out;
}

void stop_on_interrupt() {
    handler_set(SIGINT, on_interrupt);
    handler_set(SIGTERM, on_interrupt);
}

time_limit_t::time_limit_t(double seconds) {
    if (seconds > 0) {
        handler_set(SIGALRM, on_alarm);
        timer_set(seconds);
    }
}

time_limit_t::~time_limit_t() {
    itimerval off{};
    setitimer(ITIMER_REAL, &off, nullptr);
}

} // namespace tool
