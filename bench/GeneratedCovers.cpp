#include "GeneratedCovers.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <random>
#include <unistd.h>

namespace
{

constexpr int kPictures = 64;
// What a cover of an A4 page measures.
constexpr int kWidth = 283;
constexpr int kHeight = 400;

void fill(QImage &picture, QRect box, QRgb colour)
{
    for (int y = box.top(); y <= box.bottom(); ++y) {
        auto *line = reinterpret_cast<QRgb *>(picture.scanLine(y));
        std::fill(line + box.left(), line + box.right() + 1, colour);
    }
}

/// A page that from afar looks printed: short strokes for words, line by line.
QImage drawPicture(std::uint32_t seed)
{
    std::mt19937 random(seed);
    QImage picture(kWidth, kHeight, QImage::Format_RGB32);
    picture.fill(Qt::white);
    fill(picture, {30, 24, kWidth - 60, 12}, qRgb(random() % 120, random() % 120, random() % 160));
    constexpr int kLineHeight = 7;
    for (int y = 60; y < kHeight - 30; y += kLineHeight) {
        for (int x = 24; x < kWidth - 40;) {
            const int width = 6 + static_cast<int>(random() % 20);
            fill(picture, {x, y, width, 3}, qRgb(90, 90, 90));
            x += width + 4;
        }
    }
    return picture;
}

Error failure(const QString &path)
{
    return {QStringLiteral("LibraryGenerator"), 2, QStringLiteral("A cover could not be written"), path};
}

} // namespace

Result<void> writeGeneratedCovers(const QString &folder, const QStringList &paperIds)
{
    QDir().mkpath(folder);
    QList<QByteArray> firstLinks;
    for (const QString &id : paperIds) {
        const QString path = folder + u'/' + id + u".jpg";
        const QByteArray name = QFile::encodeName(path);
        if (firstLinks.size() < kPictures) {
            constexpr int kQuality = 90;
            if (!drawPicture(static_cast<std::uint32_t>(firstLinks.size())).save(path, "JPG", kQuality))
                return failure(path);
            firstLinks.append(name);
            continue;
        }
        const QByteArray &same = firstLinks[id.right(4).toInt(nullptr, 16) % kPictures];
        if (link(same.constData(), name.constData()) != 0)
            return failure(path);
    }
    return {};
}
