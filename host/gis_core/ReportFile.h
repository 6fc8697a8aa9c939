// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace OLMGis::Utility {

/// A text file that grows from run to run: new text is appended to what is there. A file that can't be opened or
/// written takes nothing and keeps the reason: reports accompany results and never stop them.
class CReportFile {
public:
    enum class enmStart {
        Append, ///< behind what is there
        Anew,   ///< replaces what is there, whole, when the report is closed
    };

    /// Opens the file, which is made with its folder when it isn't there.
    explicit CReportFile(const std::string& path, enmStart start = enmStart::Append);
    ~CReportFile();
    CReportFile(const CReportFile&) = delete;
    CReportFile& operator=(const CReportFile&) = delete;

    bool IsOpen() const { return m_file != nullptr; }

    /// False once a write has failed; then further text is left out.
    bool Append(std::string_view text);

    /// Ends the report. Whether all that was appended is in the file: a disk may have filled up.
    bool Close();

    /// Removes what was appended, or the file where it was not there before, and takes no more. Leaves a file alone to
    /// which others wrote meanwhile.
    void TakeBack();

    /// The system's reason why the file could not be opened or written whole; empty without a failure.
    const std::string& GetProblem() const { return m_problem; }

private:
    struct CClose {
        void operator()(std::FILE* file) const;
    };
    void NoteProblem(int error);

    std::string m_target;        ///< of a report that begins anew: the file to replace; else empty
    std::string m_path;          ///< the file that is written
    bool m_wasThere = false;     ///< before it was opened
    std::uintmax_t m_before = 0; ///< bytes of the file when it was opened
    std::uintmax_t m_appended = 0;
    std::string m_problem;
    std::unique_ptr<std::FILE, CClose> m_file;
};

} // namespace OLMGis::Utility
