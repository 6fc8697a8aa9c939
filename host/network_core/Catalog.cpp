// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Catalog.h"

#include "host/gis_core/ShortName.h"
#include "host/network_core/BuiltInCatalog.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <cassert>
#include <cmath>

namespace OLMGis::Topology {

using Utility::BadInput;
using Utility::Result;

boost::shared_ptr<CCatalogItem> CCatalogItem::FindPipeByInnerWidth(double width) const {
    const auto isNarrower = [](const CWidthEntry& a, const CWidthEntry& b) { return a.m_width < b.m_width; };
    if (m_sortedCount != m_byWidth.size()) {
        // Both steps keep the order of equal widths, which is that of the catalogue.
        const auto fresh = m_byWidth.begin() + static_cast<std::ptrdiff_t>(m_sortedCount);
        std::stable_sort(fresh, m_byWidth.end(), isNarrower);
        std::inplace_merge(m_byWidth.begin(), fresh, m_byWidth.end(), isNarrower);
        m_sortedCount = m_byWidth.size();
    }
    if (std::isnan(width))
        return nullptr;
    const auto found = std::lower_bound(m_byWidth.begin(), m_byWidth.end(), CWidthEntry{width, 0}, isNarrower);
    return found == m_byWidth.end() ? nullptr : m_subItems[found->m_place];
}

boost::shared_ptr<CCatalogItem> CCatalog::GetItembyGuid(std::string_view guid) const {
    const auto found = m_byGuid.find(guid);
    return found == m_byGuid.end() ? nullptr : found->second;
}

boost::shared_ptr<CCatalogItem> CCatalog::GetGroupByName(std::string_view name) const {
    const auto found = m_groupsByName.find(name);
    return found == m_groupsByName.end() ? nullptr : found->second;
}

std::vector<boost::shared_ptr<CCatalogItem>> CCatalog::GetItemsByName(std::string_view name) const {
    const auto found = m_itemsByName.find(name);
    return found == m_itemsByName.end() ? std::vector<boost::shared_ptr<CCatalogItem>>() : found->second;
}

double CCatalog::GetMinDiameterOfType(std::string_view type) const {
    const auto found = m_minDiameters.find(type);
    return found == m_minDiameters.end() ? 0.0 : found->second;
}

namespace {

/// "catalogue group A", "built-in item B of the group C": how messages call an entry.
std::string Describe(const CCatalogItem& entry) {
    const auto group = entry.GetParentItem();
    return fmt::format("{}{} \"{}\"{}", entry.IsBuiltIn() ? "built-in " : "", group ? "item" : "group",
                       Utility::ShortName(entry.GetName()),
                       group ? fmt::format(" of the group \"{}\"", Utility::ShortName(group->GetName())) : "");
}

} // namespace

boost::shared_ptr<CCatalogItem> CCatalog::EnterGroup(std::string guid, std::string name) {
    auto group = boost::make_shared<CCatalogItem>(std::move(guid), std::move(name));
    group->m_isGroup = true;
    m_byGuid.emplace(group->GetGUID(), group);
    m_groupsByName.emplace(group->GetName(), group);
    m_groups.push_back(group);
    return group;
}

boost::shared_ptr<CCatalogItem> CCatalog::EnterItem(CCatalogItem& group, std::string guid, std::string name) {
    auto item = boost::make_shared<CCatalogItem>(std::move(guid), std::move(name));
    item->m_parent = group.shared_from_this();
    group.m_subItems.push_back(item);
    m_byGuid.emplace(item->GetGUID(), item);
    m_itemsByName[item->GetName()].push_back(item);
    m_namesInGroups.insert({&group, item->GetName()});
    return item;
}

void CCatalog::EnterPipe(CCatalogItem& group, CCatalogItem& pipe, CPipeData data) {
    pipe.m_pipe = std::make_unique<CPipeData>(std::move(data));
    const CPipeData& kept = *pipe.m_pipe;
    if (!std::isnan(kept.m_innerWidth)) // which has no place in an ascending order
        group.m_byWidth.push_back({kept.m_innerWidth, static_cast<std::uint32_t>(group.m_subItems.size() - 1)});
    if (!kept.m_type.empty() && kept.m_minDiameter > 0.0) {
        const auto entry = m_minDiameters.insert({kept.m_type, kept.m_minDiameter}).first;
        entry->second = std::min(entry->second, kept.m_minDiameter);
    }
}

void CCatalog::AddBuiltIn(const std::vector<CBuiltInGroup>& groups) {
    assert(m_groups.empty());
    for (const CBuiltInGroup& each : groups) {
        const auto group = EnterGroup(each.m_guid, each.m_name);
        group->m_standard = each.m_standard;
        group->m_isBuiltIn = true;
        for (const CBuiltInItem& entry : each.m_items) {
            const auto item = EnterItem(*group, entry.m_guid, entry.m_name);
            item->m_isBuiltIn = true;
            if (entry.m_pipe)
                EnterPipe(*group, *item, *entry.m_pipe);
            if (entry.m_manhole)
                item->m_manhole = std::make_unique<CManholeData>(*entry.m_manhole);
        }
    }
    m_builtInCount = m_groups.size();
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddGroup(std::string guid, std::string name) {
    if (guid.empty() || name.empty())
        return BadInput(fmt::format("catalogue group \"{}\": found an empty {}", name, name.empty() ? "name" : "GUID"));
    if (const auto other = GetItembyGuid(guid))
        return BadInput(
            fmt::format("catalogue group \"{}\": the {} has its GUID \"{}\" already; every entry needs its own", name,
                        Describe(*other), guid));
    if (const auto other = GetGroupByName(name))
        return BadInput(fmt::format("catalogue group \"{}\": the {} has its name already; every group needs its own",
                                    name, Describe(*other)));
    return EnterGroup(std::move(guid), std::move(name));
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddItem(CCatalogItem& group, std::string guid, std::string name) {
    if (group.IsBuiltIn())
        return BadInput(fmt::format("catalogue item \"{}\": the {} takes no further items", name, Describe(group)));
    if (guid.empty() || name.empty())
        return BadInput(fmt::format("catalogue item \"{}\": found an empty {}", name, name.empty() ? "name" : "GUID"));
    if (const auto other = GetItembyGuid(guid))
        return BadInput(
            fmt::format("catalogue item \"{}\": the {} has its GUID \"{}\" already; every entry needs its own", name,
                        Describe(*other), guid));
    if (m_namesInGroups.find({&group, name}) != m_namesInGroups.end())
        return BadInput(fmt::format("catalogue item \"{}\": the name occurs twice in the {}", name, Describe(group)));
    return EnterItem(group, std::move(guid), std::move(name));
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddPipe(CCatalogItem& group, std::string guid, std::string name,
                                                          CPipeData data) {
    auto item = AddItem(group, std::move(guid), std::move(name));
    if (item)
        EnterPipe(group, *item.Value(), std::move(data));
    return item;
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddManhole(CCatalogItem& group, std::string guid, std::string name,
                                                             CManholeData data) {
    auto item = AddItem(group, std::move(guid), std::move(name));
    if (item)
        item.Value()->m_manhole = std::make_unique<CManholeData>(data);
    return item;
}

} // namespace OLMGis::Topology
