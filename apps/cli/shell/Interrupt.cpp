// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/Interrupt.h"

#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace Cli::Interrupt {

namespace {

volatile std::sig_atomic_t requested = 0;

extern "C" void OnInterrupt(int signal) {
    requested = signal;
}

} // namespace

void InstallHandlers() {
    struct sigaction action {};
    sigemptyset(&action.sa_mask);
    action.sa_handler = OnInterrupt;
    // Without SA_RESTART a question that waits for an answer ends too.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        struct sigaction former {};
        sigaction(signal, nullptr, &former);
        if (former.sa_handler != SIG_IGN)
            sigaction(signal, &action, nullptr);
    }
    action.sa_handler = SIG_IGN;
    action.sa_flags = 0;
    for (const int signal : {SIGPIPE, SIGXFSZ})
        sigaction(signal, &action, nullptr);
}

void FillStandardDescriptors() {
    for (const int descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        if (::fcntl(descriptor, F_GETFD) >= 0)
            continue;
        // The lowest free number is the closed one. Input opened for writing and output for reading answer with errors.
        const int mode = descriptor == STDOUT_FILENO ? O_RDONLY : O_WRONLY;
        [[maybe_unused]] const int opened = ::open("/dev/null", mode);
    }
}

bool IsRequested() {
    return requested != 0;
}

void EndBySignal() {
    if (requested == 0 || requested == SIGINT)
        return;
    std::signal(requested, SIG_DFL);
    std::raise(requested);
}

OLMGis::Utility::Status Check() {
    using OLMGis::Utility::enmErrorKind;
    using OLMGis::Utility::Error;
    if (IsRequested())
        return Error{enmErrorKind::Cancelled, "interrupted; the project is unchanged"};
    return OLMGis::Utility::Done{};
}

} // namespace Cli::Interrupt
