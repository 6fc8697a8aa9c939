// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <memory>
#include <string>

namespace OLMGis::Workspace {

/// A module loaded into the active project, from Load until Release or the end of this object. Move-only; empty after
/// it was moved from or released.
///
/// What happens when: the file is mapped; the load message; OLMPluginInfoProvider; the operations of IPluginInfo in the
/// order of their slots. At the end: its panels are destroyed; its dialogs are forgotten; OLMPluginInfoRelease;
/// everything that the module registered is taken out of the registries; the unload message; the file is unmapped,
/// unless the application stayed locked. The messages are sent to modules that export acrxEntryPoint.
///
/// The settings of the project must be in force before: constructors of calculators ask for edition and language.
/// Code that keeps an object of the module must release it before Release. Several projects may load the same file,
/// each for itself.
class CModuleLoader {
public:
    /// The hydraulics module: OLMXSewageCalculationsWsPlugin.so beside this library. No variable of the environment
    /// changes it: a module is code.
    static std::string DefaultModulePath();

    /// Refused when there is no such file and when the active project has a module already; BadInput when the file is
    /// no module, or the module fails. After an error nothing of it stays registered or loaded.
    static Utility::Result<CModuleLoader> Load(const std::string& path);

    /// The file of a module's dialogs: the module's own path with "Desktop" before the suffix.
    static std::string DialogsPath(const std::string& modulePath);

    /// Loads the module's dialogs from their file and hands their makers to the module through CDialogMakers. For
    /// programs with windows; without it the module's panels are null and its dialogs change nothing. Refused when
    /// there is no such file, no module is loaded or its dialogs are loaded already; BadInput when the file has no
    /// table of dialogs that fits. A file with a table stays in memory to the end of the program: the toolkit
    /// keeps addresses of what it uses. Several projects may load the same file.
    Utility::Status LoadDialogs(const std::string& path);

    ~CModuleLoader();
    CModuleLoader(CModuleLoader&&) noexcept;
    CModuleLoader& operator=(CModuleLoader&& other) noexcept;

    /// Lets the module go, in the project that it was loaded into. Does nothing when empty.
    void Release();

    bool IsLoaded() const { return m_module != nullptr; }

    /// As given to Load; empty when nothing is loaded.
    std::string GetPath() const;

    /// Whether Release will take the code out of memory: modules without acrxEntryPoint, and those whose application
    /// unlocked itself. False when nothing is loaded.
    bool IsUnloadable() const;

    /// Whether the application declared that it knows of several open documents.
    bool IsDocumentAware() const;

private:
    class CModule;
    explicit CModuleLoader(std::unique_ptr<CModule> module);

    std::unique_ptr<CModule> m_module;
};

} // namespace OLMGis::Workspace
