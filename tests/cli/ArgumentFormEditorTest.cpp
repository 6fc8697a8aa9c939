// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/ArgumentFormEditor.h"

#include "host/network_core/FormDefinitions.h"
#include "host/network_core/PropertiesEx.h"
#include "reports/ParameterFile.h"

#include <boost/make_shared.hpp>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

using Cli::CArgumentFormEditor;
using Cli::CFormValue;
using OLMGis::Data::CDataBox;
using OLMGis::Topology::CCategory;
using OLMGis::Topology::CConstraint;
using OLMGis::Topology::CConstraints;
using OLMGis::Topology::CPropertiesEx;
using OLMGis::Topology::CPropertyEx;
using OLMGis::Topology::enmPropertyEditorType;
using OLMGis::Utility::enmErrorKind;
using Reports::CParameterFile;
using testing::ElementsAre;
using testing::HasSubstr;

namespace {

/// A form like that of a curve file: the file decides which frequencies there are to choose, and the choice of a mode
/// puts the limit in or out of force.
class CCurveForm {
public:
    CCurveForm() {
        const auto category = boost::make_shared<CCategory>();
        m_form.AddCategory(category);
        const auto add = [&category](const char* tag, enmPropertyEditorType type, const CDataBox& value) {
            return CPropertyEx::CreateProperty(category, tag, type, 0, 0, value, value, value, value, 0, nullptr, "",
                                               "");
        };
        add("FILE_PATH", enmPropertyEditorType::FilePath, "");
        m_frequency = add("FREQUENCY", enmPropertyEditorType::ComboBox, 0);
        const auto mode = add("MODE", enmPropertyEditorType::ComboBox, 0);
        mode->SetConstraints(MakeChoices({{0, "without limit"}, {1, "with limit"}}));
        mode->SetDependency("0:0:LIMIT$1:1:LIMIT");
        add("LIMIT", enmPropertyEditorType::Edit, 2.0);
        m_form.ApplyDependencies();
    }

    int Type(CArgumentFormEditor& editor) {
        return editor.EditForm("", m_form, [this](CPropertyEx& changed) {
            m_order.push_back(changed.GetTag());
            if (changed.GetTag() == "FILE_PATH")
                m_frequency->SetConstraints(MakeChoices({{5, "5 years"}, {10, "10 years"}}));
            m_form.ApplyDependencies();
        });
    }

    static boost::shared_ptr<CConstraints> MakeChoices(const std::vector<std::pair<int, const char*>>& choices) {
        auto list = boost::make_shared<CConstraints>();
        for (const auto& [hidden, shown] : choices) {
            const auto choice = boost::make_shared<CConstraint>();
            choice->SetHiddenValue(hidden);
            choice->SetValue(shown);
            list->AddConstraint(choice);
        }
        return list;
    }

    CPropertiesEx m_form;
    std::vector<std::string> m_order; ///< tags as they changed

private:
    boost::shared_ptr<CPropertyEx> m_frequency;
};

} // namespace

/// The file comes before the frequency that it offers, in whatever order they are given; the last value of a tag
/// counts.
TEST(ArgumentFormEditor, EntersInTheOrderOfTheForm) {
    CCurveForm form;
    CArgumentFormEditor editor({{"MODE", "with limit", "", ""},
                                {"FREQUENCY", "10 years", "", ""},
                                {"LIMIT", "x", "", ""},
                                {"FILE_PATH", "curves.txt", "", ""},
                                {"LIMIT", "3.5", "", ""}});
    EXPECT_EQ(form.Type(editor), 1);
    EXPECT_FALSE(editor.GetError());
    EXPECT_THAT(form.m_order, ElementsAre("FILE_PATH", "FREQUENCY", "MODE", "LIMIT"));
    EXPECT_EQ(form.m_form.GetIntProperty("FREQUENCY", 0, 1), 10);
    EXPECT_EQ(form.m_form.GetDblProperty("LIMIT", 0, 1), 3.5);
    EXPECT_TRUE(editor.GetOutOfForce().empty());
}

TEST(ArgumentFormEditor, NamesTagsOutOfForce) {
    CCurveForm form;
    CArgumentFormEditor editor({{"LIMIT", "4", "", ""}});
    EXPECT_EQ(form.Type(editor), 1);
    EXPECT_THAT(editor.GetOutOfForce(), ElementsAre("LIMIT"));
    EXPECT_EQ(form.m_form.GetDblProperty("LIMIT", 0, 1), 4.0);
}

/// A value that the form refuses is an invalid argument, or an invalid entry of the parameter file.
TEST(ArgumentFormEditor, DistinguishesArgumentsFromFiles) {
    struct CCase {
        CFormValue m_value;
        enmErrorKind m_kind;
        const char* m_message;
    };
    const CCase cases[] = {
        {{"MODE", "2", "", ""}, enmErrorKind::BadArguments, "one of 0 (without limit), 1 (with limit)"},
        {{"MODE", "2", "p.json: 001_X", "."}, enmErrorKind::BadInput, "p.json: 001_X: MODE: found \"2\""},
        {{"LIMITS", "2", "", ""}, enmErrorKind::BadArguments, "did you mean LIMIT?"},
        {{"FREQUENCY", "often", "", ""}, enmErrorKind::BadArguments, "expected a number"},
    };
    for (const CCase& test : cases) {
        CCurveForm form;
        CArgumentFormEditor editor({test.m_value});
        EXPECT_EQ(form.Type(editor), 0);
        ASSERT_TRUE(editor.GetError());
        EXPECT_EQ(editor.GetError()->kind, test.m_kind);
        EXPECT_THAT(editor.GetError()->message, HasSubstr(test.m_message));
    }
}

/// A field is named by tag or alias. What an earlier run left gives way to what the form has become: tags that it lacks
/// and values that it refuses while they have no effect.
TEST(ArgumentFormEditor, TakesAliasesAndValuesOfAnEarlierRun) {
    static const OLMGis::Topology::CFieldDefinition limit{"GREATEST", "m", {}};
    CCurveForm form;
    form.m_form.GetPropertyExByTag("LIMIT")->SetDefinition(&limit);
    CArgumentFormEditor editor({{"GONE", "1", "last run", "", true},
                                {"MODE", "1", "last run", "", true},
                                {"LIMIT", "4", "last run", "", true},
                                {"GREATEST", "5", "", ""}});
    EXPECT_EQ(form.Type(editor), 1);
    EXPECT_EQ(form.m_form.GetDblProperty("LIMIT", 0, 1), 5.0);
    CCurveForm other;
    CArgumentFormEditor refused({{"LIMIT", "much", "last run", "", true}});
    EXPECT_EQ(other.Type(refused), 1) << "the limit is out of force";
    CArgumentFormEditor unknown({{"GREATER", "5", "", ""}});
    EXPECT_EQ(form.Type(unknown), 0);
    EXPECT_THAT(unknown.GetError()->message, HasSubstr("did you mean GREATEST?"));
}

/// Two names of a field with different values in one place are a mistake, wherever else the last one counts.
TEST(ArgumentFormEditor, RefusesTagAndAliasThatDiffer) {
    static const OLMGis::Topology::CFieldDefinition limit{"GREATEST", "m", {}};
    const struct {
        std::vector<CFormValue> m_values;
        const char* m_message; ///< null where the second counts
    } cases[] = {
        {{{"LIMIT", "4", "", ""}, {"GREATEST", "5", "", ""}}, "found LIMIT=\"4\" and GREATEST=\"5\""},
        {{{"GREATEST", "4", "p.json: X", ""}, {"LIMIT", "5", "p.json: X", ""}}, "p.json: X: found GREATEST=\"4\""},
        {{{"LIMIT", "5", "", ""}, {"GREATEST", "5", "", ""}}, nullptr},
        {{{"LIMIT", "4", "p.json: X", ""}, {"GREATEST", "5", "", ""}}, nullptr},
    };
    for (const auto& test : cases) {
        CCurveForm form;
        form.m_form.GetPropertyExByTag("LIMIT")->SetDefinition(&limit);
        CArgumentFormEditor editor(test.m_values);
        EXPECT_EQ(form.Type(editor), test.m_message == nullptr ? 1 : 0);
        if (test.m_message != nullptr)
            EXPECT_THAT(editor.GetError()->message, HasSubstr(test.m_message));
        else
            EXPECT_EQ(form.m_form.GetDblProperty("LIMIT", 0, 1), 5.0);
    }
}

/// Values of a file are entered like arguments, and its relative paths begin in its folder.
TEST(ArgumentFormEditor, TakesValuesOfAParameterFile) {
    const auto file = CParameterFile::Parse(
        R"({"checks": {"X": {"MODE": 2}}, "001_X": {"FILE_PATH": "curves.txt", "MODE": true, "LIMIT": 0.1}})",
        "project/p.json", {"001_X"}, {"X"});
    ASSERT_TRUE(file) << file.GetError().message;
    ASSERT_NE(file->FindCheckValues("X"), nullptr);
    EXPECT_EQ(file->FindCheckValues("X")->at(0).m_origin, "project/p.json: checks: X");
    EXPECT_EQ(file->FindCheckValues("001_X"), nullptr);
    EXPECT_EQ(file->FindValues("002_Y"), nullptr);
    ASSERT_NE(file->FindValues("001_X"), nullptr);
    CCurveForm form;
    CArgumentFormEditor editor(*file->FindValues("001_X"));
    EXPECT_EQ(form.Type(editor), 1) << editor.GetError()->message;
    EXPECT_EQ(form.m_form.GetStrProperty("FILE_PATH", "", 1), "project/curves.txt");
    EXPECT_EQ(form.m_form.GetIntProperty("MODE", 0, 1), 1);
    EXPECT_EQ(form.m_form.GetDblProperty("LIMIT", 0, 1), 0.1);
}
