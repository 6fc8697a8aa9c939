// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"
#include "apps/cli/input/NamedEntities.h"
#include "apps/cli/input/OutdatedReading.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/RegistryHelp.h"
#include "apps/cli/shell/TerminalDirectionEditor.h"
#include "apps/cli/verbs/Verbs.h"
#include "host/gis_core/RunTrace.h"
#include "host/gis_core/ShortName.h"
#include "host/sewage_calculations/CalculationRun.h"
#include "rain/explain/RainTraceNames.h"
#include "reports/OutdatedListing.h"
#include "reports/RainExplanation.h"
#include "reports/RainListing.h"
#include "reports/RunOutcome.h"
#include "reports/RunWarnings.h"
#include "reports/ShownText.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <string_view>

namespace Cli {

using OLMGis::Sewage::CCalculationRequest;
using OLMGis::Sewage::CReport;
using OLMGis::Sewage::IFlowCalculator;
using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Done;
using OLMGis::Utility::Result;
using OLMGis::Utility::Status;
using Reports::RainCalculator;

namespace {

struct COptions {
    std::string m_project;
    std::string m_calculator;
    std::vector<std::string> m_values; ///< TAG=VALUE; they win over the parameter file
    std::string m_parameterFile;       ///< empty for none
    bool m_isLast = false;             ///< begins with the values of the last run
    std::vector<std::string> m_names;  ///< sections by name or GUID; none for all
    bool m_isPreview = false;
    bool m_isStrict = false;
    COutputOption m_output;
    CFormatOption m_format;
    std::string m_explain;        ///< section to explain in place of listing all; empty for none
    bool m_wantsIdfTable = false; ///< IDFOut.txt as well

    Reports::enmFormat GetFormat() const { return m_format.Get(); }
};

/// The values of the last run, of the parameter file, and the arguments: the later ones win.
Result<std::vector<CFormValue>> GatherValues(const COptions& options, CTerminal& terminal) {
    std::vector<CFormValue> values;
    if (options.m_isLast)
        values = GetLastValues(options.m_calculator, options.m_project);
    if (options.m_isLast && values.empty())
        return BadArguments(fmt::format("--last: {} has no earlier run of {} that stored results", options.m_project,
                                        options.m_calculator));
    if (!options.m_parameterFile.empty()) {
        const auto file = ReadParameterFile(options.m_parameterFile);
        if (!file)
            return file.GetError();
        if (const auto* found = file->FindValues(options.m_calculator))
            values.insert(values.end(), found->begin(), found->end());
        else
            terminal.Note(fmt::format("{} has no values for {}: the defaults of the form are used",
                                      options.m_parameterFile, options.m_calculator));
    }
    auto entered = ReadFormArguments(options.m_values);
    if (!entered)
        return entered.GetError();
    for (CFormValue& value : entered.Value())
        values.push_back(std::move(value));
    return values;
}

Result<CCalculationRequest> MakeRequest(const COptions& options, IFlowCalculator& calculator, CTerminal& terminal) {
    CCalculationRequest request;
    request.m_key = options.m_calculator;
    if (options.m_names.empty())
        return request;
    auto sections = ChooseSections("--names", options.m_names);
    if (!sections)
        return sections.GetError();
    request.m_sections = std::move(sections.Value());
    if (calculator.IsWholeNetworkCalculator() != 0)
        terminal.Note(fmt::format("{} calculates the whole network and ignores --names", options.m_calculator));
    return request;
}

/// The sections of a rain run, or the explanation of one; idle with other calculators.
class CRainReport {
public:
    explicit CRainReport(const COptions& options)
        : m_options(options), m_isRain(options.m_calculator == RainCalculator) {}

    /// Checks that the options fit the calculator, and opens the trace. BadArguments where they do not.
    Status Begin() {
        for (const auto& [isGiven, option] : {std::pair{!m_options.m_explain.empty(), "--explain"},
                                              std::pair{m_options.m_wantsIdfTable, "--idf-table"}})
            if (isGiven && !m_isRain)
                return BadArguments(fmt::format("{}: found the calculator {}, expected {}", option,
                                                m_options.m_calculator, RainCalculator));
        if (!m_isRain)
            return Done{};
        if (const Status chosen = ChooseExplained(); !chosen)
            return chosen;
        if (m_options.m_wantsIdfTable)
            m_trace.Request(RainTrace::IterationTable);
        m_scope.emplace(m_trace);
        return Done{};
    }

    /// The run has ended: nothing more is noted.
    void End(CTerminal& terminal, bool isFinished) {
        m_scope.reset();
        terminal.Show(Reports::GetRainRemarks(m_trace));
        if (m_options.m_wantsIdfTable && isFinished && HasWritten("variations.txt"))
            terminal.Warn("IDFOut.txt was not written: a search calculates each section many times; variations.txt "
                          "contains all of them");
    }

    /// Prints the results; false where the usual summary is to follow.
    bool Print(std::ostream& results, CTerminal& terminal) const {
        if (!m_isRain)
            return false;
        const Reports::enmFormat format = m_options.m_format.Get();
        if (!m_section) {
            Reports::Print(results, Reports::CListing(Reports::MakeRainTable(m_trace)), format);
            if (format == Reports::enmFormat::Text)
                results << '\n';
            return format != Reports::enmFormat::Text;
        }
        Reports::CRainExplanation explanation = Reports::ExplainRain(m_trace, m_section);
        if (explanation.IsEmpty())
            terminal.Warn(Reports::OnOneLine(fmt::format("section {} has no results: there is nothing to explain",
                                                         OLMGis::Utility::ShortName(m_section->GetName()))));
        Reports::Print(results, Reports::MakeRainListing(std::move(explanation)), format);
        return true;
    }

private:
    Status ChooseExplained() {
        if (m_options.m_explain.empty())
            return Done{};
        if (m_options.m_format.Get() == Reports::enmFormat::Csv)
            return BadArguments("--format: found csv with --explain, expected table or json: a sheet is no table");
        const auto sections = ChooseSections("--explain", {m_options.m_explain});
        if (!sections)
            return sections.GetError();
        if (sections->size() != 1)
            return BadArguments(
                fmt::format("--explain: found {}, expected one", Reports::Count(sections->size(), "section")));
        m_section = sections->front();
        m_trace.SetDetailOf(m_section->GetGuid());
        return Done{};
    }

    /// Whether the run wrote a file of that name.
    bool HasWritten(std::string_view name) const {
        const auto* const files = m_trace.FindTable(RainTrace::Files);
        return files != nullptr && std::any_of(files->m_rows.begin(), files->m_rows.end(),
                                               [name](const auto& row) { return row.m_name.ends_with(name); });
    }

    const COptions& m_options;
    bool m_isRain;
    boost::shared_ptr<OLMGis::Topology::CSection> m_section;
    OLMGis::Utility::CRunTrace m_trace;
    std::optional<OLMGis::Utility::CRunTraceScope> m_scope;
};

CVerbResult RunCalculator(const COptions& options, CTerminal& terminal, std::ostream& results) {
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const Status loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculator = FindCalculator(options.m_calculator);
    if (!calculator)
        return calculator.GetError();
    if (options.m_isPreview && calculator.Value()->IsPreviewAvailable() == 0)
        return BadArguments(fmt::format("--preview: the calculator {} has none", options.m_calculator));
    if (!options.m_parameterFile.empty())
        project.Value()->Reads(options.m_parameterFile);
    if (const auto isFree = project.Value()->CheckOutput(options.m_output); !isFree)
        return isFree.GetError();
    auto values = GatherValues(options, terminal);
    if (!values)
        return values.GetError();
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

    CArgumentFormEditor editor(std::move(values.Value()));
    editor.SetListing(GetFormCommand(options.m_calculator, options.m_project));
    editor.SetFileCheck([&](const std::string& file) {
        project.Value()->Reads(file);
        return project.Value()->CheckOutput(options.m_output);
    });
    const OLMGis::Topology::CFormEditorScope scope(editor);
    CTerminalDirectionEditor directions(terminal);
    const OLMGis::Sewage::CDirectionEditorScope directionScope(directions);
    const auto outcome = OLMGis::Sewage::RunCalculation(request.Value());
    if (!outcome)
        return outcome.GetError();
    rain.End(terminal, outcome->HasStored());
    if (const Status ended = CheckEnd(outcome.Value(), editor, {options.m_project, options.m_calculator}, terminal);
        !ended)
        return ended.GetError();
    terminal.Show(Reports::MakeOutdatedRemarks(outcome->m_outdated, options.m_project));
    if (options.m_isStrict && !outcome->m_outdated.empty()) {
        terminal.Print("nothing was stored: --strict");
        if (options.m_format.Get() != Reports::enmFormat::Text)
            Print(results, Reports::MakeOutcomeListing(*calculator.Value(), {}), options.GetFormat());
        return enmExitCode::NothingStored;
    }
    terminal.Show(Reports::MakeRunWarnings(options.m_calculator, outcome.Value(), options.m_project));
    for (const std::string& tag : editor.GetOutOfForce())
        terminal.Note(fmt::format("{} has no effect with the other values of the form", tag));
    const bool hasResults = options.m_isPreview || outcome->HasStored();
    // Programs that read a list get one, even an empty one.
    const bool wantsList = options.m_format.Get() != Reports::enmFormat::Text;
    // A run without results still stores the parameters with the sections.
    if (!hasResults && !outcome->m_hasChanges) {
        terminal.Print("nothing was stored");
        if (wantsList && !rain.Print(results, terminal))
            Print(results, Reports::MakeOutcomeListing(*calculator.Value(), outcome.Value()), options.GetFormat());
        return enmExitCode::NothingStored;
    }
    if (options.m_isPreview)
        Print(results, Reports::CListing(Reports::MakePreviewTable(report)), options.GetFormat());
    else if ((hasResults || wantsList) && !rain.Print(results, terminal))
        Print(results, Reports::MakeOutcomeListing(*calculator.Value(), outcome.Value()), options.GetFormat());
    results.flush();
    if (const Status saved = project.Value()->Save(options.m_output); !saved)
        return saved.GetError();
    terminal.Print(fmt::format("{}: {}", project.Value()->GetTarget(options.m_output),
                               options.m_isPreview || !hasResults ? "parameters saved, no flow stored" : "saved"));
    return hasResults ? enmExitCode::Done : enmExitCode::NothingStored;
}

} // namespace

CVerb MakeRun() {
    const auto options = std::make_shared<COptions>();
    return CVerb("run", "PROJECT CALCULATOR [TAG=VALUE...] [options]",
                 "Run a calculator on the network and store its results")
        .Project(options->m_project)
        .Argument("CALCULATOR", options->m_calculator, "Key of the calculator")
        .OptionalArguments("TAG=VALUE", options->m_values, "Values of the form, in any order; \"form\" lists the tags")
        .Option("--params", options->m_parameterFile, "FILE.json", "Parameter file; TAG=VALUE wins over it")
        .Flag("--last", options->m_isLast,
              "Begin with the values of the calculator's last run that\nstored results; file and TAG=VALUE win")
        .Names(options->m_names)
        .Flag("--preview", options->m_isPreview, "Print the report and store no flow")
        .Option("--explain", options->m_explain, "SECTION",
                "001_RAIN_ITP: print the calculation of this section,\npass by pass, in place of all sections")
        .Formats(options->m_format, {"table", "csv", "json"},
                 "Of the results: the sections of 001_RAIN_ITP, else one row\nfor each key; default: table, with "
                 "rounded numbers")
        .Flag("--idf-table", options->m_wantsIdfTable, "001_RAIN_ITP: also write IDFOut.txt")
        .Flag("--strict", options->m_isStrict, StrictHelp)
        .Questions()
        .SaveAs(options->m_output)
        .Examples({"drenova run town.gpkg 01_WASTE_PERCENT BROJ_STANOVNIKA=12000 PERIOD=25",
                   "drenova run town.gpkg 001_RAIN_ITP FILE_PATH=curves.txt FREQUENCY=2 \\",
                   "    \"PIPE_GROUP=Concrete EN 1916 class 135\" --explain MAIN-07",
                   "drenova run town.gpkg 001_RAIN_ITP --last PIPE_FILL=70"})
        .Notes("variations.txt and IDFOut.txt are written to the folder DRENOVA_HOME; the run prints their paths.\n"
               "Exit code: 0 when values were stored, 1 when none were, 5 when the calculation stopped with an alert.")
        .NotesFrom(ListCalculatorsForHelp)
        .Runs([options](CTerminal& terminal, std::ostream& results) {
            return RunCalculator(*options, terminal, results);
        });
}

} // namespace Cli
