// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/project_io/base/DiskFile.h"

#include <filesystem>
#include <string>

namespace OLMGis::ProjectIo {

/// Replaces a file as a whole or not at all: the new file is written beside the old one under a temporary name and
/// renamed at the end. A crash, a full disk or a killed process leaves the old file as it was; a temporary file left by
/// a killed process is removed by the next replacement in the same folder. The process must ignore SIGXFSZ, else a
/// limit of the file size ends it. Throws CFailure; name: name of the file in messages.
class CFileReplacement {
public:
    /// target: full path without links.
    CFileReplacement(std::filesystem::path target, std::string name);

    /// Removes the new file if Commit was not called or failed.
    ~CFileReplacement();
    CFileReplacement(const CFileReplacement&) = delete;
    CFileReplacement& operator=(const CFileReplacement&) = delete;

    /// The empty file to write into, and its open descriptor.
    std::string GetTemporaryPath() const { return m_temporary.string(); }
    int GetDescriptor() const { return m_file.Get(); }

    /// Flushes the new file to the disk and gives it the mode and, where allowed, the owner of the old file. The slow
    /// part of a replacement: Commit only renames.
    void Flush();

    /// Renames the new file to the target. Fails when the target exists and may not be replaced. Returns the new state
    /// of the target.
    CFileIdentity Commit(bool mayReplace);

private:
    [[noreturn]] void Refuse(const char* what, int systemError) const;
    void RemoveLeftOvers() const;
    bool TryCreate(unsigned mode);
    void TakeOverMode() const;
    int Swap(bool mayReplace) const;

    std::filesystem::path m_target;
    std::string m_name;
    std::filesystem::path m_temporary;
    CDescriptor m_file; ///< locked while it is written; an unlocked temporary file is left over from a killed process
    bool m_isCommitted = false;
};

} // namespace OLMGis::ProjectIo
