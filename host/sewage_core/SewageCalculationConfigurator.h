// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Sewage {

/// Settings of the active project for sewage calculations.
class CSewageCalculationConfigurator {
public:
    /// Whether the Turkish extension is in force: 1 when the project's setting "turkish" is a whole number other than
    /// 0, else 0. Reads the setting at each call.
    static int IsTurkishExtensionAllowed();
};

} // namespace OLMGis::Sewage
