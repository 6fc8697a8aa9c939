// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/Terminal.h"

#include "apps/cli/shell/Interrupt.h"
#include "host/gis_core/Utility.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstdlib>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Cli {

using OLMGis::Utility::CUtility;

namespace {

constexpr std::string_view EraseLine = "\r\x1b[K";

/// Straight to standard error; nobody can be informed of an error there.
void WriteBytes(std::string_view bytes) {
    while (!bytes.empty()) {
        const ssize_t written = ::write(STDERR_FILENO, bytes.data(), bytes.size());
        if (written >= 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
        else if (errno != EINTR)
            return;
    }
}

bool CanRedraw() {
    const char* const kind = std::getenv("TERM");
    return ::isatty(STDERR_FILENO) != 0 && kind != nullptr && std::string_view(kind) != "dumb";
}

std::size_t GetWidth() {
    constexpr std::size_t Usual = 80;
    winsize size{};
    return ::ioctl(STDERR_FILENO, TIOCGWINSZ, &size) == 0 && size.ws_col > 0 ? size.ws_col : Usual;
}

/// A line from standard input without its end; nothing at its end, at an error and at Ctrl+C.
std::optional<std::string> ReadAnswer() {
    constexpr std::size_t Longest = 4096;
    std::string line;
    for (char c = 0; line.size() < Longest;) {
        if (::read(STDIN_FILENO, &c, 1) != 1)
            return std::nullopt;
        if (c == '\n')
            return line;
        line += c;
    }
    return std::nullopt;
}

} // namespace

CTerminal::CTerminal(const CTerminalOptions& options)
    : m_options(options), m_showsProgress(!options.m_isQuiet && CanRedraw()) {}

CTerminal::~CTerminal() {
    HideProgress();
}

void CTerminal::WriteLine(std::string_view head, std::string_view text) {
    HideProgress();
    WriteBytes(fmt::format("{}{}\n", head, Reports::WithoutControls(CUtility::Trim(text))));
}

OLMGis::Utility::Status CTerminal::CheckResults() const {
    return m_resultsCheck ? m_resultsCheck() : OLMGis::Utility::Status(OLMGis::Utility::Done{});
}

void CTerminal::Error(std::string_view text) {
    WriteLine("drenova: ", text);
}

void CTerminal::Warn(std::string_view text) {
    if (!m_options.m_isQuiet)
        WriteLine("warning: ", text);
}

void CTerminal::Note(std::string_view text) {
    if (!m_options.m_isQuiet)
        WriteLine("note: ", text);
}

void CTerminal::Print(std::string_view text) {
    if (!m_options.m_isQuiet)
        WriteLine("", text);
}

void CTerminal::Detail(std::string_view text) {
    if (m_options.m_isVerbose)
        WriteLine("", text);
}

void CTerminal::Show(const Reports::CRemarks& remarks) {
    using enmKind = Reports::CRemark::enmKind;
    for (const auto& remark : remarks)
        switch (remark.m_kind) {
        case enmKind::Warning:
            Warn(remark.m_text);
            break;
        case enmKind::Note:
            Note(remark.m_text);
            break;
        case enmKind::Message:
            Print(remark.m_text);
            break;
        }
}

void CTerminal::Alert(std::string_view text) {
    WriteLine("alert: ", text);
}

int CTerminal::AskYesNo(std::string_view text) {
    const bool isAsked = !m_options.m_answer && ::isatty(STDIN_FILENO) != 0 && ::isatty(STDERR_FILENO) != 0;
    if (!isAsked) {
        const bool answer = m_options.m_answer.value_or(false);
        const char* const reason =
            m_options.m_answer ? "by --yes or --no" : "no terminal to ask on; --yes or --no answers";
        Print(fmt::format("{} {} ({})", text, answer ? "yes" : "no", reason));
        return answer ? 1 : 0;
    }
    HideProgress();
    for (;;) {
        WriteBytes(fmt::format("{} [y/N] ", Reports::WithoutControls(text)));
        const std::optional<std::string> line = ReadAnswer();
        if (!line) {
            WriteBytes("\n");
            return 0;
        }
        const std::string word = CUtility::ToLower(CUtility::Trim(*line));
        if (word.empty() || word == "n" || word == "no")
            return 0;
        if (word == "y" || word == "yes")
            return 1;
    }
}

void CTerminal::WriteCommandLine(std::string_view text) {
    Detail(text); // of use to those who look into a calculator
}

int CTerminal::ShowProgress(std::string_view caption, double done) {
    constexpr double SecondsBetween = 0.1;
    const bool isDue = !m_isLineShown || m_sinceDrawn.GetElapsedSeconds() >= SecondsBetween;
    if (m_showsProgress && isDue) {
        m_sinceDrawn.Restart();
        m_isLineShown = true;
        constexpr std::size_t BarWidth = 24;
        const double part = std::isfinite(done) ? std::clamp(done, 0.0, 1.0) : 0.0;
        const auto full = static_cast<std::size_t>(part * static_cast<double>(BarWidth));
        const std::string bar = fmt::format("[{}{}] {:3d} %  ", std::string(full, '#'),
                                            std::string(BarWidth - full, '.'), static_cast<int>(part * 100.0));
        const std::size_t left = GetWidth() > bar.size() + 1 ? GetWidth() - bar.size() - 1 : 0;
        WriteBytes(fmt::format("{}{}{}", EraseLine, bar, Reports::CutToWidth(caption, left)));
    }
    return Interrupt::IsRequested() ? 0 : 1;
}

void CTerminal::HideProgress() {
    if (m_isLineShown)
        WriteBytes(EraseLine);
    m_isLineShown = false;
}

} // namespace Cli
