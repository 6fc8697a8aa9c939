// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "flow/FlowValue.h"

#include "host/gis_core/DataRW.h"

namespace Flow {

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Data::FindDefinition;
using OLMGis::Topology::CSection;

double ReadFlowValue(boost::shared_ptr<CSection> section, std::string_view key) {
    return section ? ReadFlowValue(*section, FindDefinition(key)) : AbsentValue;
}

double ReadFlowValue(const CSection& section, const CDataDefinition* definition) {
    return ReadValueOr(section, definition, AbsentValue);
}

double ReadValueOr(const CSection& section, const CDataDefinition* definition, double fallback) {
    CDataBox box;
    CDataRW::Read(definition, &section, box, 0, nullptr);
    return box.IsNotNull() ? box.AsDouble() : fallback;
}

} // namespace Flow
