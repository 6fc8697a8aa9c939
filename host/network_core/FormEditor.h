// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/PropertiesEx.h"

#include <functional>
#include <string_view>

namespace OLMGis::Topology {

/// Lets a person, or the words of a command line, edit a form. Each program implements it once. The default confirms
/// the form as it is.
class IFormEditor {
public:
    virtual ~IFormEditor() = default;

    /// Called after each change of a property, before the next one, so that a form may rebuild what depends on it.
    using COnChanged = std::function<void(CPropertyEx&)>;

    /// 1 when the form was confirmed, 0 when it was given up.
    virtual int EditForm(std::string_view /*title*/, CPropertiesEx& /*form*/, const COnChanged& /*onChanged*/) {
        return 1;
    }
};

/// The editor in force; the confirming default when none is set.
IFormEditor& FormEditor();

/// Puts an editor in force for its own lifetime. Not owned.
class CFormEditorScope {
public:
    explicit CFormEditorScope(IFormEditor& editor);
    ~CFormEditorScope();
    CFormEditorScope(const CFormEditorScope&) = delete;
    CFormEditorScope& operator=(const CFormEditorScope&) = delete;

private:
    IFormEditor* m_former;
};

} // namespace OLMGis::Topology
