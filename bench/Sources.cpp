// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "bench/Benchmarks.h"
#include "bench/InpText.h"
#include "bench/InputFiles.h"
#include "bench/Network.h"
#include "host/project_io/exchange/ExchangeExport.h"
#include "host/project_io/exchange/ExchangeImport.h"
#include "host/project_io/inp/InpImport.h"
#include "host/project_io/synthetic/SyntheticNetwork.h"

#include <fmt/format.h>

#include <fstream>

namespace Bench {

using OLMGis::ProjectIo::CImportSummary;
using OLMGis::Utility::BadInput;
using OLMGis::Utility::Refused;

namespace {

/// Something that fills an empty project.
CSubject Filling(const CSize& size, const std::function<Status()>& fill) {
    const auto project = std::make_shared<CBenchProjectPtr>();
    CSubject subject;
    subject.m_prepare = [project] {
        project->reset();
        *project = std::make_shared<CBenchProject>();
    };
    subject.m_pass = fill;
    subject.m_inspect = [project, size]() -> Status {
        const std::size_t found = (*project)->Topology().GetSections().size();
        if (found != size.m_sections)
            return BadInput(fmt::format("found {} sections, expected {}", found, size.m_sections));
        return Done{};
    };
    return subject;
}

Status Written(std::ofstream& file, const std::string& path) {
    file.close();
    return file ? Status(Done{}) : Status(Refused(path + " could not be written"));
}

using CImport = Result<CImportSummary> (*)(std::istream&, const std::string&);

Result<CSubject> Importing(const CSize& size, const Result<std::string>& path, CImport import) {
    if (!path)
        return path.GetError();
    return Filling(size, [path = path.Value(), import]() -> Status {
        std::ifstream file(path, std::ios::binary);
        const auto summary = import(file, path);
        return summary ? Status(Done{}) : Status(summary.GetError());
    });
}

Result<CSubject> ImportingExchange(const CSize& size) {
    const auto write = [&size](const std::string& path) -> Status {
        const auto network = MakeGeneratedNetwork(size);
        if (!network)
            return network.GetError();
        std::ofstream file(path, std::ios::binary);
        const Status status = OLMGis::ProjectIo::ExportExchange(file);
        return status ? Written(file, path) : status;
    };
    return Importing(size, InputFiles::MakeOnce("exchange", size, "geojson", write), OLMGis::ProjectIo::ImportExchange);
}

Result<CSubject> ImportingInp(const CSize& size) {
    const auto write = [&size](const std::string& path) -> Status {
        std::ofstream file(path, std::ios::binary);
        WriteInp(file, size);
        return Written(file, path);
    };
    return Importing(size, InputFiles::MakeOnce("storm-water", size, "inp", write), OLMGis::ProjectIo::ImportInp);
}

Result<CSubject> Generating(const CSize& size) {
    return Filling(size, [size] { return OLMGis::ProjectIo::GenerateNetwork(size.m_shape, size.m_sections, Seed); });
}

} // namespace

void RegisterSources() {
    RegisterOnNetworks("import/exchange", enmPace::Slow, ImportingExchange);
    RegisterOnNetworks("import/storm_water", enmPace::Slow, ImportingInp);
    RegisterOnNetworks("generate", enmPace::Slow, Generating);
}

} // namespace Bench
