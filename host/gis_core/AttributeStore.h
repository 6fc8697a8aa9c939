// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include "host/gis_core/AttributeColumn.h"
#include "host/gis_core/DataBox.h"
#include "host/gis_core/DataDefinition.h"
#include "host/gis_core/InputNotes.h"
#include "host/gis_core/Journal.h"
#include "host/gis_core/TextPool.h"

#include <array>
#include <cstdint>
#include <memory>
#include <utility>
#include <vector>

namespace OLMGis::Data {

/// Asked before each write while it is set; false refuses the write. For locked systems and for tests.
class IWriteGuard {
public:
    virtual ~IWriteGuard() = default;
    virtual bool IsWriteAllowed(const CDataDefinition& definition, std::uint32_t row) = 0;
};

/// The attributes of a project: one column per definition, rows given out once per entity kind and never reused.
class CAttributeStore {
public:
    CAttributeStore();
    CAttributeStore(const CAttributeStore&) = delete;
    CAttributeStore& operator=(const CAttributeStore&) = delete;

    /// A new row for an entity of the kind; all its attributes are null.
    std::uint32_t AddRow(enmEntityKind kind) { return m_rowCounts[static_cast<std::size_t>(kind)]++; }
    std::uint32_t GetRowCount(enmEntityKind kind) const { return m_rowCounts[static_cast<std::size_t>(kind)]; }

    /// Announces how many entities of the kind there will be: its columns get room for them in one step each, at their
    /// first value.
    void Expect(enmEntityKind kind, std::uint32_t rows);

    /// Fills the box and answers true, or answers false and leaves the box for a null. No search.
    bool Read(const CDataDefinition& definition, std::uint32_t row, CDataBox& box) const {
        const CAttributeColumn* column = FindColumn(definition);
        return column != nullptr && column->Read(row, box);
    }

    /// The one point through which every attribute changes. False when the guard refuses; a null box makes null.
    bool Write(const CDataDefinition& definition, std::uint32_t row, const CDataBox& box);

    /// The column of a definition, null while nothing was ever written to it. Open notes get the definition in either
    /// case: a value that appears later changes what a run reads.
    const CAttributeColumn* FindColumn(const CDataDefinition& definition) const {
        if (m_inputNotes != nullptr)
            m_inputNotes->NoteAttribute(definition);
        return definition.m_index < m_columns.size() ? m_columns[definition.m_index].get() : nullptr;
    }

    /// Whether any entity has a value. Cost: rows / 64.
    bool HasValues(const CDataDefinition& definition) const {
        const CAttributeColumn* column = FindColumn(definition);
        return column != nullptr && column->CountNotNull() > 0;
    }

    /// The column of a definition, made when it isn't there. For the project file, which fills columns whole, and for
    /// the journal; everybody else writes through Write.
    CAttributeColumn& GetColumn(const CDataDefinition& definition);

    /// Definitions with at least one value, in the order of all definitions. Cost: rows / 64 a column.
    std::vector<const CDataDefinition*> GetUsedDefinitions(enmEntityKind kind) const;

    CTextPool& GetTexts() { return m_texts; }

    /// Opens a journal (null closes); the caller owns it and keeps it alive while it is open. Returns the former one.
    CJournal* SetJournal(CJournal* journal);
    CJournal* GetJournal() const { return m_journal; }

    /// Sets the guard (null takes it away); not owned.
    void SetWriteGuard(IWriteGuard* guard);

    /// Notes which columns are read while it is set (null closes); not owned. Returns the former one.
    CInputNotes* SetInputNotes(CInputNotes* notes) { return std::exchange(m_inputNotes, notes); }
    CInputNotes* GetInputNotes() const { return m_inputNotes; }

private:
    CTextPool m_texts;
    std::vector<std::unique_ptr<CAttributeColumn>> m_columns;
    std::array<std::uint32_t, EntityKindCount> m_rowCounts{};
    std::array<std::uint32_t, EntityKindCount> m_expectedCounts{};
    CJournal* m_journal = nullptr;
    IWriteGuard* m_guard = nullptr;
    CInputNotes* m_inputNotes = nullptr;
    bool m_isWatched = false; ///< a journal or a guard is set: the one branch that an ordinary write pays
};

/// Opens a journal for its own lifetime and puts the former one back.
class CJournalScope {
public:
    CJournalScope(CAttributeStore& store, CJournal* journal) : m_store(store), m_former(store.SetJournal(journal)) {}
    ~CJournalScope() { m_store.SetJournal(m_former); }
    CJournalScope(const CJournalScope&) = delete;
    CJournalScope& operator=(const CJournalScope&) = delete;

private:
    CAttributeStore& m_store;
    CJournal* m_former;
};

/// What an entity is to the store: a kind and a row. Base of all entities.
class CAttributeOwner {
public:
    enmEntityKind GetEntityKind() const { return m_kind; }
    std::uint32_t GetRow() const { return m_row; }
    CAttributeStore& GetStore() const { return *m_store; }

    /// A read-only entity refuses every write.
    bool IsReadOnly() const { return m_isReadOnly; }
    void SetReadOnly(bool isReadOnly) { m_isReadOnly = isReadOnly; }

protected:
    CAttributeOwner(CAttributeStore& store, enmEntityKind kind)
        : m_store(&store), m_row(store.AddRow(kind)), m_kind(kind) {}
    ~CAttributeOwner() = default;

private:
    CAttributeStore* m_store;
    std::uint32_t m_row;
    enmEntityKind m_kind;
    bool m_isReadOnly = false;
};

} // namespace OLMGis::Data
