// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/GuardedWrite.h"

#include "host/project_io/base/Failure.h"
#include "host/project_io/base/FileReplacement.h"
#include "host/project_io/store/SideFiles.h"

namespace OLMGis::ProjectIo {

using Utility::Status;

Status WriteGuarded(const std::string& path, bool mayReplace, const std::function<Status(int descriptor)>& write) {
    return CatchFailures<Utility::Done>(path, [&]() -> Status {
        const std::filesystem::path target = ResolvedPath(path);
        CheckSideFiles(target, path);
        CFileReplacement replacement(target, path);
        if (Status written = write(replacement.GetDescriptor()); !written)
            return written;
        replacement.Flush();
        const CFileLock lock(target, path);
        CheckSideFiles(target, path);
        replacement.Commit(mayReplace);
        return Utility::Done{};
    });
}

} // namespace OLMGis::ProjectIo
