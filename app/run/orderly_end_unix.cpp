#include "app/run/orderly_end.h"

#include <QCoreApplication>
#include <QSocketNotifier>

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace
{
int requestPipe[2] = {-1, -1}; // read end, write end

/// Runs in the signal's own context, where a write to a pipe is all that is allowed.
extern "C" void onTerminationSignal(int)
{
    const char request = 1;
    const ssize_t written = write(requestPipe[1], &request, sizeof request);
    (void)written; // a full pipe holds requests enough
}

void takeRequest()
{
    char requests[16];
    while (read(requestPipe[0], requests, sizeof requests) > 0) {
    }
    requestOrderlyEnd();
}

bool openRequestPipe()
{
    if (pipe(requestPipe) != 0)
        return false;
    for (const int end : requestPipe) {
        fcntl(end, F_SETFD, FD_CLOEXEC);
        fcntl(end, F_SETFL, O_NONBLOCK);
    }
    return true;
}

void handleSignal(int number)
{
    struct sigaction action = {};
    action.sa_handler = onTerminationSignal;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    sigaction(number, &action, nullptr);
}
} // namespace

void installSystemRequests()
{
    if (requestPipe[0] < 0 && !openRequestPipe())
        return; // the system's own way of ending the process stays
    auto *notifier = new QSocketNotifier(requestPipe[0], QSocketNotifier::Read, qApp);
    QObject::connect(notifier, &QSocketNotifier::activated, notifier, takeRequest);
    handleSignal(SIGTERM);
    handleSignal(SIGINT);
}
