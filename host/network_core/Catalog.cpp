// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/Catalog.h"

#include <boost/make_shared.hpp>
#include <fmt/format.h>

namespace OLMGis::Topology {

using Utility::BadInput;
using Utility::Result;

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
    if (item)
        item.Value()->m_pipe = std::make_unique<CPipeData>(std::move(data));
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
