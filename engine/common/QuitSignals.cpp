#include "common/QuitSignals.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

namespace {

constexpr int Signals[] = {SIGTERM, SIGINT, SIGHUP};

/// From the signal's handler, which may do next to nothing, to the event loop.
int s_pipe[2] = {-1, -1};

void take(int)
{
    const char sign = 0;
    [[maybe_unused]] const auto written = ::write(s_pipe[1], &sign, 1);
}

void handle(void (*handler)(int), int flags)
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = flags;
    for (const int number : Signals)
        ::sigaction(number, &action, nullptr);
}

} // namespace

QuitSignals::QuitSignals(QObject* parent) : QObject(parent)
{
    if (::pipe2(s_pipe, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    auto* notifier = new QSocketNotifier(s_pipe[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, &QuitSignals::quit);
    handle(&take, int(SA_RESETHAND) | SA_RESTART);
}

QuitSignals::~QuitSignals()
{
    handle(SIG_DFL, 0);
    for (int& end : s_pipe)
        ::close(std::exchange(end, -1));
}

void QuitSignals::quit()
{
    char sign;
    while (::read(s_pipe[0], &sign, 1) > 0) {
    }
    QCoreApplication::quit();
}
