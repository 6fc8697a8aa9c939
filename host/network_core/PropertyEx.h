// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/Constraints.h"

#include <boost/shared_ptr.hpp>

#include <string>
#include <string_view>

namespace OLMGis::Topology {

class CCategory;
struct CFieldDefinition;

/// How a property is edited.
enum class enmPropertyEditorType : int {
    Edit = 0,          ///< plain field for a number
    ComboBox = 1,      ///< one of the constraints
    FilePath = 4,      ///< path of a file
    CheckBox = 7,      ///< 0 or 1
    CustomDialog = 8,  ///< a dialog of its own, by control id
    CatalogPicker = 22 ///< entries of a catalogue
};

/// One field of a form. Four boxes: what is shown, what is stored ("hidden") and the defaults of both.
class CPropertyEx {
public:
    /// Makes a property and adds it to the category with the next order. Null boxes are allowed.
    static boost::shared_ptr<CPropertyEx> CreateProperty(
        const boost::shared_ptr<CCategory>& category, std::string_view tag, enmPropertyEditorType editorType,
        int nameMessage, int descriptionMessage, const Data::CDataBox& value, const Data::CDataBox& hiddenValue,
        const Data::CDataBox& defaultValue, const Data::CDataBox& defaultHiddenValue, int readOnly,
        const boost::shared_ptr<CConstraints>& constraints, std::string_view dependency, std::string_view customCtrlId);

    void SetOrd(int ord) { m_ord = ord; }
    void SetTag(std::string_view tag) { m_tag = tag; }
    void SetEditorType(enmPropertyEditorType type) { m_editorType = type; }
    void SetMsgName(int message) { m_nameMessage = message; }
    void SetMsgDescription(int message) { m_descriptionMessage = message; }
    /// A message that is shown in place of both, 0 for none: for fixed numbers whose text names another quantity.
    void SetMsgLabel(int message) { m_labelMessage = message; }
    void SetValue(const Data::CDataBox& value) { m_value = value; }
    void SetHiddenValue(const Data::CDataBox& value) { m_hiddenValue = value; }
    void SetDefaultValue(const Data::CDataBox& value) { m_defaultValue = value; }
    void SetDefaultHiddenValue(const Data::CDataBox& value) { m_defaultHiddenValue = value; }
    void SetIsRequired(int isRequired) { m_isRequired = isRequired; }
    void SetReadOnly(int readOnly) { m_readOnly = readOnly; }
    void SetConstraints(const boost::shared_ptr<CConstraints>& constraints) { m_constraints = constraints; }
    void SetDependency(std::string_view dependency) { m_dependency = dependency; }
    void SetCustomCtrlId(std::string_view id) { m_customCtrlId = id; }
    void SetCIPicker_CatalogId(std::string_view id) { m_pickerCatalogId = id; }
    void SetCIPicker_GroupsOnly(int groupsOnly) { m_pickerGroupsOnly = groupsOnly; }
    void SetCIPicker_Single(int single) { m_pickerSingle = single; }
    void SetCIPicker_UseDisk(int useDisk) { m_pickerUseDisk = useDisk; }

    int GetOrd() const { return m_ord; }
    const std::string& GetTag() const { return m_tag; }
    enmPropertyEditorType GetEditorType() const { return m_editorType; }
    int GetMsgName() const { return m_nameMessage; }
    int GetMsgDescription() const { return m_descriptionMessage; }
    const Data::CDataBox& GetValue() const { return m_value; }
    const Data::CDataBox& GetHiddenValue() const { return m_hiddenValue; }
    const Data::CDataBox& GetDefaultValue() const { return m_defaultValue; }
    const Data::CDataBox& GetDefaultHiddenValue() const { return m_defaultHiddenValue; }
    int IsRequired() const { return m_isRequired; }
    int IsReadOnly() const { return m_readOnly; }
    const boost::shared_ptr<CConstraints>& GetConstraints() const { return m_constraints; } ///< may be null
    const std::string& GetDependency() const { return m_dependency; }
    const std::string& GetCustomCtrlId() const { return m_customCtrlId; }
    const std::string& GetCIPicker_CatalogId() const { return m_pickerCatalogId; }
    int GetCIPicker_GroupsOnly() const { return m_pickerGroupsOnly; }
    int GetCIPicker_Single() const { return m_pickerSingle; }
    int GetCIPicker_UseDisk() const { return m_pickerUseDisk; }

    /// Display name and description in the language in force.
    std::string GetName() const;
    std::string GetDescription() const;

    /// Alias, unit and range of the field; null where nothing is known of it. Not owned: it lives as long as the
    /// program.
    const CFieldDefinition* GetDefinition() const { return m_definition; }
    void SetDefinition(const CFieldDefinition* definition) { m_definition = definition; }

    /// The English name of the tag and the unit of the value; empty without a definition.
    std::string_view GetAlias() const;
    std::string_view GetUnit() const;

    /// Whether a text names this field: its tag or its alias.
    bool IsNamed(std::string_view name) const { return name == m_tag || (!name.empty() && name == GetAlias()); }

    /// Whether a person chooses among constraints: a combo box that has at least one.
    bool HasChoices() const { return m_constraints && m_constraints->GetMaxConstraintOrd() > 0; }

    /// The value that counts: the shown box of fields, check boxes and file paths, the hidden box of all others.
    const Data::CDataBox& GetEffectiveValue() const;

    /// Whether the dependencies of the tree leave the property in force. Out of force it is not offered for editing,
    /// but its value is read all the same.
    bool IsInForce() const { return m_isInForce; }
    void SetInForce(bool isInForce) { m_isInForce = isInForce; }

private:
    std::string m_tag;
    std::string m_dependency;
    std::string m_customCtrlId;
    std::string m_pickerCatalogId;
    Data::CDataBox m_value;
    Data::CDataBox m_hiddenValue;
    Data::CDataBox m_defaultValue;
    Data::CDataBox m_defaultHiddenValue;
    boost::shared_ptr<CConstraints> m_constraints;
    const CFieldDefinition* m_definition = nullptr;
    enmPropertyEditorType m_editorType = enmPropertyEditorType::Edit;
    int m_ord = 0;
    int m_nameMessage = 0;
    int m_descriptionMessage = 0;
    int m_labelMessage = 0;
    int m_isRequired = 0;
    int m_readOnly = 0;
    int m_pickerGroupsOnly = 0;
    int m_pickerSingle = 0;
    int m_pickerUseDisk = 0;
    bool m_isInForce = true;
};

} // namespace OLMGis::Topology
