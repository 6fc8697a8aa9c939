// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/HostServices.h"
#include "host/network_core/FormEditor.h"
#include "host/network_core/PropertyEditing.h"

#include <gtest/gtest.h>

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

/// A host that follows a script: keeps what it is shown, gives the answers set beforehand, enters texts into forms.
class CScriptedHost final : public OLMGis::System::IBasicHostServices, public OLMGis::Topology::IFormEditor {
public:
    std::vector<std::string> m_alerts;
    std::vector<std::string> m_questions;
    std::vector<std::string> m_commandLine;
    int m_answer = 0;                                         ///< to every question
    int m_confirmsForms = 1;                                  ///< 0 cancels every form
    int m_progressCallsUntilCancel = -1;                      ///< below 0 never cancels
    std::vector<std::pair<std::string, std::string>> m_words; ///< tag and text, typed in this order

    void Alert(std::string_view text) override { m_alerts.emplace_back(text); }
    int AskYesNo(std::string_view text) override {
        m_questions.emplace_back(text);
        return m_answer;
    }
    void WriteCommandLine(std::string_view text) override { m_commandLine.emplace_back(text); }
    int ShowProgress(std::string_view /*caption*/, double /*done*/) override {
        return m_progressCallsUntilCancel-- == 0 ? 0 : 1;
    }

    int EditForm(std::string_view /*title*/, OLMGis::Topology::CPropertiesEx& form,
                 const COnChanged& onChanged) override {
        for (const auto& [tag, text] : m_words) {
            const auto property = form.GetPropertyExByTag(tag);
            EXPECT_TRUE(property) << tag;
            if (!property)
                continue;
            const auto typed = OLMGis::Topology::SetPropertyText(*property, text);
            EXPECT_TRUE(typed) << typed.GetError().message;
            onChanged(*property);
        }
        return m_confirmsForms;
    }

private:
    OLMGis::System::CHostServicesScope m_services{*this};
    OLMGis::Topology::CFormEditorScope m_editor{*this};
};
