// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "reports/ExportFormats.h"

#include "reports/BranchHydraulics.h"
#include "reports/TablePrinting.h"

namespace Reports {

using OLMGis::ProjectIo::CExportChoice;
using OLMGis::ProjectIo::CFormat;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

namespace {

Status WriteHydraulics(std::ostream& stream, const CExportChoice& /*choice*/) {
    PrintAsCsv(stream, MakeBranchHydraulicsTable());
    return Done{};
}

} // namespace

const std::vector<CFormat>& GetTableFormats() {
    static const std::vector<CFormat> formats{
        {"hydraulics",
         {".csv"},
         "hydraulic table",
         "",
         "sections by branch with levels, slope, pipe, flows, Qfull, Q/Qfull, filling, velocity, wall shear stress",
         "everything else",
         nullptr,
         WriteHydraulics},
    };
    return formats;
}

std::vector<const CFormat*> GetExportFormats() {
    std::vector<const CFormat*> formats = OLMGis::ProjectIo::GetExportFormats();
    for (const CFormat& format : GetTableFormats())
        formats.push_back(&format);
    return formats;
}

} // namespace Reports
