// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandGenerate.h"

#include "apps/cli/Project.h"
#include "apps/cli/ShownText.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <optional>
#include <string_view>

namespace Cli {

using OLMGis::Utility::BadWords;

namespace {

std::optional<std::uint64_t> ReadWhole(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

} // namespace

CVerbResult GenerateProject(const CGenerateOptions& options, CTerminal& terminal, std::ostream& results) {
    constexpr std::uint64_t UsualSeed = 1;
    const auto shape = OLMGis::ProjectIo::NetworkShapeOfName(options.m_shape);
    if (!shape)
        return BadWords(fmt::format("--shape: found \"{}\", expected the name of a shape", options.m_shape));
    const auto sections = ReadWhole(options.m_sections);
    if (!sections)
        return BadWords(
            fmt::format("--sections: found \"{}\", expected a whole number", OnOneLine(options.m_sections)));
    const auto seed = options.m_seed.empty() ? UsualSeed : ReadWhole(options.m_seed);
    if (!seed)
        return BadWords(
            fmt::format("--seed: found \"{}\", expected a whole number not below 0", OnOneLine(options.m_seed)));
    if (const auto isFree = CheckNewFile(options.m_output, options.m_replaces); !isFree)
        return isFree.GetError();
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    if (const auto made = OLMGis::ProjectIo::GenerateNetwork(*shape, *sections, *seed); !made)
        return made.GetError();
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    results << fmt::format("{}: {}, {}, {}\n", options.m_output, Count(topology.GetNodes().size(), "node"),
                           Count(topology.GetSections().size(), "section"),
                           Count(topology.GetCatchments().size(), "catchment"));
    return enmExitCode::Done;
}

} // namespace Cli
