// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/inp/InpImport.h"

#include "host/network_core/TopologyMultiStorage.h"
#include "host/project_io/base/ProjectValues.h"
#include "host/project_io/inp/InpBuilder.h"
#include "host/project_io/inp/InpNetwork.h"
#include "host/project_io/inp/InpParser.h"
#include "host/project_io/inp/InpReader.h"

#include <fmt/format.h>

#include <exception>

namespace OLMGis::ProjectIo {

using Utility::BadInput;
using Utility::Result;

namespace {

Result<CImportSummary> Import(std::istream& stream, const std::string& name) {
    CInpReader reader(stream, name);
    CInpNetwork network;
    CInpParser parser(reader, network);
    if (!parser.ReadAll())
        return *reader.GetError();
    if (!reader.HasKnownSection())
        return BadInput(fmt::format("{}: not a storm-water network file: found none of its sections in {} lines, "
                                    "expected headings such as [JUNCTIONS] and [CONDUITS]",
                                    name, reader.GetLineNumber()));
    if (network.m_nodes.empty())
        return BadInput(fmt::format("{}: not a storm-water network file: found no node in {} lines, expected lines in "
                                    "[JUNCTIONS], [OUTFALLS], [DIVIDERS] or [STORAGE]",
                                    name, reader.GetLineNumber()));
    if (auto resolved = ResolveInpNetwork(network, name); !resolved)
        return resolved.GetError();
    CInpBuilder builder(network, name);
    if (auto built = builder.Build(); !built)
        return built.GetError();
    if (const auto possible = JudgeProject(*Topology::CTopologyMultiStorage::Instance()->GetActiveTopology())
                                  .m_impossible.ToStatus(name, "Correct the file");
        !possible)
        return possible.GetError();
    network.m_summary.m_format = "storm-water network (.inp)";
    for (const auto& [section, lines] : reader.GetUnreadLines())
        network.m_summary.Count(fmt::format("lines of {} not imported", section), "", lines);
    return std::move(network.m_summary);
}

} // namespace

Result<CImportSummary> ImportInp(std::istream& stream, const std::string& name) {
    try {
        return Import(stream, name);
    } catch (const std::exception& e) {
        return Utility::Refused(fmt::format("{}: the import stopped: {}", name, e.what()));
    }
}

} // namespace OLMGis::ProjectIo
