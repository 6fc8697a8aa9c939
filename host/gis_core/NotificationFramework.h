// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <memory>
#include <string>
#include <vector>

namespace OLMGis::Notification {

/// What happened to the network.
enum class enmEvent {
    EntityDeleted, ///< an entity was taken out of the network
};

struct CEvent {
    enmEvent m_event{};
    std::string m_guid;     ///< of the entity
    std::string m_nodeGuid; ///< of a section: its starting node, empty without one
};

/// Receives the events of the active project.
class IEventResponder {
public:
    virtual ~IEventResponder() = default;
    virtual void OnEvent(const CEvent& event) = 0;
};

/// Hands events of the active project to those who registered. One per project context.
class CNotificationFramework {
public:
    static CNotificationFramework* Instance();

    /// Becomes the owner of a responder made with new and keeps it to the end of the context, or of the module that
    /// registered it. A null is kept out.
    void RegisterEventResponder(IEventResponder* responder);

    std::size_t GetResponderCount() const { return m_responders.size(); }

    /// Notifies all responders, in the order of registration.
    void Notify(const CEvent& event);

private:
    std::vector<std::unique_ptr<IEventResponder>> m_responders;
};

} // namespace OLMGis::Notification
