// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <absl/container/flat_hash_map.h>
#include <map>
#include <set>
#include <string>
#include <string_view>

namespace OLMGis::Utility {

/// The message catalogue, icons and paths of the installation as the active project sees them. Message 0 is the edition
/// code, which comes from the project's settings and replaces that of the language's catalogue. One per project
/// context.
class CModuleConfiguration {
public:
    static CModuleConfiguration* Instance();

    static constexpr int EditionMessage = 0;

    /// The text of a message in the language in force; an unknown number shows as "#1234", never as nothing.
    const std::string& GetMsg(int number);

    /// Whether the language in force has a text of its own for the number.
    bool HasMsg(int number) const { return m_messages.find(number) != m_messages.end(); }

    /// Full path of the picture of an icon id; empty for the empty id and for an id without a picture.
    std::string GetIcon(std::string_view id) const;

    /// Folder by name, case ignored: "install" is the installation's folder for the user's own files (reports,
    /// pictures), "data" that of the delivered data files. Empty for another name.
    std::string GetPath(std::string_view name) const;

    /// Metadata handlers that modules asked for, by id.
    void EnableMetadataHandler(std::string_view id);
    bool IsMetadataHandlerEnabled(std::string_view id) const { return m_handlers.find(id) != m_handlers.end(); }

    /// Loads the catalogue of a language (en, ro, bg, hr, tr) in place of the one in force. On an error the one in
    /// force stays. The edition stays in any case.
    Status SetLanguage(std::string_view language);

    /// Makes an edition code (Editions.h) message 0.
    void SetEdition(std::string_view edition);
    const std::string& GetEdition() { return GetMsg(EditionMessage); }

    /// Brings language and edition of the project's settings into force; before a module is loaded.
    Status ApplySettings();

    /// The language in force; empty when no catalogue could be read.
    const std::string& GetLanguage() const { return m_language; }

    CModuleConfiguration();

private:
    absl::flat_hash_map<int, std::string> m_messages;
    std::map<int, std::string> m_unknown; ///< texts made for numbers without one, so that references stay good
    std::set<std::string, std::less<>> m_handlers;
    std::string m_language;
    std::string m_edition;
};

/// The text of a message in the language in force (see CModuleConfiguration::GetMsg).
inline const std::string& Msg(int number) {
    return CModuleConfiguration::Instance()->GetMsg(number);
}

} // namespace OLMGis::Utility
