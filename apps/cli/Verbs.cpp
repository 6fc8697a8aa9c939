// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/Verbs.h"

#include "apps/cli/CommandAttributes.h"
#include "apps/cli/CommandCalculators.h"
#include "apps/cli/CommandCatalog.h"
#include "apps/cli/CommandCheck.h"
#include "apps/cli/CommandCurves.h"
#include "apps/cli/CommandDesign.h"
#include "apps/cli/CommandDirections.h"
#include "apps/cli/CommandExport.h"
#include "apps/cli/CommandGenerate.h"
#include "apps/cli/CommandHydraulics.h"
#include "apps/cli/CommandImport.h"
#include "apps/cli/CommandInfo.h"
#include "apps/cli/CommandNew.h"
#include "apps/cli/CommandPipe.h"
#include "apps/cli/CommandRun.h"
#include "apps/cli/CommandSettings.h"
#include "apps/cli/CommandSlopes.h"
#include "host/project_io/Formats.h"

#include <CLI/CLI.hpp>
#include <fmt/format.h>
#include <fmt/ranges.h>

#include <algorithm>
#include <memory>

namespace Cli {

using OLMGis::ProjectIo::CFormat;
using OLMGis::ProjectIo::GetExportFormats;
using OLMGis::ProjectIo::GetImportFormats;

namespace {

/// One verb below the program. The option structs live in the closures that run the verb.
class CVerb {
public:
    CVerb(CLI::App& program, CParsedWords& parsed, const std::string& name, const std::string& usage,
          const std::string& summary)
        : m_app(program.add_subcommand(name, summary)), m_parsed(parsed) {
        m_app->allow_extras();
        m_app->group("Verbs");
        m_app->get_formatter()->label("usage of " + name, usage);
    }

    CVerb& Word(const std::string& name, std::string& value, const std::string& help) {
        m_app->add_option(name, value, help)->required()->option_text(" ");
        return *this;
    }
    CVerb& OptionalWord(const std::string& name, std::string& value, const std::string& help) {
        m_app->add_option(name, value, help)->option_text(" ");
        return *this;
    }
    CVerb& Words(const std::string& name, std::vector<std::string>& values, const std::string& help, bool isRequired) {
        m_app->add_option(name, values, help)->required(isRequired)->option_text(" ");
        return *this;
    }
    CVerb& Option(const std::string& name, std::string& value, const std::string& shape, const std::string& help,
                  bool isRequired = false) {
        m_app->add_option(name, value, help)
            ->required(isRequired)
            ->option_text(shape)
            // An empty value, as of a variable that a script forgot to set, is not the same as no option: without its
            // OUT.gpkg a run would overwrite the project.
            ->check([shape](const std::string& word) {
                return word.empty() ? fmt::format("found \"\", expected {}", shape) : std::string();
            });
        return *this;
    }
    CVerb& Choice(const std::string& name, std::string& value, const std::vector<std::string>& choices,
                  const std::string& help, bool isRequired = false) {
        m_app->add_option(name, value, help)
            ->required(isRequired)
            ->option_text(name.front() == '-' ? fmt::format("{}", fmt::join(choices, "|")) : " ")
            ->check([choices](const std::string& word) {
                if (std::find(choices.begin(), choices.end(), word) != choices.end())
                    return std::string();
                return fmt::format("found \"{}\", expected one of {}", word, fmt::join(choices, ", "));
            });
        return *this;
    }
    CVerb& List(const std::string& name, std::vector<std::string>& values, const std::string& shape,
                const std::string& help) {
        m_app->add_option(name, values, help)->allow_extra_args(false)->option_text(shape);
        return *this;
    }
    /// An option with any number of words behind it.
    CVerb& Settings(const std::string& name, std::vector<std::string>& values, const std::string& shape,
                    const std::string& help) {
        m_app->add_option(name, values, help)->option_text(shape);
        return *this;
    }
    CVerb& Flag(const std::string& name, bool& value, const std::string& help) {
        m_app->add_flag(name, value, help);
        return *this;
    }
    /// A flag that has a word against it.
    CVerb& FlagWithout(const std::string& name, const std::string& other) {
        m_app->get_option(name)->excludes(m_app->get_option(other));
        for (const std::string& flag : {name, other})
            if (m_app->get_option(flag)->get_option_text().empty())
                m_app->get_option(flag)->option_text(" ");
        return *this;
    }

    CVerb& Json(bool& value) { return Flag("--json", value, "JSON in place of a table"); }
    CVerb& On(std::string& value) {
        return Choice("--on", value, {"sections", "nodes", "catchments"}, "which entities; by default sections");
    }
    CVerb& Names(std::vector<std::string>& values) {
        return List("--names", values, "A,B", "only these, by name or GUID");
    }
    CVerb& SaveAs(std::string& value) {
        return Option("-o,--output", value, "OUT.gpkg", "write here and leave PROJECT as it is");
    }
    CVerb& Replace(bool& value) { return Flag("--replace", value, "replace an existing file (else: exit code 4)"); }

    void Runs(const std::string& example, const CCommand& command) {
        m_app->add_flag("--quiet", m_parsed.m_terminal.m_isQuiet, "only errors and alerts on standard error");
        m_app->add_flag("--verbose", m_parsed.m_terminal.m_isVerbose, "details on standard error");
        m_app->footer("Example:\n  " + example);
        m_app->callback([&parsed = m_parsed, run = command] { parsed.m_command = run; });
    }

private:
    CLI::App* m_app;
    CParsedWords& m_parsed;
};

void AddNew(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CNewOptions>();
    CVerb(program, parsed, "new", "PROJECT.gpkg [options]", "make an empty project")
        .Word("PROJECT", options->m_project, "the file to make")
        .Option("--crs", options->m_crs, "EPSG:n", "coordinate system; by default plain plane coordinates")
        .Option("--edition", options->m_edition, "STANDARD|RO|BLG", "national edition; by default STANDARD")
        .Flag("--turkish", options->m_isTurkish, "with the Turkish extension")
        .Replace(options->m_replaces)
        .Runs("drenova new town.gpkg --crs EPSG:25832 --edition RO",
              [options](CTerminal& terminal, std::ostream&) { return MakeNewProject(*options, terminal); });
}

/// Keys of formats, as choices of an option or argument.
std::vector<std::string> KeysOf(const std::vector<const CFormat*>& formats) {
    std::vector<std::string> keys;
    for (const CFormat* format : formats)
        keys.emplace_back(format->m_key);
    return keys;
}

/// One line for each format, for the help of an argument.
std::string ListFormats(const std::vector<const CFormat*>& formats, std::string_view last = {}) {
    std::vector<std::string> lines;
    for (const CFormat* format : formats)
        lines.push_back(fmt::format("{}: {} ({})", format->m_key, format->m_title, TextOfSuffixes(*format)));
    if (!last.empty())
        lines.emplace_back(last);
    return fmt::format("{}", fmt::join(lines, "\n"));
}

void AddImport(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CImportOptions>();
    CVerb(program, parsed, "import", "INPUT -o PROJECT.gpkg [options]", "make a project from a file of another program")
        .Word("INPUT", options->m_input, ListFormats(GetImportFormats(), "\"-\" for standard input, with --format"))
        .Option("-o,--output", options->m_output, "PROJECT.gpkg", "the project to make", true)
        .Choice("--format", options->m_format, KeysOf(GetImportFormats()), "by default the one of INPUT's suffix")
        .Option("--catalog", options->m_catalog, "FILE.csv", "table of pipes that the network may refer to")
        .Replace(options->m_replaces)
        .Runs("drenova import town.geojson -o town.gpkg\n\n"
              "On any error no project is made, and an existing one is left as it is.",
              [options](CTerminal& terminal, std::ostream& results) {
                  return ImportProject(*options, terminal, results);
              });
}

void AddInfo(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CInfoOptions>();
    CVerb(program, parsed, "info", "PROJECT [options]", "tell what a project holds")
        .Word("PROJECT", options->m_project, "project file")
        .Json(options->m_isJson)
        .Runs("drenova info town.gpkg",
              [options](CTerminal& terminal, std::ostream& results) { return ShowInfo(*options, terminal, results); });
}

void AddGet(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CGetOptions>();
    CVerb(program, parsed, "get", "PROJECT KEY... [options]", "show attribute values")
        .Word("PROJECT", options->m_project, "project file")
        .Words("KEY", options->m_keys, "keys of attributes, as FLOW_WASTE_PER", true)
        .On(options->m_on)
        .Names(options->m_names)
        .Choice("--format", options->m_format, {"table", "csv", "json"}, "by default a table, which rounds")
        .Runs("drenova get town.gpkg SECTION_SLOPE FLOW_WASTE_PER --names MAIN-01,MAIN-02 --format csv",
              [options](CTerminal& terminal, std::ostream& results) {
                  return GetAttributes(*options, terminal, results);
              });
}

void AddSet(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CSetOptions>();
    CVerb(program, parsed, "set", "PROJECT KEY=VALUE... --names A,B|--all [options]", "store attribute values")
        .Word("PROJECT", options->m_project, "project file")
        .Words("KEY=VALUE", options->m_words, "values to store; \"KEY=\" makes null", true)
        .On(options->m_on)
        .Names(options->m_names)
        .Flag("--all", options->m_isForAll, "all of them")
        .FlagWithout("--all", "--names")
        .SaveAs(options->m_output)
        .Runs("drenova set town.gpkg SECTION_SLOPE=5.5 PIPE_ROUGHNESS=0.4 --names MAIN-01,MAIN-02",
              [options](CTerminal& terminal, std::ostream&) { return SetAttributes(*options, terminal); });
}

void AddLoad(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CLoadOptions>();
    CVerb(program, parsed, "load", "PROJECT TABLE.csv [options]", "store attribute values from a table")
        .Word("PROJECT", options->m_project, "project file")
        .Word("TABLE", options->m_table,
              "CSV with a head line of keys, entities by the column name\nor guid; \"-\" for standard input")
        .On(options->m_on)
        .SaveAs(options->m_output)
        .Runs(
            "drenova load town.gpkg slopes.csv        with slopes.csv:   name,SECTION_SLOPE\n"
            "                                                             MAIN-01,5.5\n\n"
            "All or nothing. On catchments, rows without a match become new catchments of the section that they name.",
            [options](CTerminal& terminal, std::ostream&) { return LoadAttributes(*options, terminal); });
}

void AddSlopes(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CSlopesOptions>();
    CVerb(program, parsed, "slopes", "PROJECT [--design] [options]",
          "store the slopes that follow from level lines and plan lengths")
        .Word("PROJECT", options->m_project, "project file")
        .Flag("--design", options->m_isForDesign, "also SECTION_SLOPE where it is null")
        .SaveAs(options->m_output)
        .Runs(
            "drenova slopes town.gpkg --design\n\n"
            "SECTION_SLOPE_CAL becomes (LEVEL_LINE_0 - LEVEL_LINE_1) / length, in 1/1000. Sections without levels or\n"
            "length are named and keep what they have.",
            [options](CTerminal& terminal, std::ostream&) { return StoreSlopesOfLevels(*options, terminal); });
}

void AddSettings(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CSettingsOptions>();
    CVerb(program, parsed, "settings", "PROJECT [KEY=VALUE...] [options]", "show or change the settings of a project")
        .Word("PROJECT", options->m_project, "project file")
        .Words("KEY=VALUE", options->m_words,
               "edition=STANDARD|RO|BLG, turkish=0|1,\nlanguage=en|ro|bg|hr|tr, crs=EPSG:n,\n"
               "pipe_group=GROUP,\n"
               "terrain_1=FILE.tif to terrain_10 (terrain_1= takes it away);\nnone to show all",
               false)
        .SaveAs(options->m_output)
        .Runs("drenova settings town.gpkg edition=RO", [options](CTerminal& terminal, std::ostream& results) {
            return ShowOrChangeSettings(*options, terminal, results);
        });
}

void AddCalculators(CLI::App& program, CParsedWords& parsed) {
    const auto isJson = std::make_shared<bool>(false);
    CVerb(program, parsed, "calculators", "[options]", "list the calculators in the order of the design work")
        .Json(*isJson)
        .Runs("drenova calculators", [isJson](CTerminal& terminal, std::ostream& results) {
            return ListCalculators(*isJson, terminal, results);
        });
}

void AddForm(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CFormOptions>();
    CVerb(program, parsed, "form", "PROJECT CALCULATOR [TAG=VALUE...] [options]", "show the input form of a calculator")
        .Word("PROJECT", options->m_project, "project file")
        .Word("CALCULATOR", options->m_calculator, "key of the calculator, as \"calculators\" lists it")
        .Words("TAG=VALUE", options->m_words, "what to type into the form before it is shown", false)
        .Json(options->m_isJson)
        .Runs("drenova form town.gpkg 01_WASTE_PERCENT PERIOD=25",
              [options](CTerminal& terminal, std::ostream& results) { return ShowForm(*options, terminal, results); });
}

void AddRun(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CRunOptions>();
    const auto says = std::make_shared<std::pair<bool, bool>>(false, false);
    CVerb(program, parsed, "run", "PROJECT CALCULATOR [TAG=VALUE...] [options]",
          "run a calculator on the network and store its results")
        .Word("PROJECT", options->m_project, "project file")
        .Word("CALCULATOR", options->m_calculator, "key of the calculator, as \"calculators\" lists it")
        .Words("TAG=VALUE", options->m_words, "what to type into the form, in any order", false)
        .Option("--params", options->m_parameterFile, "FILE.json", "parameter file; words win over it")
        .Names(options->m_names)
        .Flag("--preview", options->m_isPreview, "print the report and store no flow")
        .Option("--explain", options->m_explain, "SECTION",
                "001_RAIN_ITP: how this section came to its numbers,\npass by pass, in place of all sections")
        .Choice("--format", options->m_format, {"table", "csv", "json"},
                "001_RAIN_ITP: of the sections; by default a table, which rounds")
        .Flag("--idf-table", options->m_wantsIdfTable, "001_RAIN_ITP: also write IDFOut.txt")
        .Flag("--yes", says->first, "answer questions with yes")
        .Flag("--no", says->second, "answer questions with no")
        .FlagWithout("--yes", "--no")
        .SaveAs(options->m_output)
        .Runs("drenova run town.gpkg 01_WASTE_PERCENT BROJ_STANOVNIKA=12000 PERIOD=25\n"
              "  drenova run town.gpkg 001_RAIN_ITP FILE_PATH=curves.txt FREQUENCY=2 \\\n"
              "      \"PIPE_GROUP=Concrete EN 1916 class 135\" --explain MAIN-07\n\n"
              "variations.txt and IDFOut.txt are written to the folder DRENOVA_HOME; their paths are told.\n"
              "Exit code: 0 when values were stored, 1 when none were, 5 when the calculation stopped with an alert.",
              [options](CTerminal& terminal, std::ostream& results) {
                  return RunCalculator(*options, terminal, results);
              });
    program.get_subcommand("run")->parse_complete_callback([says, &parsed] {
        if (says->first || says->second)
            parsed.m_terminal.m_answer = says->first;
    });
}

void AddDirections(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CDirectionsOptions>();
    const auto isList = std::make_shared<bool>(true);
    CVerb(program, parsed, "directions", "PROJECT [--list] [--set NODE=SECTION...] [--auto] [options]",
          "show or settle main outlets")
        .Word("PROJECT", options->m_project, "project file")
        .Flag("--list", *isList, "list the nodes with several ways out and the settled one (the default)")
        .Settings("--set", options->m_settings, "NODE=SECTION",
                  "main outlet of a node, by names or GUIDs; several may follow")
        .Flag("--auto", options->m_isAutomatic, "settle what is left: lowest level, then larger pipe, then first")
        .Json(options->m_isJson)
        .SaveAs(options->m_output)
        .Runs("drenova directions town.gpkg --set M004=MAIN-07 --auto",
              [options, isList](CTerminal& terminal, std::ostream& results) {
                  return ShowOrSettleDirections(*options, terminal, results);
              });
}

void AddDesign(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CDesignOptions>();
    CVerb(program, parsed, "design", "PROJECT --params FILE.json [options]",
          "run every calculator that a parameter file names")
        .Word("PROJECT", options->m_project, "project file")
        .Option("--params", options->m_parameterFile, "FILE.json", "calculators and their values", true)
        .SaveAs(options->m_output)
        .Runs("drenova design town.gpkg --params design.json -o designed.gpkg\n\n"
              "Calculators run in ascending order of key; then the hydraulics are reckoned, and all checks run with "
              "the limits\n"
              "that the file has for them. One that stops leaves the project as it was.",
              [options](CTerminal& terminal, std::ostream& results) { return RunDesign(*options, terminal, results); });
}

void AddCheck(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CCheckOptions>();
    CVerb(program, parsed, "check", "PROJECT [ITEM...] [ITEM.TAG=VALUE...] [options]",
          "check the network against design rules")
        .Word("PROJECT", options->m_project, "project file")
        .Words("ITEM", options->m_words, "checks to run, by default all; ITEM.TAG=VALUE sets a limit of one", false)
        .Choice("--format", options->m_format, {"table", "csv", "json", "geojson"}, "by default a table")
        .Flag("--strict", options->m_isStrict, "exit code 1 when something was found")
        .SaveAs(options->m_output)
        .Runs("drenova check town.gpkg 0004_MIN_SLOPE 0004_MIN_SLOPE.VALUE_MIN=3\n\n"
              "Checks: 0002_MIN_PIPE_DEPTH (TERRAIN, VALUE_MIN, VALUE_MAX; m), 0003_MIN_LL_SLOPE and 0004_MIN_SLOPE\n"
              "(VALUE_MIN, VALUE_MAX; 1/1000), 0006_NEGATIVE_CASCADE, 0005_MULTI_OUTLET_SECT, 0007_SMALLER_DIAMETERS,\n"
              "0005_MANHOLE_PIPE. The findings are kept in the project as the layer \"findings\", in place of former "
              "ones.",
              [options](CTerminal& terminal, std::ostream& results) {
                  return CheckProject(*options, terminal, results);
              });
}

void AddHydraulics(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CHydraulicsOptions>();
    CVerb(program, parsed, "hydraulics", "PROJECT [options]", "reckon how full the pipes are and how fast they flow")
        .Word("PROJECT", options->m_project, "project file")
        .Option("--viscosity", options->m_viscosity, "NU", "of the water, m²/s; by default 1e-6")
        .Choice("--format", options->m_format, {"table", "csv", "json"}, "by default a table, which rounds")
        .Json(options->m_isJson)
        .FlagWithout("--json", "--format")
        .SaveAs(options->m_output)
        .Runs(
            "drenova hydraulics town.gpkg --format csv\n\n"
            "Every section with a flow (FLOW_TOTAL, without it FLOW_RAIN_IDF), a pipe and a SECTION_SLOPE. Roughness\n"
            "is PIPE_ROUGHNESS, without it that of the pipe. Stored are HYD_FILLING, HYD_VELOCITY and HYD_CAPACITY.\n"
            "Exit code: 1 when nothing was stored.",
            [options](CTerminal& terminal, std::ostream& results) {
                return CalculateHydraulics(*options, terminal, results);
            });
}

void AddCurves(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CCurvesOptions>();
    CVerb(program, parsed, "curves", "FILE [--frequency F] [--duration T] [options]",
          "tell what a file of rain intensity curves holds")
        .Word("FILE", options->m_file, "curve file; \"-\" for standard input")
        .Option("--frequency", options->m_frequency, "F", "one curve: its points, or one look-up")
        .Option("--duration", options->m_duration, "T", "intensity for a duration, min, on one curve or on each")
        .Json(options->m_isJson)
        .Runs(
            "drenova curves curves.txt --frequency 2 --duration 12.5\n\n"
            "Lines that do not count are named on standard error with the reason. Exit code: 3 for a file without a\n"
            "curve, 2 for a frequency that it does not have.",
            [options](CTerminal& terminal, std::ostream& results) { return ShowCurves(*options, terminal, results); });
}

void AddPipe(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CPipeOptions>();
    CVerb(program, parsed, "pipe", "SHAPE DIMENSIONS --slope I --roughness K [--flow Q|--fill P] [options]",
          "reckon uniform flow in one pipe, without a project")
        .Choice("SHAPE", options->m_shape, {"circle", "egg", "box"}, "circle, egg or box", true)
        .Word("DIMENSIONS", options->m_dimensions,
              "inside, mm: 300 for a circle, 800x1200 (width, height) for\nan egg or a box; an egg 800 is 800x1200")
        .Option("--slope", options->m_slope, "I", "slope, 1/1000", true)
        .Option("--roughness", options->m_roughness, "K", "equivalent sand roughness, mm", true)
        .Option("--viscosity", options->m_viscosity, "NU", "of the water, m²/s; by default 1e-6")
        .Option("--flow", options->m_flow, "Q", "flow, m³/s: how far does it fill the pipe?")
        .Option("--fill", options->m_fill, "P", "filling, % of the height: what flows then?")
        .FlagWithout("--flow", "--fill")
        .Json(options->m_isJson)
        .Runs("drenova pipe circle 300 --slope 5 --roughness 0.4 --flow 0.05\n\n"
              "Without a flow and a filling: the full pipe, and the greatest flow and velocity of all depths.\n"
              "Prandtl-Colebrook with the hydraulic radius, g = 9.81 m/s².",
              [options](CTerminal& terminal, std::ostream& results) {
                  return CalculatePipe(*options, terminal, results);
              });
}

void AddCatalog(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CCatalogOptions>();
    CVerb(program, parsed, "catalog", "list PROJECT | show PROJECT GROUP | import PROJECT FILE.csv [options]",
          "show the catalogues of pipes and manholes, or add to the project's own")
        .Choice("ACTION", options->m_action, {"list", "show", "import"}, "list, show or import", true)
        .Word("PROJECT", options->m_project, "project file")
        .OptionalWord("WHAT", options->m_what,
                      "show: name or GUID of a group; import: table of pipes or\nmanholes, \"-\" for standard input")
        .Choice("--kind", options->m_kind, {"pipe", "manhole"}, "by default both; of a table, told by its head line")
        .Json(options->m_isJson)
        .SaveAs(options->m_output)
        .Runs("drenova catalog show town.gpkg \"PVC-U EN 1401 SN 8 (SDR 34)\"\n"
              "  drenova catalog import town.gpkg pipes.csv\n\n"
              "An import is all or nothing; a group comes from one table.",
              [options](CTerminal& terminal, std::ostream& results) {
                  return ShowOrImportCatalog(*options, terminal, results);
              });
}

void AddExport(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CExportOptions>();
    CVerb(program, parsed, "export", "PROJECT FORMAT -o FILE [options]", "write a file for other programs")
        .Word("PROJECT", options->m_project, "project file")
        .Choice("FORMAT", options->m_format, KeysOf(GetExportFormats()), ListFormats(GetExportFormats()), true)
        .Option("-o,--output", options->m_output, "FILE", "the file to write; \"-\" for standard output", true)
        .On(options->m_on)
        .Choice("--kind", options->m_kind, {"pipe", "manhole"}, "which catalogue; by default pipe")
        .Runs("drenova export town.gpkg geojson -o town.geojson",
              [options](CTerminal& terminal, std::ostream&) { return ExportProject(*options, terminal); });
}

void AddGenerate(CLI::App& program, CParsedWords& parsed) {
    const auto options = std::make_shared<CGenerateOptions>();
    CVerb(program, parsed, "generate", "--shape SHAPE --sections N -o PROJECT.gpkg [options]",
          "make a synthetic network")
        .Choice("--shape", options->m_shape, {"line", "tree", "comb", "city", "star"}, "shape of the network", true)
        .Option("--sections", options->m_sections, "N", "number of sections", true)
        .Option("--seed", options->m_seed, "S", "whole number that decides what is left to chance")
        .Option("-o,--output", options->m_output, "PROJECT.gpkg", "the project to make", true)
        .Replace(options->m_replaces)
        .Runs("drenova generate --shape city --sections 100000 --seed 7 -o large.gpkg\n\n"
              "The same words give the same network.",
              [options](CTerminal& terminal, std::ostream& results) {
                  return GenerateProject(*options, terminal, results);
              });
}

} // namespace

void AddVerbs(CLI::App& program, CParsedWords& parsed) {
    AddNew(program, parsed);
    AddImport(program, parsed);
    AddGenerate(program, parsed);
    AddInfo(program, parsed);
    AddGet(program, parsed);
    AddSet(program, parsed);
    AddLoad(program, parsed);
    AddSlopes(program, parsed);
    AddSettings(program, parsed);
    AddCalculators(program, parsed);
    AddForm(program, parsed);
    AddRun(program, parsed);
    AddDesign(program, parsed);
    AddCheck(program, parsed);
    AddDirections(program, parsed);
    AddHydraulics(program, parsed);
    AddPipe(program, parsed);
    AddCurves(program, parsed);
    AddCatalog(program, parsed);
    AddExport(program, parsed);
}

} // namespace Cli
