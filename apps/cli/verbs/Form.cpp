// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/input/Calculators.h"
#include "apps/cli/input/Project.h"
#include "apps/cli/input/RegistryHelp.h"
#include "apps/cli/shell/OutputFile.h"
#include "apps/cli/verbs/Verbs.h"
#include "reports/FormListing.h"

#include <fmt/format.h>

#include <filesystem>
#include <memory>

namespace Cli {

using OLMGis::Topology::CPropertiesEx;
using OLMGis::Utility::Done;
using OLMGis::Utility::Status;

namespace {

struct COptions {
    std::string m_project;
    std::string m_calculator;
    std::vector<std::string> m_values; ///< TAG=VALUE
    std::string m_template;            ///< file to write; empty to show the form
    bool m_replaces = false;
    CFormatOption m_format;
};

Status WriteTemplate(const COptions& options, const CPropertiesEx& form) {
    std::error_code error;
    const auto folder =
        std::filesystem::weakly_canonical(std::filesystem::absolute(options.m_template, error).parent_path(), error);
    return WriteOutput({options.m_template, options.m_replaces}, [&](std::ostream& stream) -> Status {
        Reports::PrintParameterTemplate(stream, options.m_calculator, form, folder);
        return Done{};
    });
}

CVerbResult ShowForm(const COptions& options, CTerminal& terminal, std::ostream& results) {
    auto values = ReadFormArguments(options.m_values);
    if (!values)
        return values.GetError();
    const auto project = CProject::Open(options.m_project, terminal);
    if (!project)
        return project.GetError();
    if (const auto loaded = project.Value()->LoadModule(); !loaded)
        return loaded.GetError();
    const auto calculator = FindCalculator(options.m_calculator);
    if (!calculator)
        return calculator.GetError();
    const auto checkTemplate = [&]() -> Status {
        return options.m_template.empty() ? Status(Done{})
                                          : project.Value()->CheckExport({options.m_template, options.m_replaces});
    };
    if (const Status isFree = checkTemplate(); !isFree)
        return isFree.GetError();
    const auto checkFile = [&](const std::string& read) {
        project.Value()->Reads(read);
        return checkTemplate();
    };
    const auto run = PlanRun(calculator.Value(), std::move(values.Value()), options.m_project, checkFile, terminal);
    if (!run)
        return run.GetError();
    static const CPropertiesEx none;
    const CPropertiesEx& form = run->m_parameters->m_properties ? *run->m_parameters->m_properties : none;
    if (!options.m_template.empty()) {
        if (const Status written = WriteTemplate(options, form); !written)
            return written.GetError();
        return enmExitCode::Done;
    }
    Print(results,
          Reports::MakeFormListing(
              fmt::format("{}  {}", calculator.Value()->GetKey(), calculator.Value()->GetCalculatorName()), form),
          options.m_format.Get());
    return enmExitCode::Done;
}

} // namespace

CVerb MakeForm() {
    const auto options = std::make_shared<COptions>();
    return CVerb("form", "PROJECT CALCULATOR [TAG=VALUE...] [options]", "Show the input form of a calculator")
        .Project(options->m_project)
        .Argument("CALCULATOR", options->m_calculator, "Key of the calculator")
        .OptionalArguments("TAG=VALUE", options->m_values, "Values to enter before the form is shown")
        .Formats(options->m_format, {"table", "csv", "json"}, "Default: table")
        .Option(
            "--template", options->m_template, "FILE.json",
            "Write a parameter file with every tag, its label, unit and\nrange, in place of showing the form; \"-\" "
            "for standard output")
        .Replace(options->m_replaces)
        .Examples({"drenova form town.gpkg 02_ADDITIONAL FC_ADD_FW_OPTION=2",
                   "drenova form town.gpkg 01_WASTE_PERCENT --template design.json"})
        .Notes("A tag and its alias name the same field, in TAG=VALUE and in parameter files. In a parameter file\n"
               "members whose names begin with \"_\" are remarks: --template writes what is known of each field there.")
        .NotesFrom(ListCalculatorsForHelp)
        .Runs([options](CTerminal& terminal, std::ostream& results) { return ShowForm(*options, terminal, results); });
}

} // namespace Cli
