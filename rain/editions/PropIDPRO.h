// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/network_core/CustomDialogRegistry.h"

/// Lets a form edit the coefficients of the Romanian standard, as text of CRORainCoefficients.
class CPropIDPRO final : public OLMGis::Topology::ICustomDialog {
public:
    static constexpr const char* ControlId = "CUSTOM_DLG_IDP_RO";

    CPropIDPRO() : ICustomDialog(ControlId) {}

    /// Always 1. Without a window the property keeps its text, which can be typed.
    int ShowDialog(OLMGis::Topology::CPropertyEx* property, OLMGis::Topology::CPropertiesEx* properties) override;
};
