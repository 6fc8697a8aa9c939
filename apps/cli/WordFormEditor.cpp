// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/WordFormEditor.h"

#include "apps/cli/ShownText.h"
#include "host/network_core/PropertyEditing.h"

#include <fmt/format.h>

#include <algorithm>
#include <filesystem>

namespace Cli {

using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::BadWords;

CWordFormEditor::CWordFormEditor(std::vector<CFormWord> words) {
    for (CFormWord& word : words) {
        const auto same = std::find_if(m_words.begin(), m_words.end(),
                                       [&word](const CFormWord& former) { return former.m_tag == word.m_tag; });
        if (same == m_words.end())
            m_words.push_back(std::move(word));
        else
            *same = std::move(word);
    }
}

int CWordFormEditor::EditForm(std::string_view /*title*/, CPropertiesEx& form, const COnChanged& onChanged) {
    while (!m_words.empty())
        if (!ActNext(form, onChanged))
            return 0;
    for (const auto& property : form.GetAllProperties())
        if (const auto set = std::find(m_outOfForce.begin(), m_outOfForce.end(), property->GetTag());
            set != m_outOfForce.end() && property->IsInForce())
            m_outOfForce.erase(set);
    return 1;
}

/// The first field of the form, as it stands now, that a word waits for. A change may have rebuilt later fields.
bool CWordFormEditor::ActNext(CPropertiesEx& form, const COnChanged& onChanged) {
    std::vector<std::string> tags;
    for (const auto& property : form.GetAllProperties()) {
        const auto waiting = std::find_if(m_words.begin(), m_words.end(), [&property](const CFormWord& word) {
            return word.m_tag == property->GetTag();
        });
        if (waiting != m_words.end()) {
            const CFormWord word = std::move(*waiting);
            m_words.erase(waiting);
            if (!Act(*property, word))
                return false;
            onChanged(*property);
            return true;
        }
        tags.push_back(property->GetTag());
    }
    const CFormWord& word = m_words.front();
    Fail(word, fmt::format("found the tag {}, expected one of the form{}", word.m_tag, Suggest(word.m_tag, tags)));
    return false;
}

bool CWordFormEditor::Act(CPropertyEx& property, const CFormWord& word) {
    std::string text = word.m_text;
    if (property.GetEditorType() == enmPropertyEditorType::FilePath && !word.m_folder.empty() && !text.empty())
        text = (std::filesystem::path(word.m_folder) / text).string();
    if (!property.IsInForce())
        m_outOfForce.push_back(word.m_tag);
    const auto typed = OLMGis::Topology::SetPropertyText(property, text);
    if (!typed)
        Fail(word, typed.GetError().message);
    return static_cast<bool>(typed);
}

void CWordFormEditor::Fail(const CFormWord& word, std::string message) {
    if (word.m_origin.empty())
        m_error = BadWords(std::move(message));
    else
        m_error = BadInput(fmt::format("{}: {}", word.m_origin, message));
}

} // namespace Cli
