// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/base/DiskFile.h"

#include <csignal>
#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// A new file that takes the place of another one whole or not at all: it is written beside it under a name of its own
/// and swapped in at the end. A crash, a full disk or a killed process leaves the old file as it was; what a killed
/// process left behind is cleared away by the next one in the same folder. Throws CFailure, which calls the file name.
class CFileReplacement {
public:
    /// target: full path without links.
    CFileReplacement(std::filesystem::path target, std::string name);

    /// Takes the new file away when it was not swapped in.
    ~CFileReplacement();
    CFileReplacement(const CFileReplacement&) = delete;
    CFileReplacement& operator=(const CFileReplacement&) = delete;

    /// The empty file to write into; its name ends like the target's kind, as programs expect it.
    std::string GetTemporaryPath() const { return m_temporary.string(); }

    /// Brings everything that was written to the disk and gives it the mode and, where allowed, the owner of the old
    /// file. What takes long is then over.
    void Flush();

    /// Swaps the new file in. Fails when there is an old one that may not be replaced. Answers what the target is now.
    CFileIdentity Commit(bool mayReplace);

private:
    /// While it lives, a write beyond the size limit of the process is an error and not the end of the process.
    class CSizeSignalGuard {
    public:
        CSizeSignalGuard();
        ~CSizeSignalGuard();
        CSizeSignalGuard(const CSizeSignalGuard&) = delete;
        CSizeSignalGuard& operator=(const CSizeSignalGuard&) = delete;

    private:
        struct sigaction m_former {};
    };

    [[noreturn]] void Refuse(const char* what, int systemError) const;
    void RemoveLeftOvers() const;
    bool TryCreate(unsigned mode);
    void TakeOverMode() const;
    int Swap(bool mayReplace) const;

    CSizeSignalGuard m_signals;
    std::filesystem::path m_target;
    std::string m_name;
    std::filesystem::path m_temporary;
    CDescriptor m_file; ///< locked as long as it is being written: that is how it differs from a left-over
    bool m_isCommitted = false;
};

} // namespace OLMGis::ProjectIo
