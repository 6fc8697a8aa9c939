// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <array>
#include <cstddef>
#include <streambuf>

namespace OLMGis::ProjectIo {

/// Limits the length of one value that a parser reads: the text ends early where a value is too long, so that a file of
/// one endless text cannot fill the memory. The reader calls NoteValue after each value. Costs one counter per block.
class CValueLimit final : public std::streambuf {
public:
    /// The source is borrowed. longest: bytes of a value with the blanks around it, exceeded by one block at most.
    CValueLimit(std::streambuf& source, std::size_t longest) : m_source(source), m_longest(longest) {}

    void SetLongest(std::size_t longest) { m_longest = longest; }
    std::size_t GetLongest() const { return m_longest; }

    /// A value ended here.
    void NoteValue() { m_sinceValue = 0; }

    bool IsExceeded() const { return m_isExceeded; }

protected:
    int_type underflow() override {
        m_isExceeded = m_isExceeded || m_sinceValue > m_longest;
        const std::streamsize count =
            m_isExceeded ? 0 : m_source.sgetn(m_block.data(), static_cast<std::streamsize>(m_block.size()));
        m_sinceValue += static_cast<std::size_t>(count);
        setg(m_block.data(), m_block.data(), m_block.data() + count);
        return count == 0 ? traits_type::eof() : traits_type::to_int_type(m_block[0]);
    }

private:
    std::streambuf& m_source;
    std::array<char, std::size_t{1} << 16> m_block{};
    std::size_t m_longest;
    std::size_t m_sinceValue = 0;
    bool m_isExceeded = false;
};

} // namespace OLMGis::ProjectIo
