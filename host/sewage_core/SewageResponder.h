// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/NotificationFramework.h"

namespace OLMGis::Sewage {

/// Keeps main outlets consistent with the network: when a section is deleted, the node that names it as its main outlet
/// loses that attribute.
class CSewageResponder final : public Notification::IEventResponder {
public:
    void OnEvent(const Notification::CEvent& event) override;
};

} // namespace OLMGis::Sewage
