// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/base/OperationProgress.h"

#include "host/gis_core/CoreProgressBar.h"
#include "host/project_io/base/Failure.h"

#include <algorithm>

namespace OLMGis::ProjectIo {

namespace {

constexpr int Steps = 1000; ///< finer than any display

} // namespace

using Utility::CCoreProgressBar;

COperationProgress::COperationProgress(std::string_view caption, std::int64_t rows)
    : m_rows(std::max<std::int64_t>(rows, 1)) {
    CCoreProgressBar::Instance()->SaveState();
    CCoreProgressBar::Instance()->Show(caption, 0, Steps);
}

COperationProgress::~COperationProgress() {
    CCoreProgressBar::Instance()->Hide();
    CCoreProgressBar::Instance()->RestoreState();
}

void COperationProgress::Show() {
    const double done = std::min(static_cast<double>(m_done) / static_cast<double>(m_rows), 1.0);
    if (CCoreProgressBar::Instance()->SetPosition(static_cast<int>(done * Steps)) == 0)
        throw CFailure({Utility::enmErrorKind::Cancelled, "cancelled by the user; nothing was changed"});
}

} // namespace OLMGis::ProjectIo
