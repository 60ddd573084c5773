#include "pdf/EngineAnswers.h"

#include "pdf/protocol/Utf8.h"

namespace
{
QRectF rectangleFrom(const PageBox &box)
{
    return QRectF(QPointF(box.left, box.top), QPointF(box.right, box.bottom));
}

std::optional<PDFPageGeometry> geometryFrom(const std::optional<PageShape> &shape)
{
    if (!shape)
        return std::nullopt;
    return PDFPageGeometry{QSizeF(shape->width, shape->height), int(shape->turns) * 90,
                           rectangleFrom(shape->media),         rectangleFrom(shape->bleed),
                           rectangleFrom(shape->trim),          rectangleFrom(shape->art)};
}

PDFDestination destinationFrom(const PageTarget &target)
{
    return {target.page, QPointF(target.x, target.y)};
}

bool isBeyond(const std::optional<PageTarget> &target, qint64 pageCount)
{
    return target && target->page >= pageCount;
}

PDFOutlineItem itemFrom(const OutlineEntry &entry)
{
    PDFOutlineItem item;
    if (entry.label)
        item.label = QString::fromStdString(*entry.label);
    if (entry.target)
        item.destination = destinationFrom(*entry.target);
    return item;
}
} // namespace

QList<std::optional<PDFPageGeometry>> geometriesFrom(const ShapesReply &reply)
{
    QList<std::optional<PDFPageGeometry>> geometries;
    geometries.reserve(qsizetype(reply.shapes.size()));
    for (const std::optional<PageShape> &shape : reply.shapes)
        geometries.append(geometryFrom(shape));
    return geometries;
}

PDFPageText pageTextFrom(const PlacedTextReply &reply)
{
    QString text;
    QList<QRectF> boxes;
    const std::u32string characters = decodedUtf8(reply.text);
    text.reserve(qsizetype(characters.size()));
    boxes.reserve(qsizetype(characters.size()));
    for (std::size_t i = 0; i < characters.size(); ++i) {
        text += QStringView(QChar::fromUcs4(characters[i])); // fromUtf8 would drop a byte order mark
        const PageBox &box = reply.boxes[i];
        boxes.resize(text.size(), box == PageBox() ? QRectF() : rectangleFrom(box));
    }
    return {text, boxes};
}

PDFPageLabels pageLabelsFrom(const PageLabelsReply &reply)
{
    QList<PDFPageLabels::Range> ranges;
    for (const LabelRange &range : reply.ranges)
        ranges.append({range.firstPage, PDFPageLabels::Style(range.style), range.firstNumber,
                       QString::fromStdString(range.prefix)});
    return PDFPageLabels(ranges);
}

std::optional<std::vector<PDFOutlineItem>> outlineFrom(const OutlineReply &reply, qint64 pageCount)
{
    std::vector<PDFOutlineItem> root;
    // The lists that are being filled, from the root to that of the last item. Only the last one grows, so
    // that pointers to the others' last items stay good.
    std::vector<std::vector<PDFOutlineItem> *> open = {&root};
    for (const OutlineEntry &entry : reply.entries) {
        if (isBeyond(entry.target, pageCount))
            return std::nullopt;
        open.resize(entry.depth + 1);
        PDFOutlineItem &item = open.back()->emplace_back(itemFrom(entry));
        open.push_back(&item.children);
    }
    return root;
}

std::optional<QList<PDFLink>> linksFrom(const LinksReply &reply, qint64 pageCount)
{
    QList<PDFLink> links;
    for (const LinkEntry &link : reply.links) {
        if (isBeyond(link.target, pageCount))
            return std::nullopt;
        const QRectF bounds = rectangleFrom(link.box);
        const QUrl address = QUrl(QString::fromStdString(link.address));
        if (link.target)
            links.append({bounds, destinationFrom(*link.target)});
        else if (address.isValid()) // what the document says there need not be one
            links.append({bounds, address});
    }
    return links;
}
