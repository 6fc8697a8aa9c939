// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Catalog.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

#include <algorithm>
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

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddGroup(std::string guid, std::string name) {
    if (guid.empty() || m_byGuid.find(guid) != m_byGuid.end())
        return BadInput(fmt::format("catalogue group {}: the GUID \"{}\" occurs twice or is empty", name, guid));
    if (name.empty() || m_groupsByName.find(name) != m_groupsByName.end())
        return BadInput(fmt::format("catalogue group {}: the name occurs twice or is empty", name));
    auto group = boost::make_shared<CCatalogItem>(std::move(guid), std::move(name));
    group->m_isGroup = true;
    m_byGuid.emplace(group->GetGUID(), group);
    m_groupsByName.emplace(group->GetName(), group);
    m_groups.push_back(group);
    return group;
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddItem(CCatalogItem& group, std::string guid, std::string name) {
    if (guid.empty() || m_byGuid.find(guid) != m_byGuid.end())
        return BadInput(fmt::format("catalogue item {}: the GUID \"{}\" occurs twice or is empty", name, guid));
    if (name.empty() || m_namesInGroups.find({&group, name}) != m_namesInGroups.end())
        return BadInput(
            fmt::format("catalogue item {}: the name occurs twice in the group {} or is empty", name, group.GetName()));
    auto item = boost::make_shared<CCatalogItem>(std::move(guid), std::move(name));
    item->m_parent = group.shared_from_this();
    group.m_subItems.push_back(item);
    m_byGuid.emplace(item->GetGUID(), item);
    m_itemsByName[item->GetName()].push_back(item);
    m_namesInGroups.insert({&group, item->GetName()});
    return item;
}

Result<boost::shared_ptr<CCatalogItem>> CCatalog::AddPipe(CCatalogItem& group, std::string guid, std::string name,
                                                          CPipeData data) {
    auto item = AddItem(group, std::move(guid), std::move(name));
    if (!item)
        return item;
    CCatalogItem& pipe = *item.Value();
    pipe.m_pipe = std::make_unique<CPipeData>(std::move(data));
    if (!std::isnan(pipe.m_pipe->m_innerWidth)) // which has no place in an ascending order
        group.m_byWidth.push_back({pipe.m_pipe->m_innerWidth, static_cast<std::uint32_t>(group.m_subItems.size() - 1)});
    if (!pipe.m_pipe->m_type.empty() && pipe.m_pipe->m_minDiameter > 0.0) {
        const auto entry = m_minDiameters.insert({pipe.m_pipe->m_type, pipe.m_pipe->m_minDiameter}).first;
        entry.value() = std::min(entry->second, pipe.m_pipe->m_minDiameter);
    }
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
