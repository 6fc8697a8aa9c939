// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/network_core/CatalogManager.h"
#include "host/network_core/CustomDialogRegistry.h"
#include "host/network_core/FormDefinitions.h"
#include "host/network_core/PropertiesEx.h"
#include "host/network_core/PropertyEditing.h"
#include "tests/support/TestProject.h"

#include <boost/make_shared.hpp>
#include <gtest/gtest.h>

#include <optional>

using namespace OLMGis;
using namespace OLMGis::Topology;
using Data::CDataBox;

namespace {

constexpr const char* ForeignWater =
    "0:0:FACTOR#SPECIFIC$0:1:COEFF$1:0:SPECIFIC#COEFF$1:1:FACTOR$2:0:FACTOR#COEFF$2:1:SPECIFIC";

/// A form with a property of each editor.
struct CForm {
    CForm() {
        category->SetOrd(0);
        properties.AddCategory(category);
        Add("ON", enmPropertyEditorType::CheckBox, 0);
        option = Add("OPTION", enmPropertyEditorType::ComboBox, 0);
        AddChoices(*option, {{"by area", 0}, {"by flow", 1}, {"by length", 2}});
        option->SetDependency(ForeignWater);
        Add("COEFF", enmPropertyEditorType::Edit, 1.0);
        Add("FACTOR", enmPropertyEditorType::Edit, 0.1);
        Add("SPECIFIC", enmPropertyEditorType::Edit, 5);
        Add("FILE", enmPropertyEditorType::FilePath, "");
        Add("RO", enmPropertyEditorType::CustomDialog, "");
        Add("FREQUENCY", enmPropertyEditorType::ComboBox, 0.0);
        picker = Add("GROUP", enmPropertyEditorType::CatalogPicker, "");
        picker->SetCIPicker_CatalogId("PIPE");
        picker->SetCIPicker_GroupsOnly(1);
        picker->SetCIPicker_Single(1);
    }

    boost::shared_ptr<CPropertyEx> Add(const char* tag, enmPropertyEditorType editor, const CDataBox& value) {
        return CPropertyEx::CreateProperty(category, tag, editor, 464, 464, value, value, value, value, 0, nullptr, "",
                                           "");
    }

    static void AddChoices(CPropertyEx& property, const std::vector<std::pair<const char*, int>>& choices) {
        auto constraints = boost::make_shared<CConstraints>();
        for (const auto& [text, hidden] : choices) {
            auto choice = boost::make_shared<CConstraint>();
            choice->SetValue(text);
            choice->SetHiddenValue(hidden);
            constraints->AddConstraint(choice);
        }
        property.SetConstraints(constraints);
    }

    std::string InForce() const {
        std::string tags;
        for (const auto& property : properties.GetAllProperties())
            if (property->IsInForce())
                tags += property->GetTag() + " ";
        return tags;
    }

    Utility::Status Type(const char* tag, std::string_view text) {
        return SetPropertyText(*properties.GetPropertyExByTag(tag), text);
    }

    CTestProject project;
    CPropertiesEx properties;
    boost::shared_ptr<CCategory> category = boost::make_shared<CCategory>();
    boost::shared_ptr<CPropertyEx> option;
    boost::shared_ptr<CPropertyEx> picker;
};

} // namespace

TEST(Dependencies, PutInForceWhatTheChoiceUses) {
    CForm form;
    const std::string others = "FILE RO FREQUENCY GROUP ";
    const struct {
        const char* dependency;
        int choice;
        const char* expected;
    } rows[] = {
        {ForeignWater, 0, "COEFF "},
        {ForeignWater, 1, "FACTOR "},
        {ForeignWater, 2, "SPECIFIC "},
        {"0:1:COEFF$1:0:COEFF$", 1, "FACTOR SPECIFIC "},      // a trailing separator means nothing
        {"0:1:COEFF$1:0:COEFF", 2, "COEFF FACTOR SPECIFIC "}, // not named under this choice: stays as it was
        {"x:0:COEFF$0:2:COEFF$0:0$:::$0:0:NOSUCH#$$0:0:COEFF:1", 0, "COEFF FACTOR SPECIFIC "}, // other forms: no effect
        {"", 0, "COEFF FACTOR SPECIFIC "},
    };
    for (const auto& row : rows) {
        for (const auto& property : form.properties.GetAllProperties())
            property->SetInForce(true);
        form.option->SetDependency(row.dependency);
        form.option->SetHiddenValue(row.choice);
        form.properties.ApplyDependencies();
        EXPECT_EQ(form.InForce(), std::string("ON OPTION ") + row.expected + others) << row.dependency << row.choice;
    }
}

TEST(Dependencies, ChoicesStoredAsOtherNumbersAreNamedByTheirPlace) {
    CForm form;
    CForm::AddChoices(*form.option, {{"curves", 2481}, {"formula", 2484}, {"other", 9455}});
    form.option->SetDependency("0:1:FILE$1:0:FILE$2:0:FILE$0:0:COEFF$1:1:COEFF");
    ASSERT_TRUE(form.Type("OPTION", "2484"));
    form.properties.ApplyDependencies();
    EXPECT_FALSE(form.properties.GetPropertyExByTag("FILE")->IsInForce());
    EXPECT_TRUE(form.properties.GetPropertyExByTag("COEFF")->IsInForce());
    ASSERT_TRUE(form.Type("OPTION", "curves"));
    form.properties.ApplyDependencies();
    EXPECT_TRUE(form.properties.GetPropertyExByTag("FILE")->IsInForce());
}

TEST(Form, ValuesReadByTheirEditor) {
    CForm form;
    form.properties.GetPropertyExByTag("FACTOR")->SetHiddenValue(1.0);
    EXPECT_EQ(form.properties.GetDblProperty("FACTOR", 7.0, 1), 0.1) << "a field reads what is shown";
    ASSERT_TRUE(form.Type("OPTION", "by length"));
    EXPECT_EQ(form.properties.GetIntProperty("OPTION", 9, 1), 2) << "a choice reads what is stored";
    ASSERT_TRUE(form.Type("SPECIFIC", "2.9"));
    EXPECT_EQ(form.properties.GetDblProperty("SPECIFIC", 0, 1), 2.9) << "a field takes any number";
    EXPECT_EQ(form.properties.GetIntProperty("SPECIFIC", 0, 1), 2) << "an integer read cuts";
    EXPECT_EQ(form.properties.GetDblProperty("NOSUCH", 4.5, 1), 4.5);
    EXPECT_EQ(form.properties.GetStrProperty("NOSUCH", "none", 1), "none");
    form.properties.GetPropertyExByTag("COEFF")->SetInForce(false);
    EXPECT_EQ(form.properties.GetDblProperty("COEFF", 4.5, 1), 1.0) << "out of force it is still read";
}

TEST(Form, RefusesWhatItsEditorsWouldNotTake) {
    CForm form;
    const std::string before = form.properties.Serialize();
    const std::pair<const char*, const char*> bad[] = {
        {"ON", "2"},
        {"ON", "yes"},
        {"OPTION", "3"},
        {"OPTION", ""},
        {"COEFF", "1,5"},
        {"COEFF", "inf"},
        {"SPECIFIC", "x"},
        {"COEFF", ""},
        {"GROUP", "no such group"},
        {"FREQUENCY", "often"},
    };
    for (const auto& [tag, text] : bad)
        EXPECT_FALSE(form.Type(tag, text)) << tag << "=" << text;
    EXPECT_EQ(form.properties.Serialize(), before);
    EXPECT_TRUE(form.Type("FREQUENCY", "0.5")) << "where no choices are offered any number is taken";
}

/// Curves of 0.005, 0.01, 2 and 5 events, shown with few decimals: what is typed means the stored number first.
TEST(Form, FindsChoicesByHiddenValueBeforeText) {
    struct CCase {
        const char* m_typed;
        std::optional<double> m_chosen; ///< nothing: refused
        const char* m_message = "";
    };
    const CCase cases[] = {
        {"0.01", 0.01}, // 0.005 shows as 0.01 too, and is first
        {"1e-2", 0.01},
        {"0.005", 0.005},
        {"2.00", 2.0},
        {"often", 5.0},
        {"rare", std::nullopt, "0.005 (0.01)"}, // no choice
        {"twice", std::nullopt, "one of those that it fits: 7 (twice), 8 (twice)"},
    };
    for (const CCase& test : cases) {
        CForm form;
        const auto frequency = form.properties.GetPropertyExByTag("FREQUENCY");
        auto constraints = boost::make_shared<CConstraints>();
        const std::pair<const char*, double> choices[] = {{"0.01", 0.005}, {"0.01", 0.01}, {"2", 2.0},
                                                          {"often", 5.0},  {"twice", 7.0}, {"twice", 8.0}};
        for (const auto& [text, hidden] : choices) {
            auto choice = boost::make_shared<CConstraint>();
            choice->SetValue(text);
            choice->SetHiddenValue(hidden);
            constraints->AddConstraint(choice);
        }
        frequency->SetConstraints(constraints);
        const auto entered = SetPropertyText(*frequency, test.m_typed);
        ASSERT_EQ(static_cast<bool>(entered), test.m_chosen.has_value()) << test.m_typed;
        if (test.m_chosen)
            EXPECT_EQ(frequency->GetHiddenValue().AsDouble(), *test.m_chosen) << test.m_typed;
        else
            EXPECT_NE(entered.GetError().message.find(test.m_message), std::string::npos) << entered.GetError().message;
    }
}

/// A number is judged by the range of its field; the default is never unusual.
TEST(Form, JudgesNumbersByTheRangeOfTheField) {
    CFieldDefinition consumption{"CONSUMPTION", "l/(inh·d)", {}};
    consumption.m_range.m_min = 0.0;
    consumption.m_range.m_usualMin = 50.0;
    consumption.m_range.m_usualMax = 500.0;
    struct CCase {
        const char* m_typed;
        bool m_isTaken;
        bool m_isUnusual;
    };
    for (const CCase& test : {CCase{"150", true, false},
                              {"0.15", true, true},
                              {"0", true, true},
                              {"-1", false, false},
                              {"501", true, true},
                              {"1", true, false}}) {
        CForm form;
        const auto field = form.properties.GetPropertyExByTag("COEFF");
        field->SetDefinition(&consumption);
        EXPECT_TRUE(field->IsNamed("CONSUMPTION") && field->IsNamed("COEFF"));
        const auto entered = SetPropertyText(*field, test.m_typed);
        EXPECT_EQ(static_cast<bool>(entered), test.m_isTaken) << test.m_typed;
        EXPECT_EQ(WarnOfUnusual(*field).has_value(), test.m_isUnusual) << test.m_typed << ", the default is 1";
    }
}

TEST(Form, PicksCatalogueGroupsByNameOrGuid) {
    CForm form;
    CCatalog& pipes = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    const auto group = pipes.AddGroup("0A-1", "Concrete; reinforced").Value();
    ASSERT_TRUE(pipes.AddPipe(*group, "0A-2", "DN 300", {}));
    EXPECT_TRUE(form.Type("GROUP", "Concrete; reinforced"));
    EXPECT_EQ(form.picker->GetHiddenValue().AsText(), "0A-1");
    EXPECT_TRUE(form.Type("GROUP", "{0a-1}"));
    EXPECT_EQ(form.picker->GetValue().AsText(), "Concrete; reinforced");
    EXPECT_FALSE(form.Type("GROUP", "0A-2")) << "an item where only groups are taken";
    EXPECT_TRUE(form.Type("GROUP", "")) << "nothing picked";
}

TEST(Form, IsSerialisedInTheOrderOfItsTagsAndReadsBackExactly) {
    CForm form;
    ASSERT_TRUE(form.Type("OPTION", "1"));
    ASSERT_TRUE(form.Type("COEFF", "0.1"));
    ASSERT_TRUE(form.Type("FILE", "Kišne krivulje\"\\.txt"));
    form.properties.GetPropertyExByTag("FACTOR")->SetValue(std::numeric_limits<double>::infinity());
    const std::string text = form.properties.Serialize();
    EXPECT_EQ(text.substr(0, 22), R"({"ON":0,"OPTION":1,"CO)") << "tags in the order of the form";
    EXPECT_NE(text.find(R"("COEFF":0.1,)"), std::string::npos) << text;
    EXPECT_NE(text.find(R"("FILE":"Kišne krivulje\"\\.txt")"), std::string::npos) << text;
    EXPECT_NE(text.find(R"("FACTOR":"Infinity")"), std::string::npos) << text;
}

TEST(CustomDialogs, TheLastOneOfAnIdWins) {
    struct CDialog final : ICustomDialog {
        using ICustomDialog::ICustomDialog;
        int ShowDialog(CPropertyEx*, CPropertiesEx*) override { return 1; }
    };
    CTestProject project;
    const auto first = boost::make_shared<CDialog>("RO");
    const auto second = boost::make_shared<CDialog>("RO");
    auto* registry = CCustomDialogRegistry::Instance();
    registry->RegisterDialog(first);
    registry->RegisterDialog(second);
    registry->RegisterDialog(nullptr);
    EXPECT_EQ(registry->GetDialog("RO"), second);
    EXPECT_EQ(registry->GetDialog("ro"), nullptr);
}

TEST(Catalog, GroupsAndItemsKeepOrderAndRefuseRepetition) {
    CTestProject project;
    CCatalog& pipes = *CCatalogManager::Instance()->GetCatalog("PIPE", 1);
    const auto group = pipes.AddGroup("g", "PVC").Value();
    const auto other = pipes.AddGroup("h", "PE").Value();
    EXPECT_FALSE(pipes.AddGroup("i", "PVC"));
    EXPECT_FALSE(pipes.AddGroup("{G}", "Clay"));
    const auto pipe = pipes.AddPipe(*group, "p", "DN 200", {}).Value();
    EXPECT_FALSE(pipes.AddPipe(*group, "q", "DN 200", {})) << "a name twice in one group";
    EXPECT_TRUE(pipes.AddPipe(*other, "q", "DN 200", {}));
    EXPECT_EQ(pipes.GetItemsByName("DN 200").size(), 2U);
    EXPECT_EQ(pipe->GetParentItem(), group);
    EXPECT_FALSE(group->GetParentItem());
    EXPECT_EQ(pipes.GetItembyGuid("{P}"), pipe);
    EXPECT_EQ(CCatalogManager::Instance()->GetCatalog("TREES", 1), nullptr);
}
