// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Serialised forms: any text is either refused without a change, or restores a form whose text restores it again.
#include "host/network_core/PropertiesEx.h"
#include "tests/fuzz/FuzzSupport.h"

#include <boost/make_shared.hpp>

using namespace OLMGis::Topology;

namespace {

boost::shared_ptr<CPropertiesEx> MakeForm() {
    auto form = boost::make_shared<CPropertiesEx>();
    auto category = boost::make_shared<CCategory>();
    form->AddCategory(category);
    const auto add = [&](const char* tag, enmPropertyEditorType editor) {
        return CPropertyEx::CreateProperty(category, tag, editor, 0, 0, 1.0, 1.0, 1.0, 1.0, 0, nullptr, "", "");
    };
    add("A", enmPropertyEditorType::Edit);
    const auto choice = add("B", enmPropertyEditorType::ComboBox);
    auto constraints = boost::make_shared<CConstraints>();
    for (int hidden = 0; hidden < 3; ++hidden) {
        auto constraint = boost::make_shared<CConstraint>();
        constraint->SetValue("choice");
        constraint->SetHiddenValue(hidden);
        constraints->AddConstraint(constraint);
    }
    choice->SetConstraints(constraints);
    choice->SetDependency("0:1:A$1:0:A");
    add("C", enmPropertyEditorType::FilePath);
    add("D", enmPropertyEditorType::CustomDialog);
    add("E", enmPropertyEditorType::CatalogPicker)->SetCIPicker_CatalogId("PIPE");
    add("F", enmPropertyEditorType::CheckBox);
    return form;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const auto form = MakeForm();
    const std::string before = form->Serialize();
    if (const auto restored = form->Restore(AsText(data, size)); !restored) {
        RequireTelling(restored.GetError(), "serialised form");
        Require(form->Serialize() == before, "a refused text changed the form");
        return 0;
    }
    const std::string text = form->Serialize();
    const auto again = MakeForm();
    Require(static_cast<bool>(again->Restore(text)), "the form's own text is refused");
    Require(again->Serialize() == text, "the form changed on its way through its text");
    return 0;
}
