// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/OutputFile.h"
#include "apps/cli/shell/Terminal.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/Result.h"
#include "host/project_io/store/ProjectFile.h"
#include "host/sewage_calculations/NetworkChecks.h"
#include "host/workspace_core/ModuleLoader.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace Cli {

/// Whether a project with impossible values may be opened.
enum class enmValues {
    MustBePossible,
    Any, ///< by verbs that list or correct them; saving refuses those that are left
};

/// The project of a verb: a context of its own, active during the lifetime of this object, its settings in force, its
/// log shown on the terminal. One at a time; it outlives every object of the module that it loaded.
class CProject {
public:
    /// A project from its file. Refused or BadInput when it cannot be read or has impossible values. What opening
    /// noticed is printed as warnings.
    static OLMGis::Utility::Result<std::unique_ptr<CProject>> Open(const std::string& path, CTerminal& terminal,
                                                                   enmValues values = enmValues::MustBePossible);

    /// An empty project without a file, with the settings of a new one.
    static OLMGis::Utility::Result<std::unique_ptr<CProject>> MakeEmpty(CTerminal& terminal);

    ~CProject();
    CProject(const CProject&) = delete;
    CProject& operator=(const CProject&) = delete;

    /// Loads the hydraulics module, which registers calculators and checks, and registers our own checks. Refused or
    /// BadInput when it cannot be.
    OLMGis::Utility::Status LoadModule();

    /// Notes a file that the command reads beside the project and its rasters: an output may not overwrite it.
    void Reads(std::string path) { m_inputs.push_back(std::move(path)); }

    /// Whether Save may write the output: any free name, the project's own, or with --replace an existing file that the
    /// command does not read. Called before long work; Save checks once more. For the errors see Cli::CheckOutput.
    OLMGis::Utility::Status CheckOutput(const COutputOption& output) const;

    /// The same for what is no project: the project's own file is no output either.
    OLMGis::Utility::Status CheckExport(const COutputOption& output) const;

    /// Saves in one transaction, after all results were printed: into the output, or into the file that was opened when
    /// there is none. Refused, and nothing saved, when results could not be printed. Cancelled, and nothing saved, once
    /// the program was asked to stop. Prints a warning for each key with unusual values; BadInput, and nothing saved,
    /// for impossible ones.
    OLMGis::Utility::Status Save(const COutputOption& output);

    /// The file that Save(output) writes.
    const std::string& GetTarget(const COutputOption& output) const { return output.empty() ? m_path : output.m_path; }

    /// What opening noticed without failing.
    const std::vector<std::string>& GetWarnings() const { return m_warnings; }

private:
    explicit CProject(CTerminal& terminal);
    OLMGis::Utility::Status CheckValues() const;
    OLMGis::Utility::Status Write(const COutputOption& output);
    std::vector<std::string> GatherInputs() const;

    CTerminal& m_terminal;
    OLMGis::System::CProjectContext m_context;
    OLMGis::System::CContextActivation m_activation{m_context};
    std::optional<OLMGis::ProjectIo::CProjectFile> m_file;
    std::optional<OLMGis::Workspace::CModuleLoader> m_module;
    std::optional<OLMGis::Sewage::CNetworkChecks> m_checks; ///< after those of the module
    std::string m_path;
    std::vector<std::string> m_warnings;
    std::size_t m_faultCount = 0;      ///< impossible values when it was opened
    std::vector<std::string> m_inputs; ///< other files that the command reads
};

/// What a verb prints of a project that it created: "town.gpkg: 12 nodes, 11 sections, 3 catchments".
std::string ShowNewProject(const std::string& path, std::size_t nodes, std::size_t sections, std::size_t catchments);

} // namespace Cli
