// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandRun.h"

#include "apps/cli/Calculators.h"
#include "apps/cli/Checks.h"
#include "apps/cli/EntityChoice.h"
#include "apps/cli/Interrupt.h"
#include "apps/cli/ParameterFile.h"
#include "apps/cli/Project.h"
#include "apps/cli/RainExplanation.h"
#include "apps/cli/RainListing.h"
#include "apps/cli/RunOutcome.h"
#include "apps/cli/ShownText.h"
#include "apps/cli/Table.h"
#include "apps/cli/TerminalDirectionEditor.h"
#include "host/gis_core/RunTrace.h"
#include "host/sewage_calculations/CalculationRun.h"
#include "rain/explain/RainTraceNames.h"

#include <fmt/format.h>

#include <algorithm>
#include <optional>

namespace Cli {

using OLMGis::Data::CDataBox;
using OLMGis::Sewage::CCalculationOutcome;
using OLMGis::Sewage::CCalculationRequest;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::CStoredResult;
using OLMGis::Sewage::enmRunEnd;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Utility::BadWords;
using OLMGis::Utility::Done;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;

namespace {

/// The values of the parameter file, then the words: the later ones win.
Result<std::vector<CFormWord>> GatherWords(const CRunOptions& options, CTerminal& terminal) {
    std::vector<CFormWord> words;
    if (!options.m_parameterFile.empty()) {
        const auto file = CParameterFile::Read(options.m_parameterFile, GetCalculatorKeys(), GetCheckKeys());
        if (!file)
            return file.GetError();
        if (const auto* found = file->FindWords(options.m_calculator))
            words = *found;
        else
            terminal.Note(fmt::format("{} has no values for {}: the form's own are taken", options.m_parameterFile,
                                      options.m_calculator));
    }
    auto typed = ReadFormWords(options.m_words);
    if (!typed)
        return typed.GetError();
    for (CFormWord& word : typed.Value())
        words.push_back(std::move(word));
    return words;
}

Result<CCalculationRequest> MakeRequest(const CRunOptions& options, IFlowCalculator& calculator, CTerminal& terminal) {
    CCalculationRequest request;
    request.m_key = options.m_calculator;
    if (options.m_names.empty())
        return request;
    auto sections = ChooseSections(options.m_names);
    if (!sections)
        return sections.GetError();
    request.m_sections = std::move(sections.Value());
    if (calculator.IsWholeNetworkCalculator() != 0)
        terminal.Note(fmt::format("{} walks the whole network, whatever --names says", options.m_calculator));
    return request;
}

/// The pairs of a preview: labels on the left, numbers behind them.
void PrintReport(std::ostream& results, const CReport& report) {
    CTable table;
    table.AddColumn("");
    table.AddColumn("", CTable::enmAlign::Right);
    for (const auto& [label, value] : report)
        table.AddRow({value.empty() ? label : label + ":", value});
    table.Print(results);
}

/// An error of a choice of sections, under the option that made the choice.
Error InPlaceOf(const std::string& usual, const std::string& option, const Error& error) {
    const bool isNamed = error.message.compare(0, usual.size(), usual) == 0;
    return Error{error.kind, isNamed ? option + error.message.substr(usual.size()) : option + ": " + error.message};
}

/// What is told of a rain run section by section; idle with other calculators.
class CRainReport {
public:
    explicit CRainReport(const CRunOptions& options)
        : m_options(options), m_isRain(options.m_calculator == RainCalculator) {}

    /// Sees that the words fit the calculator, and opens the trace. BadWords where they don't.
    Status Begin() {
        for (const auto& [isGiven, word] :
             {std::pair{!m_options.m_format.empty(), "--format"}, std::pair{!m_options.m_explain.empty(), "--explain"},
              std::pair{m_options.m_wantsIdfTable, "--idf-table"}})
            if (isGiven && !m_isRain)
                return BadWords(fmt::format("{}: found the calculator {}, expected {}: no other tells of its sections",
                                            word, m_options.m_calculator, RainCalculator));
        if (!m_isRain)
            return Done{};
        if (!m_options.m_explain.empty()) {
            if (m_options.m_format == "csv")
                return BadWords("--format: found csv with --explain, expected table or json: a sheet is no table");
            const auto sections = ChooseSections({m_options.m_explain});
            if (!sections)
                return InPlaceOf("--names", "--explain", sections.GetError());
            if (sections->size() != 1)
                return BadWords(fmt::format("--explain: found {}, expected one", Count(sections->size(), "section")));
            m_section = sections->front();
            m_trace.SetDetailOf(m_section->GetGuid());
        }
        if (m_options.m_wantsIdfTable)
            m_trace.Request(RainTrace::IterationTable);
        m_scope.emplace(m_trace);
        return Done{};
    }

    /// The run has ended: nothing more is noted.
    void End(CTerminal& terminal, bool isFinished) {
        m_scope.reset();
        TellOfRain(terminal, m_trace);
        if (!m_options.m_wantsIdfTable || !isFinished || HasWritten(RainTrace::IterationTable))
            return;
        terminal.Warn(HasWritten("variations.txt")
                          ? "IDFOut.txt was not written: a search computes each section many times; variations.txt "
                            "tells of all of them"
                          : "IDFOut.txt was not written: the folder of the user's files does not take it");
    }

    /// The results; false where the usual summary is to follow.
    bool Print(std::ostream& results, CTerminal& terminal) const {
        if (!m_isRain)
            return false;
        const bool isJson = m_options.m_format == "json";
        if (!m_section) {
            PrintRainSections(results, m_trace, m_options.m_format);
            const bool isTable = !isJson && m_options.m_format != "csv";
            if (isTable)
                results << '\n';
            return !isTable;
        }
        const CRainExplanation explanation = ExplainRain(m_trace, m_section);
        if (explanation.IsEmpty()) {
            terminal.Warn(
                OnOneLine(fmt::format("section {} got no results: there is nothing to explain", m_section->GetName())));
            if (isJson)
                results << "null\n";
        } else if (isJson)
            PrintRainExplanationAsJson(results, explanation);
        else
            PrintRainSheet(results, explanation);
        return true;
    }

private:
    /// Whether the run wrote a file of that name.
    bool HasWritten(std::string_view name) const {
        const auto* const files = m_trace.FindTable(RainTrace::Files);
        return files != nullptr && std::any_of(files->m_rows.begin(), files->m_rows.end(),
                                               [name](const auto& row) { return row.m_name.ends_with(name); });
    }

    const CRunOptions& m_options;
    bool m_isRain;
    boost::shared_ptr<OLMGis::Topology::CSection> m_section;
    OLMGis::Utility::CRunTrace m_trace;
    std::optional<OLMGis::Utility::CRunTraceScope> m_scope;
};

} // namespace

CVerbResult RunCalculator(const CRunOptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculator = FindCalculator(options.m_calculator);
    if (!calculator)
        return calculator.GetError();
    if (options.m_isPreview && calculator.Value()->IsPreviewAvailable() == 0)
        return BadWords(fmt::format("--preview: the calculator {} has none", options.m_calculator));
    auto words = GatherWords(options, terminal);
    if (!words)
        return words.GetError();
    auto request = MakeRequest(options, *calculator.Value(), terminal);
    if (!request)
        return request.GetError();
    CRainReport rain(options);
    if (const Status begun = rain.Begin(); !begun)
        return begun.GetError();
    CReport report;
    if (options.m_isPreview)
        request->m_showPreview = [&report](std::string_view /*title*/, const CReport& shown) {
            report = shown;
            return 0;
        };

    CWordFormEditor editor(std::move(words.Value()));
    const OLMGis::Topology::CFormEditorScope scope(editor);
    CTerminalDirectionEditor directions(terminal);
    const OLMGis::Sewage::CDirectionEditorScope directionScope(directions);
    const auto outcome = OLMGis::Sewage::RunCalculation(request.Value());
    if (!outcome)
        return outcome.GetError();
    rain.End(terminal, outcome->HasStored());
    if (const Status ended = CheckEnd(outcome.Value(), editor); !ended)
        return ended.GetError();
    for (const std::string& tag : editor.GetOutOfForce())
        terminal.Note(fmt::format("{} is out of force with these values; it was set all the same", tag));
    const bool hasResults = options.m_isPreview || outcome->HasStored();
    // What reads a list finds one, be it empty.
    const bool wantsList = options.m_format == "json" || options.m_format == "csv";
    // A run without results still leaves the parameters that were entered on the sections.
    if (!hasResults && !outcome->m_hasChanges) {
        terminal.Tell("nothing was stored");
        if (wantsList)
            rain.Print(results, terminal);
        return enmExitCode::NothingStored;
    }
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    if (options.m_isPreview)
        PrintReport(results, report);
    else if ((hasResults || wantsList) && !rain.Print(results, terminal))
        PrintOutcome(results, *calculator.Value(), outcome.Value());
    results.flush();
    terminal.Tell(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output),
                              options.m_isPreview || !hasResults ? "parameters saved, no flow stored" : "saved"));
    return hasResults ? enmExitCode::Done : enmExitCode::NothingStored;
}

} // namespace Cli
