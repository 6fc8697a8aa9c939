// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/OperationProgress.h"

#include "host/project_io/base/Failure.h"

#include <algorithm>

namespace OLMGis::ProjectIo {

COperationProgress::COperationProgress(std::string_view caption, std::int64_t rows)
    : m_progress(caption, Steps), m_rows(std::max<std::int64_t>(rows, 1)) {}

void COperationProgress::Show() {
    const double done = std::min(static_cast<double>(m_done) / static_cast<double>(m_rows), 1.0);
    if (!m_progress.GoOn(static_cast<std::size_t>(done * Steps)))
        throw CFailure({Utility::enmErrorKind::Cancelled, "cancelled by the user; nothing was changed"});
}

} // namespace OLMGis::ProjectIo
