// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/Result.h"

#include <string>

namespace OLMGis::Workspace {

/// A shared library in memory, from opening it until this ends. Move-only.
class CModuleFile {
public:
    /// Maps the file and runs its global constructors. A relative path starts at the current folder; libraries are not
    /// searched for. Refused when there is no regular file or it cannot be read, BadInput when it is no library, was
    /// cut short or lacks what it needs. Cost: the size of the file.
    static Utility::Result<CModuleFile> Open(const std::string& path);

    ~CModuleFile();
    CModuleFile(CModuleFile&& other) noexcept;
    CModuleFile& operator=(CModuleFile&& other) noexcept;

    /// As it was given to Open.
    const std::string& GetPath() const { return m_path; }
    void* GetHandle() const { return m_handle; }

    /// Address of an exported function, null when the file has none of that name. Function: the function's type.
    template <class Function>
    Function* Find(const char* name) const {
        return reinterpret_cast<Function*>(FindAddress(name));
    }

    /// Lets the code stay in memory to the end of the program.
    void KeepInMemory() { m_handle = nullptr; }

private:
    CModuleFile(std::string path, void* handle) : m_path(std::move(path)), m_handle(handle) {}
    void* FindAddress(const char* name) const;

    std::string m_path;
    void* m_handle;
};

} // namespace OLMGis::Workspace
