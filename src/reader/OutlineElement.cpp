#include "reader/OutlineElement.h"

QList<OutlineElement> outlineElements(const std::vector<PDFOutlineItem> &items)
{
    QList<OutlineElement> elements;
    for (const PDFOutlineItem &item : items) {
        OutlineElement element{QUuid::createUuid(), item.label.value_or(QStringLiteral("Page")), {}, {}};
        if (item.destination)
            element.destination = PDFPosition{item.destination->pageIndex, item.destination->position};
        element.children = outlineElements(item.children);
        elements.append(element);
    }
    return elements;
}
