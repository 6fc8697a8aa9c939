// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/DialogTable.h"

#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>

#include <algorithm>
#include <span>

namespace OLMGis::Workspace {

using Utility::BadInput;
using Utility::CUtility;

namespace {

std::span<const CDialogMaker> MakersOf(const CDialogTable& table) {
    return {table.m_makers, table.m_makers == nullptr ? 0 : table.m_count};
}

} // namespace

CDialogModel::~CDialogModel() = default;

CDialogMakers* CDialogMakers::Instance() {
    static const System::CContextSlot<CDialogMakers> slot;
    return slot.Get();
}

Utility::Status CDialogMakers::SetTable(const CDialogTable* table) {
    if (table == nullptr)
        return BadInput("found no table of dialogs");
    if (table->m_version != DialogTableVersion)
        return BadInput(
            fmt::format("found dialogs of version {}, expected version {}", table->m_version, DialogTableVersion));
    const auto makers = MakersOf(*table);
    for (std::size_t i = 0; i < makers.size(); ++i) {
        const CDialogMaker& maker = makers[i];
        if (maker.m_dialogId == nullptr || *maker.m_dialogId == '\0')
            return BadInput(fmt::format("dialog {}: found no id", i + 1));
        const auto isSame = [&](const CDialogMaker& other) {
            return CUtility::EqualIgnoreCase(other.m_dialogId, maker.m_dialogId);
        };
        if (std::any_of(makers.begin(), makers.begin() + static_cast<std::ptrdiff_t>(i), isSame))
            return BadInput(fmt::format("dialog {}: found the id {} a second time", i + 1, maker.m_dialogId));
        if ((maker.m_makePanel == nullptr) == (maker.m_runDialog == nullptr))
            return BadInput(fmt::format("dialog {}: expected either a panel or a modal dialog", maker.m_dialogId));
    }
    m_table = table;
    return Utility::Done{};
}

const CDialogMaker* CDialogMakers::Find(std::string_view dialogId) const {
    if (m_table != nullptr)
        for (const CDialogMaker& maker : MakersOf(*m_table))
            if (CUtility::EqualIgnoreCase(maker.m_dialogId, dialogId))
                return &maker;
    return nullptr;
}

} // namespace OLMGis::Workspace
