// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// Dependency texts: the first byte is the choice, the rest the text. No text may do more than switch known properties,
// and doing it twice changes nothing.
#include "host/network_core/PropertiesEx.h"
#include "tests/fuzz/FuzzSupport.h"

#include <boost/make_shared.hpp>

using namespace OLMGis::Topology;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    CPropertiesEx form;
    auto category = boost::make_shared<CCategory>();
    form.AddCategory(category);
    for (const char* tag : {"A", "B", "C"})
        CPropertyEx::CreateProperty(category, tag, enmPropertyEditorType::Edit, 0, 0, 1.0, 1.0, 1.0, 1.0, 0, nullptr,
                                    "", "");
    CPropertyEx::CreateProperty(category, "OPTION", enmPropertyEditorType::ComboBox, 0, 0, "x", data[0], "x", 0, 0,
                                nullptr, AsText(data + 1, size - 1), "");
    const auto states = [&form] {
        std::string text;
        for (const auto& property : form.GetAllProperties())
            text += property->IsInForce() ? '1' : '0';
        return text;
    };
    form.ApplyDependencies();
    const std::string once = states();
    form.ApplyDependencies();
    Require(states() == once, "the second time switched something else");
    return 0;
}
