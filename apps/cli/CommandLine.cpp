// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/CommandLine.h"

#include "apps/cli/ShownText.h"
#include "apps/cli/Verbs.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>

#include <algorithm>
#include <memory>
#include <vector>

namespace Cli {

using OLMGis::Utility::BadWords;
using OLMGis::Utility::Error;
using OLMGis::Utility::Result;

namespace {

/// Help as this program lays it out: one line of usage per verb in place of the library's own.
class CHelpFormatter final : public CLI::Formatter {
public:
    std::string make_usage(const CLI::App* app, std::string /*name*/) const override {
        if (app->get_parent() == nullptr)
            return "\nusage: drenova VERB [words and options]\n       drenova VERB --help\n";
        const std::string usage = get_label("usage of " + app->get_name());
        return fmt::format("\nusage: drenova {} {}\n", app->get_name(), usage);
    }
};

/// Words that a mistyped one may have been meant for: options for a word with a dash, else verbs.
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
    return BadWords(fmt::format("{}\n(drenova {}--help tells what can be said)", message,
                                &chosen == &program ? "" : chosen.get_name() + " "));
}

Error MakeUnknownWordError(const CLI::App& program, const std::string& word) {
    const CLI::App& chosen = GetChosen(program);
    const bool isOption = word.size() > 1 && word.front() == '-';
    const std::string name = isOption ? word.substr(0, word.find('=')) : word;
    const char* const expected = isOption ? "an option" : &chosen == &program ? "a verb" : "nothing more";
    const auto candidates =
        isOption || &chosen == &program ? GetCandidates(chosen, isOption) : std::vector<std::string>();
    return MakeError(program,
                     fmt::format("found \"{}\", expected {}{}", OnOneLine(word), expected, Suggest(name, candidates)));
}

/// What the library found wrong, in the program's words. An unknown word explains what is missing, so it comes first.
Error Explain(const CLI::App& program, const CLI::ParseError& error) {
    if (const auto unknown = program.remaining(true); !unknown.empty())
        return MakeUnknownWordError(program, unknown.front());
    const std::string text = error.what();
    if (dynamic_cast<const CLI::ArgumentMismatch*>(&error) != nullptr)
        return MakeError(program, fmt::format("{}: expected a value behind it", text.substr(0, text.find(':'))));
    return MakeError(program, text);
}

/// The words as the library takes them, last first. "help VERB" is another way to say "VERB --help".
std::vector<std::string> GatherWords(int argc, const char* const* argv) {
    std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
    if (!words.empty() && words.front() == "help") {
        words.erase(words.begin());
        words.emplace_back("--help");
    }
    std::reverse(words.begin(), words.end());
    return words;
}

} // namespace

Result<CParsedWords> ParseCommandLine(int argc, const char* const* argv) {
    CParsedWords parsed;
    CLI::App program("Design of sewage and storm-water networks", "drenova");
    program.formatter(std::make_shared<CHelpFormatter>());
    program.get_formatter()->column_width(28);
    program.get_formatter()->label("Positionals", "Words");
    program.option_defaults()->always_capture_default(false);
    program.set_help_flag("-h,--help", "this help");
    program.set_version_flag("--version", "drenova " DRENOVA_VERSION, "the version");
    program.add_flag("--quiet", parsed.m_terminal.m_isQuiet, "only errors and alerts on standard error");
    program.add_flag("--verbose", parsed.m_terminal.m_isVerbose, "details on standard error");
    program.require_subcommand(0, 1);
    program.allow_extras();
    program.footer("Results go to standard output, everything else to standard error.\n\n"
                   "Exit codes:\n"
                   "  0    done; for a run: values were stored\n"
                   "  1    ran to its end and stored nothing\n"
                   "  2    wrong words on the command line; nothing was touched\n"
                   "  3    an input file or value is bad\n"
                   "  4    the system refused (no such file, no permission, disk full)\n"
                   "  5    a calculation stopped with an alert; nothing was stored\n"
                   "  130  interrupted (Ctrl+C); the project is as it was");
    AddVerbs(program, parsed);
    try {
        program.parse(GatherWords(argc, argv));
    } catch (const CLI::CallForHelp&) {
        if (const auto unknown = program.remaining(); !unknown.empty())
            return MakeUnknownWordError(program, unknown.front());
        parsed.m_text = program.help();
        return parsed;
    } catch (const CLI::CallForVersion&) {
        parsed.m_text = "drenova " DRENOVA_VERSION "\n";
        return parsed;
    } catch (const CLI::ParseError& error) {
        return Explain(program, error);
    }
    if (const auto unknown = program.remaining(true); !unknown.empty())
        return MakeUnknownWordError(program, unknown.front());
    if (!parsed.m_command)
        return MakeError(program, "found no words, expected a verb");
    return parsed;
}

} // namespace Cli
