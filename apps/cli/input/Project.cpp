// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"

#include "apps/cli/shell/Interrupt.h"
#include "host/gis_core/Editions.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/PerformanceTimer.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/ResultOrigins.h"
#include "host/gis_core/ShortName.h"
#include "host/network_core/CatalogManager.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/ProjectValues.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "host/workspace_core/WsManager.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>

namespace Cli {

using OLMGis::ProjectIo::CProjectFile;
using OLMGis::Topology::CCatalogManager;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CPerformanceTimer;
using OLMGis::Utility::Done;
using OLMGis::Utility::Refused;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using OLMGis::Workspace::CLogLine;
using OLMGis::Workspace::CModuleLoader;
using OLMGis::Workspace::CWsManager;

CProject::CProject(CTerminal& terminal) : m_terminal(terminal) {
    CWsManager::Instance()->SetLogListener([&terminal](const CLogLine& line) {
        const std::string text =
            Reports::OnOneLine(line.m_entityName.empty()
                                   ? line.m_text
                                   : fmt::format("{}: {}", OLMGis::Utility::ShortName(line.m_entityName), line.m_text));
        if (line.m_type == CLogLine::Stored)
            terminal.Print(text);
        else
            terminal.Warn(text);
    });
}

CProject::~CProject() {
    CWsManager::Instance()->SetLogListener({});
}

Result<std::unique_ptr<CProject>> CProject::Open(const std::string& path, CTerminal& terminal, enmValues values) {
    const CPerformanceTimer timer;
    std::unique_ptr<CProject> project(new CProject(terminal));
    auto file = CProjectFile::Open(path);
    if (!file)
        return file.GetError();
    project->m_file = std::move(file.Value());
    project->m_path = path;
    project->m_warnings = project->m_file->GetWarnings();
    for (const std::string& warning : project->m_warnings)
        terminal.Warn(Reports::OnOneLine(warning));
    if (const Status applied = CModuleConfiguration::Instance()->ApplySettings(); !applied) {
        if (CModuleConfiguration::Instance()->GetLanguage().empty()) // not even the texts in English
            return applied.GetError();
        terminal.Warn(Reports::OnOneLine(fmt::format(
            "{}: the language of the project cannot be used, its texts are in English: {}. Choose another: drenova "
            "settings {} language=en",
            path, applied.GetError().message, path)));
    }
    const std::string edition = OLMGis::System::CProjectSettings::Instance()->Get(
        OLMGis::System::CProjectSettings::Edition, OLMGis::System::Editions::All.front());
    if (std::find(OLMGis::System::Editions::All.begin(), OLMGis::System::Editions::All.end(), edition) ==
        OLMGis::System::Editions::All.end())
        terminal.Warn(Reports::OnOneLine(fmt::format("{}: found the edition {}, expected {}; calculations use that of "
                                                     "no country. Choose one: drenova settings {} edition={}",
                                                     path, edition, fmt::join(OLMGis::System::Editions::All, ", "),
                                                     path, OLMGis::System::Editions::All.front())));
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto faults = OLMGis::ProjectIo::JudgeProject(topology).m_impossible;
    project->m_faultCount = faults.GetCount();
    if (values == enmValues::MustBePossible)
        if (const Status possible = faults.ToStatus(path, "drenova info lists all; correct values with drenova set or "
                                                          "drenova load, geometry in a GIS or by a new import");
            !possible)
            return possible.GetError();
    terminal.Detail(fmt::format("{}: {} read in {:.2f} s", path,
                                Reports::Count(topology.GetSections().size(), "section"), timer.GetElapsedSeconds()));
    return project;
}

Result<std::unique_ptr<CProject>> CProject::MakeEmpty(CTerminal& terminal) {
    // Without the built-in catalogue references of the input to its pipes would not be found.
    if (const std::string error = CCatalogManager::Instance()->GetLoadError(); !error.empty())
        return Refused(error);
    std::unique_ptr<CProject> project(new CProject(terminal));
    if (const Status applied = CModuleConfiguration::Instance()->ApplySettings(); !applied)
        return applied.GetError();
    return project;
}

Status CProject::LoadModule() {
    auto loaded = CModuleLoader::Load(CModuleLoader::DefaultModulePath());
    if (!loaded)
        return loaded.GetError();
    m_module.emplace(std::move(loaded.Value()));
    m_checks.emplace();
    return Done{};
}

Status CProject::CheckValues() const {
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    const auto values = OLMGis::ProjectIo::JudgeProject(topology);
    // One command rarely reaches all of them; each that removes some is a step.
    if (values.m_impossible.GetCount() > 0 && values.m_impossible.GetCount() < m_faultCount)
        m_terminal.Warn(fmt::format("impossible values left: {}; drenova info {} lists them",
                                    values.m_impossible.GetCount(), m_path));
    else if (Status possible = values.m_impossible.ToStatus(m_path, "Nothing was stored; correct these"); !possible)
        return possible;
    for (const std::string& unusual : values.m_unusual)
        m_terminal.Warn(unusual);
    return Done{};
}

std::vector<std::string> CProject::GatherInputs() const {
    std::vector<std::string> inputs = m_inputs;
    for (std::string& raster : OLMGis::ProjectIo::GetTerrainPaths(m_path))
        inputs.push_back(std::move(raster));
    // Curve files of earlier runs are read to see whether they have changed.
    for (const auto& origin : OLMGis::Data::CResultOrigins::Instance()->GetAll())
        for (const auto& input : origin.m_inputs)
            if (input.m_name == OLMGis::Data::Inputs::File)
                inputs.push_back(input.m_detail);
    return inputs;
}

Status CProject::CheckOutput(const COutputOption& output) const {
    if (output.empty() || (m_file && IsSamePath(output.m_path, m_path)))
        return Done{};
    return Cli::CheckOutput(output, GatherInputs());
}

Status CProject::CheckExport(const COutputOption& output) const {
    std::vector<std::string> inputs = GatherInputs();
    inputs.push_back(m_path);
    return Cli::CheckOutput(output, inputs);
}

Status CProject::Save(const COutputOption& output) {
    const CPerformanceTimer timer;
    if (Status printed = m_terminal.CheckResults(); !printed)
        return printed;
    if (Status good = CheckOutput(output); !good)
        return good;
    if (Status goesOn = Interrupt::Check(); !goesOn)
        return goesOn;
    if (Status possible = CheckValues(); !possible)
        return possible;
    if (Status written = Write(output); !written)
        return written;
    m_terminal.Detail(fmt::format("{}: written in {:.2f} s", m_path, timer.GetElapsedSeconds()));
    return Done{};
}

Status CProject::Write(const COutputOption& output) {
    if (m_file && (output.empty() || IsSamePath(output.m_path, m_path)))
        return m_file->Save();
    m_path = output.m_path;
    if (m_file)
        return m_file->SaveAs(m_path, output.m_replaces);
    auto made = CProjectFile::Create(m_path, output.m_replaces);
    if (!made)
        return made.GetError();
    m_file = std::move(made.Value());
    return Done{};
}

std::string ShowNewProject(const std::string& path, std::size_t nodes, std::size_t sections, std::size_t catchments) {
    return fmt::format("{}: {}, {}, {}", path, Reports::Count(nodes, "node"), Reports::Count(sections, "section"),
                       Reports::Count(catchments, "catchment"));
}

} // namespace Cli
