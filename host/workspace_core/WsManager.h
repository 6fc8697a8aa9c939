// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/workspace_core/IWsDialogFactory.h"
#include "host/workspace_core/LogLine.h"
#include "host/workspace_core/WsPanelDialogMetadata.h"

#include <boost/shared_ptr.hpp>

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>
#include <string_view>
#include <vector>

namespace OLMGis::Workspace {

/// The workspace of the active project: the panels that modules offer, the log. One per project context.
class CWsManager {
public:
    static CWsManager* Instance();

    CWsManager() = default;
    ~CWsManager() { DestroyPanels(); }
    CWsManager(const CWsManager&) = delete;
    CWsManager& operator=(const CWsManager&) = delete;

    /// Enters a panel for the life of the module that registers it. A null, an empty dialog id and an id that is taken
    /// (case ignored) are kept out.
    void RegisterWsPanelDialog(const boost::shared_ptr<CWsPanelDialogMetadata>& metadata);

    /// All panels in the order of registration. No nulls.
    const std::vector<boost::shared_ptr<CWsPanelDialogMetadata>>& GetPanelDialogs() const { return m_panelDialogs; }

    /// The panel of a dialog id, case ignored; null for an unknown one.
    boost::shared_ptr<CWsPanelDialogMetadata> GetPanelDialog(std::string_view dialogId) const;

    /// Enters a factory of dialogs for the life of the module that registers it. A null is kept out.
    void RegisterWsDialogFactory(const boost::shared_ptr<IWsDialogFactory>& factory);

    /// The panel of a dialog id (case ignored): the one made before, else a new one by the first factory that gives
    /// one, else null. parentWindow: a QWidget*, may be null. Owned here until DestroyPanels.
    CWsPanelDialog* CreateWsPanelDialog(void* parentWindow, std::string_view dialogId);

    /// Destroys all panels, the last made first. The module loader does so before it releases a module.
    void DestroyPanels();

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
    std::vector<boost::shared_ptr<IWsDialogFactory>> m_dialogFactories;
    std::vector<std::unique_ptr<CWsPanelDialog>> m_panels; ///< in the order of making
};

} // namespace OLMGis::Workspace
