// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/Interrupt.h"

#include <csignal>

namespace Cli::Interrupt {

namespace {

volatile std::sig_atomic_t requested = 0;

extern "C" void OnInterrupt(int /*signal*/) {
    requested = 1;
}

} // namespace

void InstallHandlers() {
    struct sigaction action {};
    action.sa_handler = OnInterrupt;
    sigemptyset(&action.sa_mask);
    // Without SA_RESTART a question that waits for an answer ends too.
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    sigaction(SIGINT, &action, nullptr);
    action.sa_handler = SIG_IGN;
    action.sa_flags = 0;
    sigaction(SIGPIPE, &action, nullptr);
}

bool IsRequested() {
    return requested != 0;
}

OLMGis::Utility::Status Check() {
    using OLMGis::Utility::enmErrorKind;
    using OLMGis::Utility::Error;
    if (IsRequested())
        return Error{enmErrorKind::Cancelled, "interrupted; the project is unchanged"};
    return OLMGis::Utility::Done{};
}

} // namespace Cli::Interrupt
