#include "engine/PlacedText.h"

#include "engine/PageCoordinates.h"
#include "pdf/protocol/Utf8.h"

#include <string_view>

PlacedText::PlacedText(Boxes boxes, fz_rect bounds)
    : m_boxesAre(boxes)
{
    const PageBox most = limited(bounds); // a page may claim to be larger than a message can tell
    m_bounds = {most.left, most.top, most.right, most.bottom};
}

void PlacedText::place(fz_rect box)
{
    if (wantsBoxes())
        placeAll(clipped(box, m_bounds));
}

void PlacedText::endLine()
{
    m_text += '\n';
    if (wantsBoxes())
        placeAll({});
}

void PlacedText::placeAll(const PageBox &box)
{
    const std::size_t added = characterCount(std::string_view(m_text).substr(m_placedBytes));
    m_boxes.insert(m_boxes.end(), added, box);
    m_placedBytes = m_text.size();
}

void PlacedText::cut(std::size_t bytes)
{
    m_text.resize(bytes);
    if (wantsBoxes())
        m_boxes.resize(characterCount(m_text));
    m_placedBytes = bytes;
}
