// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

/// How an application declares itself to its host while it is being loaded.
class AcRxDynamicLinker {
public:
    virtual ~AcRxDynamicLinker() = default;

    /// The application may be unloaded at run time. Until then it is locked: its code stays to the end of the program.
    virtual void UnlockApplication() = 0;

    /// The application knows that several documents may be open.
    virtual void RegisterAppDocumentAware() = 0;
};

namespace OLMGis::Workspace {

/// The version of the interfaces between host and module. A module answers it from acrxGetApiVersion; one built against
/// another version is refused, because its tables of operations would not fit ours.
inline constexpr int ModuleApiVersion = 1;

/// The messages that a host sends to an application, by number.
enum enmApplicationMessage : unsigned {
    NullMessage = 0,
    LoadMessage = 1,
    UnloadMessage = 2,
    LoadDrawingMessage = 3,
    UnloadDrawingMessage = 4,
    CallFunctionMessage = 5,
    ConfigurationMessage = 6,
    EndMessage = 7,
    QuitMessage = 8,
    SaveMessage = 9,
    DependencyMessage = 10,
    NoDependencyMessage = 11,
    UnloadHostMessage = 12,
    BeforeQuitMessage = 13,
    BeginDialogMessage = 14,
    EndDialogMessage = 15,
    ApplicationMessageCount = 16,
};

/// What the host sends with a message; valid for the length of the call. A packet may be null.
struct CApplicationPacket {
    AcRxDynamicLinker* m_linker = nullptr; ///< who loads the application
    void* m_instance = nullptr;            ///< handle of the loaded file
};

} // namespace OLMGis::Workspace

/// The face of a module to its host: one virtual operation for each message. The defaults answer 0, which is "done",
/// and have no effect beyond what they say. Outside the namespaces, as the classes of modules are.
class AcRxDbxApp {
public:
    AcRxDbxApp() = default;
    virtual ~AcRxDbxApp();
    AcRxDbxApp(const AcRxDbxApp&) = delete;
    AcRxDbxApp& operator=(const AcRxDbxApp&) = delete;

    /// Calls the operation of the message with the packet, a CApplicationPacket or null, and gives back its answer. A
    /// number above 15 is answered 0 without a call.
    int EntryPoint(unsigned message, void* packet);

    /// Handle of the module's file; null before the load message.
    void* GetInstance() const { return m_instance; }

protected:
    /// Keeps the handle of the file, and unlocks the application when it may be unloaded.
    virtual int OnLoad(void* packet);
    virtual int OnUnload(void* /*packet*/) { return 0; }
    virtual int OnLoadDrawing(void* /*packet*/) { return 0; }
    virtual int OnUnloadDrawing(void* /*packet*/) { return 0; }
    virtual int OnCallFunction(void* /*packet*/) { return 0; }
    virtual int OnConfiguration(void* /*packet*/) { return 0; }
    virtual int OnEnd(void* /*packet*/) { return 0; }
    virtual int OnQuit(void* /*packet*/) { return 0; }
    virtual int OnSave(void* /*packet*/) { return 0; }
    virtual int OnDependency(void* /*packet*/) { return 0; }
    virtual int OnNoDependency(void* /*packet*/) { return 0; }
    virtual int OnUnloadHost(void* /*packet*/) { return 0; }
    virtual int OnBeforeQuit(void* /*packet*/) { return 0; }
    virtual int OnBeginDialog(void* /*packet*/) { return 0; }
    virtual int OnEndDialog(void* /*packet*/) { return 0; }
    virtual int OnNull(void* /*packet*/) { return 0; }

    int m_isUnlockable = 0; ///< non-zero when the application may be unloaded at run time

private:
    void* m_instance = nullptr;
};

/// An application that works on documents.
class AcRxArxApp : public AcRxDbxApp {
protected:
    /// Beside the base: registers the application as aware of several documents when it is.
    int OnLoad(void* packet) override;

    int m_isDocumentAware = 0; ///< non-zero when the application knows that several documents may be open
};
