// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/KnownSettings.h"

#include "apps/cli/input/PipeGroups.h"
#include "host/gis_core/Editions.h"
#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TerrainSurfaces.h"
#include "host/project_io/base/CoordinateSystem.h"
#include "host/project_io/terrain/TerrainAttachment.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <array>
#include <filesystem>

namespace Cli {

using OLMGis::System::CProjectSettings;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::OnOneLine;
using Reports::Suggest;

namespace {

Result<std::string> ReadChoice(std::string_view text, const std::vector<std::string>& choices) {
    if (std::find(choices.begin(), choices.end(), text) != choices.end())
        return std::string(text);
    return BadArguments(fmt::format("found \"{}\", expected {}{}", OnOneLine(text), choices.size() > 1 ? "one of " : "",
                                    fmt::join(choices, ", ")));
}

Result<std::string> ReadEdition(std::string_view text, const std::string& /*project*/) {
    return ReadChoice(text, GetEditions());
}

Result<std::string> ReadTurkish(std::string_view text, const std::string& /*project*/) {
    return ReadChoice(text, {"0", "1"});
}

constexpr std::array Languages = {"en", "ro", "bg", "hr", "tr"};

/// Languages whose catalogue of messages is installed.
Result<std::string> ReadLanguage(std::string_view text, const std::string& /*project*/) {
    std::vector<std::string> installed;
    for (const char* language : Languages) {
        std::error_code ignored;
        const auto catalogue = OLMGis::Utility::InstallationPaths::DataFile(fmt::format("messages/{}.json", language));
        if (std::filesystem::is_regular_file(catalogue, ignored))
            installed.emplace_back(language);
    }
    return ReadChoice(text, installed);
}

/// "EPSG:n", or nothing for plain plane coordinates. The coordinates themselves stay as they are.
Result<std::string> ReadCrs(std::string_view text, const std::string& /*project*/) {
    if (CUtility::Trim(text).empty())
        return std::string();
    const auto crs = OLMGis::ProjectIo::ParseCrs(text);
    if (!crs)
        return BadArguments(crs.GetError().message);
    return crs->ToText();
}

/// The pipe group of designs that name no other; by name or GUID, stored as given.
Result<std::string> ReadPipeGroup(std::string_view text, const std::string& /*project*/) {
    const std::string_view group = CUtility::Trim(text);
    if (group.empty())
        return std::string();
    if (const auto found = FindPipeGroup(group); !found)
        return found.GetError();
    return std::string(group);
}

const std::vector<std::string>& TerrainNames() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> list;
        for (int type = 1; type <= OLMGis::Topology::CTerrainSurfaces::TypeCount; ++type)
            list.push_back(OLMGis::ProjectIo::TerrainSetting(type));
        return list;
    }();
    return names;
}

} // namespace

const std::vector<std::string>& GetEditions() {
    static const std::vector<std::string> editions(OLMGis::System::Editions::All.begin(),
                                                   OLMGis::System::Editions::All.end());
    return editions;
}

const std::vector<CKnownSetting>& GetKnownSettings() {
    static const std::vector<CKnownSetting> settings = [] {
        std::vector<CKnownSetting> list{
            {CProjectSettings::Edition, GetEditions().front(), fmt::format("{}", fmt::join(GetEditions(), "|")),
             ReadEdition},
            {CProjectSettings::Turkish, "0", "0|1", ReadTurkish},
            {CProjectSettings::Language, "en", fmt::format("{}", fmt::join(Languages, "|")), ReadLanguage},
            {CProjectSettings::Crs, "", "EPSG:n; empty for plain plane coordinates", ReadCrs},
            {CProjectSettings::PipeGroup, "", "name or GUID of a group of pipes", ReadPipeGroup},
        };
        for (const std::string& name : TerrainNames())
            list.push_back({name, "", "raster file (.tif, ...); empty to detach it",
                            OLMGis::ProjectIo::ResolveTerrainPath, false});
        return list;
    }();
    return settings;
}

Status ChangeSetting(std::string_view name, std::string_view text, const std::string& project) {
    std::vector<std::string> names;
    for (const CKnownSetting& setting : GetKnownSettings()) {
        names.emplace_back(setting.m_name);
        if (setting.m_name != name)
            continue;
        const auto value = setting.m_read(text, project);
        if (!value)
            return Error{value.GetError().kind, fmt::format("{}: {}", name, value.GetError().message)};
        CProjectSettings::Instance()->Set(name, value.Value());
        return Done{};
    }
    return BadArguments(fmt::format("found the setting \"{}\", expected one of {}{}", OnOneLine(name),
                                    fmt::join(names, ", "), Suggest(name, names)));
}

std::string GetCrsWarning() {
    const std::string text = CProjectSettings::Instance()->Get(CProjectSettings::Crs);
    if (text.empty())
        return {};
    const auto crs = OLMGis::ProjectIo::ParseCrs(text);
    if (!crs)
        return crs.GetError().message;
    return crs->m_isGeographic ? fmt::format("{} ({}) is in degrees: lengths and areas from coordinates are wrong. "
                                             "Reproject the network to a system in metres",
                                             text, crs->m_name)
                               : std::string();
}

} // namespace Cli
