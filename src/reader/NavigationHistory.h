#pragma once

#include "reader/PDFView.h"

#include <vector>

/// The positions that jumps left, as a browser keeps its pages.
class NavigationHistory
{
public:
    /// Of the way back. Chosen; the oldest are forgotten first.
    static constexpr size_t kMostPositions = 200;

    void clear();

    /// A jump left `position`: the way forward ends. Leaving the same position twice is remembered once.
    void leave(const PDFPosition &position);

    bool canGoBack() const { return !m_back.empty(); }
    bool canGoForward() const { return !m_forward.empty(); }
    /// Where to go from `current`; only where that can be.
    PDFPosition goBack(const PDFPosition &current);
    PDFPosition goForward(const PDFPosition &current);

private:
    std::vector<PDFPosition> m_back;
    std::vector<PDFPosition> m_forward;
};
