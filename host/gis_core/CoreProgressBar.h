// SPDX-License-Identifier: GPL-3.0-or-later
// Copyright (C) the Drenova authors
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace OLMGis::Utility {

/// The shared progress indicator. Operations nest: SaveState and RestoreState bracket each one, so that an inner
/// operation gives the display back as it found it. It is shown by the host's services. One per project context.
class CCoreProgressBar {
public:
    static CCoreProgressBar* Instance();

    void SaveState();
    void RestoreState();

    /// Shows a caption with a range. A range without width counts as done.
    void Show(std::string_view caption, int minimum, int maximum);

    /// Non-zero to go on, 0 when the user cancelled. The display is touched only when a thousandth of the range has
    /// passed, so that it may be called for each entity. Once cancelled, all further calls of the operation answer 0.
    int SetPosition(int position);
    void Hide();

    /// Whether the user cancelled since the outermost operation began.
    bool IsCancelled() const { return m_isCancelled; }

    bool IsShown() const { return m_state.m_isShown; }
    int GetMaximum() const { return m_state.m_maximum; }
    const std::string& GetCaption() const { return m_state.m_caption; }
    std::size_t GetDepth() const { return m_saved.size(); }

private:
    struct CState {
        std::string m_caption;
        int m_minimum = 0;
        int m_maximum = 0;
        int m_position = 0;
        int m_nextDrawn = 0;
        bool m_isShown = false;
    };

    void Draw();

    CState m_state;
    std::vector<CState> m_saved;
    bool m_isCancelled = false;
};

/// Shows the progress of one operation for the length of a scope, and leaves the display as it was before.
class CProgress {
public:
    /// count: steps of the operation.
    CProgress(std::string_view caption, std::size_t count) {
        m_bar->SaveState();
        m_bar->Show(caption, 0, static_cast<int>(count));
    }
    ~CProgress() {
        m_bar->Hide();
        m_bar->RestoreState();
    }
    CProgress(const CProgress&) = delete;
    CProgress& operator=(const CProgress&) = delete;

    /// done: steps that are done. False when the user cancelled.
    bool GoOn(std::size_t done) { return m_bar->SetPosition(static_cast<int>(done)) != 0; }

private:
    CCoreProgressBar* const m_bar = CCoreProgressBar::Instance();
};

} // namespace OLMGis::Utility
