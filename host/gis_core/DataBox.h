// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace OLMGis::Data {

/// A tagged value: null, a whole number, a number or a text. The coin in which attributes and form values are paid.
///
/// Conversions never fail: null gives 0 and the empty text; text becomes a number by its longest numeric prefix
/// ("." whatever the locale, none gives 0); a number becomes the shortest text that reads back as itself; a double
/// becomes an int by cutting its fraction, limited to the int range (not-a-number gives 0).
class CDataBox {
public:
    enum class enmKind : std::uint8_t { Null, Int, Double, Text };

    CDataBox() = default;
    CDataBox(int value) : m_kind(enmKind::Int), m_int(value) {}
    CDataBox(double value) : m_kind(enmKind::Double), m_double(value) {}
    CDataBox(std::string value) : m_kind(enmKind::Text), m_text(std::move(value)) {}
    CDataBox(std::string_view value) : CDataBox(std::string(value)) {}
    CDataBox(const char* value) : CDataBox(std::string(value)) {}

    enmKind GetKind() const { return m_kind; }
    bool IsNotNull() const { return m_kind != enmKind::Null; }

    /// True empties the box. False leaves it as it is: an empty box has no value to bring back.
    void SetIsNull(bool isNull) {
        if (isNull)
            Clear();
    }

    void Clear() {
        if (m_kind == enmKind::Text)
            m_text.clear();
        m_kind = enmKind::Null;
    }
    void SetInt(int value) {
        Clear();
        m_kind = enmKind::Int;
        m_int = value;
    }
    void SetDouble(double value) {
        Clear();
        m_kind = enmKind::Double;
        m_double = value;
    }
    void SetText(std::string_view value) {
        m_kind = enmKind::Text;
        m_text.assign(value);
    }

    double AsDouble() const;
    int AsInt() const;
    std::string AsText() const;

    /// The text itself without a copy; empty unless the kind is Text. Valid while the box is unchanged.
    std::string_view TextView() const {
        return m_kind == enmKind::Text ? std::string_view(m_text) : std::string_view();
    }

    /// Same kind and same value; two nulls are equal, not-a-number equals nothing.
    friend bool operator==(const CDataBox& a, const CDataBox& b);

private:
    enmKind m_kind = enmKind::Null;
    union {
        double m_double = 0.0;
        int m_int;
    };
    std::string m_text;
};

} // namespace OLMGis::Data
