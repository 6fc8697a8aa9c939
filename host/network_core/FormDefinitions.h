// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/gis_core/ValueRange.h"

#include <map>
#include <string>
#include <string_view>

namespace OLMGis::Topology {

class CPropertiesEx;

/// What is known of a field besides what its form says.
struct CFieldDefinition {
    std::string m_alias;       ///< English name, accepted in place of the tag; unique within the form and no tag of it
    std::string m_unit;        ///< of a number; empty for none
    Data::CValueRange m_range; ///< of a number, in its unit
};

/// The fields of the forms of calculators and checks, from data/definitions. The same for every project.
class CFormDefinitions {
public:
    static const CFormDefinitions& Instance();

    /// form: key of the calculator or check. Null for a field that is not defined.
    const CFieldDefinition* Find(std::string_view form, std::string_view tag) const;

    /// Gives each property of a form its definition, if there is one.
    void Apply(std::string_view form, CPropertiesEx& properties) const;

    /// Why the definitions could not be read; empty when they could.
    const std::string& GetLoadError() const { return m_loadError; }

    using CFields = std::map<std::string, CFieldDefinition, std::less<>>; ///< by tag
    const std::map<std::string, CFields, std::less<>>& GetForms() const { return m_forms; }

private:
    CFormDefinitions();
    Utility::Status Load(std::string_view json, const std::string& name);

    std::map<std::string, CFields, std::less<>> m_forms; ///< by key
    std::string m_loadError;
};

} // namespace OLMGis::Topology
