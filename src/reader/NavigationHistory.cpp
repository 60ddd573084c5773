#include "reader/NavigationHistory.h"

namespace
{
PDFPosition step(std::vector<PDFPosition> &from, std::vector<PDFPosition> &to, const PDFPosition &current)
{
    const PDFPosition target = from.back();
    from.pop_back();
    to.push_back(current);
    return target;
}
} // namespace

void NavigationHistory::clear()
{
    m_back.clear();
    m_forward.clear();
}

void NavigationHistory::leave(const PDFPosition &position)
{
    m_forward.clear();
    if (!m_back.empty() && m_back.back() == position)
        return;
    if (m_back.size() == kMostPositions)
        m_back.erase(m_back.begin());
    m_back.push_back(position);
}

PDFPosition NavigationHistory::goBack(const PDFPosition &current)
{
    return step(m_back, m_forward, current);
}

PDFPosition NavigationHistory::goForward(const PDFPosition &current)
{
    return step(m_forward, m_back, current);
}
