// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "apps/cli/shell/ExitCode.h"
#include "apps/cli/shell/OutputFile.h"
#include "apps/cli/shell/Terminal.h"
#include "host/gis_core/Result.h"
#include "reports/Listing.h"

#include <functional>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

namespace Cli {

/// How a verb ended: an exit code, or an error that ToExitCode turns into one.
using CVerbResult = OLMGis::Utility::Result<enmExitCode>;

/// Runs a verb with the options that the parser has filled. Results go to the stream, everything else to the terminal.
using CCommand = std::function<CVerbResult(CTerminal& terminal, std::ostream& results)>;

/// One argument or option of a verb, and the variable that gets its text.
struct CParameter {
    enum class enmKind {
        Argument, ///< one text at its place
        Rest,     ///< all texts from its place on
        Option,   ///< --name TEXT
        Repeated, ///< --name TEXT, any number of times
        Several,  ///< --name TEXT TEXT ...
        Flag,     ///< --name
    };
    enmKind m_kind;
    std::string m_name;  ///< as in PROJECT, "--crs", "-o,--output"
    std::string m_shape; ///< what follows an option, as in EPSG:n
    std::string m_help;  ///< lines without the last line end
    bool m_isRequired = false;
    std::vector<std::string> m_choices{};        ///< accepted texts; empty for any
    std::string* m_text = nullptr;               ///< of Argument and Option
    std::vector<std::string>* m_texts = nullptr; ///< of Rest, Repeated and Several
    bool* m_flag = nullptr;                      ///< of Flag
};

/// The format in which a verb prints its listing.
struct CFormatOption {
    std::string m_format = "table"; ///< one of the formats of the verb
    bool m_isJson = false;          ///< --json, the short form of --format json

    Reports::enmFormat Get() const {
        return m_isJson ? Reports::enmFormat::Json : Reports::FindFormat(m_format).value_or(Reports::enmFormat::Text);
    }
};

/// The description of one verb: what the command line may contain, its help, and what runs. The variables that the
/// parameters fill live in the closure of the command. The option parser is out of sight here: CommandLine.cpp alone
/// includes it.
class CVerb {
public:
    /// usage: arguments and options after the verb. summary: imperative, no full stop.
    CVerb(std::string name, std::string usage, std::string summary)
        : m_name(std::move(name)), m_usage(std::move(usage)), m_summary(std::move(summary)) {}

    CVerb& Argument(std::string name, std::string& value, std::string help);
    CVerb& OptionalArgument(std::string name, std::string& value, std::string help);
    CVerb& Arguments(std::string name, std::vector<std::string>& values, std::string help);
    CVerb& OptionalArguments(std::string name, std::vector<std::string>& values, std::string help);
    CVerb& ArgumentChoice(std::string name, std::string& value, std::vector<std::string> choices, std::string help);

    /// An option's text may not be empty: a variable that a script forgot to set is not the same as no option, and
    /// without its OUT.gpkg a run would overwrite the project.
    CVerb& Option(std::string name, std::string& value, std::string shape, std::string help);
    CVerb& RequiredOption(std::string name, std::string& value, std::string shape, std::string help);
    CVerb& Choice(std::string name, std::string& value, std::vector<std::string> choices, std::string help);
    CVerb& RequiredChoice(std::string name, std::string& value, std::vector<std::string> choices, std::string help);
    CVerb& Repeated(std::string name, std::vector<std::string>& values, std::string shape, std::string help);
    CVerb& Several(std::string name, std::vector<std::string>& values, std::string shape, std::string help);
    CVerb& Flag(std::string name, bool& value, std::string help);

    /// Two options of which at most one may be given.
    CVerb& Exclude(std::string name, std::string other);

    /// Options that several verbs have.
    CVerb& Project(std::string& value) { return Argument("PROJECT", value, "Project file (.gpkg)"); }
    CVerb& On(std::string& value);
    CVerb& Names(std::vector<std::string>& values);
    CVerb& SaveAs(COutputOption& value);
    CVerb& Output(COutputOption& value, std::string shape, std::string help);
    CVerb& Replace(bool& value);
    CVerb& Formats(CFormatOption& value, std::vector<std::string> formats, std::string help);

    /// --yes and --no answer the questions of a run; the parser passes them to the terminal.
    CVerb& Questions();

    /// Complete command lines, each with "drenova" in front.
    CVerb& Examples(std::vector<std::string> lines);

    /// Further text of the help, below the examples; lines of at most 100 characters.
    CVerb& Notes(std::string text);

    /// Text of the help that takes time to make, such as a list from the registries: made when this help is printed.
    CVerb& NotesFrom(std::function<std::string()> make);

    CVerb& Runs(CCommand command);

    const std::string& GetName() const { return m_name; }
    const std::string& GetUsage() const { return m_usage; }
    const std::string& GetSummary() const { return m_summary; }
    const std::vector<CParameter>& GetParameters() const { return m_parameters; }
    const std::vector<std::pair<std::string, std::string>>& GetExclusions() const { return m_exclusions; }
    bool AsksQuestions() const { return m_asksQuestions; }
    const CCommand& GetCommand() const { return m_command; }

    /// Examples and notes.
    std::string MakeFooter() const;

private:
    CVerb& Add(CParameter parameter);

    std::string m_name;
    std::string m_usage;
    std::string m_summary;
    std::vector<CParameter> m_parameters;
    std::vector<std::pair<std::string, std::string>> m_exclusions;
    std::vector<std::string> m_examples;
    std::string m_notes;
    std::function<std::string()> m_makeNotes;
    bool m_asksQuestions = false;
    CCommand m_command;
};

} // namespace Cli
