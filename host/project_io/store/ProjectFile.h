// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/project_io/base/DiskFile.h"

#include <filesystem>
#include <string>
#include <vector>

namespace OLMGis::ProjectIo {

/// The project file: one GeoPackage that opens in any GIS as it is. It holds the layers nodes, sections and catchments
/// with their attributes as columns, and beside them the project's settings and catalogues; see GeoPackageLayout.h.
/// Numbers come back bit by bit, but for not-a-number, which is kept as null, and the sign of a zero.
///
/// Operations work on the active project context and show progress; a user who gives up gets an error of the kind
/// Cancelled, and nothing was changed. Other errors: BadInput for a file with wrong content, naming file, table and
/// row; Refused where the system says no, the old file being intact.
class CProjectFile {
public:
    /// Fills the active project, which must be empty; after an error throw it away. The file is not changed, and no
    /// other file is left beside it. Cost: linear in the file.
    static Utility::Result<CProjectFile> Open(const std::string& path);

    /// Writes the active project into a new file. Refused when there is one already, unless it may be replaced.
    static Utility::Result<CProjectFile> Create(const std::string& path, bool replace);

    /// Writes the active project over the file. The new file is swapped in whole: a crash, a full disk or a killed
    /// process leaves the old one. Refused when the file is no longer as this object last saw it: removed, replaced, or
    /// changed by somebody else. The same project saved as often gives the same bytes. Cost: linear, but for two sorts.
    Utility::Status Save();

    /// Writes the active project into another file, which this object stands for from then on. Refused when there is
    /// one already, unless it may be replaced.
    Utility::Status SaveAs(const std::string& path, bool replace);

    /// As it was given.
    const std::string& GetPath() const { return m_path; }

    /// What opening noticed and could live with, whole sentences for the user: columns and tables that saving will
    /// drop, what had to be mended, rasters of terrain that are not there.
    const std::vector<std::string>& GetWarnings() const { return m_warnings; }

private:
    CProjectFile() = default;

    static CProjectFile Opened(const std::string& path);
    static CProjectFile Written(const std::string& path, bool replace);
    void SaveOver();
    void CheckStillOurs() const;

    std::string m_path;
    std::filesystem::path m_target; ///< full, behind all links
    CFileIdentity m_identity;       ///< of the file as this object last saw it
    int m_saveCounter = 0;          ///< as the file has it
    std::vector<std::string> m_warnings;
};

} // namespace OLMGis::ProjectIo
