// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/NotificationFramework.h"

namespace OLMGis::Sewage {

/// Keeps what sewage knows in step with changes of the network: when a section goes, a node that names it as its main
/// outlet forgets it.
class CSewageResponder final : public Notification::IEventResponder {
public:
    void OnEvent(const Notification::CEvent& event) override;
};

} // namespace OLMGis::Sewage
