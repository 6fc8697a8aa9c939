// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/MainOutlets.h"

#include "host/gis_core/DataRW.h"
#include "host/gis_core/ShortName.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/TopologyMultiStorage.h"
#include "reports/OutletListing.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataRW;
using OLMGis::Topology::CNode;
using OLMGis::Topology::CSection;
using OLMGis::Topology::CTopologyMultiStorage;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::ShortName;
using OLMGis::Utility::Status;

namespace {

constexpr const char* Key = "MAIN_SECT_OUT";

const auto& GetNodes() {
    return CTopologyMultiStorage::Instance()->GetActiveTopology()->GetNodes();
}

std::string ReadOutlet(const boost::shared_ptr<CNode>& node) {
    CDataBox box;
    return CDataRW::Read(Key, node, box, 0, nullptr) != 0 ? box.AsText() : std::string();
}

} // namespace

boost::shared_ptr<CSection> FindOutlet(const CNode& node, std::string_view name) {
    std::vector<boost::shared_ptr<CSection>> out;
    node.GetSectionsOut(out);
    std::vector<boost::shared_ptr<CSection>> named;
    for (const auto& section : out) {
        if (OLMGis::Utility::GuidEqual()(section->GetGuid(), name))
            return section;
        if (section->GetName() == name)
            named.push_back(section);
    }
    return named.size() == 1 ? named.front() : nullptr;
}

Result<CDataBox> ResolveMainOutlet(const CNode& node, const CDataBox& value) {
    if (!value.IsNotNull() || value.AsText().empty())
        return CDataBox();
    const std::string text = value.AsText();
    if (const auto outlet = FindOutlet(node, text))
        return CDataBox(outlet->GetGuid());
    std::vector<boost::shared_ptr<CSection>> out;
    node.GetSectionsOut(out);
    return BadArguments(fmt::format("node {}: {}: found \"{}\", expected the name or GUID of a section that leaves the "
                                    "node: {}",
                                    ShortName(node.GetName()), Key, Reports::OnOneLine(text),
                                    out.empty() ? std::string("none does") : Reports::JoinNames(out)));
}

CLoadedMainOutlets::CLoadedMainOutlets() {
    for (const auto& node : GetNodes())
        m_before.push_back(ReadOutlet(node));
}

Status CLoadedMainOutlets::ResolveChanged(const std::string& file) const {
    for (std::size_t i = 0; i < m_before.size(); ++i) {
        const auto& node = GetNodes()[i];
        const std::string text = ReadOutlet(node);
        if (text == m_before[i])
            continue;
        const auto resolved = ResolveMainOutlet(*node, CDataBox(text));
        if (!resolved)
            return BadInput(fmt::format("{}: {}", file, resolved.GetError().message));
        CDataRW::Write(Key, node, resolved.Value(), nullptr);
    }
    return Done{};
}

} // namespace Cli
