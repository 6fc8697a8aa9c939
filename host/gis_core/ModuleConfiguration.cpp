// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/ModuleConfiguration.h"

#include "host/gis_core/Editions.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/InstallationPaths.h"
#include "host/gis_core/ProjectContext.h"
#include "host/gis_core/ProjectSettings.h"
#include "host/gis_core/Utility.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include <filesystem>

namespace OLMGis::Utility {

namespace {

using MessageMap = absl::flat_hash_map<int, std::string>;

/// A language is part of a path, and a project file that came from somebody else names it.
bool IsLanguageName(std::string_view language) {
    return !language.empty() && language.find_first_not_of("abcdefghijklmnopqrstuvwxyz_") == std::string_view::npos;
}

Result<MessageMap> LoadCatalogue(std::string_view language) {
    if (!IsLanguageName(language))
        return BadInput(fmt::format("found the language \"{}\", expected small letters such as en", language));
    const std::string path = InstallationPaths::DataFile(fmt::format("messages/{}.json", language));
    const Result<std::string> text = InstallationPaths::ReadWholeFile(path);
    if (!text)
        return text.GetError();
    try {
        MessageMap messages;
        const auto catalogue = nlohmann::json::parse(text.Value());
        for (const auto& [number, message] : catalogue.items()) {
            const std::optional<int> key = CUtility::ParseInt(number);
            if (!key)
                return BadInput(fmt::format("{}: found the key \"{}\", expected a message number", path, number));
            messages.insert_or_assign(*key, message.get<std::string>());
        }
        return messages;
    } catch (const nlohmann::json::exception& error) {
        return BadInput(fmt::format("{}: not a message catalogue: {}", path, error.what()));
    }
}

} // namespace

CModuleConfiguration* CModuleConfiguration::Instance() {
    static const System::CContextSlot<CModuleConfiguration> slot;
    return slot.Get();
}

CModuleConfiguration::CModuleConfiguration() {
    // Without a catalogue every text shows as its number; programs report it when they ask for the language.
    (void)SetLanguage("en");
}

const std::string& CModuleConfiguration::GetMsg(int number) {
    if (number == EditionMessage) {
        Data::NoteInput(Data::Inputs::Settings, System::CProjectSettings::Edition);
        if (!m_edition.empty())
            return m_edition;
    }
    if (const auto found = m_messages.find(number); found != m_messages.end())
        return found->second;
    const auto made = m_unknown.try_emplace(number, fmt::format("#{}", number));
    return made.first->second;
}

std::string CModuleConfiguration::GetIcon(std::string_view id) const {
    if (id.empty() || id.find_first_of("/\\.") != std::string_view::npos)
        return {};
    const std::string path = InstallationPaths::DataFile(fmt::format("icons/{}.svg", id));
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored) ? path : std::string();
}

std::string CModuleConfiguration::GetPath(std::string_view name) const {
    if (CUtility::EqualIgnoreCase(name, "install"))
        return InstallationPaths::HomeFolder();
    if (CUtility::EqualIgnoreCase(name, "data"))
        return InstallationPaths::DataFolder();
    return {};
}

void CModuleConfiguration::EnableMetadataHandler(std::string_view id) {
    m_handlers.emplace(id);
}

Status CModuleConfiguration::SetLanguage(std::string_view language) {
    Result<MessageMap> messages = LoadCatalogue(language);
    if (!messages)
        return messages.GetError();
    m_messages = std::move(messages.Value());
    m_language = language;
    return Done{};
}

void CModuleConfiguration::SetEdition(std::string_view edition) {
    m_edition = edition;
}

Status CModuleConfiguration::ApplySettings() {
    const System::CProjectSettings& settings = *System::CProjectSettings::Instance();
    SetEdition(settings.Get(System::CProjectSettings::Edition, System::Editions::All.front()));
    const std::string language = settings.Get(System::CProjectSettings::Language, "en");
    return language == m_language ? Status(Done{}) : SetLanguage(language);
}

} // namespace OLMGis::Utility
