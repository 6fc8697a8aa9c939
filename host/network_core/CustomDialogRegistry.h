// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/PropertiesEx.h"

#include <boost/shared_ptr.hpp>

#include <map>
#include <string>
#include <string_view>

namespace OLMGis::Topology {

/// The adapter through which a form opens a dialog of its own for one property.
class ICustomDialog {
public:
    explicit ICustomDialog(std::string id) : m_id(std::move(id)) {}
    virtual ~ICustomDialog() = default;

    /// Lets the user edit the property; the dialog stores into the hidden value. The result is the adapter's.
    virtual int ShowDialog(CPropertyEx* property, CPropertiesEx* properties) = 0;

    /// What the form shows for the property. By default its shown value; non-zero when the box was filled.
    virtual int GetDataToShow(CPropertyEx* property, Data::CDataBox& box, CPropertiesEx* /*properties*/) {
        if (property == nullptr)
            return 0;
        box = property->GetValue();
        return box.IsNotNull() ? 1 : 0;
    }

    /// The control id by which properties name the dialog.
    const std::string& GetId() const { return m_id; }

private:
    std::string m_id;
};

/// Finds the dialog of a property by control id (plain characters). One per project context.
class CCustomDialogRegistry {
public:
    static CCustomDialogRegistry* Instance();

    /// Enters a dialog. Dialogs are made anew with each form, so the last one of an id wins. A null is kept out.
    void RegisterDialog(const boost::shared_ptr<ICustomDialog>& dialog);

    /// Null for an unknown id.
    boost::shared_ptr<ICustomDialog> GetDialog(std::string_view id) const;

private:
    std::map<std::string, boost::shared_ptr<ICustomDialog>, std::less<>> m_dialogs;
};

} // namespace OLMGis::Topology
