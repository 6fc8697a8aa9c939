// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/project_io/exchange/ExchangeImport.h"

#include "host/project_io/base/Failure.h"
#include "host/project_io/exchange/ExchangeEntry.h"
#include "host/project_io/exchange/ExchangeReader.h"

namespace OLMGis::ProjectIo {

using Utility::Result;
using Utility::Status;

namespace {

Result<CImportSummary> Import(std::istream& stream, const std::string& name) {
    if (const Status empty = CheckEmptyProject(name); !empty)
        return empty.GetError();
    CImportSummary summary;
    summary.m_format = "network exchange file";
    CExchangeRecords records;
    const CFeaturePlaces places(name);
    CExchangeReader reader(places, GetPipesToReferTo(), records, summary);
    if (const Status status = ParseExchange(stream, name, reader); !status)
        return status.GetError();
    if (const Status status = EnterExchange(records, reader.GetCoordinateSystem(), places, summary); !status)
        return status.GetError();
    return summary;
}

} // namespace

Result<CImportSummary> ImportExchange(std::istream& stream, const std::string& name) {
    return CatchFailures<CImportSummary>(name, [&] { return Import(stream, name); });
}

} // namespace OLMGis::ProjectIo
