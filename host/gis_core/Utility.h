// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

namespace OLMGis::Utility {

/// Text helpers that answer the same in every locale.
class CUtility {
public:
    /// The number that a text begins with: blanks skipped, longest usable prefix taken, "." as decimal sign, exponents
    /// read, hexadecimal, "inf" and "nan" not. Without a number 0. Too large gives infinity, too small 0.
    static double ToDouble(std::string_view text);

    /// The finite number that the whole text is, blanks around it allowed; nothing for any other text.
    static std::optional<double> ParseDouble(std::string_view text) {
        double value = 0.0;
        return ParseDouble(text, value) ? std::optional<double>(value) : std::nullopt;
    }

    /// The same by its answer and a variable, which is left alone without such a number: a file is read by millions of
    /// them, and an optional travels through memory.
    static bool ParseDouble(std::string_view text, double& value);

    /// The whole number in the range of int that the whole text is, blanks around it allowed; nothing for any other
    /// text.
    static std::optional<int> ParseInt(std::string_view text);

    /// Fraction cut, limited to the int range; not-a-number gives 0.
    static int CutToInt(double value);

    /// Shortest text that reads back as the same number ("nan", "inf", "-inf" for what is not finite).
    static std::string ToText(double value);
    static std::string ToText(int value);

    /// Appends the non-empty parts of text between separators to parts; returns how many were appended.
    static int SplitString(std::string_view text, std::vector<std::string>& parts, char separator);

    /// Without blanks, tabs, CR and LF at both ends.
    static std::string_view Trim(std::string_view text);

    /// Compares ASCII letters without case, all other bytes as they are.
    static bool EqualIgnoreCase(std::string_view a, std::string_view b);

    /// ASCII letters to upper or lower case, all other bytes as they are.
    static std::string ToUpper(std::string_view text);
    static std::string ToLower(std::string_view text);

    /// Number of characters (code points) of a UTF-8 text, not of bytes; a stray byte counts as one.
    static std::size_t CountCharacters(std::string_view text);

    /// Whether the bytes are well-formed UTF-8 (no overlong forms, no surrogates, nothing above U+10FFFF).
    static bool IsUtf8(std::string_view text);

    /// A GUID for something whose source gives none: made from layer, name and place (its number in the source), so
    /// that the same source gives the same GUIDs. 36 characters, lower case, version and variant of a name-based UUID.
    static std::string MakeGuid(std::string_view layer, std::string_view name, std::size_t place);

    /// Applies a printf-style text of the catalogue to numbers and texts. A text whose placeholders do not fit the
    /// arguments is shown raw: a translator's slip must not stop the program.
    template <class... Args>
    static std::string Format(std::string_view format, const Args&... args) {
        return FormatValues(format, {CTextValue(args)...});
    }

private:
    using CTextValue = std::variant<int, unsigned, long long, unsigned long long, double, std::string_view>;

    static std::string FormatValues(std::string_view format, std::initializer_list<CTextValue> values);
};

/// Equality and hash of GUIDs: case and braces do not count. For hash tables keyed by GUID text.
struct GuidHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view guid) const;
};
struct GuidEqual {
    using is_transparent = void;
    bool operator()(std::string_view a, std::string_view b) const;
};

} // namespace OLMGis::Utility
