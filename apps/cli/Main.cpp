// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandLine.h"
#include "apps/cli/shell/DescriptorStream.h"
#include "apps/cli/shell/Interrupt.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <exception>
#include <new>
#include <unistd.h>

namespace {

using Cli::enmExitCode;

enmExitCode Run(int argc, const char* const* argv) {
    const auto parsed = Cli::ParseCommandLine(argc, argv);
    Cli::CTerminal terminal(parsed ? parsed->m_terminal : Cli::CTerminalOptions{});
    Cli::CDescriptorStream results(STDOUT_FILENO, "standard output");
    const auto fail = [&terminal](const OLMGis::Utility::Error& error) {
        terminal.Error(error.message);
        return Cli::ToExitCode(error.kind);
    };
    if (!parsed)
        return fail(parsed.GetError());
    terminal.SetResultsCheck([&results] { return results.Finish(); });
    enmExitCode code = enmExitCode::Done;
    if (parsed->m_command) {
        const Cli::CVerbResult ended = parsed->m_command(terminal, results);
        // What Ctrl+C broke off may fail for reasons of its own, as a read that ends too early. No verb changes
        // anything and fails then.
        const auto goesOn = Cli::Interrupt::Check();
        if (!ended)
            return fail(goesOn ? ended.GetError() : goesOn.GetError());
        code = ended.Value();
    } else {
        results << parsed->m_text;
    }
    if (const auto written = results.Finish(); !written)
        return fail(written.GetError());
    return code;
}

} // namespace

int main(int argc, char** argv) {
    Cli::Interrupt::FillStandardDescriptors();
    Cli::Interrupt::InstallHandlers();
    try {
        const enmExitCode code = Run(argc, argv);
        if (code == enmExitCode::Interrupted)
            Cli::Interrupt::EndBySignal();
        return static_cast<int>(code);
    } catch (const std::bad_alloc&) {
        fmt::print(stderr, "drenova: not enough memory\n");
    } catch (const std::exception& error) {
        fmt::print(stderr, "drenova: unexpected: {}\n", Reports::OnOneLine(error.what()));
    }
    return static_cast<int>(enmExitCode::Refused);
}
