// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"
#include "host/workspace_core/WsPanelDialog.h"

#include <cstddef>
#include <memory>
#include <string_view>

namespace OLMGis::Workspace {

/// What a dialog shows and decides, free of any toolkit. The module derives one interface of virtual operations from it
/// for each of its dialogs; the dialog's window calls back through that interface and needs no other code of the
/// module.
class CDialogModel {
public:
    CDialogModel() = default;
    virtual ~CDialogModel();
    CDialogModel(const CDialogModel&) = delete;
    CDialogModel& operator=(const CDialogModel&) = delete;
};

/// Makes one dialog of a module: a panel or a modal dialog. The dialog's id says which interface its model has.
struct CDialogMaker {
    const char* m_dialogId; ///< plain characters, not empty; compared without case

    /// A panel, which keeps its model; null of a maker of a modal dialog. model: may be null where the panel needs
    /// none; parentWindow: a QWidget*, may be null.
    std::unique_ptr<CWsPanelDialog> (*m_makePanel)(std::unique_ptr<CDialogModel> model, void* parentWindow);

    /// Shows a modal dialog over the active window and waits for its end: whether it was confirmed. Null of a maker of
    /// a panel. The model contains what was entered.
    bool (*m_runDialog)(CDialogModel& model);
};

/// The version of CDialogTable and of all models of the module. The two files of a module are built together; one of
/// another version is refused, because its tables of operations would not fit.
inline constexpr int DialogTableVersion = 1;

/// All dialogs of a module. Static in the file of the dialogs, which stays in memory.
struct CDialogTable {
    int m_version; ///< DialogTableVersion; first in every version of this table
    const CDialogMaker* m_makers;
    std::size_t m_count;
};

/// The dialogs of the active project's module. Empty in a program without windows, and until
/// CModuleLoader::LoadDialogs. One per project context.
class CDialogMakers {
public:
    static CDialogMakers* Instance();

    /// BadInput when the table is null, of another version, or has a maker without an id, with the id of another, or
    /// that makes neither or both kinds of dialog. Then the former table stays. The table must outlive this object.
    Utility::Status SetTable(const CDialogTable* table);

    void Clear() { m_table = nullptr; }
    bool HasTable() const { return m_table != nullptr; }

    /// The maker of a dialog id, case ignored; null for an unknown one.
    const CDialogMaker* Find(std::string_view dialogId) const;

private:
    const CDialogTable* m_table = nullptr;
};

} // namespace OLMGis::Workspace

/// The one function that the file of a module's dialogs exports. Null is an error. Main thread only.
extern "C" __attribute__((visibility("default"))) const OLMGis::Workspace::CDialogTable* OLMDialogTableProvider();
