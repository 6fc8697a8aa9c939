// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/DiskFile.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

class CFileReplacement;
class CReadableFile;
class CWarnings;

/// The project file: one GeoPackage that any GIS opens. It contains the layers nodes, sections and catchments with
/// their attributes as columns, and the project's settings and catalogues; see GeoPackageLayout.h. Numbers come back to
/// the last bit, except not-a-number, which is kept as null, and the sign of zero.
///
/// Tables, views, triggers, indexes and columns of layers that other programs put into the file are kept by every save.
///
/// Operations work on the active project context and show progress. Errors: Cancelled when the user cancels; BadInput
/// for a file with wrong content, naming file, table and row; Refused where the system fails. After an error the old
/// file is intact.
class CProjectFile {
public:
    /// Fills the active project, which must be empty; after an error the caller discards the project. The file is not
    /// changed, and no other file is left beside it. Linear in the file.
    static Utility::Result<CProjectFile> Open(const std::string& path);

    /// Writes the active project into a new file. Refused when there is one already, unless it may be replaced.
    static Utility::Result<CProjectFile> Create(const std::string& path, bool replace);

    /// Writes the active project over the file. The file is replaced as a whole: a crash, a full disk or a killed
    /// process leaves the old one. Refused when the file was removed, replaced or changed since this object last read
    /// or wrote it. The same project saved the same number of times gives the same bytes. Cost: linear, except for two
    /// sorts.
    Utility::Status Save();

    /// Writes the active project into another file, which becomes the file of this object. Refused when there is
    /// one already, unless it may be replaced.
    Utility::Status SaveAs(const std::string& path, bool replace);

    /// As it was given.
    const std::string& GetPath() const { return m_path; }

    /// Warnings of Open, whole sentences for the user: columns and tables that a save cannot keep, repaired texts,
    /// missing rasters of the terrain.
    const std::vector<std::string>& GetWarnings() const { return m_warnings; }

private:
    CProjectFile() = default;

    static bool ReadSnapshot(CProjectFile& file, CWarnings& warnings);
    static CProjectFile Opened(const std::string& path);
    static CProjectFile Written(const std::string& path, bool replace, const CProjectFile& origin);
    static void WriteNew(const CFileReplacement& replacement, const std::string& path, int saveCounter,
                         const CProjectFile& origin);
    std::unique_ptr<const CReadableFile> OpenSource() const;
    void SaveOver();
    void CheckStillOurs() const;

    std::string m_path;
    std::filesystem::path m_target;   ///< full path, all links resolved
    CFileIdentity m_identity;         ///< of the file as this object last read or wrote it
    int m_saveCounter = 0;            ///< as in the file
    bool m_hasForeignContent = false; ///< of other programs, which each save copies from the file before
    std::vector<std::string> m_warnings;
};

} // namespace OLMGis::ProjectIo
