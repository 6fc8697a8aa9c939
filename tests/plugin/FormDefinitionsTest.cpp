// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/FormDefinitions.h"

#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/network_core/FunctionalAnalysisManager.h"
#include "host/network_core/PropertyEditing.h"
#include "host/sewage_calculations/NetworkChecks.h"
#include "host/sewage_core/FlowCalculatorManager.h"
#include "host/workspace_core/ModuleLoader.h"
#include "host/workspace_core/WsManager.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>

#include <map>
#include <set>
#include <string>

using namespace OLMGis;
using System::CProjectSettings;
using Topology::CFormDefinitions;

namespace {

/// The forms of all calculators and checks of one edition with the module's own log.
std::map<std::string, boost::shared_ptr<Topology::CPropertiesEx>> MakeForms() {
    std::map<std::string, boost::shared_ptr<Topology::CPropertiesEx>> forms;
    for (const auto& calculator : Sewage::CFlowCalculatorManager::Instance()->GetCalculators()) {
        const auto parameters = calculator->CreateParameters();
        EXPECT_EQ(calculator->InputParameters({}, parameters.get(), 0, nullptr), 1);
        forms.emplace(calculator->GetKey(), parameters->m_properties);
    }
    for (const auto& item : Topology::CFunctionalAnalysisManager::Instance()->GetItems())
        forms.emplace(item->GetItemKey(), item->CreateProperties());
    return forms;
}

} // namespace

/// Every field of every edition has an alias of its own, no definition is left without a field, and a form that nobody
/// touched is possible throughout.
TEST(FormDefinitions, CoverTheFieldsOfAllEditions) {
    const CFormDefinitions& definitions = CFormDefinitions::Instance();
    ASSERT_EQ(definitions.GetLoadError(), "");
    std::map<std::string, std::set<std::string>> tags;
    for (const char* edition : {"STANDARD", "RO", "BLG"}) {
        const CTestProject project;
        CProjectSettings::Instance()->Set(CProjectSettings::Edition, edition);
        CProjectSettings::Instance()->Set(CProjectSettings::Turkish, "1");
        ASSERT_TRUE(Utility::CModuleConfiguration::Instance()->ApplySettings());
        const auto module = Workspace::CModuleLoader::Load(DRENOVA_MODULE_FILE);
        ASSERT_TRUE(module);
        const Sewage::CNetworkChecks checks;
        for (const auto& [key, form] : MakeForms())
            for (const auto& property : form->GetAllProperties()) {
                tags[key].insert(property->GetTag());
                const auto* const field = definitions.Find(key, property->GetTag());
                ASSERT_NE(field, nullptr) << key << " " << property->GetTag();
                property->SetDefinition(field);
                if (property->GetEditorType() == Topology::enmPropertyEditorType::Edit) {
                    EXPECT_NE(Judge(field->m_range, property->GetValue().AsDouble()), Data::enmJudgement::Impossible)
                        << key << " " << property->GetTag();
                    EXPECT_FALSE(field->m_unit.empty()) << key << " " << property->GetTag();
                }
            }
    }
    for (const auto& [key, fields] : definitions.GetForms()) {
        std::set<std::string> names = tags[key];
        for (const auto& [tag, field] : fields) {
            EXPECT_EQ(tags[key].count(tag), 1U) << key << " has no field " << tag;
            EXPECT_TRUE(names.insert(field.m_alias).second) << key << ": " << field.m_alias << " is taken";
        }
    }
}
