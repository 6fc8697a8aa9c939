// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeColumn.h"
#include "host/gis_core/DataDefinition.h"

#include <boost/container/deque.hpp>

#include <cstdint>
#include <memory>
#include <vector>

namespace OLMGis::Data {

class CAttributeStore;

/// A change of entities that can be taken back and done again.
class IJournalStep {
public:
    virtual ~IJournalStep() = default;
    virtual void Undo() = 0;
    virtual void Redo() = 0;
};

/// What was changed since the journal was opened, in order: undo, rollback, "nothing stored after a failed run" and
/// "what did this run change" are made of it. 24 bytes a changed attribute value, in blocks that stay where they are: a
/// run over a large network notes millions.
class CJournal {
public:
    struct CAttributeChange {
        const CDataDefinition* m_definition;
        std::uint64_t m_bitsBefore; ///< and whether there was one: the value before the change
        std::uint32_t m_row;
        bool m_wasNotNull;

        CStoredValue GetBefore() const { return {m_bitsBefore, m_wasNotNull}; }
    };
    using CAttributeChanges =
        boost::container::deque<CAttributeChange, void,
                                boost::container::deque_options_t<boost::container::block_bytes<4096U>>>;

    void NoteAttribute(const CDataDefinition& definition, std::uint32_t row, const CStoredValue& before) {
        m_changes.push_back({&definition, before.m_bits, row, before.m_isNotNull});
    }

    /// Notes a change of entities that was just made.
    void NoteStep(std::unique_ptr<IJournalStep> step) { m_steps.push_back({m_changes.size(), std::move(step)}); }

    bool IsEmpty() const { return m_changes.empty() && m_steps.empty(); }

    /// Attribute changes in the order in which they were made, a value changed twice twice.
    const CAttributeChanges& GetAttributeChanges() const { return m_changes; }

    /// Takes everything back, last change first, and keeps what is needed to do it again. The store must have no open
    /// journal. Cost: the number of changes.
    void Undo(CAttributeStore& store);

    /// Does everything again after an Undo.
    void Redo(CAttributeStore& store);

private:
    struct CPlacedStep {
        std::size_t m_place; ///< number of attribute changes before the step
        std::unique_ptr<IJournalStep> m_step;
    };

    static void Swap(CAttributeStore& store, CAttributeChange& change);

    CAttributeChanges m_changes;
    std::vector<CPlacedStep> m_steps;
};

} // namespace OLMGis::Data
