// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/DataBox.h"
#include "host/network_core/PropertiesEx.h"

#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Sewage {

/// One value of a form as it counted in a run.
struct CLastValue {
    std::string m_tag;
    Data::CDataBox m_value; ///< effective value; of a file its full path, empty for none
    bool m_isFile = false;
};

/// All values of a form, in its order.
using CLastForm = std::vector<CLastValue>;

/// The effective values of a form.
CLastForm TakeLastForm(const Topology::CPropertiesEx& form);

/// The values with which each calculator last stored results, kept with the project. One per project context.
class CLastForms {
public:
    using CFormsByKey = std::map<std::string, CLastForm, std::less<>>;

    static CLastForms* Instance();

    /// The form of a calculator; null when it has stored nothing yet.
    const CLastForm* Find(std::string_view calculator) const;
    void Set(std::string_view calculator, CLastForm form) {
        m_forms.insert_or_assign(std::string(calculator), std::move(form));
    }

    /// By key of the calculator.
    const CFormsByKey& GetAll() const { return m_forms; }

private:
    CFormsByKey m_forms;
};

} // namespace OLMGis::Sewage
