// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/workspace_core/ModuleFile.h"

#include "host/gis_core/InstallationPaths.h"

#include <fmt/format.h>

#include <cstdint>
#include <cstring>
#include <dlfcn.h>
#include <elf.h>
#include <filesystem>
#include <link.h>
#include <string_view>
#include <system_error>
#include <utility>

namespace OLMGis::Workspace {

namespace {

/// Whether the file ends before the last byte that its own table of segments names. The system's loader would map it
/// all the same, and the program would die at the first byte that isn't there. What is no library at all is left to the
/// loader to name.
bool IsCutShort(std::string_view bytes) {
    ElfW(Ehdr) head;
    if (bytes.size() < sizeof head || !bytes.starts_with(ELFMAG))
        return false;
    std::memcpy(&head, bytes.data(), sizeof head);
    constexpr unsigned char ours = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
    if (head.e_ident[EI_CLASS] != ours)
        return false;
    const auto reaches = [&bytes](std::uint64_t from, std::uint64_t size) {
        return from <= bytes.size() && size <= bytes.size() - from;
    };
    for (std::uint64_t i = 0; i < head.e_phnum; ++i) {
        ElfW(Phdr) segment;
        const std::uint64_t place = head.e_phoff + i * sizeof segment;
        if (!reaches(place, sizeof segment))
            return true;
        std::memcpy(&segment, bytes.data() + place, sizeof segment);
        if (segment.p_type == PT_LOAD && !reaches(segment.p_offset, segment.p_filesz))
            return true;
    }
    return false;
}

/// The system's reason for the last failure, without the path that it begins with.
std::string TakeReason(const std::string& path) {
    const char* text = dlerror();
    std::string reason = text == nullptr ? "unknown reason" : text;
    if (const std::string head = path + ": "; reason.starts_with(head))
        reason.erase(0, head.size());
    return reason;
}

} // namespace

Utility::Result<CModuleFile> CModuleFile::Open(const std::string& path) {
    std::error_code error;
    const auto status = std::filesystem::status(path, error);
    if (error || !std::filesystem::exists(status))
        return Utility::Refused(fmt::format("{}: cannot be opened: {}", path, error.message()));
    // The system's loader would wait at a pipe for ever.
    if (!std::filesystem::is_regular_file(status))
        return Utility::Refused(fmt::format("{}: found no regular file, expected a module", path));
    const Utility::Result<std::string> bytes = Utility::InstallationPaths::ReadWholeFile(path);
    if (!bytes)
        return bytes.GetError();
    if (IsCutShort(bytes.Value()))
        return Utility::BadInput(
            fmt::format("{}: found a library that was cut short at {} bytes, expected a module", path, bytes->size()));
    // With a slash in it the path is taken as it is, without one it would be searched for.
    const std::string full = std::filesystem::absolute(path, error).string();
    void* const handle = error ? nullptr : dlopen(full.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (handle == nullptr)
        return Utility::BadInput(fmt::format("{}: found a file that cannot be loaded ({}), expected a module", path,
                                             error ? error.message() : TakeReason(full)));
    return CModuleFile(path, handle);
}

CModuleFile::~CModuleFile() {
    if (m_handle != nullptr)
        dlclose(m_handle);
}

CModuleFile::CModuleFile(CModuleFile&& other) noexcept
    : m_path(std::move(other.m_path)), m_handle(std::exchange(other.m_handle, nullptr)) {}

CModuleFile& CModuleFile::operator=(CModuleFile&& other) noexcept {
    std::swap(m_path, other.m_path);
    std::swap(m_handle, other.m_handle);
    return *this;
}

void* CModuleFile::FindAddress(const char* name) const {
    return m_handle == nullptr ? nullptr : dlsym(m_handle, name);
}

} // namespace OLMGis::Workspace
