// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "apps/cli/shell/Verb.h"

namespace Cli {

using enmKind = CParameter::enmKind;

CVerb& CVerb::Add(CParameter parameter) {
    m_parameters.push_back(std::move(parameter));
    return *this;
}

CVerb& CVerb::Argument(std::string name, std::string& value, std::string help) {
    return Add({enmKind::Argument, std::move(name), {}, std::move(help), true, {}, &value});
}

CVerb& CVerb::OptionalArgument(std::string name, std::string& value, std::string help) {
    return Add({enmKind::Argument, std::move(name), {}, std::move(help), false, {}, &value});
}

CVerb& CVerb::Arguments(std::string name, std::vector<std::string>& values, std::string help) {
    return Add({enmKind::Rest, std::move(name), {}, std::move(help), true, {}, nullptr, &values});
}

CVerb& CVerb::OptionalArguments(std::string name, std::vector<std::string>& values, std::string help) {
    return Add({enmKind::Rest, std::move(name), {}, std::move(help), false, {}, nullptr, &values});
}

CVerb& CVerb::ArgumentChoice(std::string name, std::string& value, std::vector<std::string> choices, std::string help) {
    return Add({enmKind::Argument, std::move(name), {}, std::move(help), true, std::move(choices), &value});
}

CVerb& CVerb::Option(std::string name, std::string& value, std::string shape, std::string help) {
    return Add({enmKind::Option, std::move(name), std::move(shape), std::move(help), false, {}, &value});
}

CVerb& CVerb::RequiredOption(std::string name, std::string& value, std::string shape, std::string help) {
    return Add({enmKind::Option, std::move(name), std::move(shape), std::move(help), true, {}, &value});
}

CVerb& CVerb::Choice(std::string name, std::string& value, std::vector<std::string> choices, std::string help) {
    return Add({enmKind::Option, std::move(name), {}, std::move(help), false, std::move(choices), &value});
}

CVerb& CVerb::RequiredChoice(std::string name, std::string& value, std::vector<std::string> choices, std::string help) {
    return Add({enmKind::Option, std::move(name), {}, std::move(help), true, std::move(choices), &value});
}

CVerb& CVerb::Repeated(std::string name, std::vector<std::string>& values, std::string shape, std::string help) {
    return Add({enmKind::Repeated, std::move(name), std::move(shape), std::move(help), false, {}, nullptr, &values});
}

CVerb& CVerb::Several(std::string name, std::vector<std::string>& values, std::string shape, std::string help) {
    return Add({enmKind::Several, std::move(name), std::move(shape), std::move(help), false, {}, nullptr, &values});
}

CVerb& CVerb::Flag(std::string name, bool& value, std::string help) {
    return Add({enmKind::Flag, std::move(name), {}, std::move(help), false, {}, nullptr, nullptr, &value});
}

CVerb& CVerb::Exclude(std::string name, std::string other) {
    m_exclusions.emplace_back(std::move(name), std::move(other));
    return *this;
}

CVerb& CVerb::On(std::string& value) {
    return Choice("--on", value, {"sections", "nodes", "catchments"}, "Kind of entity; default: sections");
}

CVerb& CVerb::Names(std::vector<std::string>& values) {
    return Repeated("--names", values, "A,B", "Only these entities, by name or GUID");
}

CVerb& CVerb::SaveAs(COutputOption& value) {
    return Option("-o,--output", value.m_path, "OUT.gpkg", "Write this project file and leave PROJECT as it is")
        .Replace(value.m_replaces);
}

CVerb& CVerb::Output(COutputOption& value, std::string shape, std::string help) {
    return RequiredOption("-o,--output", value.m_path, std::move(shape), std::move(help)).Replace(value.m_replaces);
}

CVerb& CVerb::Replace(bool& value) {
    return Flag("--replace", value, "Replace an existing output file (without: exit code 4)");
}

CVerb& CVerb::Formats(CFormatOption& value, std::vector<std::string> formats, std::string help) {
    Choice("--format", value.m_format, std::move(formats), std::move(help));
    Flag("--json", value.m_isJson, "The same as --format json");
    return Exclude("--json", "--format");
}

CVerb& CVerb::Questions() {
    m_asksQuestions = true;
    return *this;
}

CVerb& CVerb::Examples(std::vector<std::string> lines) {
    m_examples = std::move(lines);
    return *this;
}

CVerb& CVerb::Notes(std::string text) {
    m_notes = std::move(text);
    return *this;
}

CVerb& CVerb::NotesFrom(std::function<std::string()> make) {
    m_makeNotes = std::move(make);
    return *this;
}

CVerb& CVerb::Runs(CCommand command) {
    m_command = std::move(command);
    return *this;
}

std::string CVerb::MakeFooter() const {
    std::string text = "Examples:";
    for (const std::string& line : m_examples)
        text += "\n  " + line;
    if (!m_notes.empty())
        text += "\n\n" + m_notes;
    if (m_makeNotes)
        text += "\n\n" + m_makeNotes();
    return text;
}

} // namespace Cli
