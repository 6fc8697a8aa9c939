// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/ArgumentFormEditor.h"

#include "host/network_core/PropertyEditing.h"
#include "host/workspace_core/WsManager.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace Cli {

using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::BadInput;
using OLMGis::Workspace::CLogLine;
using OLMGis::Workspace::CWsManager;

/// Aliases become tags. Of several values of a field the last one stays. Two names of a field with different values on
/// the command line, or in one file, are a mistake: which of them is meant nobody can know.
bool CArgumentFormEditor::Resolve(const CPropertiesEx& form) {
    const auto properties = form.GetAllProperties();
    std::vector<CFormValue> values;
    std::vector<std::string> names; // as given
    for (CFormValue& value : m_values) {
        std::string name = value.m_tag;
        const auto named = std::find_if(properties.begin(), properties.end(),
                                        [&value](const auto& property) { return property->IsNamed(value.m_tag); });
        if (named != properties.end())
            value.m_tag = (*named)->GetTag();
        const auto same = std::find_if(values.begin(), values.end(),
                                       [&value](const CFormValue& former) { return former.m_tag == value.m_tag; });
        if (same == values.end()) {
            values.push_back(std::move(value));
            names.push_back(std::move(name));
            continue;
        }
        std::string& formerName = names[static_cast<std::size_t>(same - values.begin())];
        if (same->m_origin == value.m_origin && formerName != name && same->m_text != value.m_text) {
            Fail(value, fmt::format("found {}=\"{}\" and {}=\"{}\", two names of one field, expected one of them",
                                    formerName, same->m_text, name, value.m_text));
            return false;
        }
        *same = std::move(value);
        formerName = std::move(name);
    }
    m_values = std::move(values);
    return true;
}

int CArgumentFormEditor::EditForm(std::string_view /*title*/, CPropertiesEx& form, const COnChanged& onChanged) {
    if (!Resolve(form))
        return 0;
    while (!m_values.empty())
        if (!EnterNext(form, onChanged))
            return 0;
    for (const auto& property : form.GetAllProperties())
        if (const auto set = std::find(m_outOfForce.begin(), m_outOfForce.end(), property->GetTag());
            set != m_outOfForce.end() && property->IsInForce())
            m_outOfForce.erase(set);
    return 1;
}

/// Enters the value of the first field, in the present order of the form, that has one. A change may rebuild later
/// fields.
bool CArgumentFormEditor::EnterNext(CPropertiesEx& form, const COnChanged& onChanged) {
    std::vector<std::string> tags;
    for (const auto& property : form.GetAllProperties()) {
        const auto waiting = std::find_if(m_values.begin(), m_values.end(), [&property](const CFormValue& value) {
            return value.m_tag == property->GetTag();
        });
        if (waiting != m_values.end()) {
            const CFormValue value = std::move(*waiting);
            m_values.erase(waiting);
            if (!Enter(*property, value))
                return false;
            onChanged(*property);
            return true;
        }
        tags.push_back(property->GetTag());
        if (!property->GetAlias().empty())
            tags.emplace_back(property->GetAlias());
    }
    const auto unknown =
        std::find_if(m_values.begin(), m_values.end(), [](const CFormValue& value) { return !value.m_isRemembered; });
    if (unknown == m_values.end()) {
        m_values.clear();
        return true;
    }
    const CFormValue& value = *unknown;
    const std::string suggested = Reports::Suggest(value.m_tag, tags);
    const std::string listed =
        m_listing.empty() ? std::string() : fmt::format("{}ist them: {}", suggested.empty() ? "; l" : " L", m_listing);
    Fail(value, fmt::format("found the tag {}, expected one of the form{}{}", value.m_tag, suggested, listed));
    return false;
}

bool CArgumentFormEditor::Enter(CPropertyEx& property, const CFormValue& value) {
    std::string text = value.m_text;
    if (property.GetEditorType() == enmPropertyEditorType::FilePath && !text.empty()) {
        if (!value.m_folder.empty())
            text = (std::filesystem::path(value.m_folder) / text).string();
        if (const auto good = m_fileCheck ? m_fileCheck(text) : OLMGis::Utility::Status(OLMGis::Utility::Done{});
            !good) {
            m_error = good.GetError();
            return false;
        }
    }
    if (!property.IsInForce() && !value.m_isRemembered)
        m_outOfForce.push_back(value.m_tag);
    const auto entered = OLMGis::Topology::SetPropertyText(property, text);
    if (entered && !value.m_isRemembered)
        if (const auto warning = OLMGis::Topology::WarnOfUnusual(property))
            CWsManager::Instance()->LogMessage(CLogLine::NothingStored, *warning);
    if (entered || (value.m_isRemembered && !property.IsInForce()))
        return true;
    Fail(value, entered.GetError().message);
    return false;
}

void CArgumentFormEditor::Fail(const CFormValue& value, std::string message) {
    if (value.m_origin.empty())
        m_error = BadArguments(std::move(message));
    else
        m_error = BadInput(fmt::format("{}: {}", value.m_origin, message));
}

} // namespace Cli
