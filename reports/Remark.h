// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <string>
#include <vector>

namespace Reports {

/// What a user should know beside the results, in the order in which it was found. A program shows it on standard error
/// or in its log.
struct CRemark {
    enum class enmKind { Warning, Note, Message };
    enmKind m_kind = enmKind::Message;
    std::string m_text;
};
using CRemarks = std::vector<CRemark>;

} // namespace Reports
