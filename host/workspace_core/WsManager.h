// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/LogLine.h"
#include "host/workspace_core/WsPanelDialogMetadata.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string_view>
#include <vector>

namespace OLMGis::Workspace {

/// The workspace of the active project: the panels that modules offer, and the log. One per project context.
class CWsManager {
public:
    static CWsManager* Instance();

    /// Enters a panel for the life of the module that registers it. A null, an empty dialog id and an id that is taken
    /// (case ignored) are kept out.
    void RegisterWsPanelDialog(const boost::shared_ptr<CWsPanelDialogMetadata>& metadata);

    /// All panels in the order of registration. No nulls.
    const std::vector<boost::shared_ptr<CWsPanelDialogMetadata>>& GetPanelDialogs() const { return m_panelDialogs; }

    /// The panel of a dialog id, case ignored; null for an unknown one.
    boost::shared_ptr<CWsPanelDialogMetadata> GetPanelDialog(std::string_view dialogId) const;

    /// Adds a line to the log and shows it to the listener. type: CLogLine::Stored or CLogLine::NothingStored; the
    /// rest says what the line is about, see CLogLine.
    void LogMessage(int type, std::string_view text, int entityType = 0, std::string_view entityName = {},
                    std::uint64_t objectId = 0, int selectionType = 0);

    /// The lines logged so far, oldest first. The log keeps the last MostLogLines: older ones fall out.
    const std::deque<CLogLine>& GetLog() const { return m_log; }
    static constexpr std::size_t MostLogLines = 10000;

    using CLogListener = std::function<void(const CLogLine& line)>;

    /// Has each new line shown at once; an empty listener shows none. Returns the former one. A listener must
    /// not throw; one that logs is called for its own lines too.
    CLogListener SetLogListener(CLogListener listener);

private:
    std::vector<boost::shared_ptr<CWsPanelDialogMetadata>> m_panelDialogs;
    std::deque<CLogLine> m_log;
    CLogListener m_logListener;
};

} // namespace OLMGis::Workspace
