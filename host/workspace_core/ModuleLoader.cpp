// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleLoader.h"

#include "host/gis_core/ModuleScope.h"
#include "host/gis_core/ProjectContext.h"
#include "host/workspace_core/DialogTable.h"
#include "host/workspace_core/ModuleApplication.h"
#include "host/workspace_core/ModuleExports.h"
#include "host/workspace_core/ModuleFile.h"
#include "host/workspace_core/WsManager.h"

#include <fmt/format.h>

#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

namespace OLMGis::Workspace {

using System::CModuleScope;
using System::CProjectContext;
using Utility::BadInput;
using Utility::Result;
using Utility::Status;

namespace {

constexpr const char* ModuleFileName = "OLMXSewageCalculationsWsPlugin.so";

/// What a project knows of its module: the path of the loaded one, empty without. It ends with the project.
struct CProjectModule {
    std::shared_ptr<std::string> m_path = std::make_shared<std::string>();

    static CProjectModule* Instance() {
        static const System::CContextSlot<CProjectModule> slot;
        return slot.Get();
    }
};

/// Notes what is registered while it lives.
class CRegistering {
public:
    CRegistering() { CModuleScope::Instance()->Open(); }
    ~CRegistering() { CModuleScope::Instance()->Close(); }
    CRegistering(const CRegistering&) = delete;
    CRegistering& operator=(const CRegistering&) = delete;
};

/// Runs a piece of the module. What it throws becomes an error text and is gone when this returns: an exception may be
/// of a type whose code goes with the file.
template <class Piece>
Status RunPiece(const std::string& path, const char* name, Piece&& piece) {
    try {
        std::forward<Piece>(piece)();
        return Utility::Done{};
    } catch (const std::exception& error) {
        return BadInput(fmt::format("{}: {} of the module failed: {}", path, name, error.what()));
    } catch (...) {
        return BadInput(fmt::format("{}: {} of the module failed with an unknown exception", path, name));
    }
}

struct CRegistration {
    const char* m_name;
    void (IPluginInfo::*m_operation)();
};

/// In the order of the slots.
constexpr CRegistration Registrations[] = {
    {"EnableMetadataHandlers", &IPluginInfo::EnableMetadataHandlers},
    {"RegisterTopologyTypes", &IPluginInfo::RegisterTopologyTypes},
    {"RegisterEntityTypes", &IPluginInfo::RegisterEntityTypes},
    {"RegisterCommands", &IPluginInfo::RegisterCommands},
    {"RegisterDialogFactories", &IPluginInfo::RegisterDialogFactories},
    {"RegisterListeners", &IPluginInfo::RegisterListeners},
    {"RegisterCalculationItems", &IPluginInfo::RegisterCalculationItems},
    {"RegisterImporters", &IPluginInfo::RegisterImporters},
    {"RegisterExporters", &IPluginInfo::RegisterExporters},
    {"RegisterPanelDialogs", &IPluginInfo::RegisterPanelDialogs},
};

} // namespace

/// The module from the mapping of its file to the end. The end takes back what was reached, so that a start that fails
/// half-way leaves nothing behind.
class CModuleLoader::CModule final : public AcRxDynamicLinker {
public:
    explicit CModule(CModuleFile file)
        : m_file(std::move(file)), m_context(CProjectContext::Active()), m_place(CProjectModule::Instance()->m_path) {
        *CProjectModule::Instance()->m_path = m_file.GetPath();
    }
    ~CModule() override { End(); }
    CModule(const CModule&) = delete;
    CModule& operator=(const CModule&) = delete;

    Status Start();
    Status LoadDialogs(const std::string& path);

    void UnlockApplication() override { m_isUnlocked = true; }
    void RegisterAppDocumentAware() override { m_isDocumentAware = true; }

    const std::string& GetPath() const { return m_file.GetPath(); }
    bool IsUnloadable() const { return m_isUnlocked || m_entryPoint == nullptr; }
    bool IsDocumentAware() const { return m_isDocumentAware; }

private:
    Status CheckExports() const;
    Status SendLoadMessage();
    Status Register();
    void End();

    CModuleFile m_file;
    CProjectContext& m_context;
    std::weak_ptr<std::string> m_place;                  ///< in the context, and ends with it
    decltype(&acrxEntryPoint) m_entryPoint = nullptr;    ///< set once the application was loaded
    decltype(&OLMPluginInfoRelease) m_release = nullptr; ///< set once the provider was called
    bool m_isUnlocked = false;
    bool m_isDocumentAware = false;
};

Status CModuleLoader::CModule::Start() {
    if (Status checked = CheckExports(); !checked)
        return checked;
    if (Status sent = SendLoadMessage(); !sent)
        return sent;
    return Register();
}

Status CModuleLoader::CModule::CheckExports() const {
    for (const char* name : {"OLMPluginInfoProvider", "OLMPluginInfoRelease"})
        if (m_file.Find<void()>(name) == nullptr)
            return BadInput(
                fmt::format("{}: found a library without the function {}, expected a module", GetPath(), name));
    const auto getVersion = m_file.Find<decltype(acrxGetApiVersion)>("acrxGetApiVersion");
    if (getVersion == nullptr)
        return Utility::Done{};
    int version = 0;
    if (Status asked = RunPiece(GetPath(), "acrxGetApiVersion", [&] { version = getVersion(); }); !asked)
        return asked;
    if (version != ModuleApiVersion)
        return BadInput(fmt::format("{}: found a module for version {} of the module interface, expected version {}",
                                    GetPath(), version, ModuleApiVersion));
    return Utility::Done{};
}

Status CModuleLoader::CModule::SendLoadMessage() {
    const auto entryPoint = m_file.Find<decltype(acrxEntryPoint)>("acrxEntryPoint");
    if (entryPoint == nullptr)
        return Utility::Done{};
    CApplicationPacket packet{this, m_file.GetHandle()};
    int answer = 0;
    if (Status sent = RunPiece(GetPath(), "the load message", [&] { answer = entryPoint(LoadMessage, &packet); });
        !sent)
        return sent;
    if (answer != 0)
        return BadInput(fmt::format("{}: the module answered {} to the load message, expected 0", GetPath(), answer));
    m_entryPoint = entryPoint;
    return Utility::Done{};
}

Status CModuleLoader::CModule::Register() {
    const auto provide = m_file.Find<decltype(OLMPluginInfoProvider)>("OLMPluginInfoProvider");
    m_release = m_file.Find<decltype(OLMPluginInfoRelease)>("OLMPluginInfoRelease");
    IPluginInfo* info = nullptr;
    if (Status provided = RunPiece(GetPath(), "OLMPluginInfoProvider", [&] { info = provide(); }); !provided)
        return provided;
    if (info == nullptr)
        return BadInput(
            fmt::format("{}: OLMPluginInfoProvider of the module gave nothing, expected an object", GetPath()));
    for (const CRegistration& step : Registrations)
        if (Status done = RunPiece(GetPath(), step.m_name, [&] { (info->*step.m_operation)(); }); !done)
            return done;
    CModuleScope::Instance()->SetLoaded(true);
    return Utility::Done{};
}

Status CModuleLoader::CModule::LoadDialogs(const std::string& path) {
    const std::shared_ptr<std::string> place = m_place.lock();
    if (!place)
        return Utility::Refused(fmt::format("{}: cannot be loaded: the project of the module has ended", path));
    const System::CContextActivation active(m_context);
    CDialogMakers& makers = *CDialogMakers::Instance();
    if (makers.HasTable())
        return Utility::Refused(fmt::format("{}: cannot be loaded: the module has its dialogs already", path));
    Result<CModuleFile> file = CModuleFile::Open(path);
    if (!file)
        return file.GetError();
    const auto provide = file->Find<decltype(OLMDialogTableProvider)>("OLMDialogTableProvider");
    if (provide == nullptr)
        return BadInput(fmt::format(
            "{}: found a library without the function OLMDialogTableProvider, expected dialogs of a module", path));
    file->KeepInMemory();
    const CDialogTable* table = nullptr;
    if (Status provided = RunPiece(path, "OLMDialogTableProvider", [&] { table = provide(); }); !provided)
        return provided;
    if (const Status set = makers.SetTable(table); !set)
        return BadInput(fmt::format("{}: {}", path, set.GetError().message));
    return Utility::Done{};
}

void CModuleLoader::CModule::End() {
    // A project that ended before its module has destroyed the module's objects itself, with the code still in memory.
    const std::shared_ptr<std::string> place = m_place.lock();
    std::optional<System::CContextActivation> active;
    if (place) {
        active.emplace(m_context);
        CWsManager::Instance()->DestroyPanels();
        CDialogMakers::Instance()->Clear();
    }
    Status ended = Utility::Done{};
    if (m_release != nullptr)
        ended = RunPiece(GetPath(), "OLMPluginInfoRelease", m_release);
    if (place) {
        CModuleScope::Instance()->TakeOutAll();
        CModuleScope::Instance()->SetLoaded(false);
        place->clear();
        if (!ended)
            CWsManager::Instance()->LogMessage(CLogLine::NothingStored, ended.GetError().message);
    }
    CApplicationPacket packet{this, m_file.GetHandle()};
    if (m_entryPoint != nullptr)
        // Whatever is answered, the module goes.
        (void)RunPiece(GetPath(), "the unload message", [&] { m_entryPoint(UnloadMessage, &packet); });
    if (!IsUnloadable())
        m_file.KeepInMemory();
}

std::string CModuleLoader::DefaultModulePath() {
    Dl_info info{};
    if (dladdr(reinterpret_cast<const void*>(&CModuleLoader::DefaultModulePath), &info) == 0 ||
        info.dli_fname == nullptr)
        return ModuleFileName;
    std::error_code ignored;
    return (std::filesystem::canonical(info.dli_fname, ignored).parent_path() / ModuleFileName).string();
}

std::string CModuleLoader::DialogsPath(const std::string& modulePath) {
    const std::filesystem::path path(modulePath);
    return (path.parent_path() / path.stem()).string() + "Desktop" + path.extension().string();
}

Status CModuleLoader::LoadDialogs(const std::string& path) {
    if (!m_module)
        return Utility::Refused(fmt::format("{}: cannot be loaded: no module is loaded", path));
    return m_module->LoadDialogs(path);
}

Result<CModuleLoader> CModuleLoader::Load(const std::string& path) {
    if (const std::string& loaded = *CProjectModule::Instance()->m_path; !loaded.empty())
        return Utility::Refused(
            fmt::format("{}: cannot be loaded: the project has loaded the module {} already", path, loaded));
    // Open before the file is mapped: its global constructors may register too.
    const CRegistering registering;
    Result<CModuleFile> file = CModuleFile::Open(path);
    if (!file)
        return file.GetError();
    auto module = std::make_unique<CModule>(std::move(file.Value()));
    if (const Status started = module->Start(); !started)
        return started.GetError();
    return CModuleLoader(std::move(module));
}

CModuleLoader::CModuleLoader(std::unique_ptr<CModule> module) : m_module(std::move(module)) {}
CModuleLoader::~CModuleLoader() = default;
CModuleLoader::CModuleLoader(CModuleLoader&&) noexcept = default;
CModuleLoader& CModuleLoader::operator=(CModuleLoader&& other) noexcept = default;

void CModuleLoader::Release() {
    m_module.reset();
}

std::string CModuleLoader::GetPath() const {
    return m_module ? m_module->GetPath() : std::string();
}

bool CModuleLoader::IsUnloadable() const {
    return m_module && m_module->IsUnloadable();
}

bool CModuleLoader::IsDocumentAware() const {
    return m_module && m_module->IsDocumentAware();
}

} // namespace OLMGis::Workspace
