// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

namespace OLMGis::Sewage {

/// What the settings of the active project say about sewage calculations.
class CSewageCalculationConfigurator {
public:
    /// Whether the Turkish extension is in force: 1 when the project's setting "turkish" reads as a whole number other
    /// than 0, else 0. Asked anew each time.
    static int IsTurkishExtensionAllowed();
};

} // namespace OLMGis::Sewage
