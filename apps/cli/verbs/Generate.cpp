// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Project.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <charconv>
#include <cstdint>
#include <memory>
#include <optional>
#include <string_view>

namespace Cli {

using OLMGis::Utility::BadArguments;
using Reports::OnOneLine;

namespace {

struct COptions {
    std::string m_shape;
    std::string m_sections; ///< how many, as entered
    std::string m_seed{"1"};
    COutputOption m_output; ///< project to make
};

std::optional<std::uint64_t> ReadWhole(std::string_view text) {
    std::uint64_t number = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc{} || end != text.data() + text.size())
        return std::nullopt;
    return number;
}

CVerbResult GenerateProject(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto shape = OLMGis::ProjectIo::NetworkShapeOfName(options.m_shape);
    if (!shape)
        return BadArguments(fmt::format("--shape: found \"{}\", expected the name of a shape", options.m_shape));
    const auto sections = ReadWhole(options.m_sections);
    if (!sections)
        return BadArguments(
            fmt::format("--sections: found \"{}\", expected a whole number", OnOneLine(options.m_sections)));
    const auto seed = ReadWhole(options.m_seed);
    if (!seed)
        return BadArguments(
            fmt::format("--seed: found \"{}\", expected a whole number, 0 or more", OnOneLine(options.m_seed)));
    if (const auto isFree = CheckOutput(options.m_output, {}); !isFree)
        return isFree.GetError();
    const auto project = CProject::MakeEmpty(terminal);
    if (!project)
        return project.GetError();
    if (const auto made = OLMGis::ProjectIo::GenerateNetwork(*shape, *sections, *seed); !made)
        return made.GetError();
    const auto& topology = *OLMGis::Topology::CTopologyMultiStorage::Instance()->GetActiveTopology();
    results << ShowNewProject(options.m_output.m_path, topology.GetNodes().size(), topology.GetSections().size(),
                              topology.GetCatchments().size())
            << '\n';
    if (const auto saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    return enmExitCode::Done;
}

} // namespace

CVerb MakeGenerate() {
    const auto options = std::make_shared<COptions>();
    return CVerb("generate", "--shape SHAPE --sections N -o PROJECT.gpkg [options]", "Create a synthetic network")
        .RequiredChoice("--shape", options->m_shape, OLMGis::ProjectIo::GetNetworkShapeNames(), "Shape of the network")
        .RequiredOption("--sections", options->m_sections, "N", "Number of sections")
        .Option("--seed", options->m_seed, "S", "Whole number, seed of the random numbers; default: 1")
        .Output(options->m_output, "PROJECT.gpkg", "Project file to create")
        .Examples({"drenova generate --shape city --sections 100000 --seed 7 -o large.gpkg"})
        .Notes("The same arguments give the same network.")
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return GenerateProject(*options, terminal, results);
        });
}

} // namespace Cli
