// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/ModuleConfiguration.h"
#include "host/network_core/PropertiesEx.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

/// One property of a form as a table has it: its four boxes in the order shown, hidden, default, hidden default.
struct CFormRow {
    using CDataBox = OLMGis::Data::CDataBox;

    const char* m_tag;
    int m_editor;
    int m_message; ///< of name and description
    CDataBox m_value;
    CDataBox m_hidden;
    CDataBox m_default;
    CDataBox m_defaultHidden;

    CFormRow(const char* tag, int editor, int message, const CDataBox& all)
        : CFormRow(tag, editor, message, all, all, all, all) {}
    CFormRow(const char* tag, int editor, int message, const CDataBox& value, const CDataBox& hidden,
             const CDataBox& defaultValue, const CDataBox& defaultHidden)
        : m_tag(tag), m_editor(editor), m_message(message), m_value(value), m_hidden(hidden), m_default(defaultValue),
          m_defaultHidden(defaultHidden) {}
};

/// One category of a form: 0 for no description.
struct CFormCategory {
    int m_nameMessage;
    int m_descriptionMessage;
    std::vector<CFormRow> m_rows;
};

inline std::string Msg(int number) {
    return OLMGis::Utility::CModuleConfiguration::Instance()->GetMsg(number);
}

/// A combo box set to the choice of a message and a stored number.
inline CFormRow ChoiceRow(const char* tag, int message, int choiceMessage, int hidden) {
    return {tag, 1, message, Msg(choiceMessage), hidden, Msg(choiceMessage), hidden};
}

/// Compares a form with its table: categories from order 0, rows in order, boxes with their kinds, nothing read-only.
inline void ExpectForm(const OLMGis::Topology::CPropertiesEx& form, const std::vector<CFormCategory>& table,
                       int isRequired = 0) {
    ASSERT_EQ(form.GetCategories().size(), table.size());
    for (std::size_t c = 0; c < table.size(); ++c) {
        const auto& category = *form.GetCategories()[c];
        SCOPED_TRACE("category " + std::to_string(c));
        EXPECT_EQ(category.GetOrd(), static_cast<int>(c));
        EXPECT_EQ(category.GetMsgName(), table[c].m_nameMessage);
        EXPECT_EQ(category.GetMsgDescription(), table[c].m_descriptionMessage);
        ASSERT_EQ(category.GetProperties().size(), table[c].m_rows.size());
        for (std::size_t r = 0; r < table[c].m_rows.size(); ++r) {
            const auto& property = *category.GetProperties()[r];
            const CFormRow& row = table[c].m_rows[r];
            SCOPED_TRACE(row.m_tag);
            EXPECT_EQ(property.GetTag(), row.m_tag);
            EXPECT_EQ(property.GetOrd(), static_cast<int>(r) + 1);
            EXPECT_EQ(static_cast<int>(property.GetEditorType()), row.m_editor);
            EXPECT_EQ(property.GetMsgName(), row.m_message);
            EXPECT_EQ(property.GetMsgDescription(), row.m_message);
            EXPECT_TRUE(property.GetValue() == row.m_value) << property.GetValue().AsText();
            EXPECT_TRUE(property.GetHiddenValue() == row.m_hidden) << property.GetHiddenValue().AsText();
            EXPECT_TRUE(property.GetDefaultValue() == row.m_default) << property.GetDefaultValue().AsText();
            EXPECT_TRUE(property.GetDefaultHiddenValue() == row.m_defaultHidden);
            EXPECT_EQ(property.IsRequired(), isRequired);
            EXPECT_EQ(property.IsReadOnly(), 0);
        }
    }
}

/// The choices of a combo box as "number text" of each, in order.
inline std::vector<std::string> ChoicesOf(const OLMGis::Topology::CPropertiesEx& form, const char* tag) {
    std::vector<std::string> choices;
    const auto property = form.GetPropertyExByTag(tag);
    if (property && property->HasChoices())
        for (const auto& choice : property->GetConstraints()->GetConstraints())
            choices.push_back(choice->GetHiddenValue().AsText() + " " + choice->GetValue().AsText());
    return choices;
}
