// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

namespace OLMGis::Utility {

/// A text file that grows from run to run: what is appended goes behind what is there. A file that can't be opened or
/// written takes nothing, without an error: reports accompany results and never stop them.
class CReportFile {
public:
    /// Opens the file, which is made with its folder when it isn't there.
    explicit CReportFile(const std::string& path);
    ~CReportFile();
    CReportFile(const CReportFile&) = delete;
    CReportFile& operator=(const CReportFile&) = delete;

    bool IsOpen() const { return m_file != nullptr; }
    void Append(std::string_view text);

    /// Ends the report. Whether all that was appended is in the file: a disk may have filled up.
    bool Close();

    /// Cuts off again what was appended, and takes no more; nothing where others wrote meanwhile.
    void TakeBack();

    /// Removes a report; none there is fine.
    static void Remove(const std::string& path);

private:
    struct CClose {
        void operator()(std::FILE* file) const;
    };
    std::string m_path;
    std::uintmax_t m_before = 0; ///< bytes of the file when it was opened
    std::uintmax_t m_appended = 0;
    bool m_isWhole = true;
    std::unique_ptr<std::FILE, CClose> m_file;
};

} // namespace OLMGis::Utility
