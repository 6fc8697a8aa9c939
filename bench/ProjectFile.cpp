// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/store/ProjectFile.h"

#include "bench/Benchmarks.h"
#include "bench/InputFiles.h"
#include "bench/Network.h"

#include <optional>

namespace Bench {

using OLMGis::ProjectIo::CProjectFile;
using OLMGis::Utility::BadInput;

namespace {

Result<CSubject> Opening(const CSize& size) {
    const auto path = InputFiles::MakeOnce("open", size, "gpkg", [&size](const std::string& name) -> Status {
        const auto network = MakeFilledNetwork(size);
        if (!network)
            return network.GetError();
        const auto file = CProjectFile::Create(name, true);
        return file ? Status(Done{}) : Status(file.GetError());
    });
    if (!path)
        return path.GetError();
    const auto project = std::make_shared<CBenchProjectPtr>();
    CSubject subject;
    subject.m_prepare = [project] {
        project->reset();
        *project = std::make_shared<CBenchProject>();
    };
    subject.m_pass = [path = path.Value()]() -> Status {
        const auto file = CProjectFile::Open(path);
        return file ? Status(Done{}) : Status(file.GetError());
    };
    subject.m_inspect = [project, size]() -> Status {
        const auto& topology = (*project)->Topology();
        const auto keys = topology.GetStore().GetUsedDefinitions(OLMGis::Data::enmEntityKind::Section);
        const bool isWhole = topology.GetSections().size() == size.m_sections && keys.size() == TwentyKeys().size();
        return isWhole ? Status(Done{}) : Status(BadInput("the network did not come back whole"));
    };
    return subject;
}

/// The first pass makes the file, later ones save over it.
Result<CSubject> Saving(const CSize& size) {
    const auto project = MakeFilledNetwork(size);
    if (!project)
        return project.GetError();
    const auto file = std::make_shared<std::optional<CProjectFile>>();
    CSubject subject;
    subject.m_pass = [project = project.Value(), file, path = InputFiles::PathOf("save", size, "gpkg")]() -> Status {
        if (file->has_value())
            return (*file)->Save();
        auto created = CProjectFile::Create(path, true);
        if (!created)
            return created.GetError();
        *file = std::move(created.Value());
        return Done{};
    };
    return subject;
}

} // namespace

void RegisterProjectFile() {
    RegisterOnNetworks("project/open", enmPace::Slow, Opening);
    RegisterOnNetworks("project/save", enmPace::Slow, Saving);
}

} // namespace Bench
