// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandLine.h"

#include "apps/cli/verbs/Verbs.h"
#include "reports/ShownText.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace Cli {

using OLMGis::Utility::BadArguments;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;

namespace {

/// Help with one line of usage per verb in place of the library's own.
class CHelpFormatter final : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App* app, std::string /*name*/) const override {
        if (app->get_parent() == nullptr)
            return "\nUsage: drenova VERB [arguments and options]\n       drenova VERB --help\n";
        const std::string usage = get_label("usage of " + app->get_name());
        return fmt::format("\nUsage: drenova {} {}\n", app->get_name(), usage);
    }
};

/// A check of the library: an empty text for a good value, else what is wrong with it.
std::string CheckChoice(const std::string& text, const std::vector<std::string>& choices) {
    if (std::find(choices.begin(), choices.end(), text) != choices.end())
        return {};
    return fmt::format("found \"{}\", expected one of {}", Reports::OnOneLine(text), fmt::join(choices, ", "));
}

CLI::Option* AddText(CLI::App& app, const CParameter& parameter) {
    CLI::Option* const option = app.add_option(parameter.m_name, *parameter.m_text, parameter.m_help);
    const bool isArgument = parameter.m_kind == CParameter::enmKind::Argument;
    std::string shape = isArgument                    ? " "
                        : parameter.m_choices.empty() ? parameter.m_shape
                                                      : fmt::format("{}", fmt::join(parameter.m_choices, "|"));
    option->option_text(shape);
    if (!parameter.m_choices.empty())
        option->check([choices = parameter.m_choices](const std::string& text) { return CheckChoice(text, choices); });
    else if (!isArgument)
        option->check([shape = std::move(shape)](const std::string& text) {
            return text.empty() ? fmt::format("found \"\", expected {}", shape) : std::string();
        });
    return option;
}

void AddParameter(CLI::App& app, const CParameter& parameter) {
    using enmKind = CParameter::enmKind;
    switch (parameter.m_kind) {
    case enmKind::Argument:
    case enmKind::Option:
        AddText(app, parameter)->required(parameter.m_isRequired);
        break;
    case enmKind::Rest:
        app.add_option(parameter.m_name, *parameter.m_texts, parameter.m_help)
            ->required(parameter.m_isRequired)
            ->option_text(" ");
        break;
    case enmKind::Repeated:
    case enmKind::Several:
        app.add_option(parameter.m_name, *parameter.m_texts, parameter.m_help)
            ->allow_extra_args(parameter.m_kind == enmKind::Several)
            ->option_text(parameter.m_shape);
        break;
    case enmKind::Flag:
        app.add_flag(parameter.m_name, *parameter.m_flag, parameter.m_help);
        break;
    }
}

/// The library lists the excluded options in the help unless another text is given.
void AddExclusion(CLI::App& app, const std::string& name, const std::string& other) {
    app.get_option(name)->excludes(app.get_option(other));
    for (const std::string& flag : {name, other})
        if (app.get_option(flag)->get_option_text().empty())
            app.get_option(flag)->option_text(" ");
}

void AddAnswers(CLI::App& app, CParsedArguments& parsed) {
    const auto answer = [&parsed](bool value) {
        return [&parsed, value](std::int64_t) { parsed.m_terminal.m_answer = value; };
    };
    app.add_flag_function("--yes", answer(true), "Answer all questions with yes");
    app.add_flag_function("--no", answer(false), "Answer all questions with no");
    AddExclusion(app, "--yes", "--no");
}

void AddLoudness(CLI::App& app, CParsedArguments& parsed) {
    app.add_flag("--quiet", parsed.m_terminal.m_isQuiet, "Print only errors and alerts to standard error");
    app.add_flag("--verbose", parsed.m_terminal.m_isVerbose, "Print details to standard error");
}

void AddVerb(CLI::App& program, const CVerb& verb, CParsedArguments& parsed) {
    CLI::App* const app = program.add_subcommand(verb.GetName(), verb.GetSummary());
    app->allow_extras();
    app->group("Verbs");
    app->get_formatter()->label("usage of " + verb.GetName(), verb.GetUsage());
    for (const CParameter& parameter : verb.GetParameters())
        AddParameter(*app, parameter);
    for (const auto& [name, other] : verb.GetExclusions())
        AddExclusion(*app, name, other);
    if (verb.AsksQuestions())
        AddAnswers(*app, parsed);
    AddLoudness(*app, parsed);
    app->callback([&parsed, run = verb.GetCommand()] { parsed.m_command = run; });
}

/// What a mistyped argument may have been meant for: options for one with a dash, else verbs.
std::vector<std::string> GetCandidates(const CLI::App& app, bool isOption) {
    std::vector<std::string> candidates;
    if (isOption)
        for (const CLI::Option* option : app.get_options())
            for (const std::string& name : option->get_lnames())
                candidates.push_back("--" + name);
    else
        for (const CLI::App* verb : app.get_subcommands(nullptr))
            candidates.push_back(verb->get_name());
    return candidates;
}

const CLI::App& GetChosen(const CLI::App& program) {
    const auto verbs = program.get_subcommands();
    return verbs.empty() ? program : *verbs.back();
}

Error MakeError(const CLI::App& program, const std::string& message) {
    const CLI::App& chosen = GetChosen(program);
    return BadArguments(
        fmt::format("{}\nFor help: drenova {}--help", message, &chosen == &program ? "" : chosen.get_name() + " "));
}

Error MakeUnknownArgumentError(const CLI::App& program, const std::string& argument) {
    const CLI::App& chosen = GetChosen(program);
    const bool isOption = argument.size() > 1 && argument.front() == '-';
    const std::string name = isOption ? argument.substr(0, argument.find('=')) : argument;
    const char* const expected = &chosen == &program ? "a verb" : "nothing more";
    const auto candidates =
        isOption || &chosen == &program ? GetCandidates(chosen, isOption) : std::vector<std::string>();
    const std::string found = isOption
                                  ? fmt::format("unknown option {}", Reports::OnOneLine(name))
                                  : fmt::format("found \"{}\", expected {}", Reports::OnOneLine(argument), expected);
    return MakeError(program, found + Reports::Suggest(name, candidates));
}

/// What the library found wrong. An unknown argument often explains a missing one, so it comes first.
Error Explain(const CLI::App& program, const CLI::ParseError& error) {
    if (const auto unknown = program.remaining(true); !unknown.empty())
        return MakeUnknownArgumentError(program, unknown.front());
    const std::string text = error.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return MakeError(program, fmt::format("{}: expected a value after it", text.substr(0, text.find(':'))));
    return MakeError(program, text);
}

/// The arguments as the library takes them, last first. "help VERB" is the same as "VERB --help".
std::vector<std::string> GatherArguments(int argc, const char* const* argv) {
    std::vector<std::string> arguments(argv + std::min(argc, 1), argv + argc);
    if (!arguments.empty() && arguments.front() == "help") {
        arguments.erase(arguments.begin());
        arguments.emplace_back("--help");
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

void SetUp(CLI::App& program, CParsedArguments& parsed) {
    program.formatter(std::make_shared<CHelpFormatter>());
    program.get_formatter()->column_width(28);
    program.get_formatter()->label("Positionals", "Arguments");
    program.option_defaults()->always_capture_default(false);
    program.set_help_flag("-h,--help", "Print this help");
    program.set_version_flag("--version", "drenova " DRENOVA_VERSION, "Print the version");
    AddLoudness(program, parsed);
    program.require_subcommand(0, 1);
    program.allow_extras();
    program.footer("Results go to standard output, everything else to standard error.\n\n"
                   "Exit codes:\n"
                   "  0    done; for a run: values were stored\n"
                   "  1    ran to its end and stored nothing; of a strict check: found something\n"
                   "  2    invalid arguments; nothing was changed\n"
                   "  3    an input file contains something invalid\n"
                   "  4    the system refused (no such file, no permission, disk full, an output that exists)\n"
                   "  5    a calculation stopped with an alert; nothing was stored\n"
                   "  130  interrupted (Ctrl+C); the project is unchanged\n\n"
                   "Examples:\n"
                   "  drenova import town.geojson -o town.gpkg\n"
                   "  drenova design town.gpkg --params design.json -o designed.gpkg\n"
                   "  drenova run --help");
}

std::string MakeHelp(CLI::App& program, const std::vector<CVerb>& verbs) {
    const CLI::App& chosen = GetChosen(program);
    for (const CVerb& verb : verbs)
        if (&chosen != &program && verb.GetName() == chosen.get_name())
            program.get_subcommand(verb.GetName())->footer(verb.MakeFooter());
    return program.help();
}

} // namespace

Result<CParsedArguments> ParseCommandLine(int argc, const char* const* argv) {
    CParsedArguments parsed;
    CLI::App program("Design of sewage and storm-water networks", "drenova");
    SetUp(program, parsed);
    const std::vector<CVerb> verbs = MakeVerbs();
    for (const CVerb& verb : verbs)
        AddVerb(program, verb, parsed);
    try {
        program.parse(GatherArguments(argc, argv));
    } catch (const CLI::CallForHelp&) {
        if (const auto unknown = program.remaining(); !unknown.empty())
            return MakeUnknownArgumentError(program, unknown.front());
        parsed.m_text = MakeHelp(program, verbs);
        return parsed;
    } catch (const CLI::CallForVersion&) {
        parsed.m_text = "drenova " DRENOVA_VERSION "\n";
        return parsed;
    } catch (const CLI::ParseError& error) {
        return Explain(program, error);
    }
    if (const auto unknown = program.remaining(true); !unknown.empty())
        return MakeUnknownArgumentError(program, unknown.front());
    if (!parsed.m_command)
        return MakeError(program, "found no arguments, expected a verb");
    return parsed;
}

} // namespace Cli
