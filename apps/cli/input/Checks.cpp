// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Checks.h"

#include "host/gis_core/Utility.h"
#include "host/network_core/FormDefinitions.h"
#include "host/sewage_calculations/NetworkChecks.h"
#include "reports/ShownText.h"

#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <map>
#include <set>

namespace Cli {

using OLMGis::Topology::CFunctionalAnalysisManager;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::Done;
using OLMGis::Utility::enmErrorKind;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::OnOneLine;

namespace {

Error UnknownCheck(std::string_view key) {
    const std::vector<std::string> keys = GetCheckKeys();
    return BadArguments(fmt::format("found the check \"{}\", expected one of {}{}", OnOneLine(key),
                                    fmt::join(keys, ", "), Reports::Suggest(key, keys)));
}

/// Arguments by what they do.
struct CSortedArguments {
    std::set<std::string, std::less<>> m_items;
    std::map<std::string, std::vector<CFormValue>, std::less<>> m_values;
};

Status SortArgument(const std::string& argument, CSortedArguments& sorted) {
    const std::size_t equal = argument.find('=');
    if (equal == std::string::npos) {
        if (!CFunctionalAnalysisManager::Instance()->GetItem(argument))
            return UnknownCheck(argument);
        sorted.m_items.insert(argument);
        return Done{};
    }
    const std::size_t dot = argument.find('.');
    if (dot == std::string::npos || dot == 0 || dot + 1 >= equal || !CUtility::IsUtf8(argument))
        return BadArguments(fmt::format("found \"{}\", expected ITEM or ITEM.TAG=VALUE", OnOneLine(argument)));
    const std::string key = argument.substr(0, dot);
    if (!CFunctionalAnalysisManager::Instance()->GetItem(key))
        return UnknownCheck(key);
    sorted.m_values[key].push_back({argument.substr(dot + 1, equal - dot - 1), argument.substr(equal + 1), {}, {}});
    return Done{};
}

/// BadArguments when a check is named that is not one of the module's.
Status RequireModuleChecks(const CSortedArguments& sorted) {
    std::set<std::string, std::less<>> named = sorted.m_items;
    for (const auto& [key, values] : sorted.m_values)
        named.insert(key);
    for (const std::string& key : named)
        if (OLMGis::Sewage::CNetworkChecks::Has(key))
            return BadArguments(fmt::format("found the check {} with --only module, expected one of {}", key,
                                            fmt::join(GetModuleCheckKeys(), ", ")));
    return Done{};
}

} // namespace

std::vector<std::string> GetCheckKeys() {
    std::vector<std::string> keys;
    for (const auto& item : CFunctionalAnalysisManager::Instance()->GetItems())
        keys.push_back(item->GetItemKey());
    return keys;
}

std::vector<std::string> GetModuleCheckKeys() {
    std::vector<std::string> keys = GetCheckKeys();
    std::erase_if(keys, [](const std::string& key) { return OLMGis::Sewage::CNetworkChecks::Has(key); });
    return keys;
}

Result<CCheckRequest> MakeCheckRequest(std::string_view key, std::vector<CFormValue> values) {
    const auto item = CFunctionalAnalysisManager::Instance()->GetItem(key);
    if (!item)
        return UnknownCheck(key);
    CCheckRequest request{item, item->CreateProperties()};
    CPropertiesEx& form = *request.m_properties;
    OLMGis::Topology::CFormDefinitions::Instance().Apply(key, form);
    CArgumentFormEditor editor(std::move(values));
    if (editor.EditForm(item->GetItemName(), form, [&form](CPropertyEx&) { form.ApplyDependencies(); }) == 0) {
        const Error& error = *editor.GetError();
        return Error{error.kind, error.kind == enmErrorKind::BadArguments ? fmt::format("{}: {}", key, error.message)
                                                                          : error.message};
    }
    return request;
}

Result<std::vector<CCheckRequest>> ReadCheckArguments(const std::vector<std::string>& arguments, bool isModuleOnly) {
    CSortedArguments sorted;
    for (const std::string& argument : arguments)
        if (const Status status = SortArgument(argument, sorted); !status)
            return status.GetError();
    if (isModuleOnly)
        if (const Status status = RequireModuleChecks(sorted); !status)
            return status.GetError();
    for (const auto& [key, values] : sorted.m_values)
        if (!sorted.m_items.empty() && sorted.m_items.find(key) == sorted.m_items.end())
            return BadArguments(
                fmt::format("found a value of {}, which is not among the checks to run: name it too", key));
    std::vector<CCheckRequest> requests;
    for (const std::string& key : isModuleOnly ? GetModuleCheckKeys() : GetCheckKeys()) {
        if (!sorted.m_items.empty() && sorted.m_items.find(key) == sorted.m_items.end())
            continue;
        auto request = MakeCheckRequest(key, std::move(sorted.m_values[key]));
        if (!request)
            return request.GetError();
        requests.push_back(std::move(request.Value()));
    }
    return requests;
}

Status RunChecks(const std::vector<CCheckRequest>& requests, CTerminal& terminal) {
    auto* const manager = CFunctionalAnalysisManager::Instance();
    if (!manager->RunAnalysis(requests))
        return Error{enmErrorKind::Cancelled, "interrupted; the project is unchanged"};
    bool isWhole = true;
    for (const auto& item : *manager->GetFindings()) {
        if (item.m_error.empty())
            continue;
        terminal.Error(fmt::format("{}: {}", item.m_item, OnOneLine(item.m_error)));
        isWhole = false;
    }
    if (!isWhole)
        return Error{enmErrorKind::Stopped, "not all checks were completed; nothing was stored"};
    return Done{};
}

} // namespace Cli
