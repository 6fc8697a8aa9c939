// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/HostServices.h"
#include "host/gis_core/PerformanceTimer.h"
#include "host/gis_core/Result.h"
#include "reports/Remark.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace Cli {

/// How much the program prints, and how it answers questions.
struct CTerminalOptions {
    bool m_isQuiet = false;         ///< only errors and alerts
    bool m_isVerbose = false;       ///< details as well
    std::optional<bool> m_answer{}; ///< to every question; without one the user is asked on a terminal
};

/// The host of the calculations on a terminal. Everything goes to standard error: standard output is for results.
/// Control characters, which names from hostile files may contain, are shown as "?". Progress is one line redrawn, on a
/// terminal only. A run goes on until Ctrl+C.
class CTerminal final : public OLMGis::System::IBasicHostServices {
public:
    explicit CTerminal(const CTerminalOptions& options);
    ~CTerminal() override;

    /// "drenova: TEXT", printed in any case.
    void Error(std::string_view text);

    /// "warning: TEXT", "note: TEXT" and a plain line; not when quiet, Detail only when verbose.
    void Warn(std::string_view text);
    void Note(std::string_view text);
    void Print(std::string_view text);
    void Detail(std::string_view text);

    /// Each remark as a warning, a note or a plain line.
    void Show(const Reports::CRemarks& remarks);

    /// How to find out whether all results printed so far could be written; without one they are taken as written.
    void SetResultsCheck(std::function<OLMGis::Utility::Status()> check) { m_resultsCheck = std::move(check); }

    /// Asked before anything is stored: Refused where results could not be written. A reader that has gone away is no
    /// error.
    OLMGis::Utility::Status CheckResults() const;

    void Alert(std::string_view text) override;
    int AskYesNo(std::string_view text) override;
    void WriteCommandLine(std::string_view text) override;
    int ShowProgress(std::string_view caption, double done) override;
    void HideProgress() override;

private:
    void WriteLine(std::string_view head, std::string_view text);

    CTerminalOptions m_options;
    std::function<OLMGis::Utility::Status()> m_resultsCheck;
    bool m_showsProgress;
    bool m_isLineShown = false;
    OLMGis::Utility::CPerformanceTimer m_sinceDrawn;
    OLMGis::System::CHostServicesScope m_services{*this};
};

} // namespace Cli
