// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/CoreProgressBar.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace OLMGis::ProjectIo {

/// Shows the progress of opening or saving while it exists. Beside Utility::CProgress it counts rows itself, asks the
/// display only now and then, and ends a cancelled operation by a throw.
class COperationProgress {
public:
    COperationProgress(std::string_view caption, std::int64_t rows);

    /// Counts one row. Throws CFailure of the kind Cancelled when the user cancelled.
    void Advance() {
        if ((++m_done & (StepRows - 1)) == 0)
            Show();
    }

    /// Updates the display and throws as Advance does.
    void Show();

private:
    static constexpr std::size_t Steps = 1000;     ///< of the display
    static constexpr std::int64_t StepRows = 1024; ///< rows between two updates, a power of 2

    Utility::CProgress m_progress;
    std::int64_t m_rows;
    std::int64_t m_done = 0;
};

} // namespace OLMGis::ProjectIo
