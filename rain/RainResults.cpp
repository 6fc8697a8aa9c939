// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
// What a finished rain calculation leaves: values of sections, and two text files beside the user's settings.
#include "flow/FlowKeys.h"
#include "flow/FlowValue.h"
#include "host/gis_core/CoreProgressBar.h"
#include "host/gis_core/DataRW.h"
#include "host/gis_core/FetchAhead.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "host/gis_core/ReportFile.h"
#include "host/gis_core/Utility.h"
#include "host/network_core/PipeManager.h"
#include "rain/FlowCalculator_RainITP.h"
#include "rain/RainReports.h"
#include "rain/RainTrace.h"

using OLMGis::Data::CDataBox;
using OLMGis::Data::CDataDefinition;
using OLMGis::Data::CDataRW;
using OLMGis::Utility::CCoreProgressBar;
using OLMGis::Utility::CModuleConfiguration;
using OLMGis::Utility::CReportFile;
using OLMGis::Utility::CUtility;
using OLMGis::Utility::FetchObjectAhead;

namespace {

/// Path of a report.
std::string ReportPath(const char* name) {
    std::string folder = CModuleConfiguration::Instance()->GetPath("install");
    if (!folder.ends_with('/'))
        folder += '/';
    return CUtility::Format("%s%s", folder, name);
}

constexpr const char* IdfOut = "IDFOut.txt";
constexpr const char* Variations = "variations.txt";

} // namespace

/// The definitions behind the keys of results, looked up once for many sections.
class CFlowCalculator_RainITP::CResultWriter {
public:
    explicit CResultWriter(int savePipe) : m_savesPipe(savePipe != 0) {}

    void Write(const CSectionDataIDF& record) {
        WriteNumber(m_intensity, record, record.m_intensity);
        WriteNumber(m_concentrationTime, record, record.GetConcentrationTime());
        WriteNumber(m_upstreamTime, record, record.m_upstreamTime);
        WriteNumber(m_flowTime, record, record.m_flowTime);
        WriteNumber(m_flow, record, record.m_flow);
        WriteNumber(m_ownArea, record, record.m_ownArea);
        WriteNumber(m_totalArea, record, record.GetEffectiveArea());
        if (m_savesPipe && record.m_pipe)
            CDataRW::Write(m_pipe, record.m_section, CDataBox(record.m_pipe->GetGUID()), nullptr);
    }

private:
    void WriteNumber(const CDataDefinition* key, const CSectionDataIDF& record, double value) {
        m_box.SetDouble(value);
        CDataRW::Write(key, record.m_section, m_box, nullptr);
    }

    CDataBox m_box;
    bool m_savesPipe;
    const CDataDefinition* m_intensity = FindDefinition(FlowKeys::Intensity);
    const CDataDefinition* m_concentrationTime = FindDefinition(FlowKeys::ConcentrationTime);
    const CDataDefinition* m_upstreamTime = FindDefinition(FlowKeys::UpstreamFlowTime);
    const CDataDefinition* m_flowTime = FindDefinition(FlowKeys::SectionFlowTime);
    const CDataDefinition* m_flow = FindDefinition(FlowKeys::RainCurves);
    const CDataDefinition* m_ownArea = FindDefinition(FlowKeys::CorrectedArea);
    const CDataDefinition* m_totalArea = FindDefinition(FlowKeys::CorrectedAreaTotal);
    const CDataDefinition* m_pipe = FindDefinition(FlowKeys::PipeReference);
};

void CFlowCalculator_RainITP::WriteSectionResults(const CSectionDataIDF& record, int savePipe) {
    CResultWriter(savePipe).Write(record);
}

void CFlowCalculator_RainITP::WriteResults(int write, int report, int iteration) {
    if (report != 0) {
        const std::string path = ReportPath(IdfOut);
        if (iteration == 1)
            CReportFile::Remove(path);
        CReportFile file(path);
        if (file.IsOpen()) {
            file.Append(RainReports::MakeIterationTable(m_sectionData, iteration));
            if (file.Close())
                RainTrace::NoteFile(path);
            else
                file.TakeBack();
        }
    }
    if (write == 0)
        return;
    // Each section's values are its own, so that the order of writing is not seen: in the order of the network the
    // columns are written in a row. The records lie elsewhere, in the order of the walk: they are fetched ahead.
    constexpr std::size_t Ahead = 16;
    CResultWriter writer(m_params.m_savePipe);
    for (std::size_t left = m_sectionData.GetCount(); left > 0; --left) {
        if (left > Ahead)
            if (const CRecordList& later = m_sectionData.GetEntered(left - 1 - Ahead).m_value; !later.empty())
                FetchObjectAhead(later.front().get());
        if (const CRecordList& list = m_sectionData.GetEntered(left - 1).m_value; !list.empty())
            writer.Write(*list.front());
    }
}

void CFlowCalculator_RainITP::WriteBestResults() {
    CResultWriter writer(m_params.m_savePipe);
    m_variations.ForEach([&writer](std::string_view /*guid*/, const CVariationData& data) {
        if (data.m_bestIndex != CVariationData::NoBest)
            writer.Write(data.m_best);
    });
}

void CFlowCalculator_RainITP::WriteVariationsFile() {
    const std::string path = ReportPath(Variations);
    CReportFile file(path);
    if (!file.IsOpen())
        return;
    constexpr int Range = 1000;
    double count = 1.0;
    m_variations.ForEach([&count](std::string_view /*guid*/, const CVariationData& data) {
        count += static_cast<double>(data.m_combinations.size());
    });
    auto* const bar = CCoreProgressBar::Instance();
    bar->SaveState();
    bar->Show("variations.txt", 0, Range);
    const bool isWhole = RainReports::WriteVariations(m_variations, [&](std::string_view text, std::uint64_t told) {
        file.Append(text);
        return bar->SetPosition(static_cast<int>(static_cast<double>(told) / count * Range)) != 0;
    });
    bar->RestoreState();
    // Who stops here gets no results, and then there is no account of them either; nor is there half of one where the
    // disk is full.
    if (isWhole && file.Close())
        RainTrace::NoteFile(path);
    else
        file.TakeBack();
}
