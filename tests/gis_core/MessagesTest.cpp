// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#include "host/gis_core/DataConfiguration.h"
#include "host/gis_core/ModuleConfiguration.h"
#include "tests/support/TestProject.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <set>
#include <string>
#include <vector>

using namespace OLMGis;

namespace {

const std::filesystem::path Root = DRENOVA_SOURCE_DIR;
const std::vector<std::string> Translations = {"ro", "bg", "hr", "tr"};

using Catalogue = std::map<int, std::string>;

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    EXPECT_TRUE(stream) << path;
    return {std::istreambuf_iterator<char>(stream), {}};
}

Catalogue ReadCatalogue(const std::string& language) {
    Catalogue catalogue;
    const auto texts = nlohmann::json::parse(ReadFile(Root / "data/messages" / (language + ".json")));
    for (const auto& [number, text] : texts.items())
        catalogue.emplace(std::stoi(number), text.get<std::string>());
    return catalogue;
}

std::vector<std::string> Matches(const std::string& text, const std::regex& pattern, int group = 0) {
    return {std::sregex_token_iterator(text.begin(), text.end(), pattern, group), std::sregex_token_iterator()};
}

/// What printf would replace; a percent sign as a unit, "(%)", is none.
std::vector<std::string> Placeholders(const std::string& text) {
    static const std::regex pattern("%[-+ 0#]*[0-9]*(\\.[0-9]+)?[a-zA-Z]");
    return Matches(text, pattern);
}

/// Units that are written alike in every language; years and inhabitants are words and translated.
std::multiset<std::string> Units(const std::string& text) {
    static const std::regex pattern(R"(\((?:m|mm|ha|min|%|-|m²/s|m³/s|l/[sdh]|l/\(s·(?:m|ha)\))\)|1/1000)");
    const std::vector<std::string> units = Matches(text, pattern);
    return {units.begin(), units.end()};
}

class MessagesOfLanguage : public testing::TestWithParam<std::string> {};

} // namespace

TEST_P(MessagesOfLanguage, HasExactlyTheEnglishNumbers) {
    const std::string language = GetParam();
    const Catalogue english = ReadCatalogue("en");
    const Catalogue catalogue = ReadCatalogue(language);
    ASSERT_GT(english.size(), 200U);
    for (const auto& [number, text] : english)
        EXPECT_EQ(catalogue.count(number), 1U) << language << " lacks " << number << ": " << text;
    for (const auto& [number, text] : catalogue)
        EXPECT_EQ(english.count(number), 1U) << language << " has too much: " << number << ": " << text;
    EXPECT_EQ(catalogue.at(0), "STANDARD") << "the edition is a code, not a text";
}

// Translators merge these files by line: one number per line, in rising order, none twice (a parser keeps one
// silently).
TEST_P(MessagesOfLanguage, FileHasOneNumberPerLineInRisingOrder) {
    static const std::regex entry("\n  \"([0-9]+)\": \"");
    const std::string file = ReadFile(Root / "data/messages" / (GetParam() + ".json"));
    std::vector<int> numbers;
    for (const std::string& number : Matches(file, entry, 1))
        numbers.push_back(std::stoi(number));
    EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), static_cast<std::ptrdiff_t>(numbers.size()) + 2);
    EXPECT_EQ(std::adjacent_find(numbers.begin(), numbers.end(), std::greater_equal<>()), numbers.end());
}

TEST_P(MessagesOfLanguage, TextsKeepPlaceholdersAndUnits) {
    const Catalogue english = ReadCatalogue("en");
    for (const auto& [number, text] : ReadCatalogue(GetParam())) {
        const std::string& original = english.at(number);
        EXPECT_EQ(Placeholders(text), Placeholders(original)) << number << ": " << text;
        EXPECT_EQ(Units(text), Units(original)) << number << ": " << text;
    }
    EXPECT_EQ(Placeholders(english.at(9454)), std::vector<std::string>{"%.3f"});
}

TEST_P(MessagesOfLanguage, NoTextIsEmptyItsNumberOrATag) {
    static const std::regex tag("[A-Z0-9]+_[A-Z0-9_]+");
    CTestProject project;
    for (const auto& [number, text] : ReadCatalogue(GetParam())) {
        EXPECT_FALSE(text.empty()) << number;
        EXPECT_EQ(text.find(std::to_string(number)), std::string::npos) << text;
        EXPECT_FALSE(std::regex_match(text, tag)) << number << ": " << text;
        EXPECT_EQ(Data::CDataConfiguration::Instance()->GetDataDefinitionByID(text), nullptr) << number << ": " << text;
    }
}

TEST_P(MessagesOfLanguage, ProgramLoadsTheLanguage) {
    CTestProject project;
    auto* configuration = Utility::CModuleConfiguration::Instance();
    ASSERT_TRUE(configuration->SetLanguage(GetParam()));
    for (const auto& [number, text] : ReadCatalogue(GetParam()))
        EXPECT_EQ(configuration->GetMsg(number), text);
}

INSTANTIATE_TEST_SUITE_P(Every, MessagesOfLanguage, testing::Values("en", "ro", "bg", "hr", "tr"),
                         [](const auto& language) { return language.param; });

TEST(Messages, TranslationsAreTranslated) {
    const Catalogue english = ReadCatalogue("en");
    for (const std::string& language : Translations) {
        const Catalogue catalogue = ReadCatalogue(language);
        const auto same = std::count_if(catalogue.begin(), catalogue.end(), [&english](const auto& entry) {
            return english.at(entry.first) == entry.second;
        });
        EXPECT_LE(same * 10, std::ssize(english)) << language << ": names and symbols alone may stay as they are";
    }
}

// Romanian has ș and ț with a comma below; the Turkish letter with a cedilla looks alike and is not found by a search.
TEST(Messages, RomanianLettersHaveCommasBelow) {
    for (const auto& [number, text] : ReadCatalogue("ro"))
        for (const char* cedilla : {"ş", "ţ", "Ş", "Ţ"})
            EXPECT_EQ(text.find(cedilla), std::string::npos) << number << ": " << text;
}

namespace {

/// Where code names a message: each pattern's group is its number or the name of its constant. A number that is
/// computed or stored in a variable is not seen here.
const std::vector<std::regex>& MessageUses() {
    static const std::vector<std::regex> uses = {
        std::regex(R"(\b(?:GetMsg|Msg|SetMsgName|SetMsgDescription|SetMsgLabel)\((?:[^()]*\? )?([\w:]+)\))"),
        std::regex(R"(\b(?:GetMsg|Msg)\([^()]*\? ([\w:]+) : \w+\))"),
        // a row of a report: row(2066, value)
        std::regex(R"(\brow\(([\w:]+),)"),
        // a line of the log, after its type: log(4, 61031)
        std::regex(R"(\blog\([0-9], ?([\w:]+)\))"),
        // a category of a form: AddCategory(parameters, 0, 464)
        std::regex(R"(\bAddCategory\([^;"]{0,80}, ?([\w:]+)\))"),
        // a property of a form: AddProperty(category, "TAG", Edit, 2067, 4.0), {"TAG", 2147, …}
        std::regex(
            R"re((?:\b[Aa]dd\w*\([^;"]{0,80}|\{)"[A-Z][A-Z0-9_]*",\s*(?:(?:\w+::)*(?:Edit|CheckBox|ComboBox|FilePath|CustomDialog|CatalogPicker),\s*)?([0-9]{2,6}\b|[A-Za-z][\w:]*))re"),
        // a finding: findings.AddWithValue(section, 10360, {slope, 0.0, Unit})
        std::regex(R"(\bAdd(?:WithValue)?\(\*?\w+, ([\w:]+), \{)"),
        std::regex(R"(\bAddWithCount\([^,;]+, ([\w:]+), )"),
        // the choices of a combo box: {{2137, 0}, {2138, 1}}
        std::regex(R"([{,]\s*\{([0-9]{3,5}|Messages::\w+), ?[A-Za-z0-9_:]+\})"),
        // a constant that says so: constexpr int FlowsStored = 2050; ///< message
        std::regex(R"(\bint \w+ = ([0-9]{1,6}); ///< message\b)"),
        std::regex(R"(\bint \w*Message = ([0-9]{1,6});)"),
    };
    return uses;
}

/// The constants of a file: name and number.
std::map<std::string, int> ConstantsOf(const std::string& source) {
    static const std::regex constant(R"(\bconstexpr int (\w+) = ([0-9]{1,6});)");
    std::map<std::string, int> constants;
    for (std::sregex_iterator next(source.begin(), source.end(), constant), end; next != end; ++next)
        constants[(*next)[1]] = std::stoi((*next)[2]);
    return constants;
}

/// Message number and the places that ask for it.
std::map<int, std::set<std::string>> MessagesAskedFor() {
    std::map<int, std::set<std::string>> asked;
    for (const char* folder :
         {"host", "flow", "waste", "rain", "accumulate", "analysis", "structures", "plugin", "controls"}) {
        if (!std::filesystem::exists(Root / folder))
            continue;
        for (const auto& file : std::filesystem::recursive_directory_iterator(Root / folder)) {
            if (file.path().extension() != ".cpp" && file.path().extension() != ".h")
                continue;
            const std::string source = ReadFile(file.path());
            const auto constants = ConstantsOf(source);
            for (const std::regex& use : MessageUses())
                for (const std::string& named : Matches(source, use, 1)) {
                    const bool isNumber = named.find_first_not_of("0123456789") == std::string::npos;
                    const auto constant = constants.find(named.substr(named.rfind(':') + 1));
                    if (isNumber || constant != constants.end())
                        asked[isNumber ? std::stoi(named) : constant->second].insert(file.path().filename().string());
                }
        }
    }
    const auto definitions = nlohmann::json::parse(ReadFile(Root / "data/definitions/attributes.json"));
    for (const auto& definition : definitions)
        asked[definition.at("label").get<int>()].insert(definition.at("id").get<std::string>());
    return asked;
}

} // namespace

// A number without a text shows as "#1234". Every language contains the English numbers, so the English catalogue is
// enough.
TEST(Messages, EveryNumberThatTheCodeAsksForHasAText) {
    const Catalogue english = ReadCatalogue("en");
    const auto asked = MessagesAskedFor();
    for (const int known : {2313, 2066, 464, 70001, 70182, 9067, 10362, 3239})
        EXPECT_EQ(asked.count(known), 1U) << known << ": the search no longer sees how the code names messages";
    for (const auto& [number, places] : asked)
        EXPECT_EQ(english.count(number), 1U) << number << " is asked for by " << testing::PrintToString(places);
}
